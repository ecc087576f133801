#include "layout/GridEntry.h"

#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"

QUuid entryId(const GridEntry &entry)
{
    return std::visit([](const auto &record) { return record.id; }, entry);
}

GridLookup GridLookup::build(const QList<AppItem> &apps, const QList<FolderItem> &folders,
                             const QList<WidgetItem> &widgets, const QList<WorkflowItem> &workflows,
                             const QList<AppItem> &unavailableApps)
{
    GridLookup lookup;
    for (const AppItem &a : apps)
        lookup.appsByPath.insert(a.path, a);
    for (const AppItem &a : unavailableApps)
        lookup.unavailableAppsByPath.insert(a.path, a);
    for (const FolderItem &f : folders)
        lookup.foldersById.insert(Uuids::toText(f.id), f);
    for (const WidgetItem &w : widgets)
        lookup.widgetsById.insert(Uuids::toText(w.id), w);
    for (const WorkflowItem &w : workflows)
        lookup.workflowsById.insert(Uuids::toText(w.id), w);
    return lookup;
}

template <typename Record>
static GridEntryOrEmpty find(const QHash<QString, Record> &table, const QString &key)
{
    const auto it = table.constFind(key);
    if (it == table.cend())
        return std::nullopt;
    return GridEntry(*it);
}

GridEntryOrEmpty GridLookup::resolve(const QString &key) const
{
    switch (SlotKey::kindOf(key)) {
    case SlotKey::Kind::Empty:
    case SlotKey::Kind::WidgetBlock: return std::nullopt;
    case SlotKey::Kind::App: return find(appsByPath, SlotKey::appPath(key));
    case SlotKey::Kind::Folder: return find(foldersById, SlotKey::idText(key).toUpper());
    case SlotKey::Kind::WidgetAnchor: return find(widgetsById, SlotKey::idText(key).toUpper());
    case SlotKey::Kind::Workflow: return find(workflowsById, SlotKey::idText(key).toUpper());
    }
    return std::nullopt;
}
