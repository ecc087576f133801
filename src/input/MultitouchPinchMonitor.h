#pragma once

#include "foundation/Clock.h"
#include "input/ContactFrameSource.h"
#include "input/PinchRecognizer.h"

#include <QObject>
#include <functional>
#include <optional>
#include <memory>

// Runs the pinch recogniser over every touchpad's contact frames, and
// re-arms the devices after the machine wakes (they often come back mute).
class MultitouchPinchMonitor : public QObject {
    Q_OBJECT
public:
    // Wake re-arm delays; attempts beyond the third use the last one.
    static constexpr double kWakeDelays[] = {1.5, 4.0, 9.0};
    static constexpr int kWakeAttempts = 3;

    // power may be null: then nothing re-arms after sleep.
    MultitouchPinchMonitor(ContactFrameSource &source, SleepWakeSource *power, Clock &clock, QObject *parent = nullptr);
    ~MultitouchPinchMonitor() override;

    void start(int requiredFingers, std::function<void(PinchDirection)> onPinch);
    void stop();
    void setRequiredFingers(int fingers) { m_recognizer.setRequiredFingers(fingers); }
    int requiredFingers() const { return m_recognizer.required(); }
    bool isRunning() const { return m_isRunning; }
    bool isArmed() const { return m_isArmed; }
    // What the last start found; the settings explain an unavailable pinch by it.
    std::optional<ContactFrameSource::Status> lastStartStatus() const { return m_lastStartStatus; }

    void handleFrame(const ContactFrame &frame);

private:
    void willSleep();
    void didWake();
    void scheduleWakeAttempt();
    void wakeAttempt();

    std::function<void(PinchDirection)> m_onPinch;
    PinchRecognizer m_recognizer;
    int m_deviceCount = 0;
    std::optional<ContactFrameSource::Status> m_lastStartStatus;
    bool m_isRunning = false;
    bool m_isArmed = false;
    bool m_sawFrameSinceArm = false;
    bool m_powerObserversInstalled = false;
    int m_wakeAttempts = 0;
    std::unique_ptr<Clock::Timer> m_wakeTimer;

    ContactFrameSource &m_source;
    SleepWakeSource *m_power;
    Clock &m_clock;
};
