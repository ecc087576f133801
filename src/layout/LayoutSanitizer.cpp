#include "layout/LayoutSanitizer.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"
#include "layout/SlotEdits.h"
#include "layout/WidgetLayout.h"

namespace LayoutSanitizer {

QString normalisedId(const QString &key)
{
    return SlotKey::idText(key).toUpper();
}

template <typename Record>
QSet<QString> idSet(const QList<Record> &records)
{
    QSet<QString> ids;
    ids.reserve(records.size());
    for (const Record &r : records)
        ids.insert(Uuids::toText(r.id));
    return ids;
}
template QSet<QString> idSet(const QList<FolderItem> &);
template QSet<QString> idSet(const QList<WidgetItem> &);
template QSet<QString> idSet(const QList<WorkflowItem> &);

QSet<QString> folderMemberPaths(const QList<FolderItem> &folders)
{
    QSet<QString> paths;
    for (const FolderItem &f : folders)
        for (const QString &p : f.appPaths)
            paths.insert(p);
    return paths;
}

qsizetype clearMalformedAndDuplicates(SlotEdit &edit)
{
    QSet<QString> seenApps;
    QSet<QString> seenFolders;
    qsizetype cleared = 0;
    for (qsizetype i = 0; i < edit.size(); ++i) {
        const QString key = edit.at(i);
        bool clear = false;
        switch (SlotKey::kindOf(key)) {
        case SlotKey::Kind::App: {
            // A bare path is an app key too: it must not stand beside its "A:" form.
            const QString path = SlotKey::appPath(key);
            clear = path.isEmpty() || seenApps.contains(path);
            seenApps.insert(path);
            break;
        }
        case SlotKey::Kind::Folder: {
            const QString id = normalisedId(key);
            clear = id.isEmpty() || seenFolders.contains(id);
            seenFolders.insert(id);
            break;
        }
        default: break;
        }
        if (clear) {
            edit.clear(i);
            ++cleared;
        }
    }
    if (cleared > 0)
        qCDebug(lcLayout, LogTexts::kSanitizeMalformed, long(cleared));
    return cleared;
}

namespace {
// Empties every cell whose key matches; returns how many.
template <typename Predicate>
qsizetype clearWhere(SlotEdit &edit, Predicate matches)
{
    qsizetype cleared = 0;
    for (qsizetype i = 0; i < edit.size(); ++i) {
        if (matches(edit.at(i))) {
            edit.clear(i);
            ++cleared;
        }
    }
    return cleared;
}
}

qsizetype clearFolderMembers(SlotEdit &edit, const QList<FolderItem> &folders)
{
    const QSet<QString> members = folderMemberPaths(folders);
    const qsizetype cleared = clearWhere(edit, [&](const QString &key) {
        const QString path = SlotKey::appPath(key);
        return !path.isEmpty() && members.contains(path);
    });
    if (cleared > 0)
        qCDebug(lcLayout, LogTexts::kSanitizeFolderMembers, long(cleared));
    return cleared;
}

qsizetype clearOrphanWidgetMarkers(SlotEdit &edit, const QList<WidgetItem> &widgets)
{
    const QSet<QString> ids = idSet(widgets);
    const qsizetype cleared = clearWhere(
        edit, [&](const QString &key) { return SlotKey::isWidgetMarker(key) && !ids.contains(normalisedId(key)); });
    if (cleared > 0)
        qCDebug(lcLayout, LogTexts::kSanitizeWidgets, long(cleared));
    return cleared;
}

static bool isOrphanWorkflowKey(const QString &key, const QSet<QString> &ids)
{
    return SlotKey::kindOf(key) == SlotKey::Kind::Workflow && !ids.contains(normalisedId(key));
}

qsizetype clearOrphanWorkflowKeys(SlotEdit &edit, const QList<WorkflowItem> &workflows)
{
    const QSet<QString> ids = idSet(workflows);
    const qsizetype cleared = clearWhere(edit, [&](const QString &key) { return isOrphanWorkflowKey(key, ids); });
    if (cleared > 0)
        qCDebug(lcLayout, LogTexts::kSanitizeWorkflows, long(cleared));
    return cleared;
}

qsizetype clearOrphanWorkflowKeysInFolders(QList<FolderItem> &folders, const QList<WorkflowItem> &workflows)
{
    const QSet<QString> ids = idSet(workflows);
    qsizetype cleared = 0;
    for (FolderItem &folder : folders) {
        for (QString &key : folder.slots) {
            if (isOrphanWorkflowKey(key, ids)) {
                key.clear();
                ++cleared;
            }
        }
    }
    return cleared;
}

qsizetype placeUnreachable(SlotEdit &edit, const QList<FolderItem> &folders, const QList<WidgetItem> &widgets,
                           const PageGeometry &geometry)
{
    qsizetype placed = 0;
    const QSet<QString> onGrid(edit.slots().cbegin(), edit.slots().cend());
    for (const FolderItem &folder : folders) {
        if (onGrid.contains(folder.key()))
            continue;
        SlotEdits::insertKey(edit, folder.key());
        ++placed;
    }
    for (const WidgetItem &widget : widgets) {
        if (WidgetLayout::findWidgetTopLeftIndex(edit.slots(), widget.id) >= 0
            || !WidgetLayout::fitsAnyPage(widget.size, geometry))
            continue;
        if (WidgetLayout::place(edit, widget, WidgetLayout::firstFreeAnchor(edit.slots(), widget.size, geometry), geometry))
            ++placed;
    }
    if (placed > 0)
        qCDebug(lcLayout, LogTexts::kSanitizeUnreachable, long(placed));
    return placed;
}

}
