pragma ComponentBehavior: Bound

import QtQuick

// One dot per page; clicking a dot goes to that page.
Row {
    id: root
    property int count: 1
    property int current: 0
    signal picked(int page)
    spacing: 14
    Repeater {
        model: root.count
        Rectangle {
            id: dot
            required property int index
            width: 10
            height: 10
            radius: 5
            color: dot.index === root.current ? "white" : Qt.rgba(1, 1, 1, 0.35)
            Accessible.role: Accessible.PageTab
            Accessible.name: qsTr("Page %1").arg(dot.index + 1)
            MouseArea {
                anchors.fill: parent
                anchors.margins: -8
                onClicked: root.picked(dot.index)
            }
        }
    }
}
