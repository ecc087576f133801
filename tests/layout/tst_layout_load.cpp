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

    // A bundle folder that cannot be read for one run (mode 000, a disk not
    // mounted) takes nothing from the arrangement, and all is as before once
    // it is back; an app removed from a folder that was read still leaves.
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
        const QString disk = root.path() + "/Disk";
        const auto bundle = [&](const QString &dir, const QString &name) {
            return CatalogueFixtures::makeBundle(root.path() + dir, name + ".app", {"org." + name, name, {}, {}});
        };
        const QString removed = bundle("/Apps", "Removed"), far = bundle("/Disk", "Far");
        const QString boxed = bundle("/Disk", "Boxed"), quiet = bundle("/Disk", "Quiet");
        const AppsRepositoryImpl catalogue({root.path() + "/Apps", disk});
        const auto setReadable = [&](bool readable) {
            if (missing)
                return readable ? QDir().rename(disk + "~", disk) : QDir().rename(disk, disk + "~");
            const QFileDevice::Permissions owner = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
            return QFile::setPermissions(disk, readable ? owner : QFileDevice::Permissions());
        };
        Fixture fx;
        const auto reload = [&] {
            Unprivileged unprivileged; // for the scan, which runs on this thread
            fx.fakes.apps->setScan(catalogue.scan());
            fx.model ? fx.model->loadInitial() : void(fx.load());
            QVERIFY(waitForLoad(*fx.model));
        };
        reload();
        QVERIFY(fx.model->createFolder("Box", {boxed}));
        fx.model->hideApp(quiet);
        fx.model->noteLaunched(far);
        QVERIFY(QDir(removed).removeRecursively());
        reload();
        QVERIFY(!fx.model->slots().contains(SlotKey::app(removed)));
        const QStringList slots = fx.model->slots();
        const QList<FolderItem> folders = fx.model->folders();

        QVERIFY(setReadable(false));
        const auto restore = qScopeGuard([&] { setReadable(true); });
        if (Unprivileged unprivileged; !missing && !Unprivileged::lockedOut(disk))
            QSKIP("this process can read folders of mode 000");
        for (const bool back : {false, true}) {
            reload();
            QCOMPARE(fx.model->slots(), slots);
            QCOMPARE(fx.model->folders(), folders);
            QCOMPARE(fx.fakes.hidden->stored, QStringList{quiet});
            QCOMPARE(fx.fakes.recent->stored, QStringList{far});
            // Meanwhile shown dimmed under their last names.
            QCOMPARE(CatalogueFixtures::names(fx.model->unavailableApps()),
                     back ? QStringList() : QStringList({"Far", "Boxed"}));
            QVERIFY(back || setReadable(true));
        }
    }

    // The same application at a new path keeps all the user gave it: a
    // desktop entry copied to the user's folder (masking the system one), a
    // bundle reinstalled in another folder.
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
        const auto install = [&](bool moved, const QString &name) {
            if (desktopEntries)
                return CatalogueFixtures::makeDesktopEntry(env.path(moved ? "data/applications" : "sys/applications"),
                                                           name + ".desktop", "Type=Application\nName=A\nExec=true\n");
            return CatalogueFixtures::makeBundle(env.path(moved ? "Applications" : "UserApps"), name + ".app",
                                                 {"org.example." + name, {}, {}, {}});
        };
        const QStringList was = {install(false, "grid"), install(false, "boxed"), install(false, "quiet")};
        const QString other = install(false, "other");

        AppsRepositoryImpl catalogue({env.path("Applications"), env.path("UserApps")});
        catalogue.addSource(std::make_shared<DesktopEntrySource>(QStringList()));
        const auto store = UserDefaultsStore::standard(env.configDir());
        auto names = std::make_shared<AppNameRepositoryImpl>(store);
        auto icons =
            std::make_shared<AppsCustomizationRepositoryImpl>(store, std::make_shared<FileSystemStore>(env.dataDir()));
        Fixture fx;
        LayoutServices services = fx.fakes.services();
        services.appNames = names;
        services.appIcons = icons;
        LaunchpadViewModel model(services);
        const auto reload = [&] {
            fx.fakes.apps->setScan(catalogue.scan());
            model.loadInitial();
            QVERIFY(waitForLoad(model));
        };
        reload();
        QVERIFY(model.createFolder("Box", {was[1]}));
        model.hideApp(was[2]);
        model.noteLaunched(was[0]);
        names->setCustomName(was[0], "Mine");
        const CustomAppIcon icon{"asset:star", true, CustomAppIconBackgroundMode::material};
        icons->setIcon(was[0], icon);
        WorkflowItem workflow;
        workflow.appPaths = {was[0]};
        fx.fakes.workflows->stored = {workflow};
        reload();
        const qsizetype cell = model.slots().indexOf(SlotKey::app(was[0]));
        const QStringList folderCells = model.folders().first().slots;

        const QStringList now = {install(true, "grid"), install(true, "boxed"), install(true, "quiet")};
        for (const QString &path : was)
            QVERIFY(desktopEntries || QDir(path).removeRecursively());
        reload();
        QCOMPARE(model.slots().indexOf(SlotKey::app(now[0])), cell);
        QCOMPARE(model.folders().first().appPaths, QStringList{now[1]});
        QCOMPARE(model.folders().first().slots, QStringList(folderCells).replaceInStrings(was[1], now[1]));
        QCOMPARE(fx.fakes.hidden->stored, QStringList{now[2]});
        QCOMPARE(fx.fakes.recent->stored, QStringList{now[0]});
        QCOMPARE(names->all(), (QMap<QString, QString>{{now[0], "Mine"}}));
        QCOMPARE(icons->all(), (QMap<QString, CustomAppIcon>{{now[0], icon}}));
        QCOMPARE(fx.fakes.workflows->stored.first().appPaths, QStringList{now[0]});
        QVERIFY(model.slots().contains(SlotKey::app(other))); // not moved: untouched
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
