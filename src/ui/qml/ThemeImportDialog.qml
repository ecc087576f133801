pragma ComponentBehavior: Bound

import Tillmora
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

// The questions of a theme import, one at a time: a theme imported before,
// folders that differ from the user's, and whether to switch to the new
// Space. Open while the presenter has a stage.
Popup {
    id: dialog
    required property ThemesPresenter themes
    readonly property string stage: themes.stage
    readonly property var pkg: themes.package

    objectName: "themeImportDialog"
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

    component Action: Button {
        id: action
        property bool primary: false
        objectName: "importAction"
        font.pixelSize: 14
        contentItem: Label {
            text: action.text
            color: "white"
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            font: action.font
        }
        background: Rectangle {
            implicitWidth: 110
            implicitHeight: 34
            radius: 17
            color: action.primary ? Qt.rgba(0.36, 0.5, 1, action.hovered ? 1 : 0.85)
                                  : Qt.rgba(1, 1, 1, action.hovered ? 0.16 : 0.09)
        }
    }

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
                Layout.fillWidth: true
                text: dialog.stage === "duplicate" ? dialog.themes.text("settings.spaces.theme.duplicate.title")
                    : dialog.stage === "folderChoice" ? dialog.themes.text("settings.spaces.theme.folders.title")
                    : dialog.stage === "imported" ? dialog.themes.text("settings.spaces.theme.imported.title")
                    : dialog.stage === "failed" ? qsTr("This theme cannot be imported")
                    : qsTr("Import “%1”?").arg(dialog.pkg.name || "")
                color: "white"
                font.pixelSize: 18
                font.bold: true
                wrapMode: Text.Wrap
            }
        }
        Label {
            objectName: "importMessage"
            Layout.fillWidth: true
            color: dialog.stage === "failed" ? "#FF9A8A" : Qt.rgba(1, 1, 1, 0.78)
            font.pixelSize: 14
            wrapMode: Text.Wrap
            text: dialog.stage === "failed" ? (dialog.pkg.error || "")
                : dialog.stage === "duplicate" ? dialog.themes.text("settings.spaces.theme.duplicate.message")
                : dialog.stage === "folderChoice" ? dialog.pkg.summary + " " + dialog.themes.text("settings.spaces.theme.folders.message")
                : dialog.stage === "imported" ? qsTr("“%1” was added to your Spaces. %2").arg(dialog.pkg.name || "").arg(dialog.pkg.summary || "")
                : (dialog.pkg.summary || "") + " " + qsTr("It becomes a new Space; your own setup stays as it is.")
        }
        RowLayout {
            Layout.alignment: Qt.AlignRight
            spacing: 10
            Action {
                text: dialog.stage === "imported" ? dialog.themes.text("settings.spaces.theme.imported.laterButton")
                    : dialog.stage === "failed" ? qsTr("OK")
                    : dialog.stage === "folderChoice" ? dialog.themes.text("settings.spaces.theme.folders.keepMine")
                    : qsTr("Cancel")
                onClicked: dialog.stage === "folderChoice" ? dialog.themes.chooseFolders(true) : dialog.themes.closeImport()
            }
            Action {
                primary: true
                visible: dialog.stage !== "failed"
                text: dialog.stage === "duplicate" ? dialog.themes.text("settings.spaces.theme.duplicate.importButton")
                    : dialog.stage === "folderChoice" ? dialog.themes.text("settings.spaces.theme.folders.useTheme")
                    : dialog.stage === "imported" ? dialog.themes.text("settings.spaces.theme.imported.switchButton")
                    : qsTr("Import")
                onClicked: {
                    switch (dialog.stage) {
                    case "duplicate": dialog.themes.importAgain(); break
                    case "folderChoice": dialog.themes.chooseFolders(false); break
                    case "imported": dialog.themes.switchToImported(); break
                    default: dialog.themes.confirmImport()
                    }
                }
            }
        }
    }
}
