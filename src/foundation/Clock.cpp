#include "foundation/Clock.h"

#include <QDeadlineTimer>
#include <QTimer>
#include <cmath>

namespace {
class QtTimer final : public Clock::Timer {
public:
    QtTimer(double seconds, Clock::Mode mode, std::function<void()> callback)
        : m_timer(new QTimer)
    {
        m_timer->setTimerType(Qt::PreciseTimer);
        m_timer->setSingleShot(mode == Clock::Mode::SingleShot);
        m_timer->setInterval(std::chrono::milliseconds(qint64(std::llround(seconds * 1000.0))));
        QObject::connect(m_timer, &QTimer::timeout, m_timer, std::move(callback));
        m_timer->start();
    }

    ~QtTimer() override
    {
        // Owners often drop a timer from inside its own callback; the QTimer
        // is still emitting then, so it goes later.
        m_timer->stop();
        m_timer->disconnect();
        m_timer->deleteLater();
    }

private:
    QTimer *m_timer;
};
}

QtClock::QtClock()
    : m_origin(QDeadlineTimer::current().deadlineNSecs())
{
}

qint64 QtClock::now() const
{
    return QDeadlineTimer::current().deadlineNSecs() - m_origin;
}

std::unique_ptr<Clock::Timer> QtClock::startTimer(double seconds, Mode mode, std::function<void()> callback)
{
    return std::make_unique<QtTimer>(seconds, mode, std::move(callback));
}
