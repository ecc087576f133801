#include "layout/WidgetLayout.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "layout/LayoutSanitizer.h"
#include "layout/SlotEdits.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"

#include <QHash>
#include <algorithm>

#define WIDGET_LOG(...) qCDebug(lcLayout, __VA_ARGS__)

namespace WidgetLayout {

namespace {

qsizetype pageStartOf(qsizetype slot, const PageGeometry &g)
{
    return (slot / g.capacity()) * g.capacity();
}

bool isMarkerOf(const QString &key, const QString &idText)
{
    return SlotKey::isWidgetMarker(key) && LayoutSanitizer::normalisedId(key) == idText;
}

// Valid anchors of the page starting at pageStart, nearest to `near` first.
QList<qsizetype> candidates(qsizetype pageStart, qsizetype near, WidgetSize size, const PageGeometry &g)
{
    const qsizetype nearRow = (near - pageStart) / kRowWidth;
    const qsizetype nearColumn = (near - pageStart) % kRowWidth;
    QList<std::pair<qsizetype, qsizetype>> scored; // (distance, anchor)
    for (qsizetype local = 0; local < g.capacity(); ++local) {
        const qsizetype anchor = pageStart + local;
        if (!fitsPage(anchor, size, g))
            continue;
        const qsizetype distance =
            std::abs(local / kRowWidth - nearRow) + std::abs(local % kRowWidth - nearColumn);
        scored.append({distance, anchor});
    }
    std::sort(scored.begin(), scored.end());
    QList<qsizetype> out;
    out.reserve(scored.size());
    for (const auto &s : scored)
        out.append(s.second);
    return out;
}

// A candidate is refused when any cell holds another widget's marker.
bool rectIsFree(const SlotEdit &edit, qsizetype anchor, WidgetSize size, const QString &idText)
{
    bool free = true;
    for (qsizetype cell : rectCells(anchor, size)) {
        const QString key = edit.at(cell);
        if (!SlotKey::isWidgetMarker(key) || LayoutSanitizer::normalisedId(key) == idText)
            continue;
        const bool blocked = SlotKey::kindOf(key) == SlotKey::Kind::WidgetBlock;
        WIDGET_LOG(LogTexts::kWidgetRectBlocked, long(cell),
                   qUtf8Printable(SlotKey::idText(key)), blocked ? "true" : "false");
        free = false;
    }
    return free;
}

std::optional<qsizetype> firstFreeCandidate(const SlotEdit &edit, qsizetype pageStart, qsizetype near,
                                            WidgetSize size, const PageGeometry &g, const QString &idText)
{
    for (qsizetype anchor : candidates(pageStart, near, size, g))
        if (rectIsFree(edit, anchor, size, idText))
            return anchor;
    return std::nullopt;
}

} // namespace

QList<qsizetype> rectCells(qsizetype anchor, WidgetSize size)
{
    QList<qsizetype> cells;
    for (int j = 0; j < WidgetSizes::rows(size); ++j)
        for (int i = 0; i < WidgetSizes::columns(size); ++i)
            cells.append(anchor + kRowWidth * j + i);
    return cells;
}

bool fitsPage(qsizetype anchor, WidgetSize size, const PageGeometry &geometry)
{
    if (anchor < 0)
        return false;
    const qsizetype local = anchor - pageStartOf(anchor, geometry);
    const qsizetype last = local + kRowWidth * (WidgetSizes::rows(size) - 1) + WidgetSizes::columns(size) - 1;
    return local % kRowWidth + WidgetSizes::columns(size) <= kRowWidth && last < geometry.capacity();
}

bool fitsAnyPage(WidgetSize size, const PageGeometry &geometry)
{
    return fitsPage(0, size, geometry);
}

qsizetype findWidgetTopLeftIndex(const QStringList &slots, const QUuid &id)
{
    return slots.indexOf(SlotKey::widgetAnchor(id));
}

qsizetype clearMarkers(SlotEdit &edit, const QUuid &id)
{
    const QString idText = Uuids::toText(id);
    qsizetype cleared = 0;
    for (qsizetype i = 0; i < edit.size(); ++i) {
        if (isMarkerOf(edit.at(i), idText)) {
            edit.clear(i);
            ++cleared;
        }
    }
    return cleared;
}

bool isWhole(const QStringList &slots, const WidgetItem &widget, const PageGeometry &geometry, bool checkPage)
{
    const QString idText = Uuids::toText(widget.id);
    qsizetype anchor = -1;
    QList<qsizetype> blocks;
    for (qsizetype i = 0; i < slots.size(); ++i) {
        const QString &key = slots.at(i);
        if (!isMarkerOf(key, idText))
            continue;
        if (SlotKey::kindOf(key) == SlotKey::Kind::WidgetBlock)
            blocks.append(i);
        else if (anchor >= 0)
            return false; // two anchors
        else
            anchor = i;
    }
    if (anchor < 0 || (checkPage && !fitsPage(anchor, widget.size, geometry)))
        return false;
    QList<qsizetype> expected = rectCells(anchor, widget.size);
    expected.removeFirst();
    return blocks == expected;
}

qsizetype firstFreeAnchor(const QStringList &slots, WidgetSize size, const PageGeometry &geometry)
{
    for (qsizetype pageStart = 0;; pageStart += geometry.capacity()) {
        for (qsizetype local = 0; local < geometry.capacity(); ++local) {
            const qsizetype anchor = pageStart + local;
            if (!fitsPage(anchor, size, geometry))
                continue;
            const QList<qsizetype> cells = rectCells(anchor, size);
            if (std::all_of(cells.begin(), cells.end(),
                            [&](qsizetype c) { return SlotList::at(slots, c).isEmpty(); }))
                return anchor;
        }
        if (pageStart >= slots.size())
            return pageStart; // unreachable for sizes that fit a page: a page past the end is empty
    }
}

LayoutResult<qsizetype> place(SlotEdit &edit, const WidgetItem &widget, qsizetype requested,
                              const PageGeometry &geometry)
{
    const QString idText = Uuids::toText(widget.id);
    if (!fitsAnyPage(widget.size, geometry)) {
        WIDGET_LOG(LogTexts::kWidgetCannotFit, qUtf8Printable(idText),
                   long(WidgetSizes::columns(widget.size)), long(WidgetSizes::rows(widget.size)),
                   long(geometry.columns), long(geometry.rows));
        return LayoutRefusal::Full;
    }
    requested = std::max<qsizetype>(0, requested);
    const qsizetype pageStart = pageStartOf(requested, geometry);
    const QList<qsizetype> onPage = candidates(pageStart, requested, widget.size, geometry);
    WIDGET_LOG(LogTexts::kWidgetCandidate, long(onPage.first()), long(pageStart));

    std::optional<qsizetype> anchor;
    for (qsizetype c : onPage) {
        if (rectIsFree(edit, c, widget.size, idText)) {
            anchor = c;
            break;
        }
    }
    if (!anchor) {
        WIDGET_LOG(LogTexts::kWidgetNextPage);
        for (qsizetype next = pageStart + geometry.capacity(); !anchor; next += geometry.capacity())
            anchor = firstFreeCandidate(edit, next, next, widget.size, geometry, idText);
    }

    const QList<qsizetype> cells = rectCells(*anchor, widget.size);
    edit.padTo(cells.last() + 1);
    clearMarkers(edit, widget.id);
    QStringList displaced;
    for (qsizetype cell : cells)
        if (!edit.isEmptyAt(cell))
            displaced.append(edit.at(cell));
    edit.set(*anchor, SlotKey::widgetAnchor(widget.id));
    for (qsizetype k = 1; k < cells.size(); ++k)
        edit.set(cells.at(k), SlotKey::widgetBlock(widget.id));
    WIDGET_LOG(LogTexts::kWidgetPlaced, long(*anchor));

    WIDGET_LOG(LogTexts::kWidgetDisplaced, long(displaced.size()));
    const qsizetype anchorPage = pageStartOf(*anchor, geometry);
    const qsizetype pageEnd = anchorPage + geometry.capacity();
    edit.padTo(pageEnd);
    for (const QString &key : displaced) {
        qsizetype dest = SlotEdits::firstEmpty(edit, anchorPage, pageEnd);
        if (dest < 0)
            dest = SlotEdits::firstEmpty(edit);
        if (dest < 0)
            dest = edit.size();
        edit.set(dest, key);
    }
    WIDGET_LOG(LogTexts::kWidgetSnapshot, qUtf8Printable(edit.slots().join(QStringLiteral(", "))));
    return *anchor;
}

qsizetype repair(SlotEdit &edit, const QList<WidgetItem> &widgets, const PageGeometry &geometry, bool checkPage)
{
    struct Broken {
        const WidgetItem *widget;
        qsizetype requested;
    };
    QList<Broken> broken;
    for (const WidgetItem &w : widgets) {
        if (isWhole(edit.slots(), w, geometry, checkPage))
            continue;
        const QString idText = Uuids::toText(w.id);
        qsizetype requested = findWidgetTopLeftIndex(edit.slots(), w.id);
        for (qsizetype i = 0; requested < 0 && i < edit.size(); ++i)
            if (isMarkerOf(edit.at(i), idText))
                requested = i;
        if (requested < 0)
            continue; // not on the grid: nothing to re-lay
        broken.append({&w, requested});
    }
    // All broken widgets leave first, so none is placed around another's stale cells.
    for (const Broken &b : broken)
        clearMarkers(edit, b.widget->id);
    for (const Broken &b : broken) {
        WIDGET_LOG(LogTexts::kWidgetRelaying,
                   qUtf8Printable(Uuids::toText(b.widget->id)));
        place(edit, *b.widget, b.requested, geometry);
    }
    return broken.size();
}

}
