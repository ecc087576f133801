#pragma once

#include "storage/AppearanceRepository.h"

#include <QSizeF>

// The icon sizes a screen allows, from its size in logical pixels and the
// rows and columns of the grid. The overlay's chrome (search field, page
// dots, side margins) is taken off first, so an icon of the largest allowed
// size still leaves room for its label above the next row, and the smallest
// allowed size grows with the screen: a 4K monitor shows larger icons instead
// of wider gaps.
namespace GridFit {
// The overlay's fixed chrome, mirrored from Overlay.qml.
qreal gridHeight(const QSizeF &screen);
qreal gridWidth(const QSizeF &screen);
// The tallest icon whose label fits below it in a cell of this height.
qreal largestIconForCell(qreal cellHeight, qreal cellWidth);
DisplayProfile profile(const QString &key, const QSizeF &screen, int columns, int rows);
}
