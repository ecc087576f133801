import QtQuick
import QtQuick.Controls.Basic

// The overlay's menus: a rounded dark glass panel with readable type. Items
// that do not apply are left out (GlassMenuItem), never shown greyed.
Menu {
    id: menu
    padding: 6
    implicitWidth: 240
    delegate: GlassMenuItem {}
    background: Rectangle {
        implicitWidth: 240
        radius: 12
        color: Qt.rgba(0.12, 0.13, 0.18, 0.96)
        border.color: Qt.rgba(1, 1, 1, 0.14)
    }
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 90 } }
}
