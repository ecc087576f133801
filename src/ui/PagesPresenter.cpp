#include "ui/PagesPresenter.h"

#include "layout/LaunchpadViewModel.h"
#include "foundation/SlotKey.h"
#include "ui/CellFactory.h"
#include "ui/GridFit.h"

#include <QScreen>
#include <QTimer>

namespace {
constexpr double kMinIconSize = 48;
constexpr double kMaxIconSize = 256;
// A wheel notch is 120; a touchpad sends pixels.
constexpr qreal kWheelNotch = 120;
constexpr qreal kSwipePixels = 60;
// Scroll events closer together than this belong to one gesture.
constexpr qint64 kGesturePauseMs = 180;
}

PagesPresenter::PagesPresenter(LaunchpadViewModel &layout, const CellFactory &cells,
                               AppearanceRepositoryImpl &appearance, QObject *parent)
    : QObject(parent)
    , m_layout(layout)
    , m_cells(cells)
    , m_appearance(appearance)
    , m_display{QStringLiteral("default"), kMinIconSize, kMaxIconSize}
{
    connect(&m_layout, &LaunchpadViewModel::layoutRevisionChanged, this, &PagesPresenter::scheduleRebuild);
    connect(&m_layout, &LaunchpadViewModel::slotsChanged, this, &PagesPresenter::scheduleRebuild);
    connect(&m_layout, &LaunchpadViewModel::gridGeometryChanged, this, [this] {
        Q_EMIT geometryChanged();
        scheduleRebuild();
    });
    rebuild();
}

int PagesPresenter::columns() const { return m_layout.gridColumns(); }
int PagesPresenter::rows() const { return m_layout.gridRows(); }
qreal PagesPresenter::iconSize() const { return m_appearance.iconSize(m_display); }
bool PagesPresenter::showLabels() const { return m_appearance.showLabels(m_display); }

void PagesPresenter::setCurrentPage(int page)
{
    // The model may already hold a page the cells are not rebuilt for yet.
    page = std::clamp(page, 0, std::max(0, std::max(count(), m_layout.pageCount()) - 1));
    if (page == m_currentPage)
        return;
    m_currentPage = page;
    Q_EMIT currentPageChanged();
}

void PagesPresenter::scroll(QPointF angleDelta, QPointF pixelDelta)
{
    const bool touchpad = !pixelDelta.isNull();
    const QPointF delta = touchpad ? pixelDelta : angleDelta;
    // Sideways or down both mean "next": most mice only have a vertical wheel.
    const qreal amount = std::abs(delta.x()) > std::abs(delta.y()) ? delta.x() : delta.y();
    const bool newGesture = !m_lastScroll.isValid() || m_lastScroll.elapsed() > kGesturePauseMs;
    m_lastScroll.start();
    if (newGesture || (m_scrollBuildUp != 0 && (amount > 0) != (m_scrollBuildUp > 0))) {
        m_scrollBuildUp = 0;
        m_turnedThisGesture = false;
    }
    // A swipe's momentum keeps sending events after its turn: they belong to
    // the same gesture and turn nothing more. A wheel turns on every notch.
    if (touchpad && m_turnedThisGesture)
        return;
    m_scrollBuildUp += amount;
    const qreal threshold = touchpad ? kSwipePixels : kWheelNotch;
    if (std::abs(m_scrollBuildUp) < threshold)
        return;
    m_scrollBuildUp > 0 ? previousPage() : nextPage();
    m_scrollBuildUp = 0;
    m_turnedThisGesture = true;
}

QString PagesPresenter::keyIn(const QStringList &slots, int page, int localIndex) const
{
    if (page < 0 || localIndex < 0 || localIndex >= m_layout.geometry().capacity())
        return {};
    return SlotList::at(slots, m_layout.absoluteSlot(page, localIndex));
}

QString PagesPresenter::keyAt(int page, int localIndex) const
{
    return keyIn(m_layout.slots(), page, localIndex);
}

CellKind::Kind PagesPresenter::kindAt(int page, int localIndex) const
{
    return m_cells.cellFor(keyAt(page, localIndex)).kind;
}

qsizetype PagesPresenter::absoluteSlot(int page, int localIndex) const
{
    return m_layout.absoluteSlot(page, localIndex);
}

QString PagesPresenter::shownKeyAt(int page, int localIndex) const
{
    return keyIn(m_preview ? *m_preview : m_layout.slots(), page, localIndex);
}

void PagesPresenter::setPreview(std::optional<QStringList> slots)
{
    if (!slots && !m_preview)
        return;
    m_preview = std::move(slots);
    rebuild();
}

void PagesPresenter::setDisplay(QScreen *screen)
{
    if (!screen)
        return;
    m_screenSize = QSizeF(screen->size());
    setDisplayProfile(fittedProfile(screen->name().isEmpty() ? QStringLiteral("default") : screen->name()));
}

DisplayProfile PagesPresenter::fittedProfile(const QString &key) const
{
    if (!m_screenSize)
        return {key, m_display.minIconSize, m_display.maxIconSize};
    const DisplayProfile byKey{key};
    return GridFit::profile(key, *m_screenSize, m_appearance.columns(byKey), m_appearance.rows(byKey));
}

void PagesPresenter::reloadAppearance()
{
    // Rows or columns written elsewhere change which icon sizes fit.
    setDisplayProfile(fittedProfile(m_display.key));
}

void PagesPresenter::setDisplayProfile(const DisplayProfile &display)
{
    m_display = display;
    m_appearance.setLastDisplayProfile(display);
    m_layout.setGridGeometry(m_appearance.columns(display), m_appearance.rows(display));
    Q_EMIT appearanceChanged();
    Q_EMIT geometryChanged();
    scheduleRebuild();
}

void PagesPresenter::contentChanged()
{
    ++m_contentRevision;
    scheduleRebuild();
}

void PagesPresenter::scheduleRebuild()
{
    if (m_rebuildPending)
        return;
    m_rebuildPending = true;
    // Coalesced: one edit emits several change signals.
    QTimer::singleShot(0, this, [this] {
        m_rebuildPending = false;
        rebuild();
    });
}

void PagesPresenter::rebuild()
{
    const PageGeometry geometry = m_layout.geometry();
    const BuiltFor key{m_layout.layoutRevision(), geometry.columns, geometry.rows, m_contentRevision};
    if (!m_preview && key == m_builtFor)
        return;
    m_builtFor = m_preview ? BuiltFor{} : key;
    const QStringList &slots = m_preview ? *m_preview : m_layout.slots();
    const int before = m_pages.count();
    m_pages.setPages(m_cells.pages(slots, geometry, m_layout.pageCount()));
    if (before != m_pages.count())
        Q_EMIT countChanged();
    if (m_currentPage >= m_pages.count())
        setCurrentPage(m_pages.count() - 1);
}
