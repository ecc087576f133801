pragma ComponentBehavior: Bound

import Tillmora
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

// The settings window: sections on the left, the chosen one on the right,
// in the overlay's dark glass look. Every control writes at once.
Rectangle {
    id: root
    required property SettingsPresenter settings
    readonly property GridPresenter grid: settings.grid
    property int section: 0
    width: 860
    height: 600
    color: "#171a22"
    palette.window: "#171a22"
    palette.windowText: "white"
    palette.text: "white"
    palette.base: "#252a36"
    palette.button: "#2c3140"
    palette.buttonText: "white"
    palette.highlight: "#5b80ff"
    palette.highlightedText: "white"
    palette.mid: "#3a4050"
    palette.light: "#3a4050"
    palette.dark: "#5b80ff"

    // A value of the presenter; callers pass the revision so that their
    // binding reads again whenever any setting changes.
    function v(name, revision) { return settings.value(name) }

    component Heading: Label {
        font.pixelSize: 20
        font.weight: Font.DemiBold
        color: "white"
        Layout.topMargin: 6
        Layout.bottomMargin: 4
    }
    component Note: Label {
        Layout.fillWidth: true
        wrapMode: Text.WordWrap
        color: Qt.rgba(1, 1, 1, 0.6)
        font.pixelSize: 13
    }
    component SettingRow: RowLayout {
        property alias label: rowLabel.text
        Layout.fillWidth: true
        opacity: enabled ? 1 : 0.4 // a setting that does not apply now is dimmed
        spacing: 16
        Label {
            id: rowLabel
            Layout.preferredWidth: 220
            color: "white"
            font.pixelSize: 15
            wrapMode: Text.WordWrap
        }
    }
    component Toggle: Switch {
        id: toggle
        property string name
        checked: root.v(name, root.settings.revision) === true
        // A click sets checked by hand; the stored value takes over again
        // (refused or not), so later changes from elsewhere still show.
        onToggled: {
            root.settings.setValue(name, checked)
            checked = Qt.binding(() => root.v(name, root.settings.revision) === true)
        }
    }
    component Choice: ComboBox {
        id: choice
        property string name
        property var labels: ({})
        Layout.preferredWidth: 220
        model: root.settings.choices(name)
        displayText: labels[currentText] || currentText
        currentIndex: model.indexOf(root.v(name, root.settings.revision))
        delegate: ItemDelegate {
            required property string modelData
            required property int index
            width: choice.width
            text: choice.labels[modelData] || modelData
            highlighted: choice.highlightedIndex === index
        }
        onActivated: (index) => root.settings.setValue(name, model[index])
    }
    component NumberSlider: RowLayout {
        id: number
        property string name
        property real step: 1
        property int decimals: 0
        readonly property var bounds: root.settings.revision >= 0 ? root.settings.range(name) : ({})
        spacing: 12
        Slider {
            id: slider
            Layout.preferredWidth: 260
            from: number.bounds.min
            to: number.bounds.max
            stepSize: number.step
            snapMode: Slider.SnapAlways
            value: root.v(number.name, root.settings.revision)
            onMoved: {
                root.settings.setValue(number.name, value)
                value = Qt.binding(() => root.v(number.name, root.settings.revision))
            }
        }
        Label {
            color: "white"
            font.pixelSize: 14
            text: Number(slider.value).toFixed(number.decimals)
        }
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0
        Rectangle {
            Layout.fillHeight: true
            Layout.preferredWidth: 200
            color: "#12141b"
            ListView {
                id: sections
                objectName: "settingsSections"
                anchors.fill: parent
                anchors.topMargin: 18
                model: [qsTr("General"), qsTr("Appearance"), qsTr("Background"), qsTr("Apps"), qsTr("Folders")]
                currentIndex: root.section
                delegate: ItemDelegate {
                    id: sectionItem
                    required property string modelData
                    required property int index
                    width: sections.width
                    height: 40
                    text: modelData
                    font.pixelSize: 15
                    highlighted: root.section === index
                    onClicked: root.section = index
                    contentItem: Label { text: sectionItem.text; font: sectionItem.font; color: "white"; leftPadding: 10 }
                    background: Rectangle {
                        anchors.fill: parent
                        anchors.margins: 4
                        radius: 8
                        color: sectionItem.highlighted ? Qt.rgba(0.36, 0.5, 1, 0.8) : "transparent"
                    }
                }
            }
        }
        ScrollView {
            Layout.fillWidth: true
            Layout.fillHeight: true
            contentWidth: availableWidth
            StackLayout {
                width: parent.width - 48
                x: 24
                y: 20
                currentIndex: root.section

                ColumnLayout { // General
                    spacing: 14
                    Heading { text: qsTr("General") }
                    SettingRow { label: qsTr("Start Tillmora when I log in"); Toggle { name: "startAtLogin" } }
                    SettingRow { label: qsTr("Show in the taskbar"); Toggle { name: "showInTaskbar" } }
                    SettingRow {
                        label: qsTr("Show and hide with")
                        Toggle { name: "hotKeyEnabled" }
                        Button {
                            id: shortcutField
                            objectName: "shortcutField"
                            property bool recording: false
                            Layout.preferredWidth: 200
                            text: recording ? qsTr("Press the new shortcut…") : root.settings.shortcutText
                            property string hint
                            onClicked: { recording = true; hint = ""; forceActiveFocus() }
                            onActiveFocusChanged: if (!activeFocus) recording = false
                            Keys.onPressed: (event) => {
                                if (!recording)
                                    return
                                event.accepted = true
                                const modifierOnly = [Qt.Key_Shift, Qt.Key_Control, Qt.Key_Alt, Qt.Key_Meta,
                                                      Qt.Key_Super_L, Qt.Key_Super_R, Qt.Key_AltGr].indexOf(event.key) >= 0
                                if (event.key === Qt.Key_Escape && event.modifiers === Qt.NoModifier) {
                                    recording = false
                                    hint = ""
                                } else if (root.settings.recordShortcut(event.key, event.modifiers)) {
                                    recording = false
                                    hint = ""
                                } else if (!modifierOnly) {
                                    hint = event.modifiers === Qt.NoModifier
                                        ? qsTr("Hold Ctrl, Alt, Shift or Super with that key; only F1 to F24 work alone. Esc cancels.")
                                        : qsTr("That key cannot be a shortcut. Try another one; Esc cancels.")
                                }
                            }
                        }
                    }
                    Note {
                        visible: text.length > 0
                        text: shortcutField.hint
                    }
                    Note {
                        visible: root.settings.shortcutTaken
                        color: "#ffb454"
                        text: qsTr("Another program already uses this shortcut, so Tillmora cannot react to it. Choose another one.")
                    }
                    SettingRow {
                        label: qsTr("Hot corner")
                        Choice {
                            name: "hotCorner"
                            labels: ({"none": qsTr("Off"), "top-left": qsTr("Top left"), "top-right": qsTr("Top right"),
                                      "bottom-left": qsTr("Bottom left"), "bottom-right": qsTr("Bottom right")})
                        }
                    }
                    SettingRow { label: qsTr("Pinch on the touchpad"); Toggle { name: "pinchEnabled" } }
                    SettingRow { label: qsTr("Fingers"); enabled: root.v("pinchEnabled", root.settings.revision) === true; NumberSlider { name: "pinchFingers" } }
                    Note { visible: text.length > 0; color: "#ffb454"; text: root.settings.pinchStatus }
                }

                ColumnLayout { // Appearance
                    spacing: 14
                    Heading { text: qsTr("Appearance") }
                    Note { text: qsTr("Icon size, columns, rows and labels are kept for each monitor; these apply to the one the overlay opens on.") }
                    SettingRow { label: qsTr("Icon size"); NumberSlider { name: "iconSize"; step: 4 } }
                    SettingRow { label: qsTr("Columns"); NumberSlider { name: "columns" } }
                    SettingRow { label: qsTr("Rows"); NumberSlider { name: "rows" } }
                    SettingRow { label: qsTr("Names under icons"); Toggle { name: "showLabels" } }
                    SettingRow {
                        label: qsTr("Theme")
                        Choice { name: "theme"; labels: ({"auto": qsTr("Follow the desktop"), "light": qsTr("Light"), "dark": qsTr("Dark")}) }
                    }
                    SettingRow {
                        label: qsTr("Title colour")
                        Choice { name: "titleColorOverride"; labels: ({"auto": qsTr("Automatic"), "light": qsTr("Light"), "dark": qsTr("Dark")}) }
                    }
                    SettingRow { label: qsTr("Glass"); NumberSlider { name: "glassIntensity"; step: 0.05; decimals: 2 } }
                    SettingRow { label: qsTr("Liquid glass"); Toggle { name: "liquidGlassEnabled" } }
                    SettingRow {
                        label: qsTr("Material")
                        Choice { name: "liquidGlassMaterialStyle"; labels: ({"clear": qsTr("Clear"), "tinted": qsTr("Tinted")}) }
                    }
                    SettingRow { label: qsTr("Standard tint"); Toggle { name: "liquidGlassTintStandard" } }
                    SettingRow { label: qsTr("Tint strength"); NumberSlider { name: "liquidGlassTintIntensity"; step: 0.05; decimals: 2 } }
                    SettingRow { label: qsTr("Tint hue"); NumberSlider { name: "liquidGlassTintHue"; step: 0.01; decimals: 2 } }
                    SettingRow { label: qsTr("Blur the background"); Toggle { name: "blurEnabled" } }
                    SettingRow { label: qsTr("Plate behind each icon"); Toggle { name: "cellBackgroundEnabled" } }
                    SettingRow { label: qsTr("Filled background"); Toggle { name: "filledBackgroundEnabled" } }
                }

                ColumnLayout { // Background
                    id: backgroundSection
                    readonly property BackgroundPresenter background: root.grid ? root.grid.background : null
                    spacing: 14
                    Heading { text: qsTr("Background") }
                    Note { text: qsTr("Behind the grid: a picture of your own (each Space keeps its own), the desktop's wallpaper, or a plain colour. It is blurred like frosted glass unless you switch blur off under Appearance.") }
                    component Option: RadioButton {
                        id: option
                        font.pixelSize: 15
                        contentItem: Label {
                            text: option.text
                            font: option.font
                            color: "white"
                            leftPadding: option.indicator.width + 8
                            verticalAlignment: Text.AlignVCenter
                        }
                    }
                    Option {
                        text: qsTr("The desktop's wallpaper")
                        checked: backgroundSection.background && backgroundSection.background.imagePath.length === 0
                                 && backgroundSection.background.style === "desktop"
                        onClicked: backgroundSection.background.useDesktop()
                    }
                    Note {
                        visible: backgroundSection.background && !backgroundSection.background.desktopWallpaperAvailable
                        text: qsTr("Tillmora cannot read this desktop's wallpaper; the plain colour shows instead.")
                    }
                    Option {
                        text: qsTr("A plain colour")
                        checked: backgroundSection.background && backgroundSection.background.imagePath.length === 0
                                 && backgroundSection.background.style === "color"
                        onClicked: backgroundSection.background.useColor(backgroundSection.background.color)
                    }
                    Row {
                        spacing: 10
                        Layout.leftMargin: 32
                        Repeater {
                            model: ["#1f2a3f", "#2d3436", "#3b2a4f", "#1e4d5c", "#4a2f27", "#2f4a2f", "#5a2d4f", "#0f1115"]
                            delegate: Rectangle {
                                required property string modelData
                                width: 30; height: 30; radius: 15
                                color: modelData
                                border.width: backgroundSection.background && Qt.colorEqual(backgroundSection.background.color, modelData) ? 3 : 1
                                border.color: border.width > 1 ? "white" : Qt.rgba(1, 1, 1, 0.3)
                                MouseArea { anchors.fill: parent; onClicked: backgroundSection.background.useColor(parent.color) }
                            }
                        }
                    }
                    Option {
                        text: qsTr("A picture")
                        checked: backgroundSection.background && backgroundSection.background.imagePath.length > 0
                        onClicked: root.settings.chooseWallpaper()
                    }
                    RowLayout {
                        Layout.leftMargin: 32
                        visible: backgroundSection.background && backgroundSection.background.imagePath.length > 0
                        Label { Layout.fillWidth: true; color: Qt.rgba(1, 1, 1, 0.7); font.pixelSize: 13; elide: Text.ElideMiddle
                                text: backgroundSection.background ? backgroundSection.background.imagePath : "" }
                        SheetButton { text: qsTr("Choose another…"); onClicked: root.settings.chooseWallpaper() }
                    }
                    Note { visible: text.length > 0; color: "#ffb454"; text: backgroundSection.background ? backgroundSection.background.notice : "" }
                    SettingRow { label: qsTr("Tint by the time of day"); Toggle { name: "sunBackgroundEnabled" } }
                    SettingRow {
                        label: qsTr("Follow the clock")
                        enabled: root.v("sunBackgroundEnabled", root.settings.revision) === true
                        Toggle { name: "sunBackgroundAutoEnabled" }
                    }
                    SettingRow {
                        label: qsTr("Hour to show")
                        enabled: root.v("sunBackgroundEnabled", root.settings.revision) === true
                                 && root.v("sunBackgroundAutoEnabled", root.settings.revision) !== true
                        NumberSlider { name: "sunBackgroundManualTime"; step: 0.5; decimals: 1 }
                    }
                    Note { visible: text.length > 0; color: "#ffb454"; text: root.settings.wallpaperError }
                }

                ColumnLayout { // Apps
                    spacing: 10
                    Heading { text: qsTr("Hidden apps") }
                    Note {
                        visible: hiddenRepeater.count === 0
                        text: qsTr("No hidden apps. Right-click an app in Tillmora and choose Hide to keep it off the grid.")
                    }
                    Repeater {
                        id: hiddenRepeater
                        model: root.grid ? root.grid.hiddenApps.apps : null
                        delegate: RowLayout {
                            id: hiddenRow
                            required property string key
                            required property string title
                            required property string iconPath
                            Layout.fillWidth: true
                            spacing: 12
                            Image {
                                Layout.preferredWidth: 32
                                Layout.preferredHeight: 32
                                source: "image://icon/" + encodeURIComponent(hiddenRow.iconPath)
                                sourceSize.width: 32
                                sourceSize.height: 32
                                asynchronous: true
                            }
                            Label { Layout.fillWidth: true; text: hiddenRow.title; color: "white"; font.pixelSize: 15; elide: Text.ElideRight }
                            SheetButton { text: qsTr("Unhide"); onClicked: root.grid.hiddenApps.unhide(hiddenRow.key) }
                        }
                    }
                    Heading { text: qsTr("More places with applications") }
                    Note { text: qsTr("Tillmora lists the applications your desktop knows. Add a folder to list the programs and desktop entries in it too.") }
                    Repeater {
                        model: root.settings.extraAppFolders
                        delegate: RowLayout {
                            id: folderRow
                            required property string modelData
                            Layout.fillWidth: true
                            Label { Layout.fillWidth: true; text: folderRow.modelData; color: "white"; font.pixelSize: 14; elide: Text.ElideMiddle }
                            SheetButton { text: qsTr("Remove"); onClicked: root.settings.removeExtraAppFolder(folderRow.modelData) }
                        }
                    }
                    SheetButton { text: qsTr("Add a folder…"); onClicked: root.settings.addExtraAppFolder() }
                    Heading { text: qsTr("Names and icons") }
                    Note { text: qsTr("Right-click an app in Tillmora to rename it or give it an icon of your own. The apps you changed are listed here.") }
                    Repeater {
                        model: root.settings.customizedApps
                        delegate: RowLayout {
                            id: customRow
                            required property var modelData
                            Layout.fillWidth: true
                            spacing: 12
                            Image {
                                Layout.preferredWidth: 32
                                Layout.preferredHeight: 32
                                source: "image://icon/" + encodeURIComponent(customRow.modelData.iconPath)
                                sourceSize.width: 32
                                sourceSize.height: 32
                                asynchronous: true
                            }
                            Label { Layout.fillWidth: true; text: customRow.modelData.title; color: "white"; font.pixelSize: 15; elide: Text.ElideRight }
                            SheetButton {
                                visible: customRow.modelData.renamed
                                text: qsTr("Own name")
                                onClicked: { root.grid.renameApp(customRow.modelData.key, ""); root.settings.reload() }
                            }
                            SheetButton {
                                visible: customRow.modelData.customIcon
                                text: qsTr("Own icon")
                                onClicked: { root.grid.resetIcon(customRow.modelData.key); root.settings.reload() }
                            }
                        }
                    }
                }

                ColumnLayout { // Folders
                    spacing: 14
                    Heading { text: qsTr("Folders") }
                    SettingRow { label: qsTr("Open folder grid (rows × columns)"); Choice { name: "folderAppsGrid" } }
                    Heading { text: qsTr("Folder colours") }
                    Note {
                        text: root.settings.folderTints.length === 0
                              ? qsTr("No folders yet. Hold an app over another on the grid to make one.")
                              : qsTr("The plate of each folder on the grid: the usual glass or a colour.")
                    }
                    Repeater {
                        model: root.settings.folderTints
                        delegate: RowLayout {
                            id: folderTintRow
                            required property var modelData
                            spacing: 10
                            Label { Layout.preferredWidth: 200; text: folderTintRow.modelData.name; color: "white"; font.pixelSize: 15; elide: Text.ElideRight }
                            Repeater {
                                model: ["", "#d94f4f", "#e8912d", "#d9c23f", "#4fae5a", "#3f9fd9", "#6a5fd9", "#b04fb0", "#7a7f8c"]
                                delegate: Rectangle {
                                    required property string modelData
                                    width: 26; height: 26; radius: 13
                                    color: modelData.length > 0 ? modelData : Qt.rgba(1, 1, 1, 0.22)
                                    border.width: folderTintRow.modelData.tint === modelData ? 3 : 1
                                    border.color: border.width > 1 ? "white" : Qt.rgba(1, 1, 1, 0.3)
                                    Accessible.role: Accessible.Button
                                    Accessible.name: modelData.length > 0 ? modelData : qsTr("The usual glass")
                                    MouseArea {
                                        anchors.fill: parent
                                        onClicked: root.settings.setFolderTint(folderTintRow.modelData.id, parent.modelData)
                                    }
                                }
                            }
                        }
                    }
                }
            }
        }
    }
}
