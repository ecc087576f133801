pragma ComponentBehavior: Bound

import Tillmora
import QtQuick
import QtQuick.Controls.Basic

// One chip per Space, the standard profile first; a click switches, a
// right-click or double-click edits, "+" makes a new one.
Row {
    id: strip
    required property SpacesPresenter spaces
    signal editRequested(string id)
    signal createRequested()
    signal themesRequested()

    spacing: 8
    visible: spaces.available

    component Chip: Rectangle {
        id: chip
        property string spaceId
        property string emoji
        property string name
        property color tint: Qt.rgba(1, 1, 1, 0.16)
        readonly property bool active: strip.spaces.activeSpaceId === chip.spaceId
        signal activated()
        signal editRequested()

        objectName: "spaceChip"
        width: 38
        height: 38
        radius: 19
        color: chip.tint
        border.width: chip.active ? 3 : (hover.hovered ? 1 : 0)
        border.color: chip.active ? "white" : Qt.rgba(1, 1, 1, 0.6)
        opacity: chip.active || hover.hovered ? 1 : 0.78
        Accessible.role: Accessible.Button
        Accessible.name: chip.name
        Text {
            anchors.centerIn: parent
            text: chip.emoji
            font.pixelSize: 19
            color: "white"
        }
        HoverHandler { id: hover }
        ToolTip.visible: hover.hovered && chip.name.length > 0
        ToolTip.text: chip.name
        ToolTip.delay: 400
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.LeftButton | Qt.RightButton
            onClicked: (mouse) => mouse.button === Qt.RightButton ? chip.editRequested() : chip.activated()
            onDoubleClicked: chip.editRequested()
        }
    }

    Chip {
        spaceId: ""
        emoji: "▦"
        name: qsTr("Standard")
        onActivated: strip.spaces.switchTo("")
    }
    Repeater {
        model: strip.spaces.spaces
        Chip {
            required property var modelData
            spaceId: modelData.id
            emoji: modelData.emoji
            name: modelData.name
            tint: modelData.color.length > 0 ? modelData.color : Qt.rgba(1, 1, 1, 0.16)
            onActivated: strip.spaces.switchTo(spaceId)
            onEditRequested: strip.editRequested(spaceId)
        }
    }
    Chip {
        objectName: "newSpaceChip"
        spaceId: "+"
        emoji: "+"
        name: qsTr("New Space…")
        onActivated: strip.createRequested()
    }
    Chip {
        objectName: "themesChip"
        spaceId: "themes"
        emoji: "🎨"
        name: qsTr("Themes…")
        onActivated: strip.themesRequested()
    }
}
