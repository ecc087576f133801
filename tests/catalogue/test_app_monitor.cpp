#include "catalogue/AppMonitor.h"
#include "catalogue/Debouncer.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace std::chrono_literals;

namespace {

// A timer on a virtual clock: callbacks run when the test advances time.
struct VirtualClock {
    std::chrono::milliseconds now{0};
    std::optional<std::chrono::milliseconds> deadline;
    std::function<void()> callback;

    void advanceTo(std::chrono::milliseconds t)
    {
        now = t;
        if (deadline && *deadline <= now) {
            deadline.reset();
            auto run = std::move(callback);
            run();
        }
    }
};

class VirtualTimer final : public Debouncer::Timer {
public:
    explicit VirtualTimer(VirtualClock &clock) : m_clock(clock) {}
    void start(std::chrono::milliseconds delay, std::function<void()> callback) override
    {
        m_clock.deadline = m_clock.now + delay;
        m_clock.callback = std::move(callback);
    }
    void cancel() override
    {
        m_clock.deadline.reset();
        m_clock.callback = nullptr;
    }

private:
    VirtualClock &m_clock;
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
        VirtualClock clock;
        QList<std::chrono::milliseconds> runs;
        Debouncer debouncer(Debouncer::kDefaultInterval, std::make_unique<VirtualTimer>(clock),
                            [&] { runs.append(clock.now); });

        // Ten changes within one second.
        for (int i = 0; i < 10; ++i) {
            clock.advanceTo(std::chrono::milliseconds(i * 100));
            debouncer.notify();
        }
        clock.advanceTo(1899ms);
        QVERIFY(runs.isEmpty());
        QVERIFY(debouncer.pending());
        clock.advanceTo(1900ms);
        QCOMPARE(runs, QList<std::chrono::milliseconds>({1900ms}));
        clock.advanceTo(5000ms);
        QCOMPARE(runs.size(), 1);
        QVERIFY(!debouncer.pending());

        // A later change starts a new round; a cancelled round never runs.
        debouncer.notify();
        clock.advanceTo(6000ms);
        QCOMPARE(runs.size(), 2);
        debouncer.notify();
        debouncer.cancel();
        clock.advanceTo(9000ms);
        QCOMPARE(runs.size(), 2);
    }

    void reloadsOnceOnTheOwningThreadAfterABurst()
    {
        QTemporaryDir dir;
        const auto interval = 200ms;
        AppMonitor monitor(interval);
        QCOMPARE(monitor.queue()->objectName(), QString("appmonitor.fs.queue"));

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
