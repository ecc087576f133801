pragma ComponentBehavior: Bound

import Tillmora
import QtQuick

// One page of cells laid out columns x rows. It only draws: pointer input
// for the whole grid is taken by PagesView and decided by the drag controller.
Item {
    id: page
    required property PageCellsModel cells
    required property PagesPresenter pages
    required property DragController drag
    property int selectedIndex: -1
    property color labelColor: "white"
    property bool cellPlates: false

    readonly property real cellWidth: width / pages.columns
    readonly property real cellHeight: height / pages.rows

    Repeater {
        model: page.cells
        delegate: GridCellView {
            cellWidth: page.cellWidth
            cellHeight: page.cellHeight
            columns: page.pages.columns
            iconSize: page.pages.iconSize
            showLabels: page.pages.showLabels
            draggedKey: page.drag.gridKey
            mergeTarget: page.drag.mergeTarget
            selected: page.selectedIndex === index
            labelColor: page.labelColor
            cellPlates: page.cellPlates
            animated: page.drag.active
        }
    }
}
