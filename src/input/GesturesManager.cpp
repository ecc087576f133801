#include "input/GesturesManager.h"

#include "input/MultitouchPinchMonitor.h"
#include "storage/UserDefaultsStoreType.h"

GesturesManager::GesturesManager(std::shared_ptr<UserDefaultsStoreType> store, ContactFrameSource &source,
                                 SleepWakeSource *power, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_store(std::move(store))
    , m_source(source)
    , m_power(power)
    , m_clock(clock)
{
    // The registered defaults answer when nothing is stored; without them
    // the feature is on with four fingers all the same.
    const QVariant enabled = m_store->object(QLatin1String(kEnabledKey));
    m_isEnabled = enabled.isValid() ? m_store->boolValue(QLatin1String(kEnabledKey)) : true;
    m_fingerCount = int(m_store->integer(QLatin1String(kFingerCountKey)).value_or(kDefaultFingerCount));
    if (m_isEnabled)
        startMonitor();
}

GesturesManager::~GesturesManager() = default;

void GesturesManager::setEnabled(bool enabled)
{
    if (enabled == m_isEnabled)
        return;
    m_isEnabled = enabled;
    m_store->set(enabled, QLatin1String(kEnabledKey));
    if (enabled)
        startMonitor();
    else
        stopMonitor();
    Q_EMIT isEnabledChanged(enabled);
}

void GesturesManager::setFingerCount(int count)
{
    if (count == m_fingerCount)
        return;
    m_fingerCount = count;
    m_store->set(count, QLatin1String(kFingerCountKey));
    if (m_monitor)
        m_monitor->setRequiredFingers(count);
    Q_EMIT fingerCountChanged(count);
}

void GesturesManager::startMonitor()
{
    m_monitor = std::make_unique<MultitouchPinchMonitor>(m_source, m_power, m_clock);
    m_monitor->start(m_fingerCount, [this](PinchDirection direction) { pinched(direction); });
}

void GesturesManager::stopMonitor()
{
    if (!m_monitor)
        return;
    m_monitor->stop();
    m_monitor.reset();
}

void GesturesManager::pinched(PinchDirection direction)
{
    const auto &action = direction == PinchDirection::pinchIn ? m_onOpen : m_onClose;
    if (action)
        action();
}
