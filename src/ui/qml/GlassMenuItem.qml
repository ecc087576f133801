import QtQuick
import QtQuick.Controls.Basic

// One entry of a GlassMenu. Hidden entries take no room and are disabled,
// so the arrow keys skip them too.
MenuItem {
    id: item
    enabled: visible
    height: visible ? implicitHeight : 0
    implicitHeight: 34
    font.pixelSize: 15
    leftPadding: 14
    rightPadding: 14
    contentItem: Text {
        text: item.text
        font: item.font
        color: "white"
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: 7
        color: item.highlighted ? Qt.rgba(0.36, 0.5, 1, 0.85) : "transparent"
    }
}
