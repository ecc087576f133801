pragma ComponentBehavior: Bound

import Tillmora
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

// Makes or changes one Space: name, emoji and colour, its shortcut, and the
// times it is picked by itself.
Popup {
    id: editor
    required property SpacesPresenter spaces
    readonly property SpaceEditViewModel model: spaces.editor
    readonly property bool creating: spaces.editingId.length === 0
    property bool recording: false
    readonly property var swatches: ["#5B7FFF", "#2EA36B", "#E0883A", "#D9475C", "#8E5BD9", "#2A9DB5", "#6B7280", "#C2A23A"]

    function create() { spaces.beginCreate(); recording = false; open(); nameField.forceActiveFocus() }
    function edit(id) { spaces.beginEdit(id); recording = false; open(); nameField.forceActiveFocus() }

    objectName: "spaceEditor"
    anchors.centerIn: parent
    modal: true
    padding: 24
    width: Math.min(520, parent ? parent.width - 40 : 520)
    height: Math.min(implicitHeight, parent ? parent.height - 40 : 700)
    background: Rectangle {
        radius: 18
        color: Qt.rgba(0.10, 0.11, 0.15, 0.96)
        border.color: Qt.rgba(1, 1, 1, 0.14)
    }

    component Caption: Label { color: Qt.rgba(1, 1, 1, 0.65); font.pixelSize: 13 }
    component Field: TextField {
        color: "white"
        font.pixelSize: 15
        selectByMouse: true
        background: Rectangle { radius: 8; color: Qt.rgba(1, 1, 1, parent.activeFocus ? 0.16 : 0.09) }
    }
    component Pill: Button {
        id: pill
        property bool on: false
        font.pixelSize: 13
        contentItem: Label {
            text: pill.text
            color: "white"
            horizontalAlignment: Text.AlignHCenter
            font: pill.font
        }
        background: Rectangle {
            radius: height / 2
            color: pill.on ? Qt.rgba(0.36, 0.5, 1, 0.85) : Qt.rgba(1, 1, 1, pill.hovered ? 0.16 : 0.09)
        }
    }

    contentHeight: body.implicitHeight
    Flickable {
        anchors.fill: parent
        contentHeight: body.implicitHeight
        clip: true
        ColumnLayout {
            id: body
            width: parent.width
            spacing: 12
            Label {
                text: editor.creating ? qsTr("New Space") : qsTr("Edit Space")
                color: "white"
                font.pixelSize: 20
                font.bold: true
            }
            RowLayout {
                spacing: 10
                Field {
                    objectName: "spaceEmojiField"
                    Layout.preferredWidth: 56
                    horizontalAlignment: Text.AlignHCenter
                    text: editor.model.emoji
                    maximumLength: 8
                    onTextEdited: editor.model.emoji = text
                }
                Field {
                    id: nameField
                    objectName: "spaceNameField"
                    Layout.fillWidth: true
                    placeholderText: qsTr("Name")
                    placeholderTextColor: Qt.rgba(1, 1, 1, 0.4)
                    text: editor.model.name
                    onTextEdited: editor.model.name = text
                }
            }
            Row {
                spacing: 8
                Repeater {
                    model: editor.swatches
                    Rectangle {
                        required property string modelData
                        width: 26; height: 26; radius: 13
                        color: modelData
                        border.width: editor.model.iconBackgroundColor.toLowerCase() === modelData.toLowerCase() ? 3 : 0
                        border.color: "white"
                        MouseArea { anchors.fill: parent; onClicked: editor.model.iconBackgroundColor = parent.modelData }
                    }
                }
            }

            Caption { text: qsTr("Shortcut (works while Tillmora is shown)") }
            RowLayout {
                spacing: 8
                Pill {
                    id: recordButton
                    objectName: "spaceShortcutButton"
                    on: editor.recording
                    focus: editor.recording
                    text: editor.recording ? qsTr("Press the keys…")
                        : (editor.model.hasHotKey ? editor.spaces.hotKeyText() : qsTr("Record shortcut"))
                    onClicked: { editor.recording = !editor.recording; forceActiveFocus() }
                    Keys.onPressed: (event) => {
                        if (!editor.recording)
                            return
                        event.accepted = true
                        if (event.key === Qt.Key_Escape) { editor.recording = false; return }
                        if (editor.spaces.captureHotKey(event.key, event.modifiers))
                            editor.recording = false
                    }
                }
                Pill {
                    visible: editor.model.hasHotKey && !editor.recording
                    text: qsTr("Clear")
                    onClicked: editor.model.clearHotKey()
                }
            }

            Switch {
                id: autoSwitch
                objectName: "spaceAutoSwitch"
                checked: editor.model.autoSwitchEnabled
                onToggled: editor.model.autoSwitchEnabled = checked
                text: qsTr("Switch to this Space by itself")
                palette.windowText: "white"
            }
            Repeater {
                model: editor.model.triggers
                ColumnLayout {
                    id: rule
                    required property var modelData
                    required property int index
                    Layout.fillWidth: true
                    enabled: editor.model.autoSwitchEnabled
                    opacity: enabled ? 1 : 0.5
                    spacing: 6
                    RowLayout {
                        spacing: 8
                        Label {
                            color: "white"
                            text: rule.modelData.kind === "daysOfWeek" ? qsTr("On")
                                : rule.modelData.kind === "focusMode" ? qsTr("In a focus mode (not available here)")
                                : qsTr("Every day")
                        }
                        Repeater {
                            model: rule.modelData.kind === "daysOfWeek" ? 7 : 0
                            Pill {
                                required property int index
                                implicitWidth: 44
                                text: editor.spaces.weekdayLabel(index + 1)
                                on: rule.modelData.weekdays.indexOf(index + 1) >= 0
                                onClicked: editor.model.toggleWeekday(rule.index, index + 1)
                            }
                        }
                        Item { Layout.fillWidth: true }
                        Pill {
                            text: "✕"
                            Accessible.name: qsTr("Remove rule")
                            onClicked: editor.model.removeTrigger(rule.index)
                        }
                    }
                    RowLayout {
                        visible: rule.modelData.kind !== "focusMode"
                        spacing: 8
                        CheckBox {
                            id: timed
                            visible: rule.modelData.kind === "daysOfWeek"
                            checked: rule.modelData.hasTime
                            onToggled: editor.model.setTimed(rule.index, checked)
                        }
                        Caption { text: qsTr("from"); visible: rule.modelData.hasTime }
                        Field {
                            visible: rule.modelData.hasTime
                            objectName: "ruleStart"
                            Layout.preferredWidth: 72
                            text: rule.modelData.startText
                            inputMethodHints: Qt.ImhPreferNumbers
                            onEditingFinished: if (text !== rule.modelData.startText) editor.model.setStartText(rule.index, text)
                        }
                        Caption { text: qsTr("to"); visible: rule.modelData.hasTime }
                        Field {
                            visible: rule.modelData.hasTime
                            objectName: "ruleEnd"
                            Layout.preferredWidth: 72
                            text: rule.modelData.endText
                            inputMethodHints: Qt.ImhPreferNumbers
                            onEditingFinished: if (text !== rule.modelData.endText) editor.model.setEndText(rule.index, text)
                        }
                        Caption { text: qsTr("all day"); visible: !rule.modelData.hasTime }
                    }
                }
            }
            RowLayout {
                spacing: 8
                Pill { text: qsTr("+ Time range"); onClicked: editor.model.addTimeRange() }
                Pill { text: qsTr("+ Days"); onClicked: editor.model.addDays() }
            }

            ColumnLayout {
                visible: editor.creating
                spacing: 2
                RadioButton {
                    id: withCurrent
                    checked: true
                    text: editor.spaces.text("settings.spaces.createWithCurrentSettings")
                    palette.windowText: "white"
                }
                RadioButton {
                    id: withDefault
                    text: editor.spaces.text("settings.spaces.createWithDefaultLayout")
                    palette.windowText: "white"
                }
            }

            Label {
                objectName: "spaceEditorError"
                Layout.fillWidth: true
                visible: editor.spaces.error.length > 0
                text: editor.spaces.error
                color: "#FF8A8A"
                wrapMode: Text.Wrap
            }
            RowLayout {
                Layout.fillWidth: true
                spacing: 8
                Pill {
                    visible: !editor.creating
                    text: qsTr("Delete Space")
                    onClicked: { editor.spaces.deleteEditing(); editor.close() }
                }
                Item { Layout.fillWidth: true }
                Pill { text: qsTr("Cancel"); onClicked: editor.close() }
                Pill {
                    id: saveButton
                    objectName: "spaceSaveButton"
                    on: true
                    text: editor.creating ? qsTr("Create") : qsTr("Save")
                    onClicked: {
                        // Commits a time still being typed.
                        forceActiveFocus()
                        if (editor.spaces.save(withCurrent.checked))
                            editor.close()
                    }
                }
            }
        }
    }
}
