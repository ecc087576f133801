// Start-up decisions over a scripted platform: single instance, login item,
// dock icon, registered defaults and reopen.
#include "app/AppDelegate.h"
#include "app/LaunchpadWindowController.h"
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "fakes/FakeApplicationPlatform.h"
#include "storage/UserDefaultsStore.h"

#include <QFile>
#include <QSignalSpy>
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
    void secondCopyActivatesTheFirstAndQuits();
    void ownProcessAndTerminatingCopiesDoNotCount();
    void ordinaryLaunchShowsTheOverlayAfterStartUp();
    void loginItemLaunchStaysInTheBackground();
    void dockIconFollowsTheStoredSwitch_data();
    void dockIconFollowsTheStoredSwitch();
    void registeredDefaultsAnswerWithoutTouchingDisk();
    void reopenShowsTheOverlay();
};

void StartupTest::secondCopyActivatesTheFirstAndQuits()
{
    Launch launch;
    launch.platform.instances = {{launch.platform.pid, false}, {4242, false}};
    LogCapture log;
    QVERIFY(!launch.run());
    QVERIFY(log.contains(
        QStringLiteral("Another Tillmora instance is already running (pid 4242); activating it and quitting this one.")));
    QCOMPARE(launch.platform.activated, QList<qint64>{4242});
    QCOMPARE(launch.platform.terminateCalls, 1);
    QVERIFY(!launch.delegate->windowController());
    QCOMPARE(launch.statusItems, 0);
    QCOMPARE(launch.platform.registerFontsCalls, 0);
    QVERIFY(!QFile::exists(launch.env.configDir())); // no store opened, no migration ran
}

void StartupTest::ownProcessAndTerminatingCopiesDoNotCount()
{
    Launch launch;
    launch.platform.instances = {{launch.platform.pid, false}, {77, true}};
    QVERIFY(launch.run());
    QVERIFY(launch.platform.activated.isEmpty());
    QCOMPARE(launch.platform.terminateCalls, 0);
    QVERIFY(launch.delegate->windowController());
}

void StartupTest::ordinaryLaunchShowsTheOverlayAfterStartUp()
{
    Launch launch;
    QVERIFY(launch.run());
    auto *controller = launch.delegate->windowController();
    // Queued: the show runs after did-finish-launching has returned.
    QVERIFY(!controller->overlayVisible());
    QTRY_VERIFY(controller->overlayVisible());
    QCOMPARE(launch.statusItems, 1);
    QCOMPARE(launch.platform.registerFontsCalls, 1);
}

void StartupTest::loginItemLaunchStaysInTheBackground()
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
}

void StartupTest::dockIconFollowsTheStoredSwitch_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("visible");
    QTest::newRow("never written") << QVariant() << true;
    QTest::newRow("false") << QVariant(false) << false;
    QTest::newRow("true") << QVariant(true) << true;
    QTest::newRow("not a boolean") << QVariant(QStringLiteral("no")) << true;
}

void StartupTest::dockIconFollowsTheStoredSwitch()
{
    QFETCH(QVariant, stored);
    QFETCH(bool, visible);
    Launch launch;
    if (stored.isValid()) {
        UserDefaultsStore::standard(launch.env.configDir())->set(stored, QStringLiteral("ShowDockIcon"));
    }
    QVERIFY(launch.run());
    QCOMPARE(launch.platform.dockIconVisible, std::optional<bool>(visible));
}

void StartupTest::registeredDefaultsAnswerWithoutTouchingDisk()
{
    Launch launch;
    QVERIFY(launch.run());
    auto store = launch.delegate->windowController()->composition().userDefaultsStore;
    QCOMPARE(store->integer(QStringLiteral("gesture.pinch.fingerCount")), std::optional<qint64>(4));
    QCOMPARE(store->string(QStringLiteral("SearchLocation")), std::optional<QString>(QStringLiteral("center")));
    QVERIFY(store->boolValue(QStringLiteral("blurEnabled")));
    QVERIFY(!store->boolValue(QStringLiteral("ShowHideButtonEnabled")));
    QVERIFY(!store->persistedObject(QStringLiteral("SearchLocation")).isValid());
    store->synchronize();
    for (const QString &key : store->persistedKeys())
        QVERIFY2(key != QLatin1String("SearchLocation") && key != QLatin1String("blurEnabled")
                     && key != QLatin1String("ClassicViewEnabled"),
                 qPrintable(key));
}

void StartupTest::reopenShowsTheOverlay()
{
    Launch launch;
    launch.platform.loginItem = true;
    QVERIFY(launch.run());
    QVERIFY(!launch.delegate->applicationShouldHandleReopen(false));
    QVERIFY(launch.delegate->windowController()->overlayVisible());
    QVERIFY(!launch.delegate->applicationShouldTerminateAfterLastWindowClosed());
}

QTEST_GUILESS_MAIN(StartupTest)
#include "test_startup.moc"
