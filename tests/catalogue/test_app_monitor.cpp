#include "catalogue/AppMonitor.h"
#include "catalogue/Debouncer.h"
#include "fakes/FakeClock.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace std::chrono_literals;

namespace {

// The debouncer's timer on the test clock: it fires when the test advances time.
class FakeClockTimer final : public Debouncer::Timer {
public:
    explicit FakeClockTimer(FakeClock &clock) : m_clock(clock) {}
    void start(std::chrono::milliseconds delay, std::function<void()> callback) override
    {
        m_running = m_clock.startTimer(double(delay.count()) / 1000, Clock::Mode::SingleShot, std::move(callback));
    }
    void cancel() override { m_running.reset(); }

private:
    FakeClock &m_clock;
    std::unique_ptr<Clock::Timer> m_running;
};

void touch(const QString &path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

}

class TestAppMonitor : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void burstRunsOnceASecondAfterTheLastChange()
    {
        FakeClock clock(0);
        QList<qint64> runsAtMs;
        Debouncer debouncer(Debouncer::kDefaultInterval, std::make_unique<FakeClockTimer>(clock),
                            [&] { runsAtMs.append(clock.now() / 1000000); });

        // Ten changes within one second, the last at 900 ms.
        for (int i = 0; i < 10; ++i) {
            debouncer.notify();
            clock.advance(0.1);
        }
        clock.advance(0.899);
        QVERIFY(runsAtMs.isEmpty());
        QVERIFY(debouncer.pending());
        clock.advance(0.001);
        QCOMPARE(runsAtMs, QList<qint64>{1900});
        clock.advance(3);
        QCOMPARE(runsAtMs.size(), 1);
        QVERIFY(!debouncer.pending());

        // A later change starts a new round; a cancelled round never runs.
        debouncer.notify();
        clock.advance(1);
        QCOMPARE(runsAtMs.size(), 2);
        debouncer.notify();
        debouncer.cancel();
        clock.advance(3);
        QCOMPARE(runsAtMs.size(), 2);
    }

    void reloadsOnceOnTheOwningThreadAfterABurst()
    {
        QTemporaryDir dir;
        const auto interval = 200ms;
        AppMonitor monitor(interval);

        int calls = 0;
        bool onMainThread = false;
        QElapsedTimer clock;
        qint64 lastChange = 0, calledAt = 0;
        clock.start();
        monitor.start({dir.path(), dir.path() + "/missing", dir.filePath("file")}, [&] {
            ++calls;
            calledAt = clock.nsecsElapsed();
            onMainThread = QThread::currentThread() == qApp->thread();
        });
        QCOMPARE(monitor.watchedDirectories(), QStringList({dir.path()}));

        for (int i = 0; i < 10; ++i) {
            lastChange = clock.nsecsElapsed(); // before the change, so never after its event
            touch(dir.filePath(QString("installer-%1").arg(i)));
            QTest::qWait(15);
        }
        QTRY_COMPARE_WITH_TIMEOUT(calls, 1, 5000);
        QVERIFY(onMainThread);
        QVERIFY2(calledAt - lastChange >= std::chrono::nanoseconds(interval).count(),
                 qPrintable(QString("called %1 ns after the last change").arg(calledAt - lastChange)));
        QTest::qWait(3 * interval.count());
        QCOMPARE(calls, 1);
    }

    void stopCancelsWatchersAndThePendingCallback()
    {
        QTemporaryDir dir;
        AppMonitor monitor(400ms);
        int calls = 0;
        monitor.start({dir.path()}, [&] { ++calls; });
        touch(dir.filePath("a"));
        QTest::qWait(50); // the change has arrived; its callback is pending
        monitor.stop();
        QVERIFY(monitor.watchedDirectories().isEmpty());
        touch(dir.filePath("b"));
        QTest::qWait(900);
        QCOMPARE(calls, 0);

        // Started again, it watches again.
        monitor.start({dir.path()}, [&] { ++calls; });
        touch(dir.filePath("c"));
        QTRY_COMPARE_WITH_TIMEOUT(calls, 1, 5000);
    }
};

QTEST_GUILESS_MAIN(TestAppMonitor)
#include "test_app_monitor.moc"
