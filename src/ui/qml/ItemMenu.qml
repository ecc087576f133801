import Tillmora
import QtQuick

// The right-click menu of an icon; it offers only what applies to it.
GlassMenu {
    id: menu
    required property GridPresenter presenter
    property string key
    property int kind: CellKind.Empty
    property string itemTitle
    property string entryId
    property string folderId // set when the icon is inside the open folder
    property var appActions: []
    property bool customIcon: false
    signal renameRequested(string key, int kind, string title, string entryId)
    signal hiddenAppsRequested()

    component Entry: GlassMenuItem {}

    function openFor(key, folderId, position) {
        menu.key = key
        menu.kind = presenter.kindOf(key)
        menu.itemTitle = presenter.titleOf(key)
        menu.entryId = presenter.entryIdOf(key)
        menu.folderId = folderId
        menu.appActions = menu.kind === CellKind.App ? presenter.activation.actionsOf(key) : []
        menu.customIcon = menu.kind === CellKind.App && presenter.hasCustomIcon(key)
        popup(position.x, position.y)
    }

    Entry {
        text: qsTr("Open")
        visible: menu.kind !== CellKind.Widget && menu.kind !== CellKind.Unavailable
        onTriggered: menu.presenter.activation.activate(menu.key)
    }
    // The desktop entry's own actions ("New Window" ...), after Open; menus
    // take no repeated items, so a few fixed places are filled in order.
    function actionAt(slot) { return slot < appActions.length ? appActions[slot] : null }
    component AppAction: Entry {
        property var entry: null
        visible: entry !== null
        text: entry ? entry.name : ""
    }
    AppAction { entry: menu.actionAt(0); onTriggered: menu.presenter.activation.activateAction(menu.key, entry.id) }
    AppAction { entry: menu.actionAt(1); onTriggered: menu.presenter.activation.activateAction(menu.key, entry.id) }
    AppAction { entry: menu.actionAt(2); onTriggered: menu.presenter.activation.activateAction(menu.key, entry.id) }
    AppAction { entry: menu.actionAt(3); onTriggered: menu.presenter.activation.activateAction(menu.key, entry.id) }
    AppAction { entry: menu.actionAt(4); onTriggered: menu.presenter.activation.activateAction(menu.key, entry.id) }
    AppAction { entry: menu.actionAt(5); onTriggered: menu.presenter.activation.activateAction(menu.key, entry.id) }
    Entry {
        text: qsTr("Rename…")
        visible: menu.kind === CellKind.App || menu.kind === CellKind.Folder
        onTriggered: menu.renameRequested(menu.key, menu.kind, menu.itemTitle, menu.entryId)
    }
    Entry {
        text: qsTr("Change icon…")
        visible: menu.kind === CellKind.App
        onTriggered: menu.presenter.chooseIcon(menu.key)
    }
    Entry {
        text: qsTr("Use the app's own icon")
        visible: menu.customIcon
        onTriggered: menu.presenter.resetIcon(menu.key)
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
    GlassSeparator {}
    GlassMenuItem {
        text: qsTr("Show hidden apps…")
        onTriggered: menu.hiddenAppsRequested()
    }
}
