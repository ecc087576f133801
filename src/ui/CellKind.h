#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

// What a grid cell holds, as the views see it. One enum for C++ and QML, so
// no kind crosses the boundary as a string.
namespace CellKind {
Q_NAMESPACE
QML_ELEMENT

enum Kind {
    Empty,
    Blocked, // covered by a widget, not its anchor
    App,
    Folder,
    Widget,
    Workflow,
    // An app the last scan could not find but cannot call uninstalled (its
    // folder missing or unreadable this time): drawn dimmed under its last
    // name, movable, not opened.
    Unavailable,
};
Q_ENUM_NS(Kind)

// Whether something the user can open, drag or select stands there.
inline bool isOccupied(Kind kind) { return kind != Empty && kind != Blocked; }
}
