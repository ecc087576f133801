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
// from the centroid is exactly `spread`), each moving with `velocity`.
QList<Contact> ring(int n, float spread, QPointF centre = {0.5, 0.5}, QPointF velocity = {})
{
    QList<Contact> contacts;
    for (int k = 0; k < n; ++k) {
        const double a = 2 * M_PI * k / n + 0.3;
        contacts.append({float(centre.x() + spread * std::cos(a)), float(centre.y() + spread * std::sin(a)),
                         float(velocity.x()), float(velocity.y())});
    }
    return contacts;
}

struct Step {
    float spread; // negative: every finger lifted
    double dt;    // seconds after the previous frame
};
constexpr float kLift = -1;

// How the hand moves besides changing its spread.
struct Hand {
    int fingers = 4;
    QPointF velocity; // of every finger
    QPointF drift;    // of the centroid, per frame
};
Hand fingers(int n) { return {n, {}, {}}; }
Hand sweeping(QPointF velocity) { return {4, velocity, {}}; }
Hand sliding(QPointF drift) { return {4, {}, drift}; }

QString name(PinchDirection d) { return d == PinchDirection::pinchIn ? QStringLiteral("in") : QStringLiteral("out"); }

// Feeds one frame per step; returns every direction recognised, space-separated.
QString feed(PinchRecognizer &r, double &t, const QList<Step> &steps, const Hand &hand = {})
{
    QStringList out;
    QPointF centre(0.5, 0.5);
    for (const Step &s : steps) {
        t += s.dt;
        centre += hand.drift;
        const auto contacts = s.spread < 0 ? QList<Contact>() : ring(hand.fingers, s.spread, centre, hand.velocity);
        if (const auto d = r.process(contacts, t))
            out.append(name(*d));
    }
    return out.join(u' ');
}

// Fingers land; three settling frames at `from`, then after `pause` the
// spread moves to `to` in eight frames 0.05 s apart.
QList<Step> pinch(float from, float to, double pause = 0)
{
    QList<Step> steps{{kLift, 0.5}, {from, 0.01}, {from, 0.02}, {from, 0.02}};
    for (int i = 1; i <= 8; ++i)
        steps.append({from + (to - from) * i / 8, i == 1 ? 0.05 + pause : 0.05});
    return steps;
}

// The spread goes from `from` to `to`, after `pause`, with `required`
// fingers expected.
struct Gesture {
    Gesture(float from = 0, float to = 0, Hand hand = {}, double pause = 0, int required = 4)
        : from(from), to(to), hand(hand), pause(pause), required(required) {}
    float from, to;
    Hand hand;
    double pause;
    int required;
};

}
Q_DECLARE_METATYPE(Gesture)

class PinchTest : public QObject {
    Q_OBJECT

    QTemporaryDir dir;
    std::shared_ptr<UserDefaultsStore> store;
    FakeContactFrameSource source;
    FakeClock clock;
    SleepWakeSource power;

    // Plays the frames through the source, then lifts the fingers for 2 s.
    // The pinch is posted: it arrives once the event loop runs.
    void play(double &t, const QList<Step> &steps, int fingers)
    {
        for (const Step &s : steps)
            source.deliver({s.spread < 0 ? QList<Contact>() : ring(fingers, s.spread), t += s.dt});
        source.deliver({{}, t += 2});
    }

private Q_SLOTS:
    void init()
    {
        store = std::make_shared<UserDefaultsStore>(QStringLiteral("gestures"), QStringLiteral("gestures"), dir.path());
        for (const QString &key : store->persistedKeys())
            store->removeObject(key);
        source.stop();
        source.status = ContactFrameSource::Status::Started;
        source.deviceCount = 1;
        source.starts = source.stops = 0;
    }

    void oneGesture_data()
    {
        QTest::addColumn<Gesture>("g");
        QTest::addColumn<QString>("seen");
        QTest::newRow("pinch in") << Gesture(0.10f, 0.06f) << "in";
        QTest::newRow("pinch out") << Gesture(0.06f, 0.10f) << "out";
        QTest::newRow("shrinks by a quarter only") << Gesture(0.10f, 0.075f) << "";
        QTest::newRow("grows by a quarter only") << Gesture(0.075f, 0.10f) << "";
        QTest::newRow("fingers start too close") << Gesture(0.035f, 0.01f) << "";
        // 0.10 -> 0.05 completes on the fifth moving frame, 0.29 s + pause
        // after landing; the gesture window is 1.5 s.
        QTest::newRow("completes just inside the window") << Gesture(0.10f, 0.05f, {}, 1.20) << "in";
        QTest::newRow("completes just after the window") << Gesture(0.10f, 0.05f, {}, 1.22) << "";
        QTest::newRow("five fingers, four required") << Gesture(0.10f, 0.06f, fingers(5)) << "";
        QTest::newRow("three fingers, four required") << Gesture(0.10f, 0.06f, fingers(3)) << "";
        QTest::newRow("three fingers, three required") << Gesture(0.10f, 0.06f, fingers(3), 0, 3) << "in";
        // Travel is limited to 0.6 x the spread.
        QTest::newRow("hand slides too far") << Gesture(0.10f, 0.05f, sliding({0.02, 0})) << "";
        QTest::newRow("hand slides a little") << Gesture(0.10f, 0.05f, sliding({0.005, 0})) << "in";
        QTest::newRow("every finger moves one way fast") << Gesture(0.10f, 0.06f, sweeping({0.5, 0.05})) << "";
    }

