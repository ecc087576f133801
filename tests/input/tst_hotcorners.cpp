#include "input/HotCornersManager.h"
#include "fakes/FakeApplicationActivity.h"
#include "fakes/FakeClock.h"
#include "fakes/FakePointerSource.h"
#include "storage/UserDefaultsStore.h"

#include <QTemporaryDir>
#include <QTest>

using namespace HotCornerGeometry;
Q_DECLARE_METATYPE(HotCorner)

namespace {
// y-down pixels on the default 1440 x 900 main screen.
constexpr QPoint kTopLeftPixel(0, 0);
constexpr QPoint kMiddle(700, 450);
}

class HotCornersTest : public QObject {
    Q_OBJECT

    QTemporaryDir dir;
    std::shared_ptr<UserDefaultsStore> store;
    std::unique_ptr<FakePointerSource> pointer;
    std::unique_ptr<FakeApplicationActivity> activity;
    std::unique_ptr<FakeClock> clock;
    int fired = 0;

    std::unique_ptr<HotCornersManager> make()
    {
        auto manager = std::make_unique<HotCornersManager>(store, *pointer, *activity, *clock);
        manager->setOnActivate([this] { ++fired; });
        return manager;
    }
    // A manager watching the top-left corner, monitoring from now on.
    std::unique_ptr<HotCornersManager> watchingTopLeft()
    {
        auto manager = make();
        manager->setSelectedCorner(HotCorner::topLeft);
        manager->setEnabled(true);
        return manager;
    }
    int firedAfter(double seconds)
    {
        clock->advance(seconds);
        QCoreApplication::processEvents();
        return fired;
    }

private Q_SLOTS:
    void init()
    {
        store = std::make_shared<UserDefaultsStore>(QStringLiteral("corners"), QStringLiteral("corners"), dir.path());
        for (const QString &key : store->persistedKeys())
            store->removeObject(key);
        pointer = std::make_unique<FakePointerSource>();
        activity = std::make_unique<FakeApplicationActivity>();
        clock = std::make_unique<FakeClock>();
        fired = 0;
    }

    // y-down pixels through the same path the manager takes: global
    // coordinates, the screen under the pointer (else the main one), its zone.
    void pixelsInTheZones_data()
    {
        QTest::addColumn<QList<QRect>>("screens");
        QTest::addColumn<HotCorner>("corner");
        QTest::addColumn<QPoint>("pixel");
        QTest::addColumn<bool>("inside");
        const QList<QRect> one{QRect(0, 0, 1440, 900)};
        // Zones are ten pixels square; maximum edges are outside.
        QTest::newRow("top-left pixel") << one << HotCorner::topLeft << QPoint(0, 0) << true;
        QTest::newRow("tenth row and column") << one << HotCorner::topLeft << QPoint(9, 9) << true;
        QTest::newRow("eleventh column") << one << HotCorner::topLeft << QPoint(10, 0) << false;
        QTest::newRow("eleventh row") << one << HotCorner::topLeft << QPoint(0, 10) << false;
        QTest::newRow("above the top edge") << one << HotCorner::topLeft << QPoint(0, -1) << false;
        QTest::newRow("bottom row") << one << HotCorner::bottomLeft << QPoint(0, 899) << true;
        QTest::newRow("bottom zone top row") << one << HotCorner::bottomLeft << QPoint(0, 890) << true;
        QTest::newRow("above the bottom zone") << one << HotCorner::bottomLeft << QPoint(0, 889) << false;
        QTest::newRow("left of the screen") << one << HotCorner::bottomLeft << QPoint(-1, 899) << false;
        QTest::newRow("top-right pixel") << one << HotCorner::topRight << QPoint(1439, 0) << true;
        QTest::newRow("top-right zone left column") << one << HotCorner::topRight << QPoint(1430, 9) << true;
        QTest::newRow("left of the top-right zone") << one << HotCorner::topRight << QPoint(1429, 0) << false;
        QTest::newRow("right of the screen") << one << HotCorner::topRight << QPoint(1440, 0) << false;
        QTest::newRow("last pixel") << one << HotCorner::bottomRight << QPoint(1439, 899) << true;
        QTest::newRow("below the screen") << one << HotCorner::bottomRight << QPoint(1435, 900) << false;
        QTest::newRow("none has no zone") << one << HotCorner::none << QPoint(0, 0) << false;
        // A taller screen to the right of the main one, and one stacked above:
        // corners bordering another screen belong to the screen under the pointer.
        const QList<QRect> three{QRect(0, 0, 1440, 900), QRect(1440, 0, 1920, 1080), QRect(0, -1080, 1920, 1080)};
        QTest::newRow("second screen top-left") << three << HotCorner::topLeft << QPoint(1440, 0) << true;
        QTest::newRow("main top-right beside it") << three << HotCorner::topRight << QPoint(1439, 0) << true;
        QTest::newRow("main top-right is no top-left") << three << HotCorner::topLeft << QPoint(1439, 0) << false;
        QTest::newRow("main top-left under a screen") << three << HotCorner::topLeft << QPoint(0, 0) << true;
        QTest::newRow("upper screen bottom-left") << three << HotCorner::bottomLeft << QPoint(0, -1) << true;
        QTest::newRow("taller screen bottom-left") << three << HotCorner::bottomLeft << QPoint(1440, 1079) << true;
        QTest::newRow("taller screen at main's bottom") << three << HotCorner::bottomLeft << QPoint(1440, 899) << false;
    }

