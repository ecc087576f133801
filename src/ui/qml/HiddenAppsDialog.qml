pragma ComponentBehavior: Bound

import Tillmora
import QtQuick
import QtQuick.Controls.Basic

// The apps the user hid, each with a button to bring it back.
GlassDialog {
    id: dialog
    required property HiddenAppsPresenter hiddenApps
    title: qsTr("Hidden apps")
    standardButtons: Dialog.Close
    width: 420
    height: Math.min((parent ? parent.height : 600) * 0.7, 170 + Math.max(2, hiddenList.count) * 48)
    ListView {
        id: hiddenList
        anchors.fill: parent
        clip: true
        model: dialog.hiddenApps.apps
        delegate: Item {
            id: row
            required property string key
            required property string title
            required property string iconPath
            width: hiddenList.width
            height: 48
            Image {
                id: hiddenIcon
                width: 32
                height: 32
                anchors.verticalCenter: parent.verticalCenter
                source: "image://icon/" + encodeURIComponent(row.iconPath)
                sourceSize.width: 32
                sourceSize.height: 32
                asynchronous: true
            }
            Label {
                anchors.left: hiddenIcon.right
                anchors.leftMargin: 12
                anchors.right: unhideButton.left
                anchors.verticalCenter: parent.verticalCenter
                text: row.title
                color: "white"
                font.pixelSize: 15
                elide: Text.ElideRight
            }
            SheetButton {
                id: unhideButton
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Unhide")
                onClicked: dialog.hiddenApps.unhide(row.key)
            }
        }
        Label {
            anchors.fill: parent
            visible: hiddenList.count === 0
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            wrapMode: Text.WordWrap
            color: Qt.rgba(1, 1, 1, 0.7)
            font.pixelSize: 15
            text: qsTr("No hidden apps. Right-click an app and choose Hide to keep it off the grid; it comes back here.")
        }
    }
}
