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
};
Q_ENUM_NS(Kind)

// Whether something the user can open, drag or select stands there.
inline bool isOccupied(Kind kind) { return kind != Empty && kind != Blocked; }
}
