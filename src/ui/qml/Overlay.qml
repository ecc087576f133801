import QtQuick
import QtQuick.Controls.Basic

// The full-screen overlay: a frosted backdrop, a search field, the paged grid
// with its page dots, and an open folder above it. Everything it changes goes
// through `grid`, the presenter over the layout model.
FocusScope {
    id: overlay
    width: 1280
    height: 800
    focus: true

    readonly property bool searching: grid.searchText.length > 0
    readonly property real gridMargin: Math.max(40, width * 0.06)
    property int selectedIndex: -1

    // --- drag state -----------------------------------------------------
    property string dragKey: ""
    property string dragKind: ""
    property string dragIconPath: ""
    property string dragTitle: ""
    property string dragEntryId: ""
    property string dragFolderId: "" // set while dragging inside an open folder
    property point dragPoint
    property string hoverKey: ""
    property int previewLocal: -1

    function currentPageItem() { return pages.currentItem }

    function beginDrag(key, kind, iconPath, title, entryId, pageIndex, localIndex, point) {
        dragKey = key; dragKind = kind; dragIconPath = iconPath; dragTitle = title; dragEntryId = entryId
        dragFolderId = ""
        dragPoint = point
        grid.beginDrag(key, pageIndex, localIndex)
    }
    function beginFolderDrag(folderId, key, iconPath, title, point) {
        dragKey = key; dragKind = "app"; dragIconPath = iconPath; dragTitle = title; dragEntryId = ""
        dragFolderId = folderId
        dragPoint = point
    }
    function pageLocalIndexAt(point) {
        const page = currentPageItem()
        if (!page)
            return -1
        const p = page.mapFromItem(overlay, point.x, point.y)
        return page.localIndexAt(p.x, p.y)
    }
    // Over the middle of a cell a dragged app joins what is there; nearer the
    // edges the icons make room for it.
    function pageNearCellCenter(point) {
        const page = currentPageItem()
        if (!page)
            return false
        const p = page.mapFromItem(overlay, point.x, point.y)
        return page.nearCellCenter(p.x, p.y)
    }
    function moveDrag(point) {
        dragPoint = point
        if (dragFolderId.length > 0) {
            if (!folderPanel.contains(folderPanel.mapFromItem(overlay, point.x, point.y)))
                folderPanel.close()
            else
                return
        }
        const edge = point.x < gridMargin * 0.6 ? -1 : point.x > width - gridMargin * 0.6 ? 1 : 0
        if (edge !== edgeTimer.direction) {
            edgeTimer.direction = edge
            edge !== 0 ? edgeTimer.restart() : edgeTimer.stop()
        }
        const local = pageLocalIndexAt(point)
        // Merging is decided on the grid as it is, not on the preview.
        const target = local >= 0 ? grid.keyAt(pages.currentIndex, local) : ""
        const canMerge = (dragKind === "app" || dragFolderId.length > 0) && target !== dragKey
                         && pageNearCellCenter(point)
                         && (grid.kindOf(target) === "app" || grid.kindOf(target) === "folder")
        if (canMerge) {
            if (target !== hoverKey) {
                hoverKey = target
                previewLocal = -1
                reorderTimer.stop()
                grid.cancelPreview()
                folderTimer.restart()
            }
            return
        }
        hoverKey = ""
        folderTimer.stop()
        if (dragKind !== "widget" && dragFolderId.length === 0 && local >= 0 && local !== previewLocal) {
            previewLocal = local
            reorderTimer.restart()
        }
    }
    function endDrag(point) {
        edgeTimer.stop()
        folderTimer.stop()
        reorderTimer.stop()
        const local = pageLocalIndexAt(point)
        if (dragFolderId.length > 0)
            grid.dropOutOfFolder(dragFolderId, dragKey, pages.currentIndex, local)
        else if (dragKind === "widget")
            grid.moveWidget(dragEntryId, pages.currentIndex, local)
        else if (local >= 0)
            grid.drop(dragKey, pages.currentIndex, local)
        else
            grid.cancelDrag()
        dragKey = ""; hoverKey = ""; dragFolderId = ""; previewLocal = -1
    }
    function cancelDrag() {
        edgeTimer.stop(); folderTimer.stop(); reorderTimer.stop()
        grid.cancelDrag()
        dragKey = ""; hoverKey = ""; dragFolderId = ""; previewLocal = -1
    }

    Timer {
        id: edgeTimer
        property int direction: 0
        interval: 650
        repeat: true
        onTriggered: {
            if (overlay.dragKey.length === 0 || direction === 0)
                return stop()
            if (overlay.dragKind !== "widget" && grid.moveToNeighbourPage(overlay.dragKey, direction)) {
                pages.currentIndex = grid.currentPage
                overlay.previewLocal = -1
            }
        }
    }
    // The icons make room once the pointer rests on a cell for a moment.
    Timer {
        id: reorderTimer
        interval: 180
        onTriggered: {
            if (overlay.dragKey.length > 0 && overlay.previewLocal >= 0)
                grid.previewDrop(overlay.dragKey, pages.currentIndex, overlay.previewLocal)
        }
    }
    Timer {
        id: folderTimer
        interval: 700
        onTriggered: {
            if (overlay.hoverKey.length === 0 || overlay.dragKey.length === 0)
                return
            const merged = overlay.dragFolderId.length > 0
                ? grid.moveOutOfFolderOnto(overlay.dragFolderId, overlay.dragKey, overlay.hoverKey)
                : grid.mergeIntoFolder(overlay.dragKey, overlay.hoverKey)
            if (merged)
                overlay.dragKey = ""
            overlay.hoverKey = ""
        }
    }

    // --- activation ------------------------------------------------------
    function activateCell(key, kind, entryId) {
        if (kind === "folder")
            openFolder(entryId)
        else
            grid.activate(key)
    }
    function openFolder(folderId) {
        grid.openFolder(folderId)
        folderPanel.open()
    }
    function openContextMenu(key, kind, title, entryId, folderId, point) {
        contextMenu.key = key; contextMenu.kind = kind; contextMenu.name = title
        contextMenu.entryId = entryId; contextMenu.folderId = folderId
        contextMenu.popup(overlay, point.x, point.y)
    }

    // --- backdrop --------------------------------------------------------
    Rectangle {
        anchors.fill: parent
        gradient: Gradient {
            GradientStop { position: 0; color: "#2b3a55" }
            GradientStop { position: 1; color: "#151b2b" }
        }
    }
    Image {
        anchors.fill: parent
        visible: grid.hasBackdrop
        source: grid.hasBackdrop ? "image://backdrop/" + grid.backdropRevision : ""
        opacity: 0.8 // a little of the glass colour shows through
        cache: false
        smooth: true
        fillMode: Image.Stretch
    }
    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.06, 0.08, 0.14, grid.hasBackdrop ? 0.45 : 0.2)
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: (mouse) => {
            if (mouse.button === Qt.RightButton)
                backgroundMenu.popup()
            else
                grid.hide()
        }
    }
    Menu {
        id: backgroundMenu
        MenuItem { text: qsTr("Show hidden apps"); onTriggered: hiddenDialog.open() }
    }

    // --- search ----------------------------------------------------------
    TextField {
        id: search
        objectName: "searchField"
        anchors.top: parent.top
        anchors.topMargin: Math.max(24, overlay.height * 0.04)
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(420, overlay.width * 0.4)
        height: 40
        placeholderText: qsTr("Search")
        placeholderTextColor: Qt.rgba(1, 1, 1, 0.6)
        color: "white"
        font.pixelSize: 17
        leftPadding: 16
        text: grid.searchText
        onTextEdited: { grid.searchText = text; overlay.selectedIndex = text.length > 0 ? 0 : -1 }
        Accessible.name: qsTr("Search applications")
        background: Rectangle {
            radius: 20
            color: Qt.rgba(1, 1, 1, search.activeFocus ? 0.22 : 0.14)
            border.color: Qt.rgba(1, 1, 1, 0.3)
        }
        Keys.forwardTo: [overlay]
    }

    // --- pages -----------------------------------------------------------
    ListView {
        id: pages
        objectName: "pages"
        visible: !overlay.searching
        anchors.fill: parent
        anchors.topMargin: search.y + search.height + 24
        anchors.bottomMargin: 70
        orientation: ListView.Horizontal
        snapMode: ListView.SnapOneItem
        highlightRangeMode: ListView.StrictlyEnforceRange
        highlightMoveDuration: 260
        boundsBehavior: Flickable.StopAtBounds
        interactive: overlay.dragKey.length === 0
        model: grid.pages
        currentIndex: grid.currentPage
        onCurrentIndexChanged: if (grid.currentPage !== currentIndex) grid.currentPage = currentIndex
        cacheBuffer: width
        delegate: Item {
            required property var cells
            required property int pageIndex
            width: pages.width
            height: pages.height
            property alias pageGrid: pageGrid
            function localIndexAt(x, y) {
                const p = pageGrid.mapFromItem(this, x, y)
                return pageGrid.localIndexAt(p.x, p.y)
            }
            function nearCellCenter(x, y) {
                const p = pageGrid.mapFromItem(this, x, y)
                return pageGrid.nearCellCenter(p.x, p.y)
            }
            GridPage {
                id: pageGrid
                anchors.fill: parent
                anchors.leftMargin: overlay.gridMargin
                anchors.rightMargin: overlay.gridMargin
                cells: parent.cells
                pageIndex: parent.pageIndex
                columns: grid.columns
                rows: grid.rows
                iconSize: grid.iconSize
                showLabels: grid.showLabels
                host: overlay
                draggedKey: overlay.dragKey
                highlightKey: overlay.hoverKey
                selectedIndex: pageIndex === pages.currentIndex && !overlay.searching ? overlay.selectedIndex : -1
            }
        }
        WheelHandler {
            onWheel: (event) => {
                const delta = Math.abs(event.angleDelta.x) > Math.abs(event.angleDelta.y) ? event.angleDelta.x : event.angleDelta.y
                if (delta < 0) grid.nextPage(); else if (delta > 0) grid.previousPage()
            }
        }
    }
    PageDots {
        visible: !overlay.searching
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 32
        anchors.horizontalCenter: parent.horizontalCenter
        count: grid.pageCount
        current: grid.currentPage
        onPicked: (page) => grid.currentPage = page
    }

    // --- search results --------------------------------------------------
    GridView {
        id: results
        objectName: "searchResults"
        visible: overlay.searching
        anchors.fill: pages
        anchors.leftMargin: overlay.gridMargin
        anchors.rightMargin: overlay.gridMargin
        cellWidth: width / grid.columns
        cellHeight: height / grid.rows
        model: grid.searchResults
        currentIndex: overlay.selectedIndex
        interactive: false
        delegate: Item {
            required property int index
            required property string key
            required property string title
            required property string iconPath
            width: results.cellWidth
            height: results.cellHeight
            AppIcon {
                anchors.fill: parent
                iconPath: parent.iconPath
                title: parent.title
                iconSize: grid.iconSize
                showLabel: grid.showLabels
                selected: index === overlay.selectedIndex
            }
            MouseArea {
                anchors.fill: parent
                onClicked: grid.activate(parent.key)
            }
        }
        Text {
            anchors.centerIn: parent
            visible: results.count === 0
            text: qsTr("No results")
            color: Qt.rgba(1, 1, 1, 0.7)
            font.pixelSize: 20
        }
    }

    // --- open folder -----------------------------------------------------
    FolderPanel {
        id: folderPanel
        host: overlay
    }

    // --- drag proxy ------------------------------------------------------
    AppIcon {
        visible: overlay.dragKey.length > 0 && overlay.dragKind !== "widget"
        width: grid.iconSize * 1.4
        height: grid.iconSize * 1.6
        x: overlay.dragPoint.x - width / 2
        y: overlay.dragPoint.y - grid.iconSize / 2
        iconSize: grid.iconSize * 1.1
        iconPath: overlay.dragIconPath
        title: ""
        showLabel: false
        z: 100
    }
    Rectangle {
        visible: overlay.dragKey.length > 0 && overlay.dragKind === "widget"
        width: grid.iconSize * 2
        height: grid.iconSize * 2
        radius: 24
        x: overlay.dragPoint.x - width / 2
        y: overlay.dragPoint.y - height / 2
        color: Qt.rgba(1, 1, 1, 0.3)
        z: 100
    }

    // --- menus and dialogs -----------------------------------------------
    Menu {
        id: contextMenu
        property string key
        property string kind
        property string name
        property string entryId
        property string folderId
        MenuItem {
            text: qsTr("Open")
            onTriggered: overlay.activateCell(contextMenu.key, contextMenu.kind, contextMenu.entryId)
        }
        MenuItem {
            text: qsTr("Rename…")
            enabled: contextMenu.kind === "app" || contextMenu.kind === "folder"
            onTriggered: renameDialog.ask(contextMenu.key, contextMenu.kind, contextMenu.name, contextMenu.entryId)
        }
        MenuItem {
            text: qsTr("Hide")
            enabled: contextMenu.kind === "app"
            onTriggered: grid.hideApp(contextMenu.key)
        }
        MenuItem {
            text: qsTr("Remove from folder")
            enabled: contextMenu.kind === "app" && contextMenu.folderId.length > 0
            onTriggered: grid.removeFromFolder(contextMenu.folderId, contextMenu.key)
        }
        MenuItem {
            text: qsTr("Dissolve folder")
            enabled: contextMenu.kind === "folder"
            onTriggered: grid.dissolveFolder(contextMenu.entryId)
        }
        MenuItem {
            text: qsTr("Remove widget")
            enabled: contextMenu.kind === "widget"
            onTriggered: grid.removeWidget(contextMenu.entryId)
        }
        MenuSeparator {}
        MenuItem { text: qsTr("Show hidden apps…"); onTriggered: hiddenDialog.open() }
    }
    Dialog {
        id: renameDialog
        property string key
        property string kind
        property string entryId
        function ask(key, kind, title, entryId) {
            renameDialog.key = key; renameDialog.kind = kind; renameDialog.entryId = entryId
            nameField.text = title
            open()
            nameField.selectAll()
            nameField.forceActiveFocus()
        }
        anchors.centerIn: parent
        modal: true
        title: kind === "folder" ? qsTr("Rename folder") : qsTr("Rename app")
        standardButtons: Dialog.Ok | Dialog.Cancel
        TextField {
            id: nameField
            width: 320
            onAccepted: renameDialog.accept()
        }
        onAccepted: {
            if (kind === "folder") grid.renameFolder(entryId, nameField.text)
            else grid.renameApp(key, nameField.text)
            overlay.forceActiveFocus()
        }
        onRejected: overlay.forceActiveFocus()
    }
    Dialog {
        id: hiddenDialog
        anchors.centerIn: parent
        modal: true
        title: qsTr("Hidden apps")
        standardButtons: Dialog.Close
        width: 420
        height: Math.min(overlay.height * 0.7, 120 + hiddenList.count * 48)
        ListView {
            id: hiddenList
            anchors.fill: parent
            clip: true
            model: grid.hiddenApps
            delegate: Item {
                required property string key
                required property string title
                required property string iconPath
                width: hiddenList.width
                height: 48
                Image {
                    id: hiddenIcon
                    width: 32; height: 32
                    anchors.verticalCenter: parent.verticalCenter
                    source: "image://icon/" + encodeURIComponent(parent.iconPath)
                    sourceSize.width: 32
                    sourceSize.height: 32
                    asynchronous: true
                }
                Label {
                    anchors.left: hiddenIcon.right
                    anchors.leftMargin: 12
                    anchors.right: unhideButton.left
                    anchors.verticalCenter: parent.verticalCenter
                    text: parent.title
                    elide: Text.ElideRight
                }
                Button {
                    id: unhideButton
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("Unhide")
                    onClicked: grid.unhideApp(parent.key)
                }
            }
            Label {
                anchors.centerIn: parent
                visible: hiddenList.count === 0
                text: qsTr("No hidden apps")
            }
        }
        onClosed: overlay.forceActiveFocus()
    }

    // --- keyboard --------------------------------------------------------
    function moveSelection(delta) {
        const count = overlay.searching ? results.count : grid.columns * grid.rows
        if (selectedIndex < 0) { selectedIndex = 0; return }
        let next = selectedIndex + delta
        if (!overlay.searching && (next < 0 || next >= count)) {
            const page = pages.currentIndex + (next < 0 ? -1 : 1)
            if (page >= 0 && page < grid.pageCount) {
                grid.currentPage = page
                next = next < 0 ? next + count : next - count
            } else {
                return
            }
        }
        selectedIndex = Math.max(0, Math.min(count - 1, next))
    }
    function activateSelection() {
        if (overlay.searching) {
            grid.activateSearchResult(Math.max(0, selectedIndex))
            return
        }
        if (selectedIndex < 0)
            return
        const key = grid.keyAt(pages.currentIndex, selectedIndex)
        const kind = grid.kindOf(key)
        activateCell(key, kind, grid.entryIdOf(key))
    }

    Keys.onPressed: (event) => {
        if (folderPanel.opened)
            return
        switch (event.key) {
        case Qt.Key_Escape:
            if (overlay.searching) { grid.searchText = ""; selectedIndex = -1 }
            else if (selectedIndex >= 0) selectedIndex = -1
            else grid.hide()
            break
        case Qt.Key_Left: moveSelection(-1); break
        case Qt.Key_Right: moveSelection(1); break
        case Qt.Key_Up: moveSelection(overlay.searching ? -grid.columns : -grid.columns); break
        case Qt.Key_Down: moveSelection(grid.columns); break
        case Qt.Key_PageUp: grid.previousPage(); break
        case Qt.Key_PageDown: grid.nextPage(); break
        case Qt.Key_Home: grid.currentPage = 0; break
        case Qt.Key_End: grid.currentPage = grid.pageCount - 1; break
        case Qt.Key_Return:
        case Qt.Key_Enter: activateSelection(); break
        case Qt.Key_Menu: {
            if (selectedIndex >= 0 && !overlay.searching) {
                const key = grid.keyAt(pages.currentIndex, selectedIndex)
                openContextMenu(key, grid.kindOf(key), grid.titleOf(key), grid.entryIdOf(key), "",
                                Qt.point(overlay.width / 2, overlay.height / 2))
            }
            break
        }
        default:
            if (event.text.length > 0 && event.text.charCodeAt(0) >= 32 && !search.activeFocus) {
                search.forceActiveFocus()
                grid.searchText = grid.searchText + event.text
                selectedIndex = 0
            } else if (event.key === Qt.Key_Backspace && !search.activeFocus && overlay.searching) {
                grid.searchText = grid.searchText.slice(0, -1)
            } else {
                return
            }
        }
        event.accepted = true
    }

    Connections {
        target: grid
        function onShown() {
            overlay.selectedIndex = -1
            folderPanel.close()
            overlay.forceActiveFocus()
        }
    }
}
