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
        visible: backdrop.model.hasImage && !backdrop.model.filled
        source: backdrop.model.hasImage ? "image://backdrop/" + backdrop.model.revision : ""
        asynchronous: false // already decoded: this only uploads it
        cache: false
        smooth: true
        fillMode: Image.Stretch
    }
    Rectangle {
        anchors.fill: parent
        color: backdrop.model.glassTint
    }
}
