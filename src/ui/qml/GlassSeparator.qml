import QtQuick
import QtQuick.Controls.Basic

MenuSeparator {
    topPadding: 4
    bottomPadding: 4
    contentItem: Rectangle { implicitHeight: 1; color: Qt.rgba(1, 1, 1, 0.14) }
}
