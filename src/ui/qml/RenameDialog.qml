import Tillmora
import QtQuick
import QtQuick.Controls.Basic

// Renames an app (its shown name) or a folder.
GlassDialog {
    id: dialog
    required property GridPresenter presenter
    property string key
    property int kind: CellKind.Empty
    property string entryId

    function ask(key, kind, title, entryId) {
        dialog.key = key
        dialog.kind = kind
        dialog.entryId = entryId
        nameField.text = title
        open()
        nameField.selectAll()
        nameField.forceActiveFocus()
    }

    title: kind === CellKind.Folder ? qsTr("Rename folder") : qsTr("Rename app")
    standardButtons: Dialog.Ok | Dialog.Cancel
    GlassTextField {
        id: nameField
        objectName: "renameField"
        width: 340
        placeholderText: dialog.kind === CellKind.Folder ? "" : qsTr("Leave empty for the app's own name")
        onAccepted: dialog.accept()
    }
    onAccepted: {
        if (kind === CellKind.Folder) {
            presenter.folder.renameFolder(entryId, nameField.text)
        } else {
            presenter.renameApp(key, nameField.text)
        }
    }
}
