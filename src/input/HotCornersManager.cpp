#include "input/HotCornersManager.h"

#include "input/ApplicationActivity.h"
#include "input/PointerSource.h"
#include "storage/UserDefaultsStoreType.h"

HotCornersManager::HotCornersManager(std::shared_ptr<UserDefaultsStoreType> store, PointerSource &pointer,
                                     ApplicationActivity &activity, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_store(std::move(store))
    , m_pointer(pointer)
    , m_clock(clock)
{
    m_isEnabled = m_store->boolValue(QLatin1String(kEnabledKey));
    m_selectedCorner = HotCornerGeometry::fromRawValue(m_store->string(QLatin1String(kSelectedKey)).value_or(QString()));
    m_permissionObserver = connect(&activity, &ApplicationActivity::becameActive, this,
                                 &HotCornersManager::applicationDidBecomeActive);
}

HotCornersManager::~HotCornersManager()
{
    stopMonitoring();
    disconnect(m_permissionObserver);
}

void HotCornersManager::setEnabled(bool enabled)
{
    if (enabled == m_isEnabled)
        return;
    m_isEnabled = enabled;
    m_store->set(enabled, QLatin1String(kEnabledKey));
    m_store->synchronize();
    if (enabled)
        startMonitoring();
    else
        stopMonitoring();
    Q_EMIT isEnabledChanged(enabled);
}

void HotCornersManager::setSelectedCorner(HotCorner corner)
{
    if (corner == m_selectedCorner)
        return;
    m_selectedCorner = corner;
    m_store->set(HotCornerGeometry::rawValue(corner), QLatin1String(kSelectedKey));
    m_store->synchronize();
    if (m_isEnabled) {
        stopMonitoring();
        startMonitoring();
    }
    Q_EMIT selectedCornerChanged(corner);
}

void HotCornersManager::startMonitoring()
{
    if (!m_isEnabled)
        return;
    // Without a listener the sampler alone does the work.
    if (m_pointer.isMotionListenerAllowed()) {
        if (m_eventTap)
            m_pointer.stopMotionListener();
        m_eventTap = m_pointer.startMotionListener([this] { sample(); });
    }
    m_cornerDetectionTimer = m_clock.startTimer(0.1, Clock::Mode::Repeating, [this] { sample(); });
}

void HotCornersManager::stopMonitoring()
{
    m_cornerDetectionTimer.reset();
    if (m_eventTap) {
        m_pointer.stopMotionListener();
        m_eventTap = false;
    }
    m_isInCorner = false;
    m_enteredCornerAt.reset();
}

void HotCornersManager::sample()
{
    if (m_isEnabled && m_selectedCorner != HotCorner::none)
        checkCorner(m_pointer.cursorPosition());
}

void HotCornersManager::checkCorner(QPoint pixel)
{
    const HotCornerGeometry::Space space(m_pointer.screenGeometries());
    const QPointF p = space.point(pixel);
    const auto frame = HotCornerGeometry::screenFor(p, space.frames(), space.mainFrame());
    if (!frame)
        return;
    const bool inside = HotCornerGeometry::isInZone(m_selectedCorner, *frame, p);

    if (inside && m_isInCorner) {
        if (!m_enteredCornerAt)
            return;
        if (m_clock.now() - *m_enteredCornerAt >= 300'000'000) { // 0.3 s
            // Firing disarms; a pointer that stays re-arms at the next check.
            m_enteredCornerAt.reset();
            m_isInCorner = false;
            QMetaObject::invokeMethod(this, [this] { if (m_onActivate) m_onActivate(); }, Qt::QueuedConnection);
        }
    } else if (inside) {
        m_isInCorner = true;
        m_enteredCornerAt = m_clock.now();
    } else if (m_isInCorner) {
        m_isInCorner = false;
        m_enteredCornerAt.reset();
    }
}

void HotCornersManager::applicationDidBecomeActive()
{
    if (!m_pointer.isMotionListenerAllowed()) {
        if (m_isEnabled)
            stopMonitoring();
        return;
    }
    if (!m_isEnabled)
        return;
    stopMonitoring();
    m_delayedRestart = m_clock.startTimer(0.5, Clock::Mode::SingleShot, [this] { startMonitoring(); });
}
