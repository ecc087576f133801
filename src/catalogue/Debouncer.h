#pragma once

#include <chrono>
#include <functional>
#include <memory>

// Runs an action once a burst of notifications has been quiet for the whole
// interval: every notification cancels the pending run and schedules a new
// one. The timer is injectable so the behaviour can be checked on a virtual
// clock.
class Debouncer {
public:
    // Runs a callback once after a delay, unless cancelled first.
    class Timer {
    public:
        virtual ~Timer() = default;
        virtual void start(std::chrono::milliseconds delay, std::function<void()> callback) = 0;
        virtual void cancel() = 0;
    };

    static constexpr std::chrono::milliseconds kDefaultInterval{1000};

    Debouncer(std::chrono::milliseconds interval, std::unique_ptr<Timer> timer, std::function<void()> action);

    void notify();
    void cancel();
    bool pending() const { return m_pending; }
    std::chrono::milliseconds interval() const { return m_interval; }

private:
    std::chrono::milliseconds m_interval;
    std::unique_ptr<Timer> m_timer;
    std::function<void()> m_action;
    bool m_pending = false;
};

// A Timer on a single-shot QTimer of the calling thread's event loop.
std::unique_ptr<Debouncer::Timer> makeQtDebounceTimer();
