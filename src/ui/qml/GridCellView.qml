pragma ComponentBehavior: Bound

import Tillmora
import QtQuick

// One cell of a page: an app, a folder, a workflow or a widget spanning
// several cells. Positioned by its index, so a changed preview slides it.
Item {
    id: cell
    required property int index
    required property string key
    required property int kind
    required property string title
    required property string iconPath
    required property var previewPaths
    required property string widgetKind
    required property int spanColumns
    required property int spanRows
    required property string emoji
    required property string tint
    required property string image

    property real cellWidth: 100
    property real cellHeight: 100
    property int columns: 8
    property real iconSize: 96
    property bool showLabels: true
    property color labelColor: "white"
    property bool cellPlates: false
    property string draggedKey
    property string mergeTarget
    property bool selected: false
    property bool animated: false

    x: (index % columns) * cellWidth
    y: Math.floor(index / columns) * cellHeight
    width: cellWidth * (kind === CellKind.Widget ? spanColumns : 1)
    height: cellHeight * (kind === CellKind.Widget ? spanRows : 1)
    // The dragged icon stays as a ghost where the drop would put it.
    opacity: key.length > 0 && key === draggedKey ? 0.25 : 1
    Behavior on x { enabled: cell.animated; NumberAnimation { duration: 160; easing.type: Easing.OutCubic } }
    Behavior on y { enabled: cell.animated; NumberAnimation { duration: 160; easing.type: Easing.OutCubic } }

    // One of these shows, by kind; the others stay empty and invisible.
    AppIcon {
        anchors.fill: parent
        visible: cell.kind === CellKind.App || cell.kind === CellKind.Unavailable
        dimmed: cell.kind === CellKind.Unavailable
        iconPath: cell.iconPath
        title: cell.title
        iconSize: cell.iconSize
        showLabel: cell.showLabels
        labelColor: cell.labelColor
        plate: cell.cellPlates
        selected: cell.selected || cell.mergeTarget === cell.key
    }
    FolderIcon {
        anchors.fill: parent
        visible: cell.kind === CellKind.Folder
        previewPaths: visible ? cell.previewPaths : []
        title: cell.title
        iconSize: cell.iconSize
        showLabel: cell.showLabels
        labelColor: cell.labelColor
        tint: cell.tint
        selected: cell.selected
        highlighted: cell.mergeTarget === cell.key
    }
    WidgetTile {
        anchors.fill: parent
        anchors.margins: 12
        visible: cell.kind === CellKind.Widget
        widgetKind: cell.widgetKind
        selected: cell.selected
    }
    WorkflowIcon {
        anchors.fill: parent
        visible: cell.kind === CellKind.Workflow
        emoji: cell.emoji
        tint: cell.tint
        image: cell.image
        title: cell.title
        iconSize: cell.iconSize
        showLabel: cell.showLabels
        labelColor: cell.labelColor
        selected: cell.selected
    }
}
