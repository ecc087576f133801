// Start-up decisions over a scripted platform: single instance, login item,
// dock icon, registered defaults and reopen.
#include "app/AppDelegate.h"
#include "app/LaunchpadWindowController.h"
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "fakes/FakeApplicationPlatform.h"
#include "storage/UserDefaultsStore.h"

#include <QFile>
#include <QTest>

class StartupTest : public QObject {
    Q_OBJECT

    struct Launch {
        TempEnvironment env;
        FakeApplicationPlatform platform;
        std::unique_ptr<AppDelegate> delegate;
        int statusItems = 0;

        bool run()
        {
            delegate = std::make_unique<AppDelegate>(platform, StorageLocations{env.configDir(), env.dataDir()});
            delegate->setStatusItemFactory([this](LaunchpadWindowController &) {
                ++statusItems;
                return std::make_unique<QObject>();
            });
            delegate->applicationWillFinishLaunching();
            return delegate->applicationDidFinishLaunching();
        }
    };

private Q_SLOTS:
    void secondCopyActivatesTheFirstAndQuits_data()
    {
        QTest::addColumn<bool>("loginItem");
        QTest::newRow("started by the user") << false;
        // Started at login, it must not pop up the running copy's overlay.
        QTest::newRow("started at login") << true;
    }
    void secondCopyActivatesTheFirstAndQuits()
    {
        QFETCH(bool, loginItem);
        Launch launch;
        launch.platform.loginItem = loginItem;
        // Neither this process nor a copy on its way out counts.
        launch.platform.instances = {{launch.platform.pid, false}, {77, true}, {4242, false}};
        LogCapture log;
        QVERIFY(!launch.run());
        QVERIFY(log.contains(QStringLiteral(
            "Another Tillmora instance is already running (pid 4242); activating it and quitting this one.")));
        QCOMPARE(launch.platform.activated, loginItem ? QList<qint64>{} : QList<qint64>{4242});
        QCOMPARE(launch.platform.terminateCalls, 1);
        QVERIFY(!launch.delegate->windowController());
        QCOMPARE(launch.statusItems, 0);
        QCOMPARE(launch.platform.registerFontsCalls, 0);
        QVERIFY(!QFile::exists(launch.env.configDir())); // no store opened, no migration ran
    }

    void ordinaryLaunchShowsTheOverlayAfterStartUp()
    {
        Launch launch;
        launch.platform.instances = {{launch.platform.pid, false}, {77, true}};
        QVERIFY(launch.run());
        QCOMPARE(launch.platform.terminateCalls, 0);
        auto *controller = launch.delegate->windowController();
        // Queued: the show runs after did-finish-launching has returned.
        QVERIFY(!controller->overlayVisible());
        QTRY_VERIFY(controller->overlayVisible());
        QCOMPARE(launch.statusItems, 1);
        QCOMPARE(launch.platform.registerFontsCalls, 1);
    }

    void loginItemLaunchStaysInTheBackgroundUntilReopened()
    {
        Launch launch;
        launch.platform.loginItem = true;
        LogCapture log;
        QVERIFY(launch.run());
        QVERIFY(launch.delegate->launchedAsLoginItem());
        QVERIFY(log.contains(QStringLiteral("Cold launch via Login Item — starting in background without opening overlay.")));
        QTest::qWait(50);
        QVERIFY(!launch.delegate->windowController()->overlayVisible());
        QCOMPARE(launch.statusItems, 1);

        QVERIFY(!launch.delegate->applicationShouldHandleReopen(false));
        QVERIFY(launch.delegate->windowController()->overlayVisible());
        QVERIFY(!launch.delegate->applicationShouldTerminateAfterLastWindowClosed());
    }

    void dockIconFollowsTheStoredSwitch_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<bool>("visible");
        QTest::newRow("never written") << QVariant() << true;
        QTest::newRow("false") << QVariant(false) << false;
        QTest::newRow("not a boolean") << QVariant(QStringLiteral("no")) << true;
    }

    void dockIconFollowsTheStoredSwitch()
    {
        QFETCH(QVariant, stored);
        QFETCH(bool, visible);
        Launch launch;
        if (stored.isValid())
            UserDefaultsStore::standard(launch.env.configDir())->set(stored, QStringLiteral("ShowDockIcon"));
        QVERIFY(launch.run());
        QCOMPARE(launch.platform.dockIconVisible, std::optional<bool>(visible));
    }

    void registeredDefaultsAnswerWithoutTouchingDisk()
    {
        Launch launch;
        QVERIFY(launch.run());
        auto store = launch.delegate->windowController()->composition().userDefaultsStore;
        // One key from each batch answers.
        QVERIFY(store->boolValue(QStringLiteral("blurEnabled")));
        QCOMPARE(store->string(QStringLiteral("SearchLocation")), std::optional<QString>(QStringLiteral("center")));
        store->synchronize();
        // (A one-time migration does write ShowOverFullscreenEnabled.)
        for (const char *key : {"SearchLocation", "blurEnabled", "ClassicViewEnabled"})
            QVERIFY2(!store->persistedKeys().contains(QLatin1String(key)), key);
    }
};

QTEST_GUILESS_MAIN(StartupTest)
#include "test_startup.moc"
