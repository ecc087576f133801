#include "CatalogueFixtures.h"
#include "LayoutTestSupport.h"
#include "catalogue/AppsRepositoryImpl.h"
#include "common/TempEnvironment.h"
#include "common/Unprivileged.h"
#include "foundation/Uuids.h"
#include "platform/linux/DesktopEntrySource.h"
#include "storage/AppNameRepository.h"
#include "storage/AppsCustomizationRepository.h"
#include "storage/FileSystemStore.h"
#include "storage/UserDefaultsStore.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace LayoutTest;

// Loading a stored layout: re-entry, the repairs in their order, the first
// layout and the reconciliation with the applications a scan finds.
class LayoutLoadTest : public QObject {
    Q_OBJECT

    static FolderItem folderOf(const QString &name, const QStringList &appNames)
    {
        FolderItem f;
        f.id = QUuid::createUuid();
        f.name = name;
        for (const QString &n : appNames)
            f.appPaths.append(path(n));
        f.slots = f.appPaths;
        return f;
    }

private Q_SLOTS:
    void callsDuringALoadQueueExactlyOneMore()
    {
        Fixture fx;
        fx.fakes.apps->setApps(apps({"A"}));
        LaunchpadViewModel model(fx.fakes.services());
        QSignalSpy finished(&model, &LaunchpadViewModel::loadFinished);
        model.loadInitial();
        model.loadInitial();
        model.loadInitial();
        QTRY_COMPARE(finished.count(), 2);
        QTest::qWait(50); // nothing further may start
        QCOMPARE(finished.count(), 2);
        QCOMPARE(fx.fakes.apps->fetchCount(), 2);
        QVERIFY(!model.isLoading());
    }

    void emptyStoreBuildsTheFirstLayoutFromTheScan()
    {
        Fixture fx;
        fx.fakes.apps->setApps(apps({"A", "B", "C", "D"}));
        fx.fakes.hidden->stored = {path("B")};
        const FolderItem folder = folderOf("F", {"C"});
        fx.fakes.folders->stored = {folder};
        auto &model = fx.load();
        // The stored folder stood on no cell; it is put where the overlay can reach it.
        QCOMPARE(model.slots(), QStringList({appKey("A"), appKey("D"), folder.key()}));
        QCOMPARE(fx.fakes.order->storedSlots, model.slots());
        QCOMPARE(model.apps().size(), 4);
    }

    void aWidgetOnNoCellGoesBackOnTheGrid()
    {
        Fixture fx;
        const WidgetItem clock{QUuid::createUuid(), QStringLiteral("clock"), WidgetSize::size2x2, {}};
        fx.fakes.widgets->stored = {clock};
        auto &model = fx.load({appKey("A"), appKey("B")}, {"A", "B"});
        const qsizetype anchor = model.findWidgetTopLeftIndex(clock.id);
        QVERIFY(anchor >= 0);
        QCOMPARE(model.slots().count(appKey("A")), 1);
        QCOMPARE(model.slots().count(appKey("B")), 1);
        QCOMPARE(fx.fakes.order->storedSlots, model.slots());
    }

    void malformedAndDuplicateKeysBecomeEmptyCells()
    {
        Fixture fx;
        fx.fakes.apps->setApps(apps({"A"}));
        fx.fakes.order->storedSlots = {"A:", "F:", appKey("A"), appKey("A"), "A: \n", path("A")};
        auto &model = fx.load();
        QCOMPARE(model.slots(), QStringList({"", "", appKey("A"), "", "", ""}));
        QVERIFY(model.layoutRevision() >= 5);
    }

    void appOnTheGridAndInAFolderStaysOnlyInTheFolder()
    {
        Fixture fx;
        fx.fakes.apps->setApps(apps({"A", "B"}));
        const FolderItem f = folderOf("Tools", {"A"});
        fx.fakes.folders->stored = {f};
        fx.fakes.order->storedSlots = {appKey("A"), f.key(), appKey("B")};
        auto &model = fx.load();
        QCOMPARE(model.slots(), QStringList({"", f.key(), appKey("B")}));
        QCOMPARE(model.folders(), QList<FolderItem>({f}));
    }

