pragma ComponentBehavior: Bound

import QtQuick

// A folder: a glass plate with its first members' icons in a 3 x 3 grid.
Item {
    id: root
    property var previewPaths: []
    property string title
    property real iconSize: 96
    property bool showLabel: true
    property color labelColor: "white"
    property bool selected: false
    property bool highlighted: false
    property string tint // the user's plate colour; empty for the usual glass
    readonly property color tintColor: tint.length > 0 ? tint : "transparent"

    Accessible.role: Accessible.Button
    Accessible.name: qsTr("Folder %1").arg(title)

    Rectangle {
        id: plate
        width: root.iconSize
        height: root.iconSize
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: parent.top
        anchors.topMargin: Math.max(0, (parent.height - root.iconSize - (label.visible ? label.height + 8 : 0)) / 2)
        radius: root.iconSize * 0.22
        color: root.tint.length > 0 ? Qt.rgba(root.tintColor.r, root.tintColor.g, root.tintColor.b, root.highlighted ? 0.85 : 0.6)
                                    : root.highlighted ? Qt.rgba(1, 1, 1, 0.45) : Qt.rgba(1, 1, 1, 0.22)
        border.color: root.selected ? "white" : Qt.rgba(1, 1, 1, 0.35)
        border.width: root.selected ? 3 : 1
        scale: root.highlighted ? 1.12 : 1
        Behavior on scale { NumberAnimation { duration: 120 } }

        // Three rows of three from the top left, each icon over a quarter of
        // the plate so the apps inside can be told apart.
        Grid {
            anchors.left: parent.left
            anchors.top: parent.top
            anchors.margins: root.iconSize * 0.07
            columns: 3
            spacing: root.iconSize * 0.035
            Repeater {
                model: root.previewPaths
                Image {
                    required property string modelData
                    width: root.iconSize * 0.263
                    height: width
                    source: "image://icon/" + encodeURIComponent(modelData)
                    sourceSize.width: width
                    sourceSize.height: height
                    asynchronous: true
                    smooth: true
                }
            }
        }
    }
    Text {
        id: label
        visible: root.showLabel
        anchors.top: plate.bottom
        anchors.topMargin: 8
        anchors.horizontalCenter: parent.horizontalCenter
        width: parent.width - 8
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideRight
        text: root.title
        color: root.labelColor
        font.pixelSize: Math.max(11, Math.round(root.iconSize * 0.14))
        style: Text.Raised
        styleColor: root.labelColor.hslLightness > 0.5 ? Qt.rgba(0, 0, 0, 0.45) : Qt.rgba(1, 1, 1, 0.35)
    }
}
