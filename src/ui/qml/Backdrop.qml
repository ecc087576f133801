import Tillmora
import QtQuick

// Behind the grid: the prepared wallpaper (the Space's image or the
// desktop's, blurred unless the user turned blur off) over its plain colour,
// and a glass tint that follows the light or dark look.
Item {
    id: backdrop
    required property BackdropPresenter model

    Rectangle {
        anchors.fill: parent
        color: backdrop.model.color
    }
    Image {
        anchors.fill: parent
        visible: backdrop.model.hasImage
        source: backdrop.model.hasImage ? "image://backdrop/" + backdrop.model.revision : ""
        asynchronous: false // already decoded: this only uploads it
        cache: false
        smooth: true
        fillMode: Image.Stretch
    }
    Rectangle {
        anchors.fill: parent
        readonly property real strength: 0.25 + 0.35 * backdrop.model.glassIntensity
        color: backdrop.model.dark ? Qt.rgba(0.06, 0.08, 0.14, strength)
                                   : Qt.rgba(0.93, 0.95, 0.98, strength * 0.6)
    }
}
