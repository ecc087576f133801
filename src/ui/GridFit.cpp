#include "ui/GridFit.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr qreal kAbsoluteMin = 32;
constexpr qreal kAbsoluteMax = 256;
// The smallest icon a screen allows is this share of the largest that fits.
constexpr qreal kMinShare = 0.75;
}

namespace GridFit {

qreal gridHeight(const QSizeF &screen)
{
    // Search field top margin, its height and the gap under it; the page dots below.
    const qreal top = std::max<qreal>(24, screen.height() * 0.04) + 36 + 24;
    return std::max<qreal>(0, screen.height() - top - 70);
}

qreal gridWidth(const QSizeF &screen)
{
    return std::max<qreal>(0, screen.width() - 2 * std::max<qreal>(40, screen.width() * 0.06));
}

qreal largestIconForCell(qreal cellHeight, qreal cellWidth)
{
    // A cell holds 6 px above and below, the icon, an 8 px gap and a label
    // line 1.35 of its font, whose size is 14% of the icon (11 px at least).
    const qreal byHeightSmallFont = cellHeight - 12 - 8 - 1.35 * 11;
    const qreal byHeight = byHeightSmallFont >= 11 / 0.14 ? (cellHeight - 20) / (1 + 1.35 * 0.14) : byHeightSmallFont;
    // Neighbouring icons keep a gap of a fifth of their size.
    return std::floor(std::min(byHeight, cellWidth / 1.2));
}

DisplayProfile profile(const QString &key, const QSizeF &screen, int columns, int rows)
{
    const qreal cellHeight = gridHeight(screen) / std::max(1, rows);
    const qreal cellWidth = gridWidth(screen) / std::max(1, columns);
    const qreal largest = std::clamp(largestIconForCell(cellHeight, cellWidth), kAbsoluteMin, kAbsoluteMax);
    const qreal smallest = std::clamp(std::floor(largest * kMinShare), kAbsoluteMin, largest);
    return {key, smallest, largest};
}

}
