import Tillmora
import QtQuick

// What follows the pointer during a drag: the icon, or a plate for a widget.
Item {
    id: proxy
    required property DragController drag
    required property PagesPresenter pages
    visible: drag.active
    z: 100

    AppIcon {
        visible: proxy.drag.kind !== CellKind.Widget
        width: proxy.pages.iconSize * 1.4
        height: proxy.pages.iconSize * 1.6
        x: proxy.drag.point.x - width / 2
        y: proxy.drag.point.y - proxy.pages.iconSize / 2
        iconSize: proxy.pages.iconSize * 1.1
        iconPath: proxy.drag.iconPath
        title: ""
        showLabel: false
        dimmed: proxy.drag.kind === CellKind.Unavailable
    }
    Rectangle {
        visible: proxy.drag.kind !== CellKind.App && proxy.drag.kind !== CellKind.Unavailable
        width: proxy.pages.iconSize * (proxy.drag.kind === CellKind.Widget ? 2 : 1.1)
        height: width
        radius: width * 0.22
        x: proxy.drag.point.x - width / 2
        y: proxy.drag.point.y - height / 2
        color: Qt.rgba(1, 1, 1, 0.3)
        border.color: Qt.rgba(1, 1, 1, 0.6)
    }
}
