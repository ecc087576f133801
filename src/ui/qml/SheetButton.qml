import QtQuick
import QtQuick.Controls.Basic

// The rounded button of the overlay's sheets; the primary one is blue.
Button {
    id: button
    property bool primary: false
    property real minimumWidth: 96
    property real minimumHeight: 30

    font.pixelSize: 13
    contentItem: Label {
        text: button.text
        color: button.enabled ? "white" : Qt.rgba(1, 1, 1, 0.45)
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        font: button.font
    }
    background: Rectangle {
        implicitWidth: button.minimumWidth
        implicitHeight: button.minimumHeight
        radius: height / 2
        color: button.primary && button.enabled ? Qt.rgba(0.36, 0.5, 1, button.hovered ? 1 : 0.85)
                                                : Qt.rgba(1, 1, 1, button.hovered ? 0.16 : 0.09)
    }
}
