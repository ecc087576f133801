#include "catalogue/Debouncer.h"

#include <QTimer>

namespace {

class QtTimer final : public Debouncer::Timer {
public:
    QtTimer()
    {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            if (m_callback)
                m_callback();
        });
    }
    void start(std::chrono::milliseconds delay, std::function<void()> callback) override
    {
        m_callback = std::move(callback);
        m_timer.start(delay);
    }
    void cancel() override
    {
        m_timer.stop();
        m_callback = nullptr;
    }

private:
    QTimer m_timer;
    std::function<void()> m_callback;
};

}

std::unique_ptr<Debouncer::Timer> makeQtDebounceTimer()
{
    return std::make_unique<QtTimer>();
}

Debouncer::Debouncer(std::chrono::milliseconds interval, std::unique_ptr<Timer> timer, std::function<void()> action)
    : m_interval(interval)
    , m_timer(std::move(timer))
    , m_action(std::move(action))
{
}

void Debouncer::notify()
{
    m_timer->cancel();
    m_pending = true;
    m_timer->start(m_interval, [this] {
        m_pending = false;
        m_action();
    });
}

void Debouncer::cancel()
{
    m_timer->cancel();
    m_pending = false;
}