    void orphanedWidgetAndWorkflowMarkersAreCleared()
    {
        Fixture fx;
        const QUuid gone = QUuid::createUuid();
        WorkflowItem kept;
        kept.id = QUuid::createUuid();
        kept.name = "Morning";
        fx.fakes.workflows->stored = {kept};
        const QString goneWorkflow = SlotKey::workflow(QUuid::createUuid());
        FolderItem f = folderOf("F", {"A"});
        f.slots = {path("A"), goneWorkflow, kept.key()};
        fx.fakes.folders->stored = {f};
        fx.fakes.apps->setApps(apps({"A"}));
        fx.fakes.order->storedSlots = {SlotKey::widgetAnchor(gone), SlotKey::widgetBlock(gone), kept.key(),
                                       goneWorkflow, f.key()};
        auto &model = fx.load();
        QCOMPARE(model.slots(), QStringList({"", "", kept.key(), "", f.key()}));
        QCOMPARE(model.folders().first().slots, QStringList({path("A"), "", kept.key()}));
        QCOMPARE(fx.fakes.folders->stored.first().slots, model.folders().first().slots);
    }

    void uninstalledAppsLeaveTheGridTheHiddenListAndTheirFolders()
    {
        Fixture fx;
        fx.fakes.apps->setApps(apps({"B"}));
        const FolderItem lonely = folderOf("Lonely", {"Gone"});
        FolderItem mixed = folderOf("Mixed", {"B", "Gone2"});
        fx.fakes.folders->stored = {lonely, mixed};
        fx.fakes.hidden->stored = {path("Gone3")};
        fx.fakes.recent->stored = {path("Gone5"), path("B")};
        fx.fakes.order->storedSlots = {appKey("Gone4"), lonely.key(), mixed.key()};
        auto &model = fx.load();
        QCOMPARE(model.slots(), QStringList({"", "", mixed.key()}));
        QCOMPARE(model.folders().size(), 1);
        QCOMPARE(model.folders().first().appPaths, QStringList({path("B")}));
        QCOMPARE(model.folders().first().slots, QStringList({path("B"), ""}));
        QVERIFY(fx.fakes.hidden->stored.isEmpty());
        QCOMPARE(fx.fakes.recent->stored, QStringList{path("B")});
        QCOMPARE(fx.fakes.folders->stored, model.folders());
    }

    // A bundle folder that cannot be read this time (mode 000, a disk not
    // mounted) takes nothing from the arrangement; once it is back the grid
    // is as before. An app removed from a folder that could be read still
    // leaves.
    void unreadableFolderKeepsTheArrangement_data()
    {
        QTest::addColumn<bool>("missing");
        QTest::newRow("mode 000") << false;
        QTest::newRow("missing") << true;
    }

