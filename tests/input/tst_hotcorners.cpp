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

    void zoneTestInGlobalCoordinates_data()
    {
        QTest::addColumn<HotCorner>("corner");
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<bool>("inside");
        // Frame (100, 50) to (1540, 950), y growing upward.
        QTest::newRow("top edge line is outside") << HotCorner::topLeft << QPointF(100, 950) << false;
        QTest::newRow("just below the top edge") << HotCorner::topLeft << QPointF(100, 949.99) << true;
        QTest::newRow("top zone lower bound") << HotCorner::topLeft << QPointF(109.99, 940) << true;
        QTest::newRow("top zone below") << HotCorner::topLeft << QPointF(100, 939.99) << false;
        QTest::newRow("top zone right bound") << HotCorner::topLeft << QPointF(110, 945) << false;
        QTest::newRow("bottom-left minimum point") << HotCorner::bottomLeft << QPointF(100, 50) << true;
        QTest::newRow("left of the frame") << HotCorner::bottomLeft << QPointF(99.99, 50) << false;
        QTest::newRow("bottom zone top bound") << HotCorner::bottomLeft << QPointF(100, 60) << false;
        QTest::newRow("right edge line is outside") << HotCorner::topRight << QPointF(1540, 945) << false;
        QTest::newRow("top-right inside") << HotCorner::topRight << QPointF(1530, 940) << true;
        QTest::newRow("top-right left bound") << HotCorner::topRight << QPointF(1529.99, 945) << false;
        QTest::newRow("bottom-right inside") << HotCorner::bottomRight << QPointF(1539.99, 50) << true;
        QTest::newRow("bottom-right below") << HotCorner::bottomRight << QPointF(1535, 49.99) << false;
        QTest::newRow("none has no zone") << HotCorner::none << QPointF(100, 50) << false;
    }

    void zoneTestInGlobalCoordinates()
    {
        QFETCH(HotCorner, corner);
        QFETCH(QPointF, point);
        QFETCH(bool, inside);
        QCOMPARE(isInZone(corner, QRectF(100, 50, 1440, 900), point), inside);
    }

    void desktopPixelsInTheZones_data()
    {
        QTest::addColumn<HotCorner>("corner");
        QTest::addColumn<QPoint>("pixel");
        QTest::addColumn<bool>("inside");
        // y-down pixels of a 1440 x 900 screen: ten rows and columns per zone.
        QTest::newRow("top-left pixel") << HotCorner::topLeft << QPoint(0, 0) << true;
        QTest::newRow("tenth row") << HotCorner::topLeft << QPoint(9, 9) << true;
        QTest::newRow("eleventh row") << HotCorner::topLeft << QPoint(0, 10) << false;
        QTest::newRow("eleventh column") << HotCorner::topLeft << QPoint(10, 0) << false;
        QTest::newRow("bottom row") << HotCorner::bottomLeft << QPoint(0, 899) << true;
        QTest::newRow("above the bottom zone") << HotCorner::bottomLeft << QPoint(0, 889) << false;
        QTest::newRow("bottom zone top row") << HotCorner::bottomLeft << QPoint(0, 890) << true;
        QTest::newRow("last pixel") << HotCorner::bottomRight << QPoint(1439, 899) << true;
        QTest::newRow("top-right pixel") << HotCorner::topRight << QPoint(1439, 0) << true;
        QTest::newRow("top-right zone left column") << HotCorner::topRight << QPoint(1430, 0) << true;
        QTest::newRow("left of the top-right zone") << HotCorner::topRight << QPoint(1429, 0) << false;
    }

    void desktopPixelsInTheZones()
    {
        QFETCH(HotCorner, corner);
        QFETCH(QPoint, pixel);
        QFETCH(bool, inside);
        const Space space({QRect(0, 0, 1440, 900)});
        const QPointF p = space.point(pixel);
        const auto frame = screenFor(p, space.frames(), space.mainFrame());
        QVERIFY(frame);
        QCOMPARE(isInZone(corner, *frame, p), inside);
    }

    void twoScreensEachHaveTheirCorners()
    {
        // A taller screen to the right of the main one, and one stacked above.
        const Space space({QRect(0, 0, 1440, 900), QRect(1440, 0, 1920, 1080), QRect(0, -1080, 1920, 1080)});
        QCOMPARE(space.frames().at(1), QRectF(1440, -180, 1920, 1080));
        QCOMPARE(space.frames().at(2), QRectF(0, 900, 1920, 1080));

        const auto zoneOf = [&](HotCorner corner, QPoint pixel) {
            const QPointF p = space.point(pixel);
            return isInZone(corner, *screenFor(p, space.frames(), space.mainFrame()), p);
        };
        // Corners that border another screen belong to the screen under the pointer.
        QVERIFY(zoneOf(HotCorner::topLeft, QPoint(1440, 0)));
        QVERIFY(zoneOf(HotCorner::topRight, QPoint(1439, 0)));
        QVERIFY(!zoneOf(HotCorner::topLeft, QPoint(1439, 0)));
        QVERIFY(zoneOf(HotCorner::bottomLeft, QPoint(0, -1)));
        QVERIFY(zoneOf(HotCorner::topLeft, QPoint(0, 0)));
        QVERIFY(zoneOf(HotCorner::bottomLeft, QPoint(1440, 1079)));
        QVERIFY(!zoneOf(HotCorner::bottomLeft, QPoint(1440, 899)));
    }

    void screenChoiceFallsBackToTheMainScreen()
    {
        const QList<QRectF> frames{QRectF(0, 0, 100, 100), QRectF(100, 0, 100, 100)};
        QCOMPARE(screenFor(QPointF(150, 50), frames, frames.first()), frames.at(1));
        QCOMPARE(screenFor(QPointF(-5, 50), frames, frames.first()), frames.first());
        QCOMPARE(screenFor(QPointF(-5, 50), {}, std::nullopt), std::nullopt);
    }

    void settingsAndConstruction()
    {
        {
            auto manager = make();
            QVERIFY(!manager->isEnabled());
            QCOMPARE(manager->selectedCorner(), HotCorner::none);
        }
        store->set(true, QLatin1String(HotCornersManager::kEnabledKey));
        store->set(QStringLiteral("sideways"), QLatin1String(HotCornersManager::kSelectedKey));
        auto unknown = make();
        QCOMPARE(unknown->selectedCorner(), HotCorner::none);

        store->set(QStringLiteral("bottomRight"), QLatin1String(HotCornersManager::kSelectedKey));
        auto manager = make();
        QVERIFY(manager->isEnabled());
        QCOMPARE(manager->selectedCorner(), HotCorner::bottomRight);
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

    void failedListenerLeavesTheSampler()
    {
        pointer->listenerWorks = false;
        auto manager = watchingTopLeft();
        pointer->position = kTopLeftPixel;
        QCOMPARE(firedAfter(0.6), 1);
    }

    void noneNeverFires()
    {
        auto manager = make();
        manager->setEnabled(true);
        for (const QPoint p : {QPoint(0, 0), QPoint(1439, 0), QPoint(0, 899), QPoint(1439, 899)}) {
            pointer->moveTo(p);
            clock->advance(1.0);
        }
        QCoreApplication::processEvents();
        QCOMPARE(fired, 0);
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

    void firesOnTheScreenUnderThePointer()
    {
        pointer->screens = {QRect(0, 0, 1440, 900), QRect(1440, 0, 1920, 1080)};
        auto manager = watchingTopLeft();
        pointer->moveTo(QPoint(1439, 0)); // top-right of the main screen
        QCOMPARE(firedAfter(1.0), 0);
        pointer->moveTo(QPoint(1440, 0)); // top-left of the second
        QCOMPARE(firedAfter(0.5), 1);
    }

    void noScreensDoesNothing()
    {
        pointer->screens.clear();
        auto manager = watchingTopLeft();
        pointer->moveTo(kTopLeftPixel);
        QCOMPARE(firedAfter(1.0), 0);
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
