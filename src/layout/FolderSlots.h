#pragma once

#include "foundation/GridRecords.h"

// The paged cell list of one folder.
namespace FolderSlots {

// Moves key to target (negative = 0) inside a folder whose pages hold
// maxSlotsPerPage cells in rows of columnsPerRow. The key's old cell is
// emptied first; an occupant of the target gives way by a shift towards the
// nearest empty cell of its row (left first), or, in a full row, takes the
// key's old cell (or, for a key from outside, the first empty cell of the
// list or the end). Moving a key onto its own cell returns the list as is.
QStringList moveKey(QStringList slots, const QString &key, qsizetype target, int maxSlotsPerPage,
                    int columnsPerRow);

// What an open folder shows: its stored cells, with keys of apps that are not
// members (and second occurrences) emptied, then every member missing from
// them put in the first empty cell, else appended, in membership order, so
// every member ends with a cell. Workflow keys are kept.
QStringList completed(const FolderItem &folder);

}
