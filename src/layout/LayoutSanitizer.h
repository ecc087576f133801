#pragma once

#include "foundation/GridRecords.h"
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
// Upper-cased id text of a folder, widget or workflow key, as record ids are compared.
QString normalisedId(const QString &key);
template <typename Record>
QSet<QString> idSet(const QList<Record> &records);

}
