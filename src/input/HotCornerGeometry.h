#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QRectF>
#include <QString>
#include <optional>

// The watched corner, stored by its raw string.
enum class HotCorner { none, topLeft, topRight, bottomLeft, bottomRight };

namespace HotCornerGeometry {

QString rawValue(HotCorner corner);
// An unknown string is none.
HotCorner fromRawValue(const QString &raw);
QList<HotCorner> allCorners();

// The corner rules work in global coordinates with y growing upward, the
// origin at the bottom-left of the main screen. The desktop hands out
// y-down pixels; this is the one place that turns them around.
class Space {
public:
    // screens: y-down geometries, main screen first.
    explicit Space(const QList<QRect> &screens);

    QList<QRectF> frames() const { return m_frames; }
    std::optional<QRectF> mainFrame() const;
    // A pointer pixel is represented by its minimum corner, so the last
    // pixel row of a screen is inside it and the first row outside it is not.
    QPointF point(QPoint pixel) const;
    QRectF frame(const QRect &screen) const;

private:
    int m_base = 0;
    QList<QRectF> m_frames;
};

// Minimum edges inside, maximum edges outside.
bool contains(const QRectF &rect, QPointF p);
// The first frame holding p, else the main screen's, else none.
std::optional<QRectF> screenFor(QPointF p, const QList<QRectF> &frames, const std::optional<QRectF> &mainFrame);
bool isInZone(HotCorner corner, const QRectF &frame, QPointF p);

}