    void pixelsInTheZones()
    {
        QFETCH(QList<QRect>, screens);
        QFETCH(HotCorner, corner);
        QFETCH(QPoint, pixel);
        QFETCH(bool, inside);
        const Space space(screens);
        const QPointF p = space.point(pixel);
        const auto frame = screenFor(p, space.frames(), space.mainFrame());
        QVERIFY(frame);
        QCOMPARE(isInZone(corner, *frame, p), inside);
    }

    void storedSettingsAreRead_data()
    {
        QTest::addColumn<QVariant>("enabled");
        QTest::addColumn<QString>("selected");
        QTest::addColumn<HotCorner>("corner");
        QTest::newRow("nothing stored") << QVariant() << QString() << HotCorner::none;
        QTest::newRow("unknown corner") << QVariant(true) << "sideways" << HotCorner::none;
        QTest::newRow("bottom-right") << QVariant(true) << "bottomRight" << HotCorner::bottomRight;
    }

    void storedSettingsAreRead()
    {
        QFETCH(QVariant, enabled);
        QFETCH(QString, selected);
        QFETCH(HotCorner, corner);
        store->set(enabled, QLatin1String(HotCornersManager::kEnabledKey));
        store->set(selected.isNull() ? QVariant() : QVariant(selected), QLatin1String(HotCornersManager::kSelectedKey));
        auto manager = make();
        QCOMPARE(manager->isEnabled(), enabled.toBool());
        QCOMPARE(manager->selectedCorner(), corner);
        // Stored on or not, nothing is watched before the first activation.
        QVERIFY(!manager->isMonitoring());
        QCOMPARE(pointer->listenerStarts, 0);
    }

    void settersWriteOnlyChanges()
    {
        auto manager = make();
        manager->setSelectedCorner(HotCorner::none);
        manager->setEnabled(false);
        QVERIFY(store->persistedKeys().isEmpty());

        manager->setSelectedCorner(HotCorner::topRight);
        QCOMPARE(store->persistedObject(QLatin1String(HotCornersManager::kSelectedKey)), QVariant(QStringLiteral("topRight")));
        QVERIFY(!manager->isMonitoring()); // disabled: a new corner starts nothing
        manager->setEnabled(true);
        QCOMPARE(store->persistedObject(QLatin1String(HotCornersManager::kEnabledKey)), QVariant(true));
        QVERIFY(manager->isMonitoring());
        QVERIFY(pointer->isListening());
        manager->setEnabled(false);
        QCOMPARE(store->persistedObject(QLatin1String(HotCornersManager::kEnabledKey)), QVariant(false));
        QVERIFY(!manager->isMonitoring());
        QVERIFY(!pointer->isListening());
        QCOMPARE(clock->activeTimers(), 0);
    }

    void storedOnWaitsForActivation()
    {
        store->set(true, QLatin1String(HotCornersManager::kEnabledKey));
        store->set(QStringLiteral("topLeft"), QLatin1String(HotCornersManager::kSelectedKey));
        auto manager = make();
        manager->setEnabled(true); // what start-up does: already true, so nothing
        pointer->position = kTopLeftPixel;
        QCOMPARE(firedAfter(2.0), 0);
        QVERIFY(!manager->isMonitoring());

        activity->activate();
        QCOMPARE(firedAfter(0.49), 0);
        QVERIFY(!manager->isMonitoring());
        clock->advance(0.01);
        QVERIFY(manager->isMonitoring());
        QVERIFY(pointer->isListening());
        QCOMPARE(firedAfter(0.5), 1);
    }

    void activationWithoutMotionListenerStops()
    {
        pointer->listenerAllowed = false;
        auto manager = watchingTopLeft();
        QVERIFY(manager->isMonitoring());
        QVERIFY(!pointer->isListening()); // the sampler alone
        activity->activate();
        QVERIFY(!manager->isMonitoring());
        clock->advance(1.0);
        QVERIFY(!manager->isMonitoring());
    }

