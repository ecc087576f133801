#include "common/LogCapture.h"
#include "input/GesturesManager.h"
#include "input/MultitouchPinchMonitor.h"
#include "input/PinchRecognizer.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeContactFrameSource.h"
#include "storage/UserDefaultsStore.h"

#include <QTemporaryDir>
#include <QTest>
#include <cmath>

namespace {

// n contacts evenly on a circle of radius `spread` (so their mean distance
// from the centroid is exactly `spread`), each moving with `velocity` plus
// `radialSpeed` away from the centre (negative: towards it).
QList<Contact> ring(int n, float spread, QPointF centre = {0.5, 0.5}, QPointF velocity = {}, float radialSpeed = 0)
{
    QList<Contact> contacts;
    for (int k = 0; k < n; ++k) {
        const double a = 2 * M_PI * k / n + 0.3;
        const float dx = float(std::cos(a)), dy = float(std::sin(a));
        contacts.append({float(centre.x()) + spread * dx, float(centre.y()) + spread * dy,
                         float(velocity.x()) + radialSpeed * dx, float(velocity.y()) + radialSpeed * dy});
    }
    return contacts;
}

struct Step {
    float spread; // negative: every finger lifted
    double dt;    // seconds after the previous frame
};
constexpr float kLift = -1;

QList<Contact> contactsOf(const Step &s, int fingers)
{
    return s.spread < 0 ? QList<Contact>() : ring(fingers, s.spread);
}

// Feeds one frame per step; returns every direction recognised.
QList<PinchDirection> feed(PinchRecognizer &r, double &t, const QList<Step> &steps, int fingers = 4,
                           QPointF velocity = {}, float radialSpeed = 0, QPointF drift = {})
{
    QList<PinchDirection> out;
    QPointF centre(0.5, 0.5);
    for (const Step &s : steps) {
        t += s.dt;
        centre += drift;
        const auto contacts = s.spread < 0 ? QList<Contact>() : ring(fingers, s.spread, centre, velocity, radialSpeed);
        if (const auto d = r.process(contacts, t))
            out.append(*d);
    }
    return out;
}

// Fingers land; three settling frames at `from`, then the spread moves to
// `to` over 0.4 s.
QList<Step> pinch(float from, float to)
{
    QList<Step> steps{{kLift, 0.5}, {from, 0.01}, {from, 0.02}, {from, 0.02}};
    for (int i = 1; i <= 8; ++i)
        steps.append({from + (to - from) * i / 8, 0.05});
    return steps;
}

}

class PinchTest : public QObject {
    Q_OBJECT

    QTemporaryDir dir;
    std::shared_ptr<UserDefaultsStore> store;
    FakeContactFrameSource source;
    FakeClock clock;
    SleepWakeSource power;

private Q_SLOTS:
    void init()
    {
        store = std::make_shared<UserDefaultsStore>(QStringLiteral("gestures"), QStringLiteral("gestures"), dir.path());
        for (const QString &key : store->persistedKeys())
            store->removeObject(key);
        source.status = ContactFrameSource::Status::Started;
        source.deviceCount = 1;
        source.starts = source.stops = 0;
        source.stop();
        source.stops = 0;
    }

    void pinchInAndOut()
    {
        PinchRecognizer r;
        double t = 100;
        QCOMPARE(feed(r, t, pinch(0.10f, 0.06f)), QList<PinchDirection>{PinchDirection::pinchIn});
        t += 2;
        QCOMPARE(feed(r, t, pinch(0.06f, 0.10f)), QList<PinchDirection>{PinchDirection::pinchOut});
    }

    void tieCountsAsPinchIn()
    {
        // Four fingers on the axes: spreads are exact, so shrink and growth
        // tie exactly (0.125 -> 0.03125 while settling, then 0.078125).
        const auto cross = [](float r) {
            return QList<Contact>{{0.5f + r, 0.5f}, {0.5f - r, 0.5f}, {0.5f, 0.5f + r}, {0.5f, 0.5f - r}};
        };
        PinchRecognizer r;
        QVERIFY(!r.process(cross(0.125f), 100.00));
        QVERIFY(!r.process(cross(0.03125f), 100.02));
        QVERIFY(!r.process(cross(0.03125f), 100.04));
        QCOMPARE(r.process(cross(0.078125f), 100.06), std::optional(PinchDirection::pinchIn));
    }

