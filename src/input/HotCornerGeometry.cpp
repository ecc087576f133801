#include "input/HotCornerGeometry.h"

namespace HotCornerGeometry {

namespace {
struct Named {
    HotCorner corner;
    const char *raw;
};
constexpr Named kCorners[] = {{HotCorner::none, "none"},
                              {HotCorner::topLeft, "topLeft"},
                              {HotCorner::topRight, "topRight"},
                              {HotCorner::bottomLeft, "bottomLeft"},
                              {HotCorner::bottomRight, "bottomRight"}};
}

QString rawValue(HotCorner corner)
{
    for (const Named &n : kCorners)
        if (n.corner == corner)
            return QString::fromLatin1(n.raw);
    return QStringLiteral("none");
}

HotCorner fromRawValue(const QString &raw)
{
    for (const Named &n : kCorners)
        if (raw == QLatin1String(n.raw))
            return n.corner;
    return HotCorner::none;
}

QList<HotCorner> allCorners()
{
    QList<HotCorner> out;
    for (const Named &n : kCorners)
        out.append(n.corner);
    return out;
}

Space::Space(const QList<QRect> &screens)
{
    if (screens.isEmpty())
        return;
    m_base = screens.first().y() + screens.first().height();
    for (const QRect &screen : screens)
        m_frames.append(frame(screen));
}

std::optional<QRectF> Space::mainFrame() const
{
    return m_frames.isEmpty() ? std::nullopt : std::optional<QRectF>(m_frames.first());
}

QPointF Space::point(QPoint pixel) const
{
    return QPointF(pixel.x(), m_base - pixel.y() - 1);
}

QRectF Space::frame(const QRect &screen) const
{
    return QRectF(screen.x(), m_base - (screen.y() + screen.height()), screen.width(), screen.height());
}

bool contains(const QRectF &r, QPointF p)
{
    return p.x() >= r.left() && p.x() < r.left() + r.width() && p.y() >= r.top() && p.y() < r.top() + r.height();
}

std::optional<QRectF> screenFor(QPointF p, const QList<QRectF> &frames, const std::optional<QRectF> &mainFrame)
{
    for (const QRectF &f : frames)
        if (contains(f, p))
            return f;
    return mainFrame;
}

bool isInZone(HotCorner corner, const QRectF &f, QPointF p)
{
    // QRectF's top() is its minimum y; here that is the bottom edge.
    const double minX = f.left(), minY = f.top(), maxX = f.left() + f.width(), maxY = f.top() + f.height();
    QPointF origin;
    switch (corner) {
    case HotCorner::none: return false;
    case HotCorner::topLeft: origin = {minX, maxY - 10.0}; break;
    case HotCorner::topRight: origin = {maxX - 10.0, maxY - 10.0}; break;
    case HotCorner::bottomLeft: origin = {minX, minY}; break;
    case HotCorner::bottomRight: origin = {maxX - 10.0, minY}; break;
    }
    return contains(QRectF(origin, QSizeF(10.0, 10.0)), p);
}

}
