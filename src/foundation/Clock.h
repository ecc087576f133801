#pragma once

#include <QtGlobal>
#include <functional>
#include <memory>

// Time and main-loop timers, so that dwell times, pauses between launches,
// sampling and wake-up retries can be driven by a test clock.
class Clock {
public:
    // A running timer; destroying it cancels it, so an owner that holds its
    // timers never receives a callback after it is gone.
    class Timer {
    public:
        virtual ~Timer() = default;
    };
    enum class Mode { SingleShot, Repeating };

    virtual ~Clock() = default;
    // Nanoseconds on a monotonic scale; whole numbers, so that a dwell of
    // exactly 0.3 s compares as 0.3 s.
    virtual qint64 now() const = 0;
    // Call on the main thread; the callback runs there.
    virtual std::unique_ptr<Timer> startTimer(double seconds, Mode mode, std::function<void()> callback) = 0;
};

// QTimer on the main thread (precise timers, so a 0.1 s sampler stays
// 0.1 s) and a monotonic elapsed-time clock.
class QtClock final : public Clock {
public:
    QtClock();
    qint64 now() const override;
    std::unique_ptr<Timer> startTimer(double seconds, Mode mode, std::function<void()> callback) override;

private:
    qint64 m_origin;
};
