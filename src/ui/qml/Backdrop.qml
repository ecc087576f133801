import Tillmora
import QtQuick

// Behind the grid: the frosted screen grab when there is one, over a
// gradient of the glass colour.
Item {
    id: backdrop
    required property GridPresenter presenter

    Rectangle {
        anchors.fill: parent
        gradient: Gradient {
            GradientStop { position: 0; color: "#2b3a55" }
            GradientStop { position: 1; color: "#151b2b" }
        }
    }
    Image {
        anchors.fill: parent
        visible: backdrop.presenter.hasBackdrop
        source: backdrop.presenter.hasBackdrop ? "image://backdrop/" + backdrop.presenter.backdropRevision : ""
        opacity: 0.8 // a little of the glass colour shows through
        cache: false
        smooth: true
        fillMode: Image.Stretch
    }
    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.06, 0.08, 0.14, backdrop.presenter.hasBackdrop ? 0.45 : 0.2)
    }
}