    void oneGesture()
    {
        QFETCH(Gesture, g);
        QFETCH(QString, seen);
        PinchRecognizer r(g.required);
        double t = 100;
        QCOMPARE(feed(r, t, pinch(g.from, g.to, g.pause), g.hand), seen);
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

    void aLiftedFingerStartsANewBaseline()
    {
        PinchRecognizer r;
        double t = 100;
        QCOMPARE(feed(r, t, {{0.10f, 0}, {0.10f, 0.02}, {0.10f, 0.02}, {0.10f, 0.02}}), QString());
        QCOMPARE(feed(r, t, {{0.10f, 0.02}}, fingers(3)), QString());
        // Back to four at a smaller spread: measured from there, no pinch.
        QCOMPARE(feed(r, t, {{0.06f, 0.02}, {0.06f, 0.02}, {0.06f, 0.02}, {0.06f, 0.02}}), QString());
    }

    void cooldownSwallowsASecondPinch()
    {
        PinchRecognizer r;
        double t = 100;
        QCOMPARE(feed(r, t, pinch(0.10f, 0.06f)), QStringLiteral("in"));
        const double fired = t;
        // Lift, land again and pinch out, all within 0.8 s of the first.
        feed(r, t, {{kLift, 0.05}});
        QCOMPARE(feed(r, t, {{0.06f, 0.05}, {0.06f, 0.02}, {0.06f, 0.02}, {0.08f, 0.1}, {0.10f, 0.1}, {0.11f, 0.1}}),
                 QString());
        QVERIFY(t - fired <= 0.8);
        // The same pinch well after the cooldown fires.
        t = fired + 0.7; // the pinch lands 1.2 s after the first fired
        QCOMPARE(feed(r, t, pinch(0.06f, 0.10f)), QStringLiteral("out"));
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

    void monitorStartAndStop_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("line");
        QTest::newRow("started") << int(ContactFrameSource::Status::Started)
                                 << "[Gestures] Pinch monitor started on 2 device(s)";
        QTest::newRow("unreadable") << int(ContactFrameSource::Status::Unavailable)
                                    << "[Gestures] Touchpad devices unreadable — pinch disabled";
        QTest::newRow("no touchpad") << int(ContactFrameSource::Status::NoDevices)
                                     << "[Gestures] No multitouch touchpad found";
    }

    void monitorStartAndStop()
    {
        QFETCH(int, status);
        QFETCH(QString, line);
        LogCapture log;
        source.status = ContactFrameSource::Status(status);
        source.deviceCount = 2;
        const bool started = source.status == ContactFrameSource::Status::Started;
        MultitouchPinchMonitor monitor(source, &power, clock);
        monitor.start(4, [](PinchDirection) {});
        QCOMPARE(monitor.isRunning(), started);
        QCOMPARE(log.count(line), 1);
        monitor.stop();
        QVERIFY(!source.isStarted());
        // Only a monitor that started says it stopped.
        QCOMPARE(log.contains(QStringLiteral("[Gestures] Pinch monitor stopped")), started);
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
        clock.advance(1.5 + 4.0);
        QCOMPARE(source.starts, starts + 2);
        clock.advance(9.0);
        QCOMPARE(source.starts, starts + 3);
        // The third re-arm gets its full delay before giving up.
        QVERIFY(!log.contains(QStringLiteral("[Gestures] Gave up re-arming after wake")));
        clock.advance(9.0 + 60);
        QCOMPARE(log.count(QStringLiteral("[Gestures] Gave up re-arming after wake")), 1);
        QCOMPARE(source.starts, starts + 3);
        QVERIFY(monitor.isRunning()); // on whatever the last attempt armed
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
        play(t, pinch(0.10f, 0.06f), 4);
        QCOMPARE(opened, 0); // not called from inside the frame handler
        QCoreApplication::processEvents();
        QCOMPARE(opened, 1);
        play(t, pinch(0.06f, 0.10f), 4);
        QCoreApplication::processEvents();
        QCOMPARE(closed, 1);

        manager.setFingerCount(3);
        QCOMPARE(store->persistedObject(QLatin1String(GesturesManager::kFingerCountKey)), QVariant(qint64(3)));
        play(t, pinch(0.10f, 0.06f), 4);
        play(t, pinch(0.10f, 0.06f), 3);
        QCoreApplication::processEvents();
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
