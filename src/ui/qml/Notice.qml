import QtQuick

// A short message at the bottom of the overlay; hidden when it is empty.
Rectangle {
    id: root
    property string text
    objectName: "notice"
    visible: opacity > 0
    opacity: root.text.length > 0 ? 1 : 0
    Behavior on opacity { NumberAnimation { duration: 180 } }
    width: Math.min(label.implicitWidth + 40, parent ? parent.width * 0.8 : 600)
    height: label.implicitHeight + 20
    radius: height / 2
    color: Qt.rgba(0.08, 0.09, 0.12, 0.92)
    border.color: Qt.rgba(1, 1, 1, 0.15)
    Accessible.role: Accessible.AlertMessage
    Accessible.name: root.text

    Text {
        id: label
        anchors.centerIn: parent
        width: Math.min(implicitWidth, root.width - 40)
        text: root.text
        color: "white"
        font.pixelSize: 15
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
    }
}
