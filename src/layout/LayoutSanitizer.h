#pragma once

#include "foundation/GridRecords.h"
#include "layout/PageGeometry.h"
#include "layout/SlotEdit.h"
#include "foundation/WidgetItem.h"
#include "organise/WorkflowItem.h"

#include <QSet>

// The load-time repairs of a stored layout. Each pass only empties cells, so
// the list keeps its length and the other keys keep their positions. Every
// pass returns how many cells (or folder entries) it cleared.
namespace LayoutSanitizer {

// Exactly "A:"/"F:", blank payloads, and second occurrences of an app path
// or folder id (the first, in index order, wins).
qsizetype clearMalformedAndDuplicates(SlotEdit &edit);
// App keys of applications that are members of a folder.
qsizetype clearFolderMembers(SlotEdit &edit, const QList<FolderItem> &folders);
// "W:"/"WB:" keys of widgets that have no record.
qsizetype clearOrphanWidgetMarkers(SlotEdit &edit, const QList<WidgetItem> &widgets);
// "WF:" keys of workflows that no longer exist.
qsizetype clearOrphanWorkflowKeys(SlotEdit &edit, const QList<WorkflowItem> &workflows);
// The same inside each folder's own cells.
qsizetype clearOrphanWorkflowKeysInFolders(QList<FolderItem> &folders, const QList<WorkflowItem> &workflows);

// Shared look-ups.
QSet<QString> folderMemberPaths(const QList<FolderItem> &folders);
// Folders and widgets that stand on no cell (a lost or hand-edited slot
// list) cannot be reached from the overlay: each goes back on the grid by
// the insert rule (a widget at the first free rectangle, when it fits a
// page at all). Returns how many were placed.
qsizetype placeUnreachable(SlotEdit &edit, const QList<FolderItem> &folders, const QList<WidgetItem> &widgets,
                           const PageGeometry &geometry);
// Upper-cased id text of a folder, widget or workflow key, as record ids are compared.
QString normalisedId(const QString &key);
template <typename Record>
QSet<QString> idSet(const QList<Record> &records);

}
