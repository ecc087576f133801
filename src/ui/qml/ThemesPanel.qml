pragma ComponentBehavior: Bound

import Tillmora
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

// Ready-made themes from the online catalogue, and the user's own Spaces
// to share as theme packages.
Popup {
    id: panel
    required property ThemesPresenter themes
    readonly property SpacesThemeCatalogViewModel catalog: themes.catalog

    function show() { open(); if (catalog) catalog.load() }

    objectName: "themesPanel"
    // Takes the keyboard, so Esc closes the panel and not the overlay.
    focus: true
    anchors.centerIn: parent
    modal: true
    padding: 24
    width: Math.min(640, parent ? parent.width - 40 : 640)
    height: Math.min(body.implicitHeight + 2 * padding, parent ? parent.height - 40 : 720)
    background: Rectangle {
        radius: 18
        color: Qt.rgba(0.10, 0.11, 0.15, 0.96)
        border.color: Qt.rgba(1, 1, 1, 0.14)
    }

    component Heading: Label { color: Qt.rgba(1, 1, 1, 0.65); font.pixelSize: 13; font.bold: true }
    component Quiet: Label { color: Qt.rgba(1, 1, 1, 0.7); font.pixelSize: 14; wrapMode: Text.Wrap }
    Flickable {
        anchors.fill: parent
        contentHeight: body.implicitHeight
        clip: true
        ColumnLayout {
            id: body
            width: parent.width
            spacing: 12
            Label { text: qsTr("Themes"); color: "white"; font.pixelSize: 20; font.bold: true }

            Heading { text: "Tillmora" }
            Quiet {
                Layout.fillWidth: true
                visible: panel.catalog.isLoading
                text: qsTr("Loading the catalogue…")
            }
            Quiet {
                objectName: "catalogError"
                Layout.fillWidth: true
                visible: panel.catalog.errorMessage.length > 0
                color: "#FF9A8A"
                text: panel.catalog.errorMessage
            }
            Quiet {
                objectName: "catalogEmpty"
                Layout.fillWidth: true
                visible: !panel.catalog.isLoading && panel.catalog.errorMessage.length === 0
                         && panel.catalog.themes.length === 0
                text: panel.catalog.emptyText
            }
            Repeater {
                model: panel.catalog.themes
                Rectangle {
                    id: card
                    required property var modelData
                    readonly property bool downloading: panel.catalog.downloadingID === modelData.id
                    Layout.fillWidth: true
                    implicitHeight: cardRow.implicitHeight + 24
                    radius: 12
                    color: Qt.rgba(1, 1, 1, 0.06)
                    RowLayout {
                        id: cardRow
                        anchors.fill: parent
                        anchors.margins: 12
                        spacing: 14
                        Rectangle {
                            Layout.preferredWidth: 144
                            Layout.preferredHeight: 90
                            Layout.alignment: Qt.AlignTop
                            radius: 8
                            color: Qt.rgba(1, 1, 1, 0.08)
                            clip: true
                            Image {
                                anchors.fill: parent
                                source: card.modelData.screenshotURL
                                fillMode: Image.PreserveAspectCrop
                                asynchronous: true
                            }
                        }
                        ColumnLayout {
                            Layout.fillWidth: true
                            spacing: 4
                            Label { text: card.modelData.name; color: "white"; font.pixelSize: 16; font.bold: true }
                            Quiet { Layout.fillWidth: true; text: card.modelData.description; visible: text.length > 0 }
                            Quiet {
                                Layout.fillWidth: true
                                font.pixelSize: 12
                                text: [Math.max(1, Math.round(card.modelData.fileSize / 1024)) + " KB",
                                       card.modelData.author.length > 0 ? qsTr("by %1").arg(card.modelData.author) : "",
                                       card.modelData.credits].filter(t => t.length > 0).join("  ·  ")
                            }
                            RowLayout {
                                visible: card.downloading
                                spacing: 8
                                ProgressBar {
                                    id: progress
                                    objectName: "installProgress"
                                    Layout.fillWidth: true
                                    from: 0; to: 1
                                    value: panel.catalog.downloadProgress
                                    background: Rectangle {
                                        implicitHeight: 6
                                        radius: 3
                                        color: Qt.rgba(1, 1, 1, 0.12)
                                    }
                                    contentItem: Item {
                                        implicitHeight: 6
                                        Rectangle {
                                            width: progress.visualPosition * parent.width
                                            height: parent.height
                                            radius: 3
                                            color: Qt.rgba(0.36, 0.5, 1, 1)
                                        }
                                    }
                                }
                                Quiet { text: panel.catalog.installingText; font.pixelSize: 12 }
                            }
                            SheetButton {
                                objectName: "installButton"
                                primary: true
                                visible: !card.downloading
                                enabled: panel.catalog.downloadingID.length === 0
                                text: card.modelData.isInstalled ? qsTr("Install Again") : qsTr("Install")
                                onClicked: panel.catalog.install(card.modelData.id)
                            }
                            SheetButton {
                                visible: card.downloading
                                text: qsTr("Cancel")
                                onClicked: panel.catalog.cancel()
                            }
                        }
                    }
                }
            }

            Heading { text: qsTr("My Spaces"); Layout.topMargin: 8 }
            Quiet {
                objectName: "mySpacesEmpty"
                Layout.fillWidth: true
                visible: panel.themes.mySpaces.length === 0
                text: panel.themes.text("settings.spaces.theme.mySpaces.empty")
            }
            Repeater {
                model: panel.themes.mySpaces
                RowLayout {
                    id: spaceRow
                    required property var modelData
                    Layout.fillWidth: true
                    spacing: 12
                    Rectangle {
                        width: 32; height: 32; radius: 16
                        color: spaceRow.modelData.color.length > 0 ? spaceRow.modelData.color : Qt.rgba(1, 1, 1, 0.16)
                        Text { anchors.centerIn: parent; text: spaceRow.modelData.emoji; font.pixelSize: 16 }
                    }
                    Label {
                        Layout.fillWidth: true
                        text: spaceRow.modelData.name
                        color: "white"
                        font.pixelSize: 15
                        elide: Text.ElideRight
                    }
                    SheetButton {
                        objectName: "exportButton"
                        text: qsTr("Export")
                        onClicked: panel.themes.exportSpace(spaceRow.modelData.id)
                    }
                }
            }
            SheetButton {
                Layout.alignment: Qt.AlignRight
                Layout.topMargin: 8
                text: qsTr("Done")
                onClicked: panel.close()
            }
        }
    }
}
