import QtQuick

// An icon with its name under it; used for apps and inside folders.
Item {
    id: root
    property string iconPath
    property string title
    property real iconSize: 96
    property bool showLabel: true
    property color labelColor: "white"
    property bool plate: false // a soft plate behind the icon
    property bool selected: false
    property bool dimmed: false

    Accessible.role: Accessible.Button
    Accessible.name: title

    Rectangle {
        anchors.centerIn: icon
        width: root.iconSize + 12
        height: width
        radius: width * 0.24
        color: Qt.rgba(1, 1, 1, 0.14)
        border.color: Qt.rgba(1, 1, 1, 0.2)
        visible: root.plate && !root.selected
    }
    Rectangle {
        anchors.centerIn: icon
        width: root.iconSize + 16
        height: width
        radius: width * 0.22
        color: Qt.rgba(1, 1, 1, 0.22)
        border.color: Qt.rgba(1, 1, 1, 0.55)
        border.width: 2
        visible: root.selected
    }
    Image {
        id: icon
        width: root.iconSize
        height: root.iconSize
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: parent.top
        anchors.topMargin: Math.max(0, (parent.height - root.iconSize - (label.visible ? label.height + 8 : 0)) / 2)
        source: root.iconPath.length > 0 ? "image://icon/" + encodeURIComponent(root.iconPath) : ""
        sourceSize.width: root.iconSize
        sourceSize.height: root.iconSize
        asynchronous: true
        smooth: true
        mipmap: true
        opacity: root.dimmed ? 0.35 : 1
        fillMode: Image.PreserveAspectFit
    }
    Text {
        id: label
        visible: root.showLabel
        anchors.top: icon.bottom
        anchors.topMargin: 8
        anchors.horizontalCenter: parent.horizontalCenter
        width: parent.width - 8
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideRight
        text: root.title
        color: root.labelColor
        opacity: root.dimmed ? 0.35 : 1
        font.pixelSize: Math.max(11, Math.round(root.iconSize * 0.14))
        style: Text.Raised
        styleColor: root.labelColor.hslLightness > 0.5 ? Qt.rgba(0, 0, 0, 0.45) : Qt.rgba(1, 1, 1, 0.35)
    }
}
