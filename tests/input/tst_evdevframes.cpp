#include "platform/linux/EvdevFrameAssembler.h"
#include "platform/linux/EvdevTouchpadSource.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <linux/input-event-codes.h>
#include <unistd.h>

namespace {
struct Touch {
    int slot;
    int trackingId; // -1 lifts; 0 leaves the id as it is
    int x, y;
};

// Axes: x 0 ... 1000, y -100 ... 900.
EvdevFrameAssembler pad() { return EvdevFrameAssembler(5, {0, 1000}, {-100, 900}); }

// One evdev report: the touches, then SYN_REPORT at time t.
ContactFrame report(EvdevFrameAssembler &a, const QList<Touch> &touches, double t)
{
    for (const Touch &touch : touches) {
        a.feed(EV_ABS, ABS_MT_SLOT, touch.slot, t);
        if (touch.trackingId != 0)
            a.feed(EV_ABS, ABS_MT_TRACKING_ID, touch.trackingId, t);
        if (touch.trackingId >= 0) {
            a.feed(EV_ABS, ABS_MT_POSITION_X, touch.x, t);
            a.feed(EV_ABS, ABS_MT_POSITION_Y, touch.y, t);
        }
    }
    const auto frame = a.feed(EV_SYN, SYN_REPORT, 0, t);
    return frame.value_or(ContactFrame{{}, -1});
}
}

class EvdevFramesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void positionsAreNormalisedByTheAxes()
    {
        auto a = pad();
        const ContactFrame f = report(a, {{0, 11, 250, 400}, {1, 12, 0, -100}, {2, 13, 1000, 900}}, 5.0);
        QCOMPARE(f.timestamp, 5.0);
        QCOMPARE(f.contacts.size(), 3);
        const QList<QPointF> expected{{0.25, 0.5}, {0, 0}, {1, 1}};
        for (qsizetype i = 0; i < 3; ++i) {
            QCOMPARE(QPointF(f.contacts[i].x, f.contacts[i].y), expected[i]);
            QCOMPARE(f.contacts[i].vx, 0.0f); // just landed
        }
    }

    void nothingButAReportMakesAFrame()
    {
        auto a = pad();
        QVERIFY(!a.feed(EV_ABS, ABS_MT_SLOT, 0, 1.0));
        QVERIFY(!a.feed(EV_ABS, ABS_MT_TRACKING_ID, 4, 1.0));
        QVERIFY(!a.feed(EV_KEY, BTN_TOOL_FINGER, 1, 1.0));
        QVERIFY(!a.feed(EV_SYN, SYN_MT_REPORT, 0, 1.0));
        QCOMPARE(a.feed(EV_SYN, SYN_REPORT, 0, 1.0)->contacts.size(), 1);
    }

    void velocitiesFromSuccessiveFrames()
    {
        auto a = pad();
        report(a, {{0, 1, 100, 100}, {1, 2, 500, 500}}, 1.00);
        // Slot 0 moves 10 units (0.01 of the pad) right and 20 down in 10 ms;
        // slot 1 reports nothing new.
        const ContactFrame f = report(a, {{0, 0, 110, 120}}, 1.01);
        QCOMPARE(f.contacts.size(), 2);
        QVERIFY(qAbs(f.contacts[0].vx - 1.0f) < 1e-3f);
        QVERIFY(qAbs(f.contacts[0].vy - 2.0f) < 1e-3f);
        QCOMPARE(f.contacts[1].vx, 0.0f);
        QCOMPARE(f.contacts[1].vy, 0.0f);
    }

    void liftsAndNewFingersInAReusedSlot()
    {
        auto a = pad();
        report(a, {{0, 1, 100, 100}, {1, 2, 500, 500}, {2, 3, 900, 900}}, 1.00);
        QCOMPARE(report(a, {{1, -1, 0, 0}}, 1.01).contacts.size(), 2);
        // A new finger lands far away in slot 1: no velocity from the old one.
        const ContactFrame f = report(a, {{1, 7, 0, -100}}, 1.02);
        QCOMPARE(f.contacts.size(), 3);
        QCOMPARE(f.contacts[1].x, 0.0f);
        QCOMPARE(f.contacts[1].vx, 0.0f);
        QCOMPARE(report(a, {{0, -1, 0, 0}, {1, -1, 0, 0}, {2, -1, 0, 0}}, 1.03).contacts.size(), 0);
    }

    void fingersDownWhenOpened()
    {
        EvdevFrameAssembler a(3, {0, 1000}, {0, 1000}, 1);
        a.setSlot(0, 5, 500, 500);
        a.setSlot(1, -1, 0, 0);
        // The device's current slot was 1: a bare position update goes there.
        a.feed(EV_ABS, ABS_MT_TRACKING_ID, 6, 1.0);
        a.feed(EV_ABS, ABS_MT_POSITION_X, 100, 1.0);
        const auto f = a.feed(EV_SYN, SYN_REPORT, 0, 1.0);
        QCOMPARE(f->contacts.size(), 2);
        QCOMPARE(f->contacts[0].x, 0.5f);
        QCOMPARE(f->contacts[1].x, 0.1f);
    }

    void noTouchpadsInTheDirectory()
    {
        QTemporaryDir dir;
        EvdevTouchpadSource empty(dir.path());
        QCOMPARE(empty.start([](const ContactFrame &) {}).status, ContactFrameSource::Status::NoDevices);

        // A readable file that is no event device.
        QFile file(dir.filePath(QStringLiteral("event0")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("not a device");
        file.close();
        EvdevTouchpadSource plain(dir.path());
        QCOMPARE(plain.start([](const ContactFrame &) {}).status, ContactFrameSource::Status::NoDevices);

        if (geteuid() == 0)
            QSKIP("root reads any device node: the unreadable case needs an ordinary user");
        QVERIFY(file.setPermissions(QFileDevice::Permissions()));
        EvdevTouchpadSource denied(dir.path());
        QCOMPARE(denied.start([](const ContactFrame &) {}).status, ContactFrameSource::Status::Unavailable);
    }
};

QTEST_GUILESS_MAIN(EvdevFramesTest)
#include "tst_evdevframes.moc"