    void tooSmallAChangeNeverFires()
    {
        PinchRecognizer r;
        double t = 100;
        QVERIFY(feed(r, t, pinch(0.10f, 0.075f)).isEmpty()); // ratio 0.25
        QVERIFY(feed(r, t, pinch(0.075f, 0.10f)).isEmpty()); // growth 0.025 of 0.10
        // Big enough a ratio, but fingers too close to start with.
        QVERIFY(feed(r, t, pinch(0.035f, 0.01f)).isEmpty());
    }

    void slowPinchNeverFires()
    {
        PinchRecognizer r;
        double t = 100;
        QList<Step> steps{{0.10f, 0}, {0.10f, 0.02}, {0.10f, 0.02}, {0.10f, 1.47}};
        for (int i = 1; i <= 8; ++i)
            steps.append({0.10f - 0.04f * i / 8, 0.05});
        QVERIFY(feed(r, t, steps).isEmpty());
        // Tracking stays on: holding the fingers down longer changes nothing.
        QVERIFY(feed(r, t, {{0.05f, 0.1}, {0.03f, 0.1}}).isEmpty());
    }

    void fingerCountChangeResets()
    {
        PinchRecognizer r;
        double t = 100;
        QVERIFY(feed(r, t, {{0.10f, 0}, {0.10f, 0.02}, {0.10f, 0.02}, {0.10f, 0.02}}).isEmpty());
        QVERIFY(feed(r, t, {{0.10f, 0.02}}, 3).isEmpty()); // a finger lifts
        // Back to four at a small spread: the new baseline is small, no pinch.
        QVERIFY(feed(r, t, {{0.06f, 0.02}, {0.06f, 0.02}, {0.06f, 0.02}, {0.06f, 0.02}}).isEmpty());

        QVERIFY(feed(r, t, pinch(0.10f, 0.06f), 5).isEmpty());
        QVERIFY(feed(r, t, pinch(0.10f, 0.06f), 3).isEmpty());
        r.setRequiredFingers(3);
        QCOMPARE(feed(r, t, pinch(0.10f, 0.06f), 3).size(), 1);
    }

    void cooldownSwallowsASecondPinch()
    {
        PinchRecognizer r;
        double t = 100;
        QCOMPARE(feed(r, t, pinch(0.10f, 0.06f)).size(), 1);
        const double fired = t;
        // Lift, land again and pinch out, all within 0.8 s of the first.
        feed(r, t, {{kLift, 0.05}});
        QVERIFY(feed(r, t, {{0.06f, 0.05}, {0.06f, 0.02}, {0.06f, 0.02}, {0.08f, 0.1}, {0.10f, 0.1}, {0.11f, 0.1}}).isEmpty());
        QVERIFY(t - fired <= 0.8);
        // The same pinch well after the cooldown fires.
        t = fired + 0.7; // the pinch lands 1.2 s after the first fired
        QCOMPARE(feed(r, t, pinch(0.06f, 0.10f)), QList<PinchDirection>{PinchDirection::pinchOut});
    }

    void centroidTravelBlocks()
    {
        PinchRecognizer r;
        double t = 100;
        // The spread halves but the hand slides 0.02 a frame, past 0.6 x 0.10
        // by the time the spread has shrunk enough.
        QVERIFY(feed(r, t, pinch(0.10f, 0.05f), 4, {}, 0, QPointF(0.02, 0)).isEmpty());
        // A slower slide stays within the limit.
        QCOMPARE(feed(r, t, pinch(0.10f, 0.05f), 4, {}, 0, QPointF(0.005, 0)).size(), 1);
    }

