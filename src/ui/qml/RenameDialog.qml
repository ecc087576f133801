import Tillmora
import QtQuick
import QtQuick.Controls.Basic

// Renames an app (its shown name) or a folder.
Dialog {
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

    anchors.centerIn: parent
    modal: true
    title: kind === CellKind.Folder ? qsTr("Rename folder") : qsTr("Rename app")
    standardButtons: Dialog.Ok | Dialog.Cancel
    TextField {
        id: nameField
        objectName: "renameField"
        width: 320
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
