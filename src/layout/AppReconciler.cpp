#include "layout/AppReconciler.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "layout/FolderEdits.h"
#include "layout/LayoutSanitizer.h"
#include "layout/SlotEdits.h"
#include "foundation/SlotKey.h"

namespace AppReconciler {

QStringList initialLayout(const QList<AppItem> &apps, const QSet<QString> &hidden,
                          const QSet<QString> &folderMembers)
{
    QStringList slots;
    QSet<QString> placed;
    for (const AppItem &a : apps) {
        if (hidden.contains(a.path) || folderMembers.contains(a.path) || placed.contains(a.path))
            continue;
        placed.insert(a.path);
        slots.append(SlotKey::app(a.path));
    }
    return slots;
}

qsizetype clearDeletedApps(SlotEdit &edit, const IsGone &isGone)
{
    qsizetype cleared = 0;
    for (qsizetype i = 0; i < edit.size(); ++i) {
        const QString path = SlotKey::appPath(edit.at(i));
        if (path.isEmpty() || !isGone(path))
            continue;
        qCDebug(lcLayout, LogTexts::kCleanupGridApp, long(i), qUtf8Printable(path));
        edit.clear(i);
        ++cleared;
    }
    return cleared;
}

bool removeDeletedAppsFromFolders(QList<FolderItem> &folders, SlotEdit &edit, const IsGone &isGone)
{
    bool changed = false;
    for (qsizetype f = 0; f < folders.size();) {
        FolderItem &folder = folders[f];
        QStringList gone;
        for (const QString &p : folder.appPaths)
            if (isGone(p))
                gone.append(p);
        if (!gone.isEmpty()) {
            qCDebug(lcLayout, LogTexts::kCleanupFolderApps, long(gone.size()),
                    qUtf8Printable(folder.name));
            for (const QString &p : gone) {
                folder.appPaths.removeAll(p);
                folder.originalGridSlots.remove(p);
                for (QString &cell : folder.slots)
                    if (SlotKey::appPath(cell) == p)
                        cell.clear();
            }
            changed = true;
        }
        if (folder.appPaths.isEmpty() && folder.systemFolderPaths.isEmpty() && !gone.isEmpty()) {
            qCDebug(lcLayout, LogTexts::kCleanupFolderEmpty,
                    qUtf8Printable(folder.name));
            FolderEdits::deleteFolder(edit, folders, f);
            continue;
        }
        ++f;
    }
    return changed;
}

QHash<QString, QString> movedApps(const QStringList &arranged, const QList<AppItem> &apps, const IsGone &isGone,
                                  const std::function<QString(const QString &)> &identityOf)
{
    const QSet<QString> placed(arranged.cbegin(), arranged.cend());
    QHash<QString, QStringList> candidates; // identity -> unplaced paths, in scan order
    for (const AppItem &a : apps)
        if (!a.identity.isEmpty() && !placed.contains(a.path))
            candidates[a.identity].append(a.path);
    QHash<QString, QString> moves;
    if (candidates.isEmpty())
        return moves;
    for (const QString &path : arranged) {
        if (moves.contains(path) || !isGone(path))
            continue;
        const auto found = candidates.find(identityOf(path));
        if (found == candidates.end() || found->isEmpty())
            continue;
        moves.insert(path, found->takeFirst());
    }
    return moves;
}

bool renameApps(SlotEdit &edit, QList<FolderItem> &folders, const QHash<QString, QString> &moves)
{
    if (moves.isEmpty())
        return false;
    for (qsizetype i = 0; i < edit.size(); ++i) {
        const auto to = moves.constFind(SlotKey::appPath(edit.at(i)));
        if (to != moves.cend())
            edit.set(i, SlotKey::app(*to));
    }
    bool changed = false;
    for (FolderItem &folder : folders) {
        for (QString &member : folder.appPaths) {
            if (const auto to = moves.constFind(member); to != moves.cend()) {
                member = *to;
                changed = true;
            }
        }
        for (QString &cell : folder.slots) {
            if (const auto to = moves.constFind(SlotKey::appPath(cell)); to != moves.cend())
                cell = cell.startsWith(QLatin1String("A:")) ? SlotKey::app(*to) : *to; // keeps the cell's form
        }
        for (auto it = moves.cbegin(); it != moves.cend(); ++it)
            if (folder.originalGridSlots.contains(it.key()))
                folder.originalGridSlots.insert(it.value(), folder.originalGridSlots.take(it.key()));
    }
    return changed;
}

qsizetype placeNewApps(SlotEdit &edit, const QList<AppItem> &apps, const QList<FolderItem> &folders,
                       const QSet<QString> &hidden)
{
    QSet<QString> placed = LayoutSanitizer::folderMemberPaths(folders);
    for (const QString &key : edit.slots()) {
        const QString path = SlotKey::appPath(key);
        if (!path.isEmpty())
            placed.insert(path);
    }
    qsizetype inserted = 0;
    qsizetype full = 0; // cells before this one are known to be occupied
    for (const AppItem &a : apps) {
        if (placed.contains(a.path) || hidden.contains(a.path))
            continue;
        placed.insert(a.path);
        full = SlotEdits::insertKey(edit, SlotKey::app(a.path), full) + 1;
        ++inserted;
    }
    return inserted;
}

qsizetype clearHiddenApps(SlotEdit &edit, const QSet<QString> &hidden)
{
    qsizetype cleared = 0;
    for (qsizetype i = 0; i < edit.size(); ++i) {
        const QString path = SlotKey::appPath(edit.at(i));
        if (path.isEmpty() || !hidden.contains(path))
            continue;
        qCDebug(lcLayout, LogTexts::kHiddenOnGrid,
                qUtf8Printable(path), long(i));
        edit.clear(i);
        ++cleared;
    }
    return cleared;
}

}
