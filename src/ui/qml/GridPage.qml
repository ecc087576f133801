import QtQuick

// One page of cells laid out columns x rows. Cells report presses, drags and
// clicks to the overlay; where a drop lands is decided by the model.
Item {
    id: page
    property var cells
    property int pageIndex: 0
    property int columns: 8
    property int rows: 5
    property real iconSize: 96
    property bool showLabels: true
    property int selectedIndex: -1
    property string highlightKey: ""
    property string draggedKey: ""
    property var host

    readonly property real cellWidth: width / columns
    readonly property real cellHeight: height / rows

    function localIndexAt(x, y) {
        if (x < 0 || y < 0 || x >= width || y >= height)
            return -1
        return Math.floor(y / cellHeight) * columns + Math.floor(x / cellWidth)
    }

    function nearCellCenter(x, y) {
        const dx = Math.abs((x % cellWidth) - cellWidth / 2)
        const dy = Math.abs((y % cellHeight) - cellHeight / 2)
        return dx < cellWidth * 0.28 && dy < cellHeight * 0.28
    }

    Repeater {
        model: page.cells
        delegate: Item {
            id: cell
            required property int index
            required property string key
            required property string kind
            required property string title
            required property string iconPath
            required property var previewPaths
            required property string entryId
            required property string widgetKind
            required property int spanColumns
            required property int spanRows
            required property string emoji
            required property string tint

            x: (index % page.columns) * page.cellWidth
            y: Math.floor(index / page.columns) * page.cellHeight
            width: page.cellWidth * (kind === "widget" ? spanColumns : 1)
            height: page.cellHeight * (kind === "widget" ? spanRows : 1)
            // Always visible: while a drag is previewed this cell may show
            // another key or none, and its mouse area must keep the grab.
            readonly property bool occupied: kind !== "empty" && kind !== "blocked"
            opacity: key === page.draggedKey ? 0.25 : 1
            Behavior on x { enabled: page.draggedKey.length > 0; NumberAnimation { duration: 160; easing.type: Easing.OutCubic } }
            Behavior on y { enabled: page.draggedKey.length > 0; NumberAnimation { duration: 160; easing.type: Easing.OutCubic } }

            Loader {
                anchors.fill: parent
                anchors.margins: cell.kind === "widget" ? 12 : 0
                sourceComponent: cell.kind === "app" ? appComponent
                               : cell.kind === "folder" ? folderComponent
                               : cell.kind === "widget" ? widgetComponent
                               : cell.kind === "workflow" ? workflowComponent : null
            }
            Component {
                id: appComponent
                AppIcon {
                    iconPath: cell.iconPath
                    title: cell.title
                    iconSize: page.iconSize
                    showLabel: page.showLabels
                    selected: page.selectedIndex === cell.index || page.highlightKey === cell.key
                }
            }
            Component {
                id: folderComponent
                FolderIcon {
                    previewPaths: cell.previewPaths
                    title: cell.title
                    iconSize: page.iconSize
                    showLabel: page.showLabels
                    selected: page.selectedIndex === cell.index
                    highlighted: page.highlightKey === cell.key
                }
            }
            Component {
                id: widgetComponent
                WidgetTile {
                    widgetKind: cell.widgetKind
                    selected: page.selectedIndex === cell.index
                }
            }
            Component {
                id: workflowComponent
                WorkflowIcon {
                    emoji: cell.emoji
                    tint: cell.tint
                    title: cell.title
                    iconSize: page.iconSize
                    showLabel: page.showLabels
                    selected: page.selectedIndex === cell.index
                }
            }

            MouseArea {
                anchors.fill: parent
                acceptedButtons: Qt.LeftButton | Qt.RightButton
                property point pressPoint
                property bool dragging: false
                onPressed: (mouse) => {
                    pressPoint = Qt.point(mouse.x, mouse.y)
                    dragging = false
                }
                onPositionChanged: (mouse) => {
                    if (!(mouse.buttons & Qt.LeftButton))
                        return
                    const p = mapToItem(page.host, mouse.x, mouse.y)
                    if (!dragging && cell.occupied && Math.abs(mouse.x - pressPoint.x) + Math.abs(mouse.y - pressPoint.y) > 12) {
                        dragging = true
                        page.host.beginDrag(cell.key, cell.kind, cell.iconPath, cell.title, cell.entryId,
                                               page.pageIndex, cell.index, p)
                    }
                    if (dragging)
                        page.host.moveDrag(p)
                }
                onReleased: (mouse) => {
                    if (dragging) {
                        dragging = false
                        page.host.endDrag(mapToItem(page.host, mouse.x, mouse.y))
                    }
                }
                onCanceled: {
                    if (dragging) {
                        dragging = false
                        page.host.cancelDrag()
                    }
                }
                onClicked: (mouse) => {
                    if (dragging || !cell.occupied)
                        return
                    if (mouse.button === Qt.RightButton)
                        page.host.openContextMenu(cell.key, cell.kind, cell.title, cell.entryId, "",
                                                     mapToItem(page.host, mouse.x, mouse.y))
                    else
                        page.host.activateCell(cell.key, cell.kind, cell.entryId)
                }
            }
        }
    }
}
