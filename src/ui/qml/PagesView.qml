pragma ComponentBehavior: Bound

import Tillmora
import QtQuick

// The paged main grid. One mouse area over all pages reports the pointer to
// the drag controller, so a gesture survives page turns and never depends on
// a page delegate staying alive.
Item {
    id: view
    required property PagesPresenter pages
    required property DragController drag
    property real gridMargin: 40
    property int selectedIndex: -1
    property color labelColor: "white"
    property bool cellPlates: false

    ListView {
        id: list
        objectName: "pages"
        anchors.fill: parent
        orientation: ListView.Horizontal
        snapMode: ListView.SnapOneItem
        highlightRangeMode: ListView.StrictlyEnforceRange
        highlightMoveDuration: 260
        boundsBehavior: Flickable.StopAtBounds
        // Paging is driven by the presenter (wheel, keys, dots, drags).
        interactive: false
        cacheBuffer: width
        model: view.pages.model
        Component.onCompleted: currentIndex = view.pages.currentPage
        // After the model has settled: while rows are being inserted the
        // view keeps its own current index, so a page just added by a drag
        // would not slide in.
        onCountChanged: settle.restart()
        Timer {
            id: settle
            interval: 0
            onTriggered: list.currentIndex = view.pages.currentPage
        }
        delegate: Item {
            id: pageDelegate
            required property PageCellsModel cells
            required property int pageIndex
            width: list.width
            height: list.height
            GridPage {
                anchors.fill: parent
                anchors.leftMargin: view.gridMargin
                anchors.rightMargin: view.gridMargin
                cells: pageDelegate.cells
                pages: view.pages
                drag: view.drag
                selectedIndex: pageDelegate.pageIndex === view.pages.currentPage ? view.selectedIndex : -1
                labelColor: view.labelColor
                cellPlates: view.cellPlates
            }
        }
    }
    Connections {
        target: view.pages
        function onCurrentPageChanged() { list.currentIndex = view.pages.currentPage }
    }

    // The cells' area in overlay coordinates, for hit testing.
    function updateArea() {
        view.drag.gridArea = view.mapToItem(null, view.gridMargin, 0, Math.max(0, view.width - 2 * view.gridMargin), view.height)
    }
    onWidthChanged: updateArea()
    onHeightChanged: updateArea()
    onXChanged: updateArea()
    onYChanged: updateArea()
    onGridMarginChanged: updateArea()
    Component.onCompleted: updateArea()

    MouseArea {
        objectName: "gridInput"
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        preventStealing: true
        onPressed: (mouse) => view.drag.press(DragController.Grid, mapToItem(null, mouse.x, mouse.y), mouse.button)
        onPositionChanged: (mouse) => view.drag.move(mapToItem(null, mouse.x, mouse.y))
        onReleased: (mouse) => view.drag.release(mapToItem(null, mouse.x, mouse.y))
        onCanceled: view.drag.cancel()
    }
}
