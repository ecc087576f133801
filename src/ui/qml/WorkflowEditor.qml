pragma ComponentBehavior: Bound

import Tillmora
import QtQuick
import QtQuick.Controls.Basic

// Makes or changes a workflow: its name, an emoji on a coloured plate or an
// image, the apps it opens (picked from the installed ones, put in order by
// dragging), the folders it opens after them, and the pause between items.
Dialog {
    id: dialog
    required property WorkflowsPresenter workflows
    property string appFilter
    readonly property var plateColors: ["#3478F6", "#34C759", "#FF9500", "#FF3B30", "#AF52DE", "#5AC8FA", "#FFCC00",
                                        "#8E8E93"]

    objectName: "workflowEditor"
    anchors.centerIn: parent
    width: Math.min(860, (parent ? parent.width : 860) - 40)
    height: Math.min(620, (parent ? parent.height : 620) - 40)
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape
    title: dialog.workflows.isNew ? qsTr("New workflow") : qsTr("Edit workflow")

    Connections {
        target: dialog.workflows
        function onEditorChanged() {
            if (dialog.workflows.editing) {
                dialog.appFilter = ""
                dialog.open()
            } else {
                dialog.close()
            }
        }
    }
    onOpened: nameField.forceActiveFocus()
    // Escape or Cancel: nothing is stored.
    onRejected: dialog.workflows.cancel()

    component Heading: Label {
        font.bold: true
        color: "#4a5263"
    }
    component RowButton: Label {
        signal clicked()
        text: "✕"
        color: "#ff8a80"
        font.pixelSize: 16
        MouseArea { anchors.fill: parent; onClicked: parent.clicked() }
    }

    Item {
        anchors.fill: parent

        Row {
            id: head
            spacing: 20
            WorkflowIcon {
                width: 104
                height: 104
                iconSize: 96
                showLabel: false
                emoji: dialog.workflows.emoji
                tint: dialog.workflows.color
                image: dialog.workflows.image
                title: dialog.workflows.name
            }
            Column {
                spacing: 10
                TextField {
                    id: nameField
                    objectName: "workflowName"
                    width: 320
                    placeholderText: qsTr("Name, e.g. Morning")
                    text: dialog.workflows.name
                    onTextEdited: dialog.workflows.name = text
                }
                Row {
                    spacing: 8
                    TextField {
                        objectName: "workflowEmoji"
                        width: 56
                        horizontalAlignment: TextInput.AlignHCenter
                        text: dialog.workflows.emoji
                        onTextEdited: dialog.workflows.emoji = text
                        Accessible.name: qsTr("Emoji")
                    }
                    Repeater {
                        model: dialog.plateColors
                        delegate: Rectangle {
                            id: swatch
                            required property string modelData
                            anchors.verticalCenter: parent.verticalCenter
                            width: 28
                            height: 28
                            radius: 14
                            color: swatch.modelData
                            // The chosen colour is ringed, as on the light dialog a white ring would not show.
                            border.color: "#1c2230"
                            border.width: dialog.workflows.color.toUpperCase() === swatch.modelData ? 3 : 0
                            Accessible.role: Accessible.Button
                            Accessible.name: qsTr("Plate colour %1").arg(swatch.modelData)
                            MouseArea { anchors.fill: parent; onClicked: dialog.workflows.color = swatch.modelData }
                        }
                    }
                    Button {
                        text: qsTr("Image…")
                        onClicked: dialog.workflows.chooseImage()
                    }
                }
                Row {
                    spacing: 8
                    Label {
                        anchors.verticalCenter: parent.verticalCenter
                        text: qsTr("Pause between items")
                    }
                    SpinBox {
                        objectName: "workflowInterval"
                        from: 0
                        to: 60
                        editable: true
                        value: Math.round(dialog.workflows.interval)
                        onValueModified: dialog.workflows.interval = value
                    }
                    Label {
                        anchors.verticalCenter: parent.verticalCenter
                        text: qsTr("seconds")
                    }
                }
            }
        }

        Row {
            id: lists
            anchors.top: head.bottom
            anchors.topMargin: 20
            anchors.bottom: problemLabel.top
            anchors.bottomMargin: 8
            width: parent.width
            spacing: 16
            readonly property real columnWidth: (width - 2 * spacing) / 3

            // The installed apps; a click adds one to the end of the order.
            Column {
                width: lists.columnWidth
                height: parent.height
                spacing: 6
                Heading { text: qsTr("Installed apps") }
                TextField {
                    id: filterField
                    width: parent.width
                    placeholderText: qsTr("Filter")
                    onTextEdited: dialog.appFilter = text.toLowerCase()
                }
                ListView {
                    objectName: "installedApps"
                    width: parent.width
                    height: parent.height - filterField.height - 40
                    clip: true
                    model: dialog.workflows.installedApps
                    delegate: ItemDelegate {
                        id: installed
                        required property var modelData
                        readonly property bool shown: dialog.workflows.appPaths.indexOf(installed.modelData.path) < 0
                            && installed.modelData.title.toLowerCase().indexOf(dialog.appFilter) >= 0
                        width: ListView.view.width
                        height: shown ? implicitHeight : 0
                        visible: shown
                        text: installed.modelData.title
                        onClicked: dialog.workflows.addApp(installed.modelData.path)
                    }
                }
            }

            // The chosen apps in launch order; drag the handle to reorder.
            Column {
                width: lists.columnWidth
                height: parent.height
                spacing: 6
                Heading { text: qsTr("Opens, in this order") }
                ListView {
                    id: order
                    objectName: "workflowApps"
                    readonly property real rowHeight: 36
                    property int dropIndex: -1
                    width: parent.width
                    height: parent.height - 30
                    clip: true
                    model: dialog.workflows.appPaths
                    delegate: Item {
                        id: step
                        required property string modelData
                        required property int index
                        width: order.width
                        height: order.rowHeight
                        Label {
                            id: handle
                            anchors.left: parent.left
                            anchors.verticalCenter: parent.verticalCenter
                            width: 24
                            text: "≡"
                            font.pixelSize: 18
                            color: "#9aa4b8"
                            // The order changes on release only, so the list
                            // is not rebuilt under the pointer.
                            MouseArea {
                                anchors.fill: parent
                                cursorShape: Qt.SizeVerCursor
                                preventStealing: true
                                onCanceled: order.dropIndex = -1
                                onPositionChanged: (mouse) => {
                                    const y = mapToItem(order.contentItem, mouse.x, mouse.y).y
                                    order.dropIndex = Math.max(0, Math.min(order.count - 1, Math.floor(y / order.rowHeight)))
                                }
                                onReleased: {
                                    if (order.dropIndex >= 0)
                                        dialog.workflows.moveApp(step.index, order.dropIndex)
                                    order.dropIndex = -1
                                }
                            }
                        }
                        Label {
                            anchors.left: handle.right
                            anchors.right: removeApp.left
                            anchors.verticalCenter: parent.verticalCenter
                            elide: Text.ElideRight
                            text: (step.index + 1) + ". " + dialog.workflows.appTitle(step.modelData)
                        }
                        RowButton {
                            id: removeApp
                            anchors.right: parent.right
                            anchors.verticalCenter: parent.verticalCenter
                            onClicked: dialog.workflows.removeApp(step.modelData)
                        }
                    }
                    Rectangle {
                        visible: order.dropIndex >= 0
                        y: order.dropIndex * order.rowHeight
                        width: order.width
                        height: 2
                        color: "#5ac8fa"
                    }
                    Label {
                        anchors.centerIn: parent
                        visible: order.count === 0
                        text: qsTr("Pick apps on the left")
                        color: "#9aa4b8"
                    }
                }
            }

            // Folders open after the apps, in this order.
            Column {
                width: lists.columnWidth
                height: parent.height
                spacing: 6
                Heading { text: qsTr("Then these folders") }
                ListView {
                    id: folderList
                    objectName: "workflowFolders"
                    width: parent.width
                    height: Math.min(parent.height - 80, count * 36)
                    clip: true
                    model: dialog.workflows.folderPaths
                    delegate: Item {
                        id: folderRow
                        required property string modelData
                        width: folderList.width
                        height: 36
                        Label {
                            anchors.left: parent.left
                            anchors.right: removeFolder.left
                            anchors.verticalCenter: parent.verticalCenter
                            elide: Text.ElideMiddle
                            text: folderRow.modelData
                        }
                        RowButton {
                            id: removeFolder
                            anchors.right: parent.right
                            anchors.verticalCenter: parent.verticalCenter
                            onClicked: dialog.workflows.removeFolder(folderRow.modelData)
                        }
                    }
                }
                Button {
                    text: qsTr("Add folder…")
                    onClicked: dialog.workflows.chooseFolder()
                }
            }
        }

        Label {
            id: problemLabel
            anchors.bottom: parent.bottom
            width: parent.width
            color: "#ffb74d"
            text: dialog.workflows.problem
        }
    }

    footer: Item {
        implicitHeight: 60
        Row {
            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8
            Button {
                text: qsTr("Delete")
                visible: !dialog.workflows.isNew
                onClicked: dialog.workflows.remove(dialog.workflows.workflowId)
            }
            Button {
                text: qsTr("Cancel")
                onClicked: dialog.reject()
            }
            Button {
                objectName: "workflowSave"
                text: qsTr("Save")
                highlighted: true
                enabled: dialog.workflows.problem.length === 0
                onClicked: dialog.workflows.save()
            }
        }
    }
}
