pragma ComponentBehavior: Bound

import Tillmora
import QtQuick
import QtQuick.Controls.Basic

// The apps the user hid, each with a button to bring it back.
Dialog {
    id: dialog
    required property HiddenAppsPresenter hiddenApps
    anchors.centerIn: parent
    modal: true
    title: qsTr("Hidden apps")
    standardButtons: Dialog.Close
    width: 420
    height: Math.min((parent ? parent.height : 600) * 0.7, 160 + hiddenList.count * 48)
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
                elide: Text.ElideRight
            }
            Button {
                id: unhideButton
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Unhide")
                onClicked: dialog.hiddenApps.unhide(row.key)
            }
        }
        Label {
            anchors.centerIn: parent
            visible: hiddenList.count === 0
            text: qsTr("No hidden apps")
        }
    }
}
