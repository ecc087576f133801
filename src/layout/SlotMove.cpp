#include "layout/SlotMove.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "layout/SlotEdits.h"
#include "foundation/SlotKey.h"

#define DRAG_LOG(...) qCDebug(lcLayout, __VA_ARGS__)

namespace SlotMove {

namespace {

// Nearest empty cell walking from `from` by `step` while inside [lo, hi];
// a widget cell ends the walk, as a shift must not move widget markers.
qsizetype nearestEmpty(const SlotEdit &edit, qsizetype from, qsizetype step, qsizetype lo, qsizetype hi)
{
    for (qsizetype i = from; i >= lo && i <= hi; i += step) {
        const QString key = edit.at(i);
        if (key.isEmpty())
            return i;
        if (SlotKey::isWidgetMarker(key))
            return -1;
    }
    return -1;
}

Outcome placeKeyNotOnGrid(SlotEdit &edit, const QString &key, qsizetype target, int rows)
{
    DRAG_LOG(LogTexts::kDragNotOnGrid, qUtf8Printable(key),
             long(target));
    const QString displaced = edit.at(target);
    edit.set(target, key);
    if (displaced.isEmpty()) {
        DRAG_LOG(LogTexts::kDragPlacedOnEmpty, long(target));
        return Outcome::Moved;
    }
    DRAG_LOG(LogTexts::kDragTargetOccupied, long(target),
             qUtf8Printable(displaced));
    const Span page = pageOf(target, rows);
    edit.padTo(page.end);
    const qsizetype empty = SlotEdits::firstEmpty(edit, target + 1, page.end);
    if (empty >= 0) {
        edit.set(empty, displaced);
        DRAG_LOG(LogTexts::kDragDisplacedMoved, qUtf8Printable(displaced), long(empty));
        return Outcome::Moved;
    }
    // The next page's first cell, unless something already stands there: an
    // occupied cell is never overwritten, the next empty cell after it is taken.
    edit.padTo(page.end + 1);
    qsizetype dest = SlotEdits::firstEmpty(edit, page.end);
    if (dest < 0)
        dest = edit.size();
    edit.set(dest, displaced);
    DRAG_LOG(LogTexts::kDragDisplacedToNextPage, qUtf8Printable(displaced),
             long(dest));
    return Outcome::Moved;
}

void shift(SlotEdit &edit, qsizetype empty, qsizetype target)
{
    const qsizetype step = empty < target ? 1 : -1;
    for (qsizetype i = empty; i != target; i += step) {
        const QString moved = edit.at(i + step);
        edit.set(i, moved);
        DRAG_LOG(LogTexts::kDragShifted, qUtf8Printable(moved), long(i + step),
                 long(i));
    }
}

bool tryRowShift(SlotEdit &edit, const QString &key, qsizetype from, qsizetype target)
{
    const Span row = rowOf(target, edit.size());
    const qsizetype left = nearestEmpty(edit, target - 1, -1, row.start, target - 1);
    const qsizetype right =
        left < 0 && target < row.end - 1 ? nearestEmpty(edit, target + 1, 1, target + 1, row.end - 1) : -1;
    if (left < 0 && right < 0)
        return false;

    DRAG_LOG(LogTexts::kDragRowHasRoom);
    const qsizetype empty = left >= 0 ? left : right;
    if (left >= 0) {
        DRAG_LOG(LogTexts::kDragWillShiftLeft, long(empty));
        DRAG_LOG(LogTexts::kDragShiftingLeft);
    } else {
        DRAG_LOG(LogTexts::kDragWillShiftRight, long(empty));
        DRAG_LOG(LogTexts::kDragShiftingRight);
    }
    shift(edit, empty, target);
    edit.set(target, key);
    DRAG_LOG(LogTexts::kDragPlaced, qUtf8Printable(key), long(target));
    if (edit.at(from) == key) {
        edit.clear(from);
        return true;
    }
    DRAG_LOG(LogTexts::kDragSkippedClearAfterShift,
             long(from), qUtf8Printable(key));
    // The shift ran over the dragged key's own cell and carried it one step.
    const bool carried = left >= 0 ? (from > empty && from < target) : (from > target && from < empty);
    const qsizetype copy = left >= 0 ? from - 1 : from + 1;
    if (carried && edit.at(copy) == key) {
        edit.clear(copy);
        DRAG_LOG(LogTexts::kDragClearedCarriedCopy, qUtf8Printable(key), long(copy));
    }
    return true;
}

bool tryPageRelocation(SlotEdit &edit, const QString &key, const QString &occupant, qsizetype from,
                       qsizetype target, int rows)
{
    DRAG_LOG(LogTexts::kDragRowFull);
    const Span page = pageOf(target, rows);
    edit.padTo(page.end);
    qsizetype empty = SlotEdits::firstEmpty(edit, target + 1, page.end);
    for (qsizetype i = target - 1; empty < 0 && i >= page.start; --i)
        if (edit.isEmptyAt(i))
            empty = i;
    if (empty < 0)
        return false;
    DRAG_LOG(LogTexts::kDragFoundOnPage, long(empty));
    edit.set(empty, occupant);
    edit.set(target, key);
    if (edit.at(from) == key)
        edit.clear(from);
    else
        DRAG_LOG(LogTexts::kDragSkippedClearRelocation,
                 long(from), qUtf8Printable(key));
    DRAG_LOG(LogTexts::kDragRelocated, qUtf8Printable(key), long(target),
             qUtf8Printable(occupant), long(empty));
    return true;
}

} // namespace

Span rowOf(qsizetype slot, qsizetype length)
{
    const qsizetype start = slot & ~(kRowWidth - 1);
    return {start, std::min(start + kRowWidth, length)};
}

Span pageOf(qsizetype slot, int rows)
{
    const qsizetype capacity = qsizetype(std::max(1, rows)) * kRowWidth;
    const qsizetype start = (slot / capacity) * capacity;
    return {start, start + capacity};
}

LayoutResult<Outcome> moveKeyInSlots(SlotEdit &edit, const QString &key, qsizetype toIndex, int rows,
                       std::optional<qsizetype> knownFrom)
{
    if (key.isEmpty())
        return LayoutRefusal::EmptyKey;
    const qsizetype target = std::max<qsizetype>(0, toIndex);
    if (SlotKey::isWidgetMarker(key)) {
        DRAG_LOG(LogTexts::kDragWidgetKey, qUtf8Printable(key));
        return LayoutRefusal::WidgetKey;
    }
    if (SlotKey::isWidgetMarker(edit.at(target))) {
        DRAG_LOG(LogTexts::kDragWidgetTarget, long(target),
                 qUtf8Printable(key));
        return LayoutRefusal::WidgetArea;
    }

    edit.padTo(target + 1);
    const qsizetype from = knownFrom ? *knownFrom : edit.indexOf(key);
    if (from < 0)
        return placeKeyNotOnGrid(edit, key, target, rows);

    if (from == target) {
        DRAG_LOG(LogTexts::kDragSameSlot, qUtf8Printable(key), long(target));
        return Outcome::Unchanged;
    }
    DRAG_LOG(LogTexts::kDragMoving, qUtf8Printable(key), long(from), long(target));

    const QString occupant = edit.at(target);
    if (occupant == key) {
        edit.clear(from);
        DRAG_LOG(LogTexts::kDragDuplicate,
                 long(target), long(from), qUtf8Printable(key));
        return Outcome::Moved;
    }
    if (SlotKey::isEmptyOrMalformed(occupant)) {
        edit.set(target, key);
        if (edit.at(from) == key)
            edit.clear(from);
        else
            DRAG_LOG(LogTexts::kDragSkippedClear, long(from),
                     qUtf8Printable(key));
        DRAG_LOG(LogTexts::kDragSimpleMove,
                 qUtf8Printable(key), long(from), long(target));
        return Outcome::Moved;
    }

    DRAG_LOG(LogTexts::kDragAttemptShift, long(target),
             qUtf8Printable(occupant));
    if (tryRowShift(edit, key, from, target))
        return Outcome::Moved;
    if (tryPageRelocation(edit, key, occupant, from, target, rows))
        return Outcome::Moved;

    DRAG_LOG(LogTexts::kDragPageFull);
    edit.set(from, occupant);
    edit.set(target, key);
    DRAG_LOG(LogTexts::kDragSwapped, qUtf8Printable(key), long(target),
             qUtf8Printable(occupant), long(from));
    return Outcome::Moved;
}

}