    void unreadableFolderKeepsTheArrangement()
    {
        QFETCH(bool, missing);
        QTemporaryDir root;
        const QString local = root.path() + "/Applications";
        const QString disk = root.path() + "/Disk";
        const auto bundle = [](const QString &dir, const QString &name) {
            return CatalogueFixtures::makeBundle(dir, name + ".app", {"com.example." + name, name, {}, {}});
        };
        const QString keep = bundle(local, "Keep"), removed = bundle(local, "Removed");
        const QString far = bundle(disk, "Far"), boxed = bundle(disk, "Boxed"), hiddenApp = bundle(disk, "Quiet");
        const AppsRepositoryImpl catalogue({local, disk});

        Fixture fx;
        const auto reload = [&] {
            Unprivileged unprivileged; // the scan runs here, on this thread
            fx.fakes.apps->setScan(catalogue.scan());
            if (!fx.model) {
                fx.load();
            } else {
                fx.model->loadInitial();
                QVERIFY(waitForLoad(*fx.model));
            }
        };
        reload();
        LaunchpadViewModel &model = *fx.model;
        QVERIFY(model.createFolder("Box", {boxed}));
        model.hideApp(hiddenApp);
        model.noteLaunched(far);
        QVERIFY(QDir(removed).removeRecursively());
        reload();
        const QStringList slots = model.slots();
        const QList<FolderItem> folders = model.folders();
        QVERIFY(!slots.contains(SlotKey::app(removed)));
        QCOMPARE(slots.count(SlotKey::app(far)), 1);

        if (missing)
            QVERIFY(QDir().rename(disk, disk + ".away"));
        else
            QVERIFY(QFile::setPermissions(disk, {}));
        const auto unlock = qScopeGuard([&] {
            QFile::setPermissions(disk, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        });
        if (!missing) {
            Unprivileged unprivileged;
            if (!Unprivileged::lockedOut(disk))
                QSKIP("this process can read folders of mode 000");
        }
        reload();
        QCOMPARE(model.apps().size(), 1); // Keep
        QCOMPARE(model.slots(), slots);
        QCOMPARE(model.folders(), folders);
        QCOMPARE(fx.fakes.hidden->stored, QStringList{hiddenApp});
        QCOMPARE(fx.fakes.recent->stored, QStringList{far});
        // Shown dimmed under their last names, not as empty cells.
        QCOMPARE(CatalogueFixtures::names(model.unavailableApps()), QStringList({"Far", "Boxed"}));

        if (missing)
            QVERIFY(QDir().rename(disk + ".away", disk));
        else
            QVERIFY(QFile::setPermissions(disk, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner));
        reload();
        QCOMPARE(model.apps().size(), 4);
        QCOMPARE(model.slots(), slots);
        QCOMPARE(model.folders(), folders);
        QCOMPARE(fx.fakes.hidden->stored, QStringList{hiddenApp});
        QVERIFY(model.unavailableApps().isEmpty());
        QCOMPARE(fx.fakes.order->storedSlots, slots);
    }

    // The same application at a new path keeps everything the user gave it:
    // a desktop entry copied to the user's folder by a menu editor (masking
    // the system one), a bundle reinstalled in another folder.
    void aMovedAppKeepsItsPlace_data()
    {
        QTest::addColumn<bool>("desktopEntries");
        QTest::newRow("desktop entries copied to the user's folder") << true;
        QTest::newRow("bundles reinstalled elsewhere") << false;
    }

    void aMovedAppKeepsItsPlace()
    {
        QFETCH(bool, desktopEntries);
        TempEnvironment env;
        const QByteArray dataDirs = qgetenv("XDG_DATA_DIRS");
        qputenv("XDG_DATA_DIRS", env.path("sys").toLocal8Bit());
        const auto restore = qScopeGuard([&] { qputenv("XDG_DATA_DIRS", dataDirs); });
        const QString oldDir = desktopEntries ? env.path("sys/applications") : env.path("UserApps");
        const QString newDir = desktopEntries ? env.path("data/applications") : env.path("Applications");
        const auto install = [&](const QString &dir, const QString &name) {
            if (desktopEntries)
                return CatalogueFixtures::makeDesktopEntry(dir, "org.example." + name + ".desktop",
                                                           "Type=Application\nName=" + name + "\nExec=true\n");
            return CatalogueFixtures::makeBundle(dir, name + ".app", {"org.example." + name, name, {}, {}});
        };
        const QStringList names = {"Grid", "Boxed", "Quiet", "Other"};
        QStringList was;
        for (const QString &name : names)
            was.append(install(oldDir, name));

        AppsRepositoryImpl catalogue({env.path("Applications"), env.path("UserApps")});
        catalogue.addSource(std::make_shared<DesktopEntrySource>(QStringList()));
        const auto store = UserDefaultsStore::standard(env.configDir());
        FakeLayoutServices fakes;
        LayoutServices services = fakes.services();
        const auto customNames = std::make_shared<AppNameRepositoryImpl>(store);
        const auto customIcons =
            std::make_shared<AppsCustomizationRepositoryImpl>(store, std::make_shared<FileSystemStore>(env.dataDir()));
        services.appNames = customNames;
        services.appIcons = customIcons;
        LaunchpadViewModel model(services);
        const auto reload = [&] {
            fakes.apps->setScan(catalogue.scan());
            model.loadInitial();
            return waitForLoad(model);
        };
        QVERIFY(reload());
        QVERIFY(model.createFolder("Box", {was[1]}));
        model.hideApp(was[2]);
        model.noteLaunched(was[0]);
        customNames->setCustomName(was[0], "My Grid");
        const CustomAppIcon icon{"asset:star", true, CustomAppIconBackgroundMode::material};
        customIcons->setIcon(was[0], icon);
        WorkflowItem workflow;
        workflow.id = QUuid::createUuid();
        workflow.appPaths = {was[0]};
        fakes.workflows->stored = {workflow};
        QVERIFY(reload());
        const qsizetype cell = model.slots().indexOf(SlotKey::app(was[0]));
        const QStringList folderSlots = model.folders().first().slots;

        QStringList now;
        for (const QString &name : names.mid(0, 3))
            now.append(install(newDir, name));
        if (!desktopEntries)
            for (const QString &path : was.mid(0, 3))
                QVERIFY(QDir(path).removeRecursively());
        QVERIFY(reload());

        QCOMPARE(model.slots().indexOf(SlotKey::app(now[0])), cell);
        QCOMPARE(model.folders().size(), 1);
        QCOMPARE(model.folders().first().appPaths, QStringList{now[1]});
        QCOMPARE(model.folders().first().slots, QStringList(folderSlots).replaceInStrings(was[1], now[1]));
        QCOMPARE(fakes.hidden->stored, QStringList{now[2]});
        QCOMPARE(fakes.recent->stored, QStringList{now[0]});
        QCOMPARE(customNames->all(), (QMap<QString, QString>{{now[0], "My Grid"}}));
        QCOMPARE(customIcons->all(), (QMap<QString, CustomAppIcon>{{now[0], icon}}));
        QCOMPARE(model.workflows().first().appPaths, QStringList{now[0]});
        QCOMPARE(fakes.workflows->stored, model.workflows());
        for (const QString &path : now) // placed once, where the old path stood, not again as new
            QVERIFY(model.slots().count(SlotKey::app(path)) <= 1);
        QVERIFY(model.slots().contains(SlotKey::app(was[3]))); // not moved: untouched
    }

    void newAppFillsTheFirstEmptyCellNotTheEnd()
    {
        Fixture fx;
        fx.fakes.apps->setApps(apps({"A", "B", "New", "Hidden"}));
        fx.fakes.hidden->stored = {path("Hidden")};
        fx.fakes.order->storedSlots = {appKey("A"), "", appKey("B")};
        auto &model = fx.load();
        QCOMPARE(model.slots(), QStringList({appKey("A"), appKey("New"), appKey("B")}));
        QCOMPARE(fx.fakes.order->storedSlots, model.slots());
    }

    void hiddenAppFoundOnTheGridIsCleared()
    {
        Fixture fx;
        fx.fakes.apps->setApps(apps({"A", "B"}));
        fx.fakes.hidden->stored = {path("A")};
        fx.fakes.order->storedSlots = {appKey("A"), appKey("B")};
        auto &model = fx.load();
        QCOMPARE(model.slots(), QStringList({"", appKey("B")}));
        QCOMPARE(fx.fakes.order->storedSlots, model.slots());
    }

    void reloadPicksUpALayoutSwappedUnderneath()
    {
        Fixture fx;
        fx.fakes.apps->setApps(apps({"A", "B"}));
        auto &model = fx.load();
        const qint64 revision = model.layoutRevision();
        QSignalSpy slotsChanged(&model, &LaunchpadViewModel::slotsChanged);
        fx.fakes.order->storedSlots = {appKey("B"), appKey("A")};
        model.loadInitial();
        QVERIFY(waitForLoad(model));
        QCOMPARE(model.slots(), QStringList({appKey("B"), appKey("A")}));
        QVERIFY(model.layoutRevision() > revision); // page caches must rebuild
        QVERIFY(!slotsChanged.isEmpty());
    }

    void withoutACatalogueTheStoredLayoutIsKept()
    {
        FakeLayoutServices fakes;
        fakes.order->storedSlots = {appKey("Unknown"), "A:"};
        LayoutServices services = fakes.services();
        services.appsRepo = nullptr;
        LaunchpadViewModel model(services);
        QSignalSpy finished(&model, &LaunchpadViewModel::loadFinished);
        model.loadInitial();
        QVERIFY(model.isLoading());
        QVERIFY(finished.wait(2000));
        QCOMPARE(model.slots(), QStringList({appKey("Unknown"), ""}));
    }

    void scanResultIsDroppedWhenTheModelIsGone()
    {
        FakeLayoutServices fakes;
        fakes.apps->setApps(apps({"A"}));
        auto model = std::make_unique<LaunchpadViewModel>(fakes.services());
        model->loadInitial();
        model.reset();
        QTest::qWait(50);
        QVERIFY(fakes.order->storedSlots.isEmpty()); // the late scan saved nothing
    }
};

QTEST_GUILESS_MAIN(LayoutLoadTest)
#include "tst_layout_load.moc"
