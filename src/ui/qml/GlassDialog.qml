import QtQuick
import QtQuick.Controls.Basic

// The overlay's dialogs: a rounded dark glass sheet, a title in large type
// and rounded buttons; the content supplies its own items.
Dialog {
    id: dialog
    anchors.centerIn: parent
    modal: true
    padding: 22
    topPadding: 8
    palette.windowText: "white"
    palette.text: "white"
    palette.buttonText: "white"
    palette.base: Qt.rgba(1, 1, 1, 0.08)
    palette.highlight: Qt.rgba(0.36, 0.5, 1, 1)
    background: Rectangle {
        radius: 18
        color: Qt.rgba(0.10, 0.11, 0.15, 0.97)
        border.color: Qt.rgba(1, 1, 1, 0.14)
    }
    header: Label {
        text: dialog.title
        visible: text.length > 0
        padding: 22
        bottomPadding: 8
        font.pixelSize: 18
        font.weight: Font.DemiBold
        color: "white"
        elide: Text.ElideRight
    }
    footer: DialogButtonBox {
        visible: count > 0
        alignment: Qt.AlignRight
        padding: 18
        topPadding: 6
        spacing: 10
        background: null
        delegate: SheetButton {
            // 0 is the accept role: the button that confirms is the blue one.
            primary: DialogButtonBox.buttonRole === 0
            minimumHeight: 34
            font.pixelSize: 14
        }
    }
}
