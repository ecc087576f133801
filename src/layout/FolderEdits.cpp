#include "layout/FolderEdits.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "layout/FolderSlots.h"
#include "layout/LayoutSanitizer.h"
#include "layout/SlotEdits.h"
#include "foundation/SlotKey.h"

#define FOLDER_LOG(...) qCDebug(lcLayout, __VA_ARGS__)

namespace FolderEdits {

namespace {

bool hasMembers(const FolderItem &f)
{
    return !f.appPaths.isEmpty() || !f.systemFolderPaths.isEmpty();
}

// Grid cell of each app path among paths.
QHash<QString, qsizetype> gridCells(const SlotEdit &edit, const QSet<QString> &paths)
{
    QHash<QString, qsizetype> cells;
    for (qsizetype i = 0; i < edit.size(); ++i) {
        const QString path = SlotKey::appPath(edit.at(i));
        if (!path.isEmpty() && paths.contains(path) && !cells.contains(path))
            cells.insert(path, i);
    }
    return cells;
}

// Takes the apps off the grid for a folder, remembering their cells there.
void takeOffGrid(SlotEdit &edit, FolderItem &folder, const QStringList &paths)
{
    const QHash<QString, qsizetype> cells = gridCells(edit, QSet<QString>(paths.cbegin(), paths.cend()));
    FOLDER_LOG(LogTexts::kFolderTakingApps, long(cells.size()));
    for (const QString &path : paths) {
        const auto it = cells.constFind(path);
        if (it == cells.cend())
            continue;
        folder.originalGridSlots.insert(path, *it);
        edit.clear(*it);
        FOLDER_LOG(LogTexts::kFolderAppTaken, qUtf8Printable(path),
                   long(*it));
    }
}

// Workflow keys a folder held go back to the grid when it is deleted.
void returnWorkflows(SlotEdit &edit, const FolderItem &folder)
{
    for (const QString &key : folder.slots)
        if (SlotKey::kindOf(key) == SlotKey::Kind::Workflow && edit.indexOf(key) < 0)
            SlotEdits::insertKey(edit, key);
}

void returnApps(SlotEdit &edit, const FolderItem &folder, const QStringList &paths, const QSet<QString> &hidden)
{
    for (const QString &path : paths) {
        if (hidden.contains(path))
            continue;
        const auto it = folder.originalGridSlots.constFind(path);
        returnToGrid(edit, SlotKey::app(path),
                     it == folder.originalGridSlots.cend() ? std::nullopt : std::optional<qint64>(*it));
    }
}

// Membership is exclusive: the paths leave every folder but keepId's.
void takeFromOtherFolders(SlotEdit &edit, QList<FolderItem> &folders, const QStringList &paths, const QUuid &keepId)
{
    for (qsizetype f = 0; f < folders.size();) {
        FolderItem &other = folders[f];
        bool changed = false;
        if (other.id != keepId) {
            for (const QString &p : paths) {
                if (other.appPaths.removeAll(p) > 0) {
                    other.originalGridSlots.remove(p);
                    changed = true;
                }
            }
        }
        if (changed) {
            other.slots = FolderSlots::completed(other);
            if (!hasMembers(other)) {
                deleteFolder(edit, folders, f);
                continue;
            }
        }
        ++f;
    }
}

QStringList uniquePaths(const QStringList &paths)
{
    QStringList out;
    for (const QString &p : paths)
        if (!p.isEmpty() && !out.contains(p))
            out.append(p);
    return out;
}

} // namespace

void clearFolderKey(SlotEdit &edit, const FolderItem &folder)
{
    const QString id = folder.key().mid(SlotKey::kFolderPrefix.size());
    for (qsizetype i = 0; i < edit.size(); ++i) {
        const QString key = edit.at(i);
        if (SlotKey::kindOf(key) == SlotKey::Kind::Folder && LayoutSanitizer::normalisedId(key) == id)
            edit.clear(i);
    }
}

void deleteFolder(SlotEdit &edit, QList<FolderItem> &folders, qsizetype index)
{
    const FolderItem folder = folders.takeAt(index);
    clearFolderKey(edit, folder);
    returnWorkflows(edit, folder);
}

qsizetype indexOfFolder(const QList<FolderItem> &folders, const QUuid &id)
{
    for (qsizetype i = 0; i < folders.size(); ++i)
        if (folders.at(i).id == id)
            return i;
    return -1;
}

qsizetype returnToGrid(SlotEdit &edit, const QString &key, std::optional<qint64> originalSlot)
{
    if (edit.indexOf(key) >= 0)
        return edit.indexOf(key);
    if (originalSlot && *originalSlot >= 0 && edit.isEmptyAt(*originalSlot)) {
        edit.set(*originalSlot, key);
        FOLDER_LOG(LogTexts::kFolderAppReturned, qUtf8Printable(key),
                   long(*originalSlot));
        return *originalSlot;
    }
    return SlotEdits::insertKey(edit, key);
}

LayoutResult<FolderItem> createFolder(SlotEdit &edit, QList<FolderItem> &folders, const QString &name,
                                      const QStringList &appPaths, const QStringList &systemFolderPaths,
                                      std::optional<qsizetype> preferredSlot)
{
    FolderItem folder;
    folder.id = QUuid::createUuid();
    folder.name = name;
    folder.appPaths = uniquePaths(appPaths);
    folder.systemFolderPaths = uniquePaths(systemFolderPaths);
    FOLDER_LOG(LogTexts::kFolderCreating, qUtf8Printable(name),
               long(folder.appPaths.size()), long(folder.systemFolderPaths.size()));
    if (!hasMembers(folder)) {
        FOLDER_LOG(LogTexts::kFolderNoMembers, qUtf8Printable(name));
        return LayoutRefusal::NoMembers;
    }
    folder.slots = folder.appPaths;

    takeOffGrid(edit, folder, folder.appPaths);
    takeFromOtherFolders(edit, folders, folder.appPaths, folder.id);
    folders.append(folder);
    LayoutSanitizer::clearFolderMembers(edit, folders);

    const QString key = folder.key();
    if (preferredSlot && *preferredSlot >= 0 && *preferredSlot < edit.size() && edit.isEmptyAt(*preferredSlot)) {
        edit.set(*preferredSlot, key);
        FOLDER_LOG(LogTexts::kFolderPlaced, qUtf8Printable(name),
                   long(*preferredSlot));
    } else {
        const qsizetype before = edit.size();
        const qsizetype index = SlotEdits::insertKey(edit, key);
        if (index < before)
            FOLDER_LOG(LogTexts::kFolderPlaced, qUtf8Printable(name), long(index));
        else
            FOLDER_LOG(LogTexts::kFolderAppended,
                       qUtf8Printable(name));
    }
    return folder;
}

LayoutResult<void> updateFolder(SlotEdit &edit, QList<FolderItem> &folders, FolderItem updated,
                                const QSet<QString> &hidden)
{
    const qsizetype index = indexOfFolder(folders, updated.id);
    if (index < 0) {
        FOLDER_LOG(LogTexts::kFolderNotFound, qUtf8Printable(updated.key()));
        return LayoutRefusal::UnknownFolder;
    }
    const FolderItem old = folders.at(index);
    updated.appPaths = uniquePaths(updated.appPaths);
    updated.systemFolderPaths = uniquePaths(updated.systemFolderPaths);
    QStringList joined, left;
    for (const QString &p : updated.appPaths)
        if (!old.appPaths.contains(p))
            joined.append(p);
    for (const QString &p : old.appPaths)
        if (!updated.appPaths.contains(p))
            left.append(p);

    for (const QString &p : left)
        updated.originalGridSlots.remove(p);
    takeOffGrid(edit, updated, joined);
    updated.slots = FolderSlots::completed(updated);
    folders[index] = updated;
    if (!hasMembers(updated)) {
        qCDebug(lcLayout, LogTexts::kFolderEmptyInUpdate);
        // Freed first: the last app out may have had the cell the folder took.
        clearFolderKey(edit, updated);
        folders.removeAt(index);
        returnApps(edit, old, left, hidden);
        returnWorkflows(edit, updated);
        return {};
    }
    returnApps(edit, old, left, hidden);
    takeFromOtherFolders(edit, folders, joined, updated.id);
    return {};
}

LayoutResult<void> dissolveFolder(SlotEdit &edit, QList<FolderItem> &folders, const QUuid &id,
                                  const QSet<QString> &hidden)
{
    const qsizetype index = indexOfFolder(folders, id);
    if (index < 0)
        return LayoutRefusal::UnknownFolder;
    const FolderItem folder = folders.at(index);
    FOLDER_LOG(LogTexts::kFolderDissolving, qUtf8Printable(folder.name),
               long(folder.appPaths.size()));
    clearFolderKey(edit, folder);
    folders.removeAt(index);
    // In the order the folder showed them.
    QStringList order;
    for (const QString &key : FolderSlots::completed(folder)) {
        const QString path = SlotKey::appPath(key);
        if (!path.isEmpty())
            order.append(path);
    }
    returnApps(edit, folder, order, hidden);
    returnWorkflows(edit, folder);
    return {};
}

}
