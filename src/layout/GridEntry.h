#pragma once

#include "foundation/GridRecords.h"
#include "foundation/WidgetItem.h"
#include "organise/WorkflowItem.h"

#include <QHash>
#include <optional>
#include <variant>

// One occupied cell as the views see it; cases in the order app, folder,
// system folder, widget (anchor cells only), workflow.
using GridEntry = std::variant<AppItem, FolderItem, SystemFolderItem, WidgetItem, WorkflowItem>;
// nullopt is the empty case: an empty cell, a cell covered by a widget, or a
// key whose record is unknown.
using GridEntryOrEmpty = std::optional<GridEntry>;

QUuid entryId(const GridEntry &entry);

// What key resolution looks records up in.
struct GridLookup {
    QHash<QString, AppItem> appsByPath;
    // Apps the last scan could not vouch for (LaunchpadViewModel::
    // unavailableApps): their keys resolve to nothing, but views may name them.
    QHash<QString, AppItem> unavailableAppsByPath;
    QHash<QString, FolderItem> foldersById;     // id text
    QHash<QString, WidgetItem> widgetsById;     // id text
    QHash<QString, WorkflowItem> workflowsById; // id text

    static GridLookup build(const QList<AppItem> &apps, const QList<FolderItem> &folders,
                            const QList<WidgetItem> &widgets, const QList<WorkflowItem> &workflows,
                            const QList<AppItem> &unavailableApps = {});
    GridEntryOrEmpty resolve(const QString &key) const;
};
