import QtQuick
import QtQuick.Controls.Basic

TextField {
    id: field
    color: "white"
    font.pixelSize: 15
    selectionColor: Qt.rgba(0.36, 0.5, 1, 1)
    selectedTextColor: "white"
    placeholderTextColor: Qt.rgba(1, 1, 1, 0.45)
    leftPadding: 12
    rightPadding: 12
    background: Rectangle {
        implicitHeight: 36
        radius: 9
        color: Qt.rgba(1, 1, 1, 0.08)
        border.color: field.activeFocus ? Qt.rgba(0.36, 0.5, 1, 1) : Qt.rgba(1, 1, 1, 0.16)
    }
}
