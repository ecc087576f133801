import Tillmora
import QtQuick

// The full-screen overlay: backdrop, search field, the paged grid with its
// dots, search results, the open folder, menus and dialogs. It owns the
// keyboard: whichever part had it, the keyboard comes back here (or to the
// open folder) when that part closes.
FocusScope {
    id: overlay
    required property GridPresenter presenter
    readonly property PagesPresenter pages: presenter.pages
    readonly property SearchPresenter search: presenter.search
    readonly property FolderPresenter folder: presenter.folder
    readonly property DragController drag: presenter.drag
    readonly property bool searching: search.active
    readonly property real gridMargin: Math.max(40, width * 0.06)
    property int selectedIndex: -1

    width: 1280
    height: 800
    focus: true

    // Gives the keyboard back to whoever should have it now.
    function restoreFocus() {
        // The menu that opened the editor closes after it: the editor keeps the keyboard.
        if (workflowEditor.opened)
            return
        if (folder.isOpen) {
            folderPanel.forceActiveFocus()
            return
        }
        // The closed panel must not stay the scope's focus child, or it
        // would swallow the keys meant for the grid.
        folderPanel.focus = false
        overlay.forceActiveFocus()
    }
    function openItemMenu(key, folderId, position) {
        itemMenu.openFor(key, folderId, position)
    }
    function typeIntoSearch(text) {
        folder.close()
        search.append(text)
        selectedIndex = 0
        searchField.forceActiveFocus()
    }

    Backdrop {
        id: backdrop
        anchors.fill: parent
        model: overlay.presenter.backdrop
    }
    MouseArea {
        // Outside the grid (around the search field and the dots).
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        // Wheel and touchpad scrolling turn pages wherever the pointer is;
        // nothing above takes wheel events, so they all end here. (A
        // WheelHandler reacts to one orientation only.)
        onWheel: (wheel) => overlay.pages.scroll(wheel.angleDelta, wheel.pixelDelta)
        onClicked: (mouse) => {
            if (mouse.button === Qt.RightButton)
                backgroundMenu.popup()
            else
                overlay.presenter.hide()
        }
    }

    SearchField {
        id: searchField
        search: overlay.search
        anchors.top: parent.top
        anchors.topMargin: Math.max(24, overlay.height * 0.04)
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(420, overlay.width * 0.4)
        onTextEdited: overlay.selectedIndex = text.length > 0 ? 0 : -1
        Keys.forwardTo: [overlay]
    }

    SpaceStrip {
        id: spaceStrip
        spaces: overlay.presenter.spaces
        anchors.verticalCenter: searchField.verticalCenter
        anchors.left: parent.left
        anchors.leftMargin: overlay.gridMargin
        onEditRequested: (id) => spaceEditor.edit(id)
        onCreateRequested: spaceEditor.create()
        onThemesRequested: themesPanel.show()
    }

    // Settings, on the right across from the Spaces.
    Rectangle {
        objectName: "settingsButton"
        anchors.verticalCenter: searchField.verticalCenter
        anchors.right: parent.right
        anchors.rightMargin: overlay.gridMargin
        width: 38
        height: 38
        radius: 19
        color: gearArea.containsMouse ? Qt.rgba(1, 1, 1, 0.24) : Qt.rgba(1, 1, 1, 0.12)
        Accessible.role: Accessible.Button
        Accessible.name: qsTr("Settings")
        Text {
            anchors.centerIn: parent
            text: "\u2699"
            color: "white"
            font.pixelSize: 20
        }
        MouseArea {
            id: gearArea
            anchors.fill: parent
            hoverEnabled: true
            onClicked: overlay.presenter.openSettings()
        }
    }

    PagesView {
        id: pagesView
        visible: !overlay.searching
        anchors.fill: parent
        anchors.topMargin: searchField.y + searchField.height + 24
        anchors.bottomMargin: 70
        pages: overlay.pages
        drag: overlay.drag
        gridMargin: overlay.gridMargin
        selectedIndex: overlay.selectedIndex
        labelColor: overlay.presenter.backdrop.titleColor
        cellPlates: overlay.presenter.backdrop.cellPlates
    }
    Notice {
        text: overlay.presenter.notice
        // Over the page dots for the few seconds it shows, not over icons.
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 16
        anchors.horizontalCenter: parent.horizontalCenter
        z: 10
    }
    PageDots {
        visible: !overlay.searching
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 32
        anchors.horizontalCenter: parent.horizontalCenter
        count: overlay.pages.count
        current: overlay.pages.currentPage
        onPicked: (page) => overlay.pages.currentPage = page
    }
    SearchResults {
        id: results
        visible: overlay.searching
        anchors.fill: pagesView
        anchors.leftMargin: overlay.gridMargin
        anchors.rightMargin: overlay.gridMargin
        search: overlay.search
        pages: overlay.pages
        selectedIndex: overlay.selectedIndex
    }

    FolderPanel {
        id: folderPanel
        anchors.fill: parent
        z: 50
        folder: overlay.folder
        frostBackdrop: backdrop
        frostGrid: pagesView
        drag: overlay.drag
        pages: overlay.pages
        activation: overlay.presenter.activation
        systemFolders: overlay.presenter.systemFolders
        onTyped: (text) => overlay.typeIntoSearch(text)
        onContextMenuRequested: (key, position) => overlay.openItemMenu(key, overlay.folder.folderId, position)
    }
    Connections {
        target: overlay.folder
        function onOpenChanged() { overlay.restoreFocus() }
    }

    DragProxy {
        anchors.fill: parent
        drag: overlay.drag
        pages: overlay.pages
    }
    Connections {
        target: overlay.drag
        function onContextMenuRequested(key, surface, point) {
            overlay.openItemMenu(key, surface === DragController.Folder ? overlay.folder.folderId : "", point)
        }
        function onBackgroundMenuRequested(point) { backgroundMenu.popup(point.x, point.y) }
        function onBackgroundClicked(surface) {
            if (surface === DragController.Folder)
                overlay.folder.close()
            else
                overlay.presenter.hide()
        }
    }

    ItemMenu {
        id: itemMenu
        objectName: "itemMenu"
        presenter: overlay.presenter
        onRenameRequested: (key, kind, title, entryId) => renameDialog.ask(key, kind, title, entryId)
        onHiddenAppsRequested: hiddenDialog.open()
        onClosed: overlay.restoreFocus()
    }
    GlassMenu {
        id: backgroundMenu
        objectName: "backgroundMenu"
        GlassMenuItem { text: qsTr("Show hidden apps…"); onTriggered: hiddenDialog.open() }
        GlassMenuItem {
            text: qsTr("New workflow…")
            visible: overlay.presenter.workflows.available
            onTriggered: overlay.presenter.workflows.create()
        }
        GlassMenuItem { text: qsTr("New Space…"); onTriggered: spaceEditor.create() }
        GlassMenuItem { text: qsTr("Themes…"); onTriggered: themesPanel.show() }
        GlassSeparator {}
        GlassMenuItem { text: qsTr("Settings…"); onTriggered: overlay.presenter.openSettings() }
        onClosed: overlay.restoreFocus()
    }
    RenameDialog {
        id: renameDialog
        presenter: overlay.presenter
        onClosed: overlay.restoreFocus()
    }
    WorkflowEditor {
        id: workflowEditor
        workflows: overlay.presenter.workflows
        onClosed: overlay.restoreFocus()
    }
    HiddenAppsDialog {
        id: hiddenDialog
        hiddenApps: overlay.presenter.hiddenApps
        onClosed: overlay.restoreFocus()
    }
    SpaceEditor {
        id: spaceEditor
        spaces: overlay.presenter.spaces
        onClosed: overlay.restoreFocus()
    }
    ThemesPanel {
        id: themesPanel
        themes: overlay.presenter.themes
        onClosed: overlay.restoreFocus()
    }
    ThemeImportDialog {
        themes: overlay.presenter.themes
        onClosed: overlay.restoreFocus()
    }

    // --- keyboard --------------------------------------------------------
    function moveSelection(delta) {
        const count = overlay.searching ? results.count : pages.columns * pages.rows
        if (selectedIndex < 0) {
            selectedIndex = 0
            return
        }
        let next = selectedIndex + delta
        if (!overlay.searching && (next < 0 || next >= count)) {
            const page = pages.currentPage + (next < 0 ? -1 : 1)
            if (page < 0 || page >= pages.count)
                return
            pages.currentPage = page
            next = next < 0 ? next + count : next - count
        }
        selectedIndex = Math.max(0, Math.min(count - 1, next))
    }
    function activateSelection() {
        if (overlay.searching)
            search.activateResult(Math.max(0, selectedIndex))
        else if (selectedIndex >= 0)
            presenter.activation.activate(pages.keyAt(pages.currentPage, selectedIndex))
    }

    Keys.onPressed: (event) => {
        switch (event.key) {
        case Qt.Key_Escape:
            if (drag.active) drag.cancel()
            else if (overlay.searching) { search.clear(); selectedIndex = -1; overlay.forceActiveFocus() }
            else if (selectedIndex >= 0) selectedIndex = -1
            else presenter.hide()
            break
        case Qt.Key_Left: moveSelection(-1); break
        case Qt.Key_Right: moveSelection(1); break
        case Qt.Key_Up: moveSelection(-pages.columns); break
        case Qt.Key_Down: moveSelection(pages.columns); break
        case Qt.Key_PageUp: pages.previousPage(); break
        case Qt.Key_PageDown: pages.nextPage(); break
        case Qt.Key_Home: pages.currentPage = 0; break
        case Qt.Key_End: pages.currentPage = pages.count - 1; break
        case Qt.Key_Return:
        case Qt.Key_Enter: activateSelection(); break
        case Qt.Key_Menu:
            if (selectedIndex >= 0 && !overlay.searching) {
                const key = pages.keyAt(pages.currentPage, selectedIndex)
                if (key.length > 0)
                    openItemMenu(key, "", drag.gridCellCenter(selectedIndex))
            }
            break
        default:
            if (event.text.length > 0 && event.text.charCodeAt(0) >= 32 && !searchField.activeFocus) {
                typeIntoSearch(event.text)
            } else if (event.key === Qt.Key_Backspace && !searchField.activeFocus && overlay.searching) {
                search.backspace()
            } else {
                return
            }
        }
        event.accepted = true
    }

    Connections {
        target: overlay.presenter
        function onShown() {
            overlay.selectedIndex = -1
            itemMenu.close()
            backgroundMenu.close()
            renameDialog.close()
            hiddenDialog.close()
            spaceEditor.close()
            themesPanel.close()
            overlay.presenter.workflows.cancel()
            overlay.forceActiveFocus()
        }
    }
}
