#pragma once

#include "layout/LayoutRefusal.h"
#include "layout/SlotEdit.h"

#include <optional>

// Moving one key of the main grid to another cell by drag and drop.
namespace SlotMove {

// Rows and pages in which a move finds room are counted 8 cells wide,
// whatever the configured column count.
inline constexpr qsizetype kRowWidth = 8;

enum class Outcome {
    Unchanged, // dropped on its own cell: nothing written, nothing to save
    Moved,     // the list changed and should be saved
};

struct Span {
    qsizetype start;
    qsizetype end; // excluded
};
// The 8-wide row holding slot, clamped to length.
Span rowOf(qsizetype slot, qsizetype length);
// The page holding slot: max(1, rows) rows of 8 cells.
Span pageOf(qsizetype slot, int rows);

// Moves key to toIndex (negative = 0). The occupant of the target gives way:
// the target's row shifts towards its nearest empty cell (left first), else
// the occupant goes to an empty cell of the page (after the target first),
// else the two swap. A key not on the grid is placed and the occupant
// relocated on the page or to the next page's first cell.
//
// Two guards keep widgets whole, which the drop handling alone cannot: a
// widget cell is a wall that a row shift does not cross, and a drop on a
// widget cell is refused (WidgetArea), as is a widget key (WidgetKey:
// widgets move with moveWidget) and the empty key. When a row shift carries the dragged key itself,
// the carried copy is cleared so that the key never stands twice.
// A caller that already looked the key up passes its first index (or -1) as
// knownFrom, sparing a second walk over the list.
LayoutResult<Outcome> moveKeyInSlots(SlotEdit &edit, const QString &key, qsizetype toIndex, int rows,
                       std::optional<qsizetype> knownFrom = std::nullopt);

}