    void swipeVetoBlocksAPinch()
    {
        PinchRecognizer r;
        double t = 100;
        // The spread changes as in a pinch, but every finger moves one way fast.
        QVERIFY(feed(r, t, pinch(0.10f, 0.06f), 4, QPointF(0.5, 0.05)).isEmpty());
        // Fingers closing in: opposite velocities are no swipe.
        QCOMPARE(feed(r, t, pinch(0.10f, 0.06f), 4, {}, -0.1f).size(), 1);
    }

    void swipeDetection_data()
    {
        QTest::addColumn<QList<Contact>>("contacts");
        QTest::addColumn<bool>("swipe");
        const auto moving = [](QList<QPointF> velocities) {
            QList<Contact> out;
            for (const QPointF v : velocities)
                out.append({0.5f, 0.5f, float(v.x()), float(v.y())});
            return out;
        };
        QTest::newRow("three agree") << moving({{0.1, 0}, {0.1, 0.01}, {0.1, -0.01}, {0, 0}}) << true;
        QTest::newRow("two fast only") << moving({{0.1, 0}, {0.1, 0}, {0.011, 0}, {0, 0.005}}) << false;
        QTest::newRow("cancelling") << moving({{0.1, 0}, {-0.1, 0}, {0, 0.1}, {0, -0.1}}) << false;
        // Three fast, but spread over 60 degrees: the outer two are 30 degrees off.
        QTest::newRow("fanned out") << moving({{0.1, 0}, {0.0866, 0.05}, {0.0866, -0.05}}) << false;
        QTest::newRow("just fast enough") << moving({{0.0121, 0}, {0.0121, 0}, {0.0121, 0}}) << true;
        QTest::newRow("at the speed limit") << moving({{0.012, 0}, {0.012, 0}, {0.012, 0}}) << false;
    }

    void swipeDetection()
    {
        QFETCH(QList<Contact>, contacts);
        QFETCH(bool, swipe);
        QCOMPARE(PinchRecognizer::isSwipe(contacts), swipe);
    }

    void monitorStartAndStop()
    {
        LogCapture log;
        source.deviceCount = 2;
        MultitouchPinchMonitor monitor(source, &power, clock);
        monitor.start(4, [](PinchDirection) {});
        QVERIFY(monitor.isRunning());
        QVERIFY(log.contains(QStringLiteral("[Gestures] Pinch monitor started on 2 device(s)")));
        monitor.stop();
        QVERIFY(!source.isStarted());
        QVERIFY(log.contains(QStringLiteral("[Gestures] Pinch monitor stopped")));
    }

    void monitorWithoutTouchpads()
    {
        LogCapture log;
        source.status = ContactFrameSource::Status::Unavailable;
        MultitouchPinchMonitor monitor(source, &power, clock);
        monitor.start(4, [](PinchDirection) {});
        QVERIFY(!monitor.isRunning());
        QCOMPARE(log.count(QStringLiteral("[Gestures] Touchpad devices unreadable — pinch disabled")), 1);
        monitor.stop(); // nothing was started: nothing to log
        QVERIFY(!log.contains(QStringLiteral("[Gestures] Pinch monitor stopped")));

        source.status = ContactFrameSource::Status::NoDevices;
        MultitouchPinchMonitor other(source, &power, clock);
        other.start(4, [](PinchDirection) {});
        QVERIFY(!other.isRunning());
        QVERIFY(log.contains(QStringLiteral("[Gestures] No multitouch touchpad found")));
    }

