import QtQuick
import QtQuick.Controls.Basic

// An open folder over the grid: its editable name and its members on pages
// of the folder's own grid shape. Dragging a member out of the panel puts it
// back on the main grid.
Item {
    id: panel
    property var host
    property bool opened: false
    property int selectedIndex: -1
    anchors.fill: parent
    visible: opened
    z: 50

    function open() { opened = true; selectedIndex = -1; forceActiveFocus() }
    function close() {
        if (!opened)
            return
        opened = false
        grid.closeFolder()
        overlay.forceActiveFocus()
    }
    function contains(point) {
        return point.x >= box.x && point.y >= box.y && point.x < box.x + box.width && point.y < box.y + box.height
    }

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0, 0, 0, 0.5)
        MouseArea { anchors.fill: parent; onClicked: panel.close() }
    }

    Rectangle {
        id: box
        readonly property real cell: Math.min((panel.width * 0.8) / grid.folderColumns, (panel.height * 0.7) / (grid.folderRows + 1))
        width: cell * grid.folderColumns + 48
        height: cell * grid.folderRows + title.height + 72 + (grid.folderPageCount > 1 ? 24 : 0)
        anchors.centerIn: parent
        radius: 36
        color: Qt.rgba(0.14, 0.17, 0.24, 0.97)
        border.color: Qt.rgba(1, 1, 1, 0.25)
        MouseArea { anchors.fill: parent } // clicks inside do not close

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
            text: grid.openFolderName
            Accessible.name: qsTr("Folder name")
            onEditingFinished: if (text.trim().length > 0 && text !== grid.openFolderName) grid.renameFolder(grid.openFolderId, text)
            Keys.onEscapePressed: { text = grid.openFolderName; panel.forceActiveFocus() }
        }

        ListView {
            id: folderPages
            objectName: "folderPages"
            anchors.top: title.bottom
            anchors.topMargin: 16
            anchors.horizontalCenter: parent.horizontalCenter
            width: box.cell * grid.folderColumns
            height: box.cell * grid.folderRows
            clip: true
            orientation: ListView.Horizontal
            snapMode: ListView.SnapOneItem
            highlightRangeMode: ListView.StrictlyEnforceRange
            boundsBehavior: Flickable.StopAtBounds
            interactive: panel.host.dragKey.length === 0
            model: grid.folderPages
            delegate: Item {
                id: folderPage
                required property var cells
                required property int pageIndex
                width: folderPages.width
                height: folderPages.height
                Repeater {
                    model: folderPage.cells
                    delegate: Item {
                        id: member
                        required property int index
                        required property string key
                        required property string kind
                        required property string title
                        required property string iconPath
                        x: (index % grid.folderColumns) * box.cell
                        y: Math.floor(index / grid.folderColumns) * box.cell
                        width: box.cell
                        height: box.cell
                        visible: kind !== "empty"
                        opacity: key === panel.host.dragKey ? 0.25 : 1
                        AppIcon {
                            anchors.fill: parent
                            iconPath: member.iconPath
                            title: member.title
                            iconSize: Math.min(grid.iconSize, box.cell * 0.62)
                            showLabel: grid.showLabels
                            selected: folderPage.pageIndex === folderPages.currentIndex && panel.selectedIndex === member.index
                        }
                        MouseArea {
                            anchors.fill: parent
                            acceptedButtons: Qt.LeftButton | Qt.RightButton
                            property point pressPoint
                            property bool dragging: false
                            onPressed: (mouse) => { pressPoint = Qt.point(mouse.x, mouse.y); dragging = false }
                            onPositionChanged: (mouse) => {
                                const p = mapToItem(panel.host, mouse.x, mouse.y)
                                if (!dragging && Math.abs(mouse.x - pressPoint.x) + Math.abs(mouse.y - pressPoint.y) > 12) {
                                    dragging = true
                                    panel.host.beginFolderDrag(grid.openFolderId, member.key, member.iconPath, member.title, p)
                                }
                                if (dragging)
                                    panel.host.dragPoint = p
                                if (dragging && !panel.contains(panel.mapFromItem(panel.host, p.x, p.y)))
                                    panel.host.moveDrag(p)
                            }
                            onReleased: (mouse) => {
                                if (!dragging)
                                    return
                                dragging = false
                                const p = mapToItem(panel.host, mouse.x, mouse.y)
                                if (panel.opened) {
                                    const q = folderPages.mapFromItem(panel.host, p.x, p.y)
                                    const local = Math.floor(q.y / box.cell) * grid.folderColumns + Math.floor(q.x / box.cell)
                                    if (q.x >= 0 && q.y >= 0 && q.x < folderPages.width && q.y < folderPages.height)
                                        grid.moveInFolder(grid.openFolderId, member.key, folderPages.currentIndex, local)
                                    panel.host.cancelDrag()
                                } else {
                                    panel.host.endDrag(p)
                                }
                            }
                            onClicked: (mouse) => {
                                if (mouse.button === Qt.RightButton)
                                    panel.host.openContextMenu(member.key, member.kind, member.title, "", grid.openFolderId,
                                                                  mapToItem(panel.host, mouse.x, mouse.y))
                                else
                                    grid.activate(member.key)
                            }
                        }
                    }
                }
            }
        }
        PageDots {
            visible: grid.folderPageCount > 1
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 16
            anchors.horizontalCenter: parent.horizontalCenter
            count: grid.folderPageCount
            current: folderPages.currentIndex
            onPicked: (page) => folderPages.currentIndex = page
        }
    }

    Keys.onPressed: (event) => {
        const perPage = grid.folderColumns * grid.folderRows
        switch (event.key) {
        case Qt.Key_Escape: close(); break
        case Qt.Key_Left: selectedIndex = Math.max(0, selectedIndex - 1); break
        case Qt.Key_Right: selectedIndex = Math.min(perPage - 1, selectedIndex + 1); break
        case Qt.Key_Up: selectedIndex = Math.max(0, selectedIndex - grid.folderColumns); break
        case Qt.Key_Down: selectedIndex = Math.min(perPage - 1, Math.max(0, selectedIndex) + grid.folderColumns); break
        case Qt.Key_PageUp: folderPages.decrementCurrentIndex(); break
        case Qt.Key_PageDown: folderPages.incrementCurrentIndex(); break
        case Qt.Key_Return:
        case Qt.Key_Enter:
            if (selectedIndex >= 0)
                grid.activate(grid.folderKeyAt(folderPages.currentIndex, selectedIndex))
            break
        case Qt.Key_F2: title.forceActiveFocus(); title.selectAll(); break
        default: return
        }
        event.accepted = true
    }
}
