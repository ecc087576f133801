#pragma once

#include "foundation/Clock.h"

#include <algorithm>
#include <cmath>
#include <vector>

// Test time: advance() moves the clock forward and fires every timer due on
// the way, each at its own deadline, in deadline order. Time is kept in
// whole microseconds so that ten 0.1 s ticks make exactly one second.
class FakeClock final : public Clock {
public:
    explicit FakeClock(double start = 1000.0) : m_now(micros(start)) {}

    qint64 now() const override { return m_now * 1000; }

    std::unique_ptr<Timer> startTimer(double seconds, Mode mode, std::function<void()> callback) override
    {
        auto entry = std::make_shared<Entry>(
            Entry{m_now + micros(seconds), micros(seconds), mode == Mode::Repeating, std::move(callback), false});
        m_entries.push_back(entry);
        return std::make_unique<Handle>(entry);
    }

    void advance(double seconds)
    {
        const qint64 target = m_now + micros(seconds);
        for (;;) {
            std::shared_ptr<Entry> next;
            for (const auto &weak : m_entries)
                if (auto e = weak.lock(); e && !e->cancelled && e->deadline <= target
                                          && (!next || e->deadline < next->deadline))
                    next = e;
            if (!next)
                break;
            m_now = std::max(m_now, next->deadline);
            if (next->repeating)
                next->deadline += next->interval;
            else
                next->cancelled = true;
            // A copy: the owner may drop the timer from inside the callback.
            const auto callback = next->callback;
            callback();
        }
        m_now = target;
        std::erase_if(m_entries, [](const std::weak_ptr<Entry> &w) {
            auto e = w.lock();
            return !e || e->cancelled;
        });
    }

    int activeTimers() const
    {
        return int(std::count_if(m_entries.begin(), m_entries.end(), [](const std::weak_ptr<Entry> &w) {
            auto e = w.lock();
            return e && !e->cancelled;
        }));
    }

private:
    struct Entry {
        qint64 deadline;
        qint64 interval;
        bool repeating;
        std::function<void()> callback;
        bool cancelled;
    };
    class Handle final : public Timer {
    public:
        explicit Handle(std::shared_ptr<Entry> entry) : m_entry(std::move(entry)) {}
        ~Handle() override { m_entry->cancelled = true; }

    private:
        std::shared_ptr<Entry> m_entry;
    };

    static qint64 micros(double seconds) { return std::llround(seconds * 1e6); }

    qint64 m_now;
    std::vector<std::weak_ptr<Entry>> m_entries;
};
