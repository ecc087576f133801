pragma ComponentBehavior: Bound

import Tillmora
import QtQuick
import QtQuick.Controls.Basic

// An open folder over the grid: its editable name, its members on pages
// of the folder's own grid shape, and the folders of the disk it holds.
// While a member is dragged out of it, the panel fades away but keeps the
// pointer until the drop.
FocusScope {
    id: panel
    required property FolderPresenter folder
    required property DragController drag
    required property PagesPresenter pages
    required property ActivationPresenter activation
    required property SystemFoldersPresenter systemFolders
    property int selectedIndex: -1
    // What lies behind the box, drawn into it softened: frosted glass.
    property Item frostBackdrop
    property Item frostGrid
    // Typed text that should search the whole grid instead.
    signal typed(string text)
    signal contextMenuRequested(string key, point position)

    visible: folder.isOpen
    opacity: drag.outsideFolder ? 0 : 1
    Behavior on opacity { NumberAnimation { duration: 120 } }

    function focusTitle() { title.forceActiveFocus(); title.selectAll() }

    Connections {
        target: panel.folder
        function onOpenChanged() { panel.selectedIndex = -1 }
        function onCurrentPageChanged() { folderPages.currentIndex = panel.folder.currentPage }
        function onNameChanged() { if (!title.activeFocus) title.text = panel.folder.name }
    }

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0, 0, 0, 0.5)
    }

    // Every press inside or outside the box goes to the drag controller.
    MouseArea {
        objectName: "folderInput"
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        preventStealing: true
        onPressed: (mouse) => panel.drag.press(DragController.Folder, mapToItem(null, mouse.x, mouse.y), mouse.button)
        onPositionChanged: (mouse) => panel.drag.move(mapToItem(null, mouse.x, mouse.y))
        onReleased: (mouse) => panel.drag.release(mapToItem(null, mouse.x, mouse.y))
        onCanceled: panel.drag.cancel()
    }

    Rectangle {
        id: box
        objectName: "folderBox"
        readonly property real cell: Math.min((panel.width * 0.8) / panel.folder.columns,
                                              (panel.height * 0.7) / (panel.folder.rows + 1))
        width: cell * panel.folder.columns + 48
        height: cell * panel.folder.shownRows + title.height + 72 + (panel.folder.pageCount > 1 ? 24 : 0)
                + (systemStrip.visible ? systemStrip.height + 16 : 0)
        anchors.centerIn: parent
        radius: 36
        color: "transparent"
        clip: true
        // The strip of folders of the disk changes the box's height, and
        // with it where the cells are on screen.
        onHeightChanged: folderPages.updateArea()
        border.color: Qt.rgba(1, 1, 1, 0.25)

        // Drawn small and stretched back: a cheap blur of the wallpaper and
        // the icons under the box, then a tint so the members read clearly.
        // Inset just enough that its square corners stay inside the rounding.
        component Frost: ShaderEffectSource {
            id: frost
            anchors.fill: parent
            anchors.margins: box.radius * 0.3
            live: true
            smooth: true
            textureSize.width: Math.max(1, Math.round(width / 28))
            textureSize.height: Math.max(1, Math.round(height / 28))
            sourceRect: sourceItem ? frost.mapToItem(sourceItem, 0, 0, frost.width, frost.height) : Qt.rect(0, 0, 0, 0)
            visible: sourceItem !== null
        }
        Rectangle { anchors.fill: parent; radius: box.radius; color: Qt.rgba(0.14, 0.17, 0.24, 1) }
        Frost { sourceItem: panel.frostBackdrop }
        Frost { sourceItem: panel.frostGrid }
        Rectangle {
            anchors.fill: parent
            radius: box.radius
            color: Qt.rgba(0.12, 0.14, 0.2, 0.78)
            border.color: Qt.rgba(1, 1, 1, 0.25)
        }

        TextInput {
            id: title
            objectName: "folderTitle"
            anchors.top: parent.top
            anchors.topMargin: 20
            anchors.horizontalCenter: parent.horizontalCenter
            width: parent.width - 48
            horizontalAlignment: TextInput.AlignHCenter
            color: "white"
            font.pixelSize: 26
            selectByMouse: true
            text: panel.folder.name
            Accessible.name: qsTr("Folder name")
            // A cleared name is refused; the stored one shows again.
            onEditingFinished: {
                panel.folder.rename(text)
                text = panel.folder.name
                panel.forceActiveFocus()
            }
            Keys.onEscapePressed: { text = panel.folder.name; panel.forceActiveFocus() }
        }

        // Adds a folder of the disk with the desktop's chooser.
        Rectangle {
            objectName: "folderAddSystemFolder"
            visible: panel.systemFolders.available
            anchors.right: parent.right
            anchors.rightMargin: 24
            anchors.verticalCenter: title.verticalCenter
            width: 32
            height: 32
            radius: 16
            color: addFolderArea.containsMouse ? Qt.rgba(1, 1, 1, 0.2) : Qt.rgba(1, 1, 1, 0.08)
            Accessible.role: Accessible.Button
            Accessible.name: qsTr("Add a folder from the disk")
            Text {
                anchors.centerIn: parent
                text: "+"
                color: "white"
                font.pixelSize: 20
            }
            MouseArea {
                id: addFolderArea
                anchors.fill: parent
                hoverEnabled: true
                onClicked: panel.systemFolders.chooseAndAdd()
            }
            ToolTip.visible: addFolderArea.containsMouse
            ToolTip.text: qsTr("Add a folder from the disk")
        }

        ListView {
            id: folderPages
            objectName: "folderPages"
            anchors.top: title.bottom
            anchors.topMargin: 16
            anchors.horizontalCenter: parent.horizontalCenter
            width: box.cell * panel.folder.columns
            height: box.cell * panel.folder.shownRows
            clip: true
            orientation: ListView.Horizontal
            snapMode: ListView.SnapOneItem
            highlightRangeMode: ListView.StrictlyEnforceRange
            boundsBehavior: Flickable.StopAtBounds
            interactive: false
            model: panel.folder.pages
            onCountChanged: currentIndex = panel.folder.currentPage

            function updateArea() {
                panel.drag.folderArea = folderPages.mapToItem(null, 0, 0, folderPages.width, folderPages.height)
                panel.drag.folderBox = box.mapToItem(null, 0, 0, box.width, box.height)
            }
            onWidthChanged: updateArea()
            onHeightChanged: updateArea()
            onYChanged: updateArea()
            Component.onCompleted: updateArea()

            delegate: Item {
                id: folderPage
                required property PageCellsModel cells
                required property int pageIndex
                width: folderPages.width
                height: folderPages.height
                Repeater {
                    model: folderPage.cells
                    delegate: Item {
                        id: member
                        required property int index
                        required property string key
                        required property int kind
                        required property string title
                        required property string iconPath
                        required property string emoji
                        required property string tint
                        required property string image
                        x: (index % panel.folder.columns) * box.cell
                        y: Math.floor(index / panel.folder.columns) * box.cell
                        width: box.cell
                        height: box.cell
                        visible: kind !== CellKind.Empty
                        opacity: key === panel.drag.key ? 0.25 : 1
                        AppIcon {
                            anchors.fill: parent
                            visible: member.kind !== CellKind.Workflow
                            iconPath: member.iconPath
                            title: member.title
                            dimmed: member.kind === CellKind.Unavailable
                            iconSize: Math.min(panel.pages.iconSize, box.cell * 0.62)
                            showLabel: panel.pages.showLabels
                            selected: folderPage.pageIndex === panel.folder.currentPage && panel.selectedIndex === member.index
                        }
                        WorkflowIcon {
                            anchors.fill: parent
                            visible: member.kind === CellKind.Workflow
                            emoji: member.emoji
                            tint: member.tint
                            image: member.image
                            title: member.title
                            iconSize: Math.min(panel.pages.iconSize, box.cell * 0.62)
                            showLabel: panel.pages.showLabels
                            selected: folderPage.pageIndex === panel.folder.currentPage && panel.selectedIndex === member.index
                        }
                    }
                }
            }
        }
        SystemFolderStrip {
            id: systemStrip
            // Only in folders that hold some: the others keep their shape.
            visible: panel.systemFolders.available && panel.systemFolders.entries.length > 0
            anchors.top: folderPages.bottom
            anchors.topMargin: 16
            anchors.horizontalCenter: parent.horizontalCenter
            width: folderPages.width
            height: implicitHeight
            tileSize: Math.min(110, box.cell * 0.8)
            systemFolders: panel.systemFolders
            onMenuClosed: panel.forceActiveFocus()
        }
        PageDots {
            visible: panel.folder.pageCount > 1
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 16
            anchors.horizontalCenter: parent.horizontalCenter
            count: panel.folder.pageCount
            current: panel.folder.currentPage
            onPicked: (page) => panel.folder.currentPage = page
        }
    }
    onWidthChanged: folderPages.updateArea()
    onHeightChanged: folderPages.updateArea()
    onVisibleChanged: if (visible) folderPages.updateArea()

    Keys.onPressed: (event) => {
        const perPage = panel.folder.columns * panel.folder.rows
        const columns = panel.folder.columns
        switch (event.key) {
        case Qt.Key_Escape: panel.folder.close(); break
        case Qt.Key_Left: selectedIndex = Math.max(0, selectedIndex - 1); break
        case Qt.Key_Right: selectedIndex = Math.min(perPage - 1, selectedIndex + 1); break
        case Qt.Key_Up: selectedIndex = Math.max(0, selectedIndex - columns); break
        case Qt.Key_Down: selectedIndex = Math.min(columns * panel.folder.shownRows - 1, Math.max(0, selectedIndex) + columns); break
        case Qt.Key_PageUp: panel.folder.currentPage = panel.folder.currentPage - 1; break
        case Qt.Key_PageDown: panel.folder.currentPage = panel.folder.currentPage + 1; break
        case Qt.Key_Return:
        case Qt.Key_Enter:
            if (selectedIndex >= 0)
                panel.activation.activate(panel.folder.memberAt(panel.folder.currentPage, selectedIndex))
            break
        case Qt.Key_F2: focusTitle(); break
        case Qt.Key_Menu: {
            const key = panel.folder.memberAt(panel.folder.currentPage, Math.max(0, selectedIndex))
            if (key.length > 0) {
                const c = folderPages.mapToItem(null, (Math.max(0, selectedIndex) % columns + 0.5) * box.cell,
                                                (Math.floor(Math.max(0, selectedIndex) / columns) + 0.5) * box.cell)
                panel.contextMenuRequested(key, c)
            }
            break
        }
        default:
            if (event.text.length > 0 && event.text.charCodeAt(0) > 32) {
                panel.typed(event.text)
                break
            }
            return
        }
        event.accepted = true
    }
}
