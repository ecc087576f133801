#pragma once

#include "foundation/GridRecords.h"
#include "layout/SlotEdit.h"

#include <QHash>
#include <QSet>
#include <functional>

// Bringing a stored layout in line with the applications a scan found.
namespace AppReconciler {

// Whether the scan proves an app is no longer installed. An app it cannot
// vouch for (its folder missing or unreadable this time) is not gone: what
// the user arranged there is kept until the folder is back.
using IsGone = std::function<bool(const QString &path)>;

// The first layout: one app key per application neither hidden nor in a
// folder, in the order of the scan.
QStringList initialLayout(const QList<AppItem> &apps, const QSet<QString> &hidden,
                          const QSet<QString> &folderMembers);
// Empties the cells of applications that are gone.
qsizetype clearDeletedApps(SlotEdit &edit, const IsGone &isGone);
// Drops members that are gone from folders; a folder left with no app and no
// system folder is deleted, its key cleared from the grid (workflows it held
// go back to the grid). Returns true when any folder changed.
bool removeDeletedAppsFromFolders(QList<FolderItem> &folders, SlotEdit &edit, const IsGone &isGone);
// Apps the arrangement names at a path that is gone while an installed app of
// the same identity stands at a path nothing places yet (not on the grid, in
// no folder, not hidden): an entry copied to the user's folder by a menu
// editor, a bundle reinstalled elsewhere. arranged lists the paths the
// arrangement refers to, in the order they should be matched; identityOf
// tells what a gone path was. Answers old path -> new path; each new path
// is taken once, the first of that identity in scan order.
QHash<QString, QString> movedApps(const QStringList &arranged, const QList<AppItem> &apps, const IsGone &isGone,
                                  const std::function<QString(const QString &)> &identityOf);
// Points every app key of the grid and every member, cell and original slot
// of the folders at the new paths. Returns true when any folder changed.
bool renameApps(SlotEdit &edit, QList<FolderItem> &folders, const QHash<QString, QString> &moves);
// Places every installed application that is neither on the grid, nor in a
// folder, nor hidden, with the insert rule, in the order of the scan.
qsizetype placeNewApps(SlotEdit &edit, const QList<AppItem> &apps, const QList<FolderItem> &folders,
                       const QSet<QString> &hidden);
// Hidden applications are kept off the grid.
qsizetype clearHiddenApps(SlotEdit &edit, const QSet<QString> &hidden);

}
