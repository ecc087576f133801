pragma ComponentBehavior: Bound

import Tillmora
import QtQuick
import QtQuick.Controls.Basic

// The file-system folders inside an open folder, in a row under its apps:
// a click opens one in the file manager, the context menu takes it out, and
// the last tile adds one with the desktop's folder chooser. A folder gone
// from the disk stays, dimmed, and says so when clicked.
Item {
    id: strip
    required property SystemFoldersPresenter systemFolders
    property real tileSize: 96
    // A tile's menu closed: the keyboard goes back to the folder.
    signal menuClosed()
    implicitHeight: tileSize + 8

    Flickable {
        anchors.fill: parent
        clip: true
        contentWidth: tiles.width
        flickableDirection: Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds

        Row {
            id: tiles
            objectName: "systemFolderTiles"
            spacing: 8
            Repeater {
                model: strip.systemFolders.entries
                delegate: Item {
                    id: tile
                    required property var modelData
                    readonly property string path: modelData.path
                    readonly property bool missing: modelData.missing
                    width: strip.tileSize
                    height: strip.tileSize
                    opacity: tile.missing ? 0.4 : 1
                    Accessible.role: Accessible.Button
                    Accessible.name: tile.missing ? qsTr("%1 (missing)").arg(tile.modelData.title) : tile.modelData.title

                    Image {
                        id: folderImage
                        width: strip.tileSize * 0.55
                        height: width
                        anchors.horizontalCenter: parent.horizontalCenter
                        anchors.top: parent.top
                        anchors.topMargin: 4
                        source: "image://icon/" + encodeURIComponent("theme:" + tile.modelData.iconName)
                        sourceSize.width: width
                        sourceSize.height: height
                        asynchronous: true
                    }
                    Text {
                        visible: tile.missing
                        anchors.right: folderImage.right
                        anchors.bottom: folderImage.bottom
                        text: "?"
                        color: "white"
                        font.bold: true
                        font.pixelSize: folderImage.height * 0.4
                    }
                    Text {
                        anchors.top: folderImage.bottom
                        anchors.topMargin: 4
                        anchors.horizontalCenter: parent.horizontalCenter
                        width: parent.width - 4
                        horizontalAlignment: Text.AlignHCenter
                        elide: Text.ElideMiddle
                        color: "white"
                        font.pixelSize: 13
                        text: tile.modelData.title
                    }
                    MouseArea {
                        anchors.fill: parent
                        acceptedButtons: Qt.LeftButton | Qt.RightButton
                        onClicked: (mouse) => {
                            if (mouse.button === Qt.RightButton)
                                tileMenu.popup()
                            else
                                strip.systemFolders.open(tile.path)
                        }
                    }
                    Menu {
                        id: tileMenu
                        onClosed: strip.menuClosed()
                        MenuItem {
                            text: qsTr("Open")
                            enabled: !tile.missing
                            onTriggered: strip.systemFolders.open(tile.path)
                        }
                        MenuItem {
                            text: qsTr("Remove from folder")
                            onTriggered: strip.systemFolders.remove(tile.path)
                        }
                    }
                }
            }
            Rectangle {
                objectName: "addSystemFolder"
                width: strip.tileSize
                height: strip.tileSize
                radius: 16
                color: addArea.containsMouse ? Qt.rgba(1, 1, 1, 0.16) : Qt.rgba(1, 1, 1, 0.08)
                border.color: Qt.rgba(1, 1, 1, 0.25)
                Accessible.role: Accessible.Button
                Accessible.name: qsTr("Add a folder from the disk")
                Text {
                    anchors.centerIn: parent
                    horizontalAlignment: Text.AlignHCenter
                    color: "white"
                    font.pixelSize: 13
                    text: qsTr("+\nAdd folder…")
                }
                MouseArea {
                    id: addArea
                    anchors.fill: parent
                    hoverEnabled: true
                    onClicked: strip.systemFolders.chooseAndAdd()
                }
            }
        }
    }
}
