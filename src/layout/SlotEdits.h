#pragma once

#include "layout/SlotEdit.h"

// The elementary edits of the main slot list. Cells are emptied, never
// removed, so the positions of the other keys stay where the user put them.
namespace SlotEdits {
// First empty cell from index 0 (all pages), else appended; returns the index.
// A caller that knows no cell before knownFull is empty may pass it to skip them.
qsizetype insertKey(SlotEdit &edit, const QString &key, qsizetype knownFull = 0);
// Empties the first cell holding exactly key; returns its index or -1.
qsizetype removeKey(SlotEdit &edit, const QString &key);
// The first empty cell at or after from, or -1.
qsizetype firstEmpty(const SlotEdit &edit, qsizetype from = 0, qsizetype end = -1);
}
