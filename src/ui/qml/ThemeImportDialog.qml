pragma ComponentBehavior: Bound

import Tillmora
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

// The alerts of sharing themes, one at a time: before an export, a theme
// imported before, folders that differ from the user's, whether to switch to
// the new Space, and refusals in words. Open while the presenter has one.
Popup {
    id: dialog
    required property ThemesPresenter themes
    readonly property string stage: themes.stage
    readonly property var pkg: themes.package

    objectName: "themeImportDialog"
    focus: true
    anchors.centerIn: parent
    modal: true
    closePolicy: Popup.CloseOnEscape
    padding: 24
    width: Math.min(460, parent ? parent.width - 40 : 460)
    visible: stage.length > 0
    onClosed: if (stage.length > 0) themes.closeImport()
    background: Rectangle {
        radius: 18
        color: Qt.rgba(0.10, 0.11, 0.15, 0.97)
        border.color: Qt.rgba(1, 1, 1, 0.14)
    }

    component Action: SheetButton {
        objectName: "importAction"
        font.pixelSize: 14
        minimumWidth: 110
        minimumHeight: 34
    }

    readonly property bool refusal: stage === "outdated" || stage === "invalidPackage" || stage === "exportFailed"

    contentItem: ColumnLayout {
        spacing: 14
        RowLayout {
            spacing: 12
            Rectangle {
                width: 44; height: 44; radius: 22
                visible: (dialog.pkg.emoji || "").length > 0
                color: (dialog.pkg.color || "").length > 0 ? dialog.pkg.color : Qt.rgba(1, 1, 1, 0.16)
                Text { anchors.centerIn: parent; text: dialog.pkg.emoji || ""; font.pixelSize: 22 }
            }
            Label {
                objectName: "alertTitle"
                Layout.fillWidth: true
                text: {
                    switch (dialog.stage) {
                    case "duplicate": return dialog.themes.text("settings.spaces.theme.duplicate.title")
                    case "folderChoice": return dialog.themes.text("settings.spaces.theme.folders.title")
                    case "imported": return dialog.themes.text("settings.spaces.theme.imported.title")
                    case "exportConfirm": return qsTr("Export “%1” as a theme?").arg(dialog.pkg.name || "")
                    case "exportFailed": return qsTr("The theme could not be exported")
                    default: return qsTr("This theme cannot be imported")
                    }
                }
                color: "white"
                font.pixelSize: 18
                font.bold: true
                wrapMode: Text.Wrap
            }
        }
        Label {
            objectName: "alertMessage"
            Layout.fillWidth: true
            color: dialog.refusal ? "#FF9A8A" : Qt.rgba(1, 1, 1, 0.78)
            font.pixelSize: 14
            wrapMode: Text.Wrap
            text: {
                switch (dialog.stage) {
                case "duplicate": return dialog.themes.text("settings.spaces.theme.duplicate.message")
                case "folderChoice": return [dialog.pkg.summary, dialog.themes.text("settings.spaces.theme.folders.message")].filter(t => t.length > 0).join(" ")
                case "imported": return (qsTr("“%1” was added to your Spaces.").arg(dialog.pkg.name || "") + " " + (dialog.pkg.summary || "")).trim()
                case "exportConfirm": return dialog.pkg.summary || ""
                default: return dialog.pkg.error || ""
                }
            }
        }
        RowLayout {
            Layout.alignment: Qt.AlignRight
            spacing: 10
            Action {
                text: {
                    switch (dialog.stage) {
                    case "imported": return dialog.themes.text("settings.spaces.theme.imported.laterButton")
                    case "folderChoice": return dialog.themes.text("settings.spaces.theme.folders.keepMine")
                    default: return dialog.refusal ? qsTr("OK") : qsTr("Cancel")
                    }
                }
                onClicked: dialog.stage === "folderChoice" ? dialog.themes.chooseFolders(true) : dialog.themes.closeImport()
            }
            Action {
                primary: true
                visible: !dialog.refusal
                text: {
                    switch (dialog.stage) {
                    case "duplicate": return dialog.themes.text("settings.spaces.theme.duplicate.importButton")
                    case "folderChoice": return dialog.themes.text("settings.spaces.theme.folders.useTheme")
                    case "imported": return dialog.themes.text("settings.spaces.theme.imported.switchButton")
                    default: return qsTr("Export")
                    }
                }
                onClicked: {
                    switch (dialog.stage) {
                    case "duplicate": dialog.themes.importAgain(); break
                    case "folderChoice": dialog.themes.chooseFolders(false); break
                    case "imported": dialog.themes.switchToImported(); break
                    case "exportConfirm": dialog.themes.confirmExport(); break
                    }
                }
            }
        }
    }
}
