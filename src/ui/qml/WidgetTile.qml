import QtQml
import QtQuick

// A widget drawn across its cells: a clock or a date for now.
Rectangle {
    id: root
    property string widgetKind
    property bool selected: false
    radius: 28
    color: Qt.rgba(1, 1, 1, 0.16)
    border.color: selected ? "white" : Qt.rgba(1, 1, 1, 0.3)
    border.width: selected ? 3 : 1
    Accessible.role: Accessible.StaticText
    Accessible.name: widgetKind === "date" ? qsTr("Date widget") : qsTr("Clock widget")

    property date now: new Date()
    Timer {
        interval: 1000
        running: root.visible
        repeat: true
        triggeredOnStart: true
        onTriggered: root.now = new Date()
    }
    Column {
        anchors.centerIn: parent
        spacing: 4
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            color: "white"
            font.pixelSize: Math.min(root.width, root.height) * (root.widgetKind === "date" ? 0.12 : 0.26)
            font.weight: Font.Light
            text: root.widgetKind === "date" ? Qt.formatDate(root.now, "dddd") : Qt.formatTime(root.now, "hh:mm")
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Qt.rgba(1, 1, 1, 0.8)
            font.pixelSize: Math.min(root.width, root.height) * (root.widgetKind === "date" ? 0.3 : 0.09)
            text: root.widgetKind === "date" ? Qt.formatDate(root.now, "d") : Qt.formatDate(root.now, "ddd d MMMM")
        }
    }
}
