import Tillmora
import QtQuick
import QtQuick.Controls.Basic

// The search field; its text is the search presenter's.
TextField {
    id: field
    required property SearchPresenter search
    objectName: "searchField"
    height: 40
    placeholderText: qsTr("Search")
    placeholderTextColor: Qt.rgba(1, 1, 1, 0.6)
    color: "white"
    font.pixelSize: 17
    leftPadding: 16
    text: search.text
    onTextEdited: search.text = text
    Accessible.name: qsTr("Search applications")
    background: Rectangle {
        radius: 20
        color: Qt.rgba(1, 1, 1, field.activeFocus ? 0.22 : 0.14)
        border.color: Qt.rgba(1, 1, 1, 0.3)
    }
}
