#include "input/MultitouchPinchMonitor.h"

#include "foundation/Logging.h"

#include <QPointer>
#include <algorithm>

MultitouchPinchMonitor::MultitouchPinchMonitor(ContactFrameSource &source, SleepWakeSource *power, Clock &clock,
                                               QObject *parent)
    : QObject(parent)
    , m_source(source)
    , m_power(power)
    , m_clock(clock)
{
}

MultitouchPinchMonitor::~MultitouchPinchMonitor()
{
    if (m_isRunning)
        m_source.stop();
}

void MultitouchPinchMonitor::start(int requiredFingers, std::function<void(PinchDirection)> action)
{
    if (m_isRunning)
        return;
    m_onPinch = std::move(action);
    m_recognizer.setRequiredFingers(requiredFingers);
    const auto result = m_source.start([this](const ContactFrame &frame) { handleFrame(frame); });
    m_lastStartStatus = result.status;
    switch (result.status) {
    case ContactFrameSource::Status::Unavailable:
        qCWarning(lcServices, "[Gestures] Touchpad devices unreadable — pinch disabled");
        return;
    case ContactFrameSource::Status::NoDevices:
        qCInfo(lcServices, "[Gestures] No multitouch touchpad found");
        return;
    case ContactFrameSource::Status::Started:
        break;
    }
    m_deviceCount = result.deviceCount;
    m_isRunning = m_isArmed = true;
    if (m_power && !m_powerObserversInstalled) {
        connect(m_power, &SleepWakeSource::willSleep, this, &MultitouchPinchMonitor::willSleep);
        connect(m_power, &SleepWakeSource::didWake, this, &MultitouchPinchMonitor::didWake);
        m_powerObserversInstalled = true;
    }
    qCInfo(lcServices, "[Gestures] Pinch monitor started on %d device(s)", m_deviceCount);
}

void MultitouchPinchMonitor::stop()
{
    if (!m_isRunning)
        return;
    m_wakeTimer.reset();
    m_source.stop();
    m_isRunning = m_isArmed = false;
    m_recognizer.reset();
    qCInfo(lcServices, "[Gestures] Pinch monitor stopped");
}

void MultitouchPinchMonitor::handleFrame(const ContactFrame &frame)
{
    const bool firstSinceArm = !m_sawFrameSinceArm;
    m_sawFrameSinceArm = true;
    if (firstSinceArm && m_wakeTimer && m_wakeAttempts > 0) {
        m_wakeTimer.reset();
        qCInfo(lcServices, "[Gestures] Device confirmed live after wake");
    }
    const auto direction = m_recognizer.process(frame.contacts, frame.timestamp);
    if (!direction)
        return;
    QPointer<MultitouchPinchMonitor> self(this);
    QMetaObject::invokeMethod(this, [self, d = *direction] {
        if (self && self->m_onPinch)
            self->m_onPinch(d);
    }, Qt::QueuedConnection);
}

void MultitouchPinchMonitor::willSleep()
{
    if (!m_isRunning)
        return;
    m_wakeTimer.reset();
    m_source.stop();
    m_isArmed = false;
    m_recognizer.reset();
}

void MultitouchPinchMonitor::didWake()
{
    if (!m_isRunning)
        return;
    m_wakeAttempts = 0;
    scheduleWakeAttempt();
}

void MultitouchPinchMonitor::scheduleWakeAttempt()
{
    const double delay = kWakeDelays[std::min(m_wakeAttempts, int(std::size(kWakeDelays)) - 1)];
    m_wakeTimer = m_clock.startTimer(delay, Clock::Mode::SingleShot, [this] { wakeAttempt(); });
}

void MultitouchPinchMonitor::wakeAttempt()
{
    if (m_wakeAttempts > 0 && m_sawFrameSinceArm)
        return;
    if (m_wakeAttempts == kWakeAttempts) {
        // The last re-arm had its full delay to show a frame.
        m_wakeTimer.reset();
        qCWarning(lcServices, "[Gestures] Gave up re-arming after wake");
        return;
    }
    ++m_wakeAttempts;
    m_source.stop();
    const auto result = m_source.start([this](const ContactFrame &frame) { handleFrame(frame); });
    m_deviceCount = result.status == ContactFrameSource::Status::Started ? result.deviceCount : 0;
    m_isArmed = true;
    m_sawFrameSinceArm = false;
    m_recognizer.reset();
    qCInfo(lcServices, "[Gestures] Re-armed %d device(s) after wake", m_deviceCount);
    scheduleWakeAttempt();
}
