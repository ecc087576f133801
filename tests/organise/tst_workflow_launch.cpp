// The launch sequence of a workflow on a test clock: order, pauses only
// between items, skipped apps, and what the overlay is told at the end.
#include "catalogue/SystemFoldersService.h"
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "fakes/FakeAppLauncher.h"
#include "fakes/FakeClock.h"
#include "organise/WorkflowLaunchService.h"
#include "storage/UserDefaultsStore.h"

#include <QDir>
#include <QTest>

class WorkflowLaunchTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TempEnvironment> env;
    std::shared_ptr<FakeAppLauncher> launcher;
    std::shared_ptr<FakeClock> clock;
    std::shared_ptr<UserDefaultsStore> store;
    std::unique_ptr<WorkflowLaunchService> service;
    QList<AppItem> catalogue;

    static AppItem app(const QString &name)
    {
        return {QUuid::createUuid(), QStringLiteral("/usr/share/applications/%1.desktop").arg(name), name};
    }
    WorkflowItem workflow(const QStringList &appNames, double interval, const QStringList &folders = {}) const
    {
        WorkflowItem w;
        w.id = QUuid::createUuid();
        w.name = QStringLiteral("Morning");
        for (const QString &name : appNames)
            w.appPaths.append(app(name).path);
        w.folderPaths = folders;
        w.launchIntervalSeconds = interval;
        return w;
    }
    QStringList openedNames() const
    {
        QStringList out;
        for (const AppItem &a : launcher->openedApps)
            out.append(a.displayName);
        return out;
    }

private Q_SLOTS:
    void init()
    {
        env = std::make_unique<TempEnvironment>();
        launcher = std::make_shared<FakeAppLauncher>();
        clock = std::make_shared<FakeClock>();
        store = UserDefaultsStore::standard(env->configDir());
        auto folders = std::make_shared<SystemFoldersServiceImpl>(store, launcher, clock);
        service = std::make_unique<WorkflowLaunchService>(launcher, folders, store, clock);
        catalogue = {app("mail"), app("calendar"), app("chat")};
    }

    void appsThenFoldersWithPausesOnlyBetweenItems()
    {
        const QString projects = env->path(QStringLiteral("Projects"));
        QVERIFY(QDir().mkpath(projects));
        QList<WorkflowLaunchService::Overlay> finished;
        QVERIFY(service->launch(workflow({"mail", "calendar", "chat"}, 2, {projects}), catalogue,
                                [&](WorkflowLaunchService::Overlay o) { finished.append(o); }));
        // The first item opens at once; launch() does not wait for the rest.
        QCOMPARE(openedNames(), QStringList{"mail"});
        clock->advance(1.999);
        QCOMPARE(openedNames().size(), 1);
        clock->advance(0.001);
        QCOMPARE(openedNames(), (QStringList{"mail", "calendar"}));
        clock->advance(2);
        QCOMPARE(openedNames(), (QStringList{"mail", "calendar", "chat"}));
        QVERIFY(launcher->openedLocations.isEmpty());
        clock->advance(2);
        QCOMPARE(launcher->openedLocations, QList<QUrl>{QUrl::fromLocalFile(projects)});
        // No pause after the last item: finished at 6 s, nothing left waiting.
        QCOMPARE(finished, QList{WorkflowLaunchService::Overlay::Hide});
        QCOMPARE(clock->activeTimers(), 0);
        QCOMPARE(service->runningCount(), 0);
    }

    void threeAppsTwoSecondsApartTakeFourSeconds()
    {
        bool done = false;
        service->launch(workflow({"mail", "calendar", "chat"}, 2), catalogue,
                        [&](WorkflowLaunchService::Overlay) { done = true; });
        clock->advance(3.999);
        QVERIFY(!done);
        clock->advance(0.001);
        QVERIFY(done);
        QCOMPARE(openedNames().size(), 3);
    }

    void aNegativePauseIsNoneAndAlwaysOnKeepsTheOverlay()
    {
        store->set(true, QStringLiteral("AlwaysOnEnabled"));
        std::optional<WorkflowLaunchService::Overlay> finished;
        service->launch(workflow({"mail", "calendar", "chat"}, -3), catalogue,
                        [&](WorkflowLaunchService::Overlay o) { finished = o; });
        QCOMPARE(openedNames(), (QStringList{"mail", "calendar", "chat"}));
        QCOMPARE(clock->activeTimers(), 0);
        QCOMPARE(finished, WorkflowLaunchService::Overlay::StayOpen);
    }

    void aMissingAppIsSkippedAndLoggedWhileTheRestLaunch()
    {
        LogCapture log;
        WorkflowItem w = workflow({"mail", "gone", "chat"}, 1);
        bool done = false;
        service->launch(w, catalogue, [&](WorkflowLaunchService::Overlay) { done = true; });
        // The skipped app costs no pause: chat follows mail one pause later.
        clock->advance(1);
        QVERIFY(log.contains(QStringLiteral("Workflow app path not found in apps list: ") + w.appPaths.at(1)));
        QCOMPARE(openedNames(), (QStringList{"mail", "chat"}));
        QVERIFY(done);
    }

    void nothingToLaunch()
    {
        LogCapture log;
        bool called = false;
        QVERIFY(!service->launch(workflow({}, 2), catalogue, [&](WorkflowLaunchService::Overlay) { called = true; }));
        QVERIFY(log.contains(QStringLiteral("Workflow 'Morning' has nothing to launch")));
        QVERIFY(!called);
        QVERIFY(launcher->openedApps.isEmpty());
        QCOMPARE(clock->activeTimers(), 0);
    }

    void aServiceGoneMidRunOpensNothingMore()
    {
        service->launch(workflow({"mail", "calendar"}, 2), catalogue);
        service.reset();
        clock->advance(5);
        QCOMPARE(openedNames(), QStringList{"mail"});
    }
};

QTEST_GUILESS_MAIN(WorkflowLaunchTest)
#include "tst_workflow_launch.moc"
