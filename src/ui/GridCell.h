#pragma once

#include "layout/GridEntry.h"
#include "layout/PageGeometry.h"
#include "ui/CellKind.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

// What one cell of a page shows, derived from its slot key. Equality decides
// which cells of a page need redrawing after a change.
struct GridCell {
    using Kind = CellKind::Kind;

    Kind kind = Kind::Empty;
    QString key;
    QString title;
    QString iconPath;        // what the icon provider resolves: an app path, or empty
    QStringList previewPaths; // folders: the first members' app paths
    QString entryId;         // folder, widget or workflow id
    QString widgetKind;
    int spanColumns = 1;     // widgets: how many cells the anchor covers
    int spanRows = 1;
    QString emoji;           // workflows
    QString tint;            // workflows and folders: plate colour, "#RRGGBB" or empty
    QString image;           // workflows: the image file drawn instead of the emoji

    bool operator==(const GridCell &) const = default;
};

// Turns slot keys into cells. displayName gives the name to show for an app
// (custom names applied).
struct GridCellBuilder {
    const GridLookup *lookup = nullptr;
    std::function<QString(const AppItem &)> displayName;
    // What the icon provider loads for an app: its own icon, or the image the
    // user chose for it.
    std::function<QString(const QString &appPath)> iconSource;

    QString iconFor(const QString &appPath) const { return iconSource ? iconSource(appPath) : appPath; }
    // A folder's plate colour chosen by the user; empty for the usual glass.
    std::function<QString(const QString &folderId)> folderTint;

    GridCell cellFor(const QString &key) const;
    QList<GridCell> page(const QStringList &slots, const PageGeometry &geometry, int page) const;
};
