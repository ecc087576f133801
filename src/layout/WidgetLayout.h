#pragma once

#include "layout/LayoutRefusal.h"
#include "layout/PageGeometry.h"
#include "layout/SlotEdit.h"
#include "foundation/WidgetItem.h"

#include <optional>

// Widgets on the main grid. A widget of c x r cells anchored at slot a covers
// a + 8*j + i (rows j < r, columns i < c): rows are 8 cells wide whatever the
// configured column count. The anchor holds "W:"+id, the other cells
// "WB:"+id; these markers are the only record of where a widget stands.
//
// A rectangle is well placed when all its cells lie in the anchor's page
// (columns x rows cells) and its rows do not wrap past the 8-wide row, i.e.
// (anchor - pageStart) % 8 + c <= 8.
//
// Candidate order: the valid anchors of the requested slot's page, nearest
// first to the requested cell (row and column distance added, in 8-wide
// coordinates), ties to the lower index; a candidate is refused when its
// rectangle holds another widget's marker. When the whole page is refused the
// search goes on from the first cell of the next page, page after page.
//
// Displacement order: icons that stood in the new rectangle are taken row by
// row and each goes to the first empty cell of the same page (so the
// widget's old cells on that page are reused), else to the first empty cell
// of the whole list, else to the end. No icon is ever dropped.
namespace WidgetLayout {

inline constexpr qsizetype kRowWidth = 8;

QList<qsizetype> rectCells(qsizetype anchor, WidgetSize size);
bool fitsPage(qsizetype anchor, WidgetSize size, const PageGeometry &geometry);
// False when no page of this geometry can hold the size at all.
bool fitsAnyPage(WidgetSize size, const PageGeometry &geometry);

qsizetype findWidgetTopLeftIndex(const QStringList &slots, const QUuid &id);
// Empties every cell marked with the widget's id; returns how many.
qsizetype clearMarkers(SlotEdit &edit, const QUuid &id);
// Whether the widget's markers are exactly one rectangle, and (with
// checkPage) a well-placed one on the pages of this geometry.
bool isWhole(const QStringList &slots, const WidgetItem &widget, const PageGeometry &geometry,
             bool checkPage = true);

// Places (or moves) the widget as near the requested slot as the candidate
// order allows, clears its old markers and re-places displaced icons.
// Returns the anchor, or Full (and changes nothing) when the widget cannot
// fit any page of this geometry.
LayoutResult<qsizetype> place(SlotEdit &edit, const WidgetItem &widget, qsizetype requested,
                              const PageGeometry &geometry);
// The first anchor, page by page, whose whole rectangle is empty: where a
// new widget goes when no slot was asked for.
qsizetype firstFreeAnchor(const QStringList &slots, WidgetSize size, const PageGeometry &geometry);
// Re-lays every widget whose cells are not a whole, well-placed rectangle
// (after a change of columns or rows, or damaged stored data). A widget that
// fits no page of the geometry is taken off the grid; its record stays.
// Without checkPage only damaged rectangles are re-laid: for when the
// grid's real shape is not known yet. Returns the number of widgets re-laid.
qsizetype repair(SlotEdit &edit, const QList<WidgetItem> &widgets, const PageGeometry &geometry,
                 bool checkPage = true);

}
