import QtQuick

// A workflow: its emoji on a coloured plate, or its image.
Item {
    id: root
    property string emoji
    property string tint
    property string image // a file path; drawn instead of the emoji
    property string title
    property real iconSize: 96
    property bool showLabel: true
    property color labelColor: "white"
    property bool selected: false
    Accessible.role: Accessible.Button
    Accessible.name: qsTr("Workflow %1").arg(title)

    Rectangle {
        id: plate
        width: root.iconSize
        height: root.iconSize
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: parent.top
        anchors.topMargin: Math.max(0, (parent.height - root.iconSize - (label.visible ? label.height + 8 : 0)) / 2)
        radius: root.iconSize * 0.22
        color: root.image.length > 0 ? "transparent" : (root.tint.length > 0 ? root.tint : "#5b6ee1")
        border.color: "white"
        border.width: root.selected ? 3 : 0
        clip: true
        Text {
            anchors.centerIn: parent
            visible: root.image.length === 0
            text: root.emoji.length > 0 ? root.emoji : "⚡"
            font.pixelSize: root.iconSize * 0.5
        }
        Image {
            anchors.fill: parent
            visible: root.image.length > 0
            source: visible ? "file://" + root.image : ""
            sourceSize.width: root.iconSize
            sourceSize.height: root.iconSize
            fillMode: Image.PreserveAspectCrop
            asynchronous: true
        }
    }
    Text {
        id: label
        visible: root.showLabel
        anchors.top: plate.bottom
        anchors.topMargin: 8
        anchors.horizontalCenter: parent.horizontalCenter
        width: parent.width - 8
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideRight
        text: root.title
        color: root.labelColor
        font.pixelSize: Math.max(11, Math.round(root.iconSize * 0.14))
    }
}