    void monitorPostsThePinch()
    {
        MultitouchPinchMonitor monitor(source, &power, clock);
        QList<PinchDirection> seen;
        monitor.start(4, [&](PinchDirection d) { seen.append(d); });
        double t = 50;
        for (const Step &s : pinch(0.06f, 0.10f)) {
            t += s.dt;
            source.deliver({contactsOf(s, 4), t});
        }
        QVERIFY(seen.isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(seen, QList<PinchDirection>{PinchDirection::pinchOut});
    }

    void wakeReArmsUntilAFrameArrives()
    {
        LogCapture log;
        MultitouchPinchMonitor monitor(source, &power, clock);
        monitor.start(4, [](PinchDirection) {});
        Q_EMIT power.willSleep();
        QVERIFY(!source.isStarted());
        QVERIFY(!monitor.isArmed());

        Q_EMIT power.didWake();
        clock.advance(1.49);
        QVERIFY(!source.isStarted());
        clock.advance(0.01);
        QVERIFY(source.isStarted());
        QCOMPARE(log.count(QStringLiteral("[Gestures] Re-armed 1 device(s) after wake")), 1);

        source.deliver({ring(2, 0.05f), 10});
        QVERIFY(log.contains(QStringLiteral("[Gestures] Device confirmed live after wake")));
        const int starts = source.starts;
        clock.advance(60);
        QCOMPARE(source.starts, starts);
        QVERIFY(!log.contains(QStringLiteral("[Gestures] Gave up re-arming after wake")));
    }

    void wakeGivesUpAfterThreeAttempts()
    {
        LogCapture log;
        MultitouchPinchMonitor monitor(source, &power, clock);
        monitor.start(4, [](PinchDirection) {});
        Q_EMIT power.willSleep();
        Q_EMIT power.didWake();
        const int starts = source.starts;
        clock.advance(1.5);
        clock.advance(4.0);
        QCOMPARE(source.starts, starts + 2);
        clock.advance(9.0);
        QCOMPARE(source.starts, starts + 3);
        QVERIFY(!log.contains(QStringLiteral("[Gestures] Gave up re-arming after wake")));
        clock.advance(9.0);
        QCOMPARE(log.count(QStringLiteral("[Gestures] Re-armed 1 device(s) after wake")), 3);
        QCOMPARE(log.count(QStringLiteral("[Gestures] Gave up re-arming after wake")), 1);
        clock.advance(60);
        QCOMPARE(source.starts, starts + 3);
        // Still running on whatever the last attempt armed.
        QVERIFY(monitor.isRunning());
    }

    void managerSettingsAndActions()
    {
        GesturesManager manager(store, source, &power, clock);
        QVERIFY(manager.isEnabled());
        QCOMPARE(manager.fingerCount(), 4);
        QVERIFY(source.isStarted());
        int opened = 0, closed = 0;
        manager.setOnOpen([&] { ++opened; });
        manager.setOnClose([&] { ++closed; });

        manager.setEnabled(true);
        manager.setFingerCount(4);
        QVERIFY(store->persistedKeys().isEmpty());

        double t = 10;
        const auto play = [&](const QList<Step> &steps, int fingers) {
            for (const Step &s : steps) {
                t += s.dt;
                source.deliver({contactsOf(s, fingers), t});
            }
            source.deliver({{}, t += 2});
            QCoreApplication::processEvents();
        };
        play(pinch(0.10f, 0.06f), 4);
        play(pinch(0.06f, 0.10f), 4);
        QCOMPARE(opened, 1);
        QCOMPARE(closed, 1);

        manager.setFingerCount(3);
        QCOMPARE(store->persistedObject(QLatin1String(GesturesManager::kFingerCountKey)), QVariant(qint64(3)));
        play(pinch(0.10f, 0.06f), 4);
        QCOMPARE(opened, 1);
        play(pinch(0.10f, 0.06f), 3);
        QCOMPARE(opened, 2);

        manager.setEnabled(false);
        QCOMPARE(store->persistedObject(QLatin1String(GesturesManager::kEnabledKey)), QVariant(false));
        QVERIFY(!source.isStarted());
        QVERIFY(!manager.pinchMonitor());
        manager.setEnabled(true);
        QVERIFY(source.isStarted());
        QCOMPARE(manager.pinchMonitor()->requiredFingers(), 3);
    }

    void storedSettingsAreRead()
    {
        store->set(false, QLatin1String(GesturesManager::kEnabledKey));
        store->set(5, QLatin1String(GesturesManager::kFingerCountKey));
        GesturesManager manager(store, source, &power, clock);
        QVERIFY(!manager.isEnabled());
        QCOMPARE(manager.fingerCount(), 5);
        QCOMPARE(source.starts, 0);
    }
};

QTEST_GUILESS_MAIN(PinchTest)
#include "tst_pinch.moc"