    void restingInACornerFires_data()
    {
        QTest::addColumn<QList<QRect>>("screens");
        QTest::addColumn<HotCorner>("corner");
        QTest::addColumn<QPoint>("pixel");
        QTest::addColumn<bool>("listenerWorks");
        QTest::addColumn<int>("activations");
        const QList<QRect> one{QRect(0, 0, 1440, 900)}, two{QRect(0, 0, 1440, 900), QRect(1440, 0, 1920, 1080)};
        QTest::newRow("listener") << one << HotCorner::topLeft << QPoint(0, 0) << true << 1;
        QTest::newRow("sampler alone when the listener fails") << one << HotCorner::topLeft << QPoint(0, 0) << false << 1;
        QTest::newRow("bottom-right") << one << HotCorner::bottomRight << QPoint(1439, 899) << true << 1;
        QTest::newRow("no corner chosen, top-left") << one << HotCorner::none << QPoint(0, 0) << true << 0;
        QTest::newRow("no corner chosen, bottom-right") << one << HotCorner::none << QPoint(1439, 899) << true << 0;
        QTest::newRow("no screens") << QList<QRect>() << HotCorner::topLeft << QPoint(0, 0) << true << 0;
        QTest::newRow("main screen's top-right") << two << HotCorner::topLeft << QPoint(1439, 0) << true << 0;
        QTest::newRow("second screen's top-left") << two << HotCorner::topLeft << QPoint(1440, 0) << true << 1;
    }

    void restingInACornerFires()
    {
        QFETCH(QList<QRect>, screens);
        QFETCH(HotCorner, corner);
        QFETCH(QPoint, pixel);
        QFETCH(bool, listenerWorks);
        QFETCH(int, activations);
        pointer->screens = screens;
        pointer->listenerWorks = listenerWorks;
        auto manager = make();
        manager->setSelectedCorner(corner);
        manager->setEnabled(true);
        pointer->moveTo(pixel);
        QCOMPARE(firedAfter(0.6), activations);
    }

    void dwellIsMeasuredFromTheArmingCheck()
    {
        auto manager = watchingTopLeft();
        pointer->moveTo(kTopLeftPixel); // armed now, by the listener
        clock->advance(0.29);
        pointer->moveTo(QPoint(1, 1));
        QCOMPARE(firedAfter(0), 0);
        clock->advance(0.01);
        pointer->moveTo(QPoint(2, 2)); // 0.30 s
        QCOMPARE(fired, 0); // posted, not called from the check
        QCOMPARE(firedAfter(0), 1);
    }

    void leavingBeforeTheDwellCancels()
    {
        auto manager = watchingTopLeft();
        pointer->moveTo(kTopLeftPixel);
        clock->advance(0.25);
        pointer->moveTo(kMiddle);
        QCOMPARE(firedAfter(1.0), 0);
        // Coming back starts a new dwell.
        pointer->moveTo(kTopLeftPixel);
        QCOMPARE(firedAfter(0.2), 0);
        QCOMPARE(firedAfter(0.2), 1);
    }

    void restingPointerFiresAgain()
    {
        pointer->listenerAllowed = false;
        auto manager = watchingTopLeft();
        pointer->position = kTopLeftPixel;
        const int count = firedAfter(1.0);
        QVERIFY2(count == 2 || count == 3, qPrintable(QString::number(count)));
        // Two more seconds of rest: four or more further activations.
        QVERIFY(firedAfter(2.0) >= count + 4);
    }

    void stoppingClearsTheArm()
    {
        auto manager = watchingTopLeft();
        pointer->moveTo(kTopLeftPixel);
        clock->advance(0.2);
        manager->setEnabled(false);
        manager->setEnabled(true);
        // Without a fresh arm this would fire now (0.3 s after the first).
        pointer->moveTo(QPoint(3, 3));
        clock->advance(0.1);
        pointer->moveTo(QPoint(4, 4));
        QCOMPARE(firedAfter(0), 0);
        QCOMPARE(firedAfter(0.3), 1);
    }

    void teardownStopsEverything()
    {
        auto manager = watchingTopLeft();
        manager.reset();
        QVERIFY(!pointer->isListening());
        QCOMPARE(clock->activeTimers(), 0);
        activity->activate(); // the observer is gone
        clock->advance(1.0);
        QCOMPARE(clock->activeTimers(), 0);
    }
};

QTEST_GUILESS_MAIN(HotCornersTest)
#include "tst_hotcorners.moc"
