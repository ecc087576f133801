#include "app/LaunchpadWindowController.h"
#include "common/TempEnvironment.h"
#include "input/GesturesManager.h"
#include "input/HotCornersManager.h"
#include "input/HotKeyManager.h"
#include "input/KnockToLaunchManager.h"
#include "fakes/FakeApplicationActivity.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeContactFrameSource.h"
#include "fakes/FakeHotKeyService.h"
#include "fakes/FakePointerSource.h"
#include "storage/UserDefaultsStore.h"

#include <QProcess>
#include <QTest>

namespace {
constexpr HotKeyId kToggle{HotKeyManager::mainAppSignature, 1};

QList<Contact> square(float spread)
{
    return {{0.5f + spread, 0.5f}, {0.5f - spread, 0.5f}, {0.5f, 0.5f + spread}, {0.5f, 0.5f - spread}};
}
}

// The window controller starts the activation inputs and binds them to the
// overlay's toggle, show and hide.
class ActivationWiringTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TempEnvironment> env;
    std::shared_ptr<FakeHotKeyService> hotKeys;
    std::shared_ptr<FakePointerSource> pointer;
    std::shared_ptr<FakeContactFrameSource> touchpads;
    std::shared_ptr<FakeApplicationActivity> activity;
    std::shared_ptr<FakeClock> clock;
    std::shared_ptr<UserDefaultsStore> settings;

    std::unique_ptr<LaunchpadWindowController> start()
    {
        return std::make_unique<LaunchpadWindowController>(
            StorageLocations{env->configDir(), env->dataDir()}, CataloguePlatform{},
            InputPlatform{hotKeys, pointer, touchpads, std::make_shared<SleepWakeSource>(), activity, clock});
    }

    void pinch(float from, float to, double &t)
    {
        for (int i = 0; i < 3; ++i)
            touchpads->deliver({square(from), t += 0.02});
        for (int i = 1; i <= 8; ++i)
            touchpads->deliver({square(from + (to - from) * float(i) / 8), t += 0.05});
        touchpads->deliver({{}, t += 2.0});
        QCoreApplication::processEvents();
    }

private Q_SLOTS:
    void init()
    {
        env = std::make_unique<TempEnvironment>();
        hotKeys = std::make_shared<FakeHotKeyService>();
        pointer = std::make_shared<FakePointerSource>();
        touchpads = std::make_shared<FakeContactFrameSource>();
        activity = std::make_shared<FakeApplicationActivity>();
        clock = std::make_shared<FakeClock>();
        settings = UserDefaultsStore::standard(env->configDir());
    }

    void cleanup()
    {
        settings.reset();
        env.reset();
    }

    void storedCornerWaitsForActivationThenToggles()
    {
        settings->set(true, QLatin1String(HotCornersManager::kEnabledKey));
        settings->set(QStringLiteral("bottomRight"), QLatin1String(HotCornersManager::kSelectedKey));
        settings->synchronize();
        auto controller = start();
        QVERIFY(controller->hotCornersManager().isEnabled());
        QVERIFY(!controller->hotCornersManager().isMonitoring());

        pointer->position = QPoint(1439, 899);
        activity->activate();
        clock->advance(1.0);
        QCoreApplication::processEvents();
        QVERIFY(controller->overlayVisible());
    }

    void hotkeyTogglesAndPinchesOpenAndClose()
    {
        auto controller = start();
        QVERIFY(hotKeys->find(kToggle));
        hotKeys->pressCombination(21, 0x100);
        QCoreApplication::processEvents();
        QVERIFY(controller->overlayVisible());
        hotKeys->pressCombination(21, 0x100);
        QCoreApplication::processEvents();
        QVERIFY(!controller->overlayVisible());

        QVERIFY(touchpads->isStarted());
        double t = 100;
        pinch(0.10f, 0.06f, t);
        QVERIFY(controller->overlayVisible());
        pinch(0.10f, 0.06f, t); // open stays open
        QVERIFY(controller->overlayVisible());
        pinch(0.06f, 0.10f, t);
        QVERIFY(!controller->overlayVisible());
    }

    void knockComesUpOff()
    {
        settings->set(true, QLatin1String(KnockToLaunchManager::kEnabledKey));
        settings->synchronize();
        auto controller = start();
        QVERIFY(!controller->knockToLaunchManager().isEnabled());
        QCOMPARE(settings->persistedObject(QLatin1String(KnockToLaunchManager::kEnabledKey)), QVariant(false));
    }

    void teardownReleasesTheInputs()
    {
        auto controller = start();
        controller->hotCornersManager().setSelectedCorner(HotCorner::topLeft);
        controller->hotCornersManager().setEnabled(true);
        QVERIFY(pointer->isListening());
        controller.reset();
        QVERIFY(!hotKeys->find(kToggle));
        QVERIFY(!pointer->isListening());
        QCOMPARE(clock->activeTimers(), 0);
        // Quitting releases the corner but keeps the user's choice for the next start.
        QCOMPARE(settings->persistedObject(QLatin1String(HotCornersManager::kEnabledKey)), QVariant(true));
    }

    void withoutAdaptorsNothingBreaks()
    {
        LaunchpadWindowController controller(StorageLocations{env->configDir(), env->dataDir()});
        QVERIFY(!controller.hotKeyManager().isToggleRegistered());
        QVERIFY(controller.gesturesManager().isEnabled());
        controller.toggleOverlay();
        QVERIFY(controller.overlayVisible());
    }

    void oversizedStoredKeyCodeStopsStartUp()
    {
        settings->set(qint64(4294967296LL), QLatin1String(HotKeyManager::kKeyCodeKey));
        settings->synchronize();
        QProcess tillmora;
        QProcessEnvironment pe = QProcessEnvironment::systemEnvironment();
        pe.remove(QStringLiteral("DISPLAY"));
        pe.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        tillmora.setProcessEnvironment(pe);
        tillmora.start(QStringLiteral(TILLMORA_BINARY), {QStringLiteral("--login-item")});
        QVERIFY(tillmora.waitForFinished(20000));
        QCOMPARE(tillmora.exitStatus(), QProcess::CrashExit);
        const QString err = QString::fromLocal8Bit(tillmora.readAllStandardError());
        QVERIFY2(err.contains(QLatin1String("The stored hot key code 4294967296 under \"hotKey.keyCode\" does not fit "
                                            "an unsigned 32-bit key code")),
                 qPrintable(err));
    }
};

QTEST_GUILESS_MAIN(ActivationWiringTest)
#include "tst_activationwiring.moc"
