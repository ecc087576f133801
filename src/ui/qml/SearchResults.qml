pragma ComponentBehavior: Bound

import Tillmora
import QtQuick

// The apps matching the search, in the grid's shape; Enter opens the selected one.
GridView {
    id: results
    required property SearchPresenter search
    required property PagesPresenter pages
    property int selectedIndex: -1
    objectName: "searchResults"
    cellWidth: width / pages.columns
    cellHeight: height / pages.rows
    model: search.results
    currentIndex: selectedIndex
    interactive: false
    delegate: Item {
        id: result
        required property int index
        required property string key
        required property string title
        required property string iconPath
        width: results.cellWidth
        height: results.cellHeight
        AppIcon {
            anchors.fill: parent
            iconPath: result.iconPath
            title: result.title
            iconSize: results.pages.iconSize
            showLabel: results.pages.showLabels
            selected: result.index === results.selectedIndex
        }
        MouseArea {
            anchors.fill: parent
            onClicked: results.search.activateResult(result.index)
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
