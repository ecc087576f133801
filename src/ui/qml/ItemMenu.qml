import Tillmora
import QtQuick
import QtQuick.Controls.Basic

// The right-click menu of an icon; it offers only what applies to it.
Menu {
    id: menu
    required property GridPresenter presenter
    property string key
    property int kind: CellKind.Empty
    property string itemTitle
    property string entryId
    property string folderId // set when the icon is inside the open folder
    signal renameRequested(string key, int kind, string title, string entryId)
    signal hiddenAppsRequested()

    // An entry that is left out when it does not apply: no height, and
    // disabled so the arrow keys skip it too.
    component Entry: MenuItem {
        enabled: visible
        height: visible ? implicitHeight : 0
    }

    function openFor(key, folderId, position) {
        menu.key = key
        menu.kind = presenter.kindOf(key)
        menu.itemTitle = presenter.titleOf(key)
        menu.entryId = presenter.entryIdOf(key)
        menu.folderId = folderId
        popup(position.x, position.y)
    }

    Entry {
        text: qsTr("Open")
        visible: menu.kind !== CellKind.Widget && menu.kind !== CellKind.Unavailable
        onTriggered: menu.presenter.activation.activate(menu.key)
    }
    Entry {
        text: qsTr("Rename…")
        visible: menu.kind === CellKind.App || menu.kind === CellKind.Folder
        onTriggered: menu.renameRequested(menu.key, menu.kind, menu.itemTitle, menu.entryId)
    }
    Entry {
        text: qsTr("Hide")
        visible: menu.kind === CellKind.App
        onTriggered: menu.presenter.hiddenApps.hide(menu.key)
    }
    Entry {
        text: qsTr("Remove from folder")
        visible: menu.kind === CellKind.App && menu.folderId.length > 0
        onTriggered: menu.presenter.folder.removeMember(menu.folderId, menu.key)
    }
    Entry {
        text: qsTr("Dissolve folder")
        visible: menu.kind === CellKind.Folder
        onTriggered: menu.presenter.folder.dissolve(menu.entryId)
    }
    Entry {
        text: qsTr("Edit workflow…")
        visible: menu.kind === CellKind.Workflow
        onTriggered: menu.presenter.workflows.edit(menu.entryId)
    }
    Entry {
        text: qsTr("Delete workflow")
        visible: menu.kind === CellKind.Workflow
        onTriggered: menu.presenter.workflows.remove(menu.entryId)
    }
    Entry {
        text: qsTr("Remove widget")
        visible: menu.kind === CellKind.Widget
        onTriggered: menu.presenter.removeWidget(menu.entryId)
    }
    MenuSeparator {}
    MenuItem {
        text: qsTr("Show hidden apps…")
        onTriggered: menu.hiddenAppsRequested()
    }
}
