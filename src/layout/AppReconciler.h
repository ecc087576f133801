#pragma once

#include "foundation/GridRecords.h"
#include "layout/SlotEdit.h"

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
// Places every installed application that is neither on the grid, nor in a
// folder, nor hidden, with the insert rule, in the order of the scan.
qsizetype placeNewApps(SlotEdit &edit, const QList<AppItem> &apps, const QList<FolderItem> &folders,
                       const QSet<QString> &hidden);
// Hidden applications are kept off the grid.
qsizetype clearHiddenApps(SlotEdit &edit, const QSet<QString> &hidden);

}
