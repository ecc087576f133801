#pragma once

#include "foundation/GridRecords.h"
#include "layout/LayoutRefusal.h"
#include "layout/SlotEdit.h"

#include <QSet>
#include <optional>

// Edits that change folders and the main grid together. An application is a
// member of at most one folder and never stands on the grid while it is one;
// one that leaves a folder goes back to the grid (unless it is hidden), to
// the cell it had before it went in when that cell is empty, else to the
// first empty cell.
namespace FolderEdits {

// Makes a folder of the given members, recording where each app stood, and
// places its key at preferredSlot when that cell is empty, else with the
// insert rule. Members taken from other folders leave them. Nothing is made
// without any member (NoMembers).
LayoutResult<FolderItem> createFolder(SlotEdit &edit, QList<FolderItem> &folders, const QString &name,
                                       const QStringList &appPaths, const QStringList &systemFolderPaths,
                                       std::optional<qsizetype> preferredSlot);

// Replaces the folder of the same id. Apps that joined leave the grid and
// any other folder; apps that left go back to the grid. A folder left with
// no app and no system folder is deleted, its cell freed before its apps
// go back so that one whose cell the folder took gets it back. UnknownFolder
// for an unknown id.
LayoutResult<void> updateFolder(SlotEdit &edit, QList<FolderItem> &folders, FolderItem updated, const QSet<QString> &hidden);

// Deletes the folder; its apps and workflows go back to the grid.
LayoutResult<void> dissolveFolder(SlotEdit &edit, QList<FolderItem> &folders, const QUuid &id, const QSet<QString> &hidden);

// An app's way back to the grid: its original cell when empty, else insert.
qsizetype returnToGrid(SlotEdit &edit, const QString &key, std::optional<qint64> originalSlot);

qsizetype indexOfFolder(const QList<FolderItem> &folders, const QUuid &id);
// Removes folders[index] and its key from the grid; workflows it held go
// back to the grid (its apps are the caller's business).
void deleteFolder(SlotEdit &edit, QList<FolderItem> &folders, qsizetype index);
// Empties every cell holding the folder's key.
void clearFolderKey(SlotEdit &edit, const FolderItem &folder);

}
