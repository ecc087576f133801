// Repositories over a real store: round trips through a new store object,
// decoding strictness and defaults, and failures that read as empty.
#include "common/TempEnvironment.h"
#include "foundation/Uuids.h"
#include "organise/WorkflowsRepository.h"
#include "storage/AppNameRepository.h"
#include "storage/AppearanceRepository.h"
#include "storage/AppsCustomizationRepository.h"
#include "storage/FileSystemStore.h"
#include "storage/FolderIconStyleRepository.h"
#include "storage/FoldersRepository.h"
#include "storage/HiddenAppsService.h"
#include "storage/OrderRepository.h"
#include "storage/RecentAppsService.h"
#include "storage/UserDefaultsStore.h"
#include "storage/WidgetsRepository.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <cmath>
#include <limits>

class RepositoriesTest : public QObject {
    Q_OBJECT
    std::shared_ptr<UserDefaultsStore> openStore(const TempEnvironment &env)
    {
        return UserDefaultsStore::standard(env.configDir());
    }

private Q_SLOTS:
    void firstLaunchReadsEmptyAndWritesNothing()
    {
        TempEnvironment env;
        auto store = openStore(env);
        QVERIFY(FoldersRepositoryImpl(store).loadAll().isEmpty());
        QVERIFY(OrderRepositoryImpl(store).slots().isEmpty());
        QVERIFY(OrderRepositoryImpl(store).combinedOrder().isEmpty());

        QVERIFY(HiddenAppsServiceImpl(store).hiddenApps().isEmpty());
        QVERIFY(WorkflowsRepositoryImpl(store).load().isEmpty());
        QVERIFY(AppNameRepositoryImpl(store).all().isEmpty());
        store->synchronize();
        QVERIFY(store->persistedKeys().isEmpty());
        QVERIFY(!QFile::exists(store->fileName()));
    }

    // Empty cells after the last occupied one are not stored: pages of
    // nothing never pile up at the end.
    void slotsAreStoredWithoutTrailingEmptyCells()
    {
        TempEnvironment env;
        auto store = openStore(env);
        OrderRepositoryImpl(store).setSlots({QString(), QStringLiteral("A:/a.desktop"), QString(), QString()});
        QCOMPARE(OrderRepositoryImpl(store).slots(), QStringList({QString(), QStringLiteral("A:/a.desktop")}));
    }

    // One bad record (a typo, a newer version's field) costs that record
    // only, and it is kept aside before the list is saved over it.
    void aBadRecordCostsOnlyItselfAndIsKeptAside()
    {
        TempEnvironment env;
        const QByteArray stored = R"([{"id": "6F1A2B3C-0000-4000-8000-000000000001", "name": "Good", "appPaths": ["/a/A.app"]},
                                      {"id": 42, "name": "Bad"},
                                      "not a record"])";
        const QString asideKey = QStringLiteral("LaunchpadFolders_v1.unreadable");
        {
            auto store = openStore(env);
            store->set(stored, QStringLiteral("LaunchpadFolders_v1"));
            FoldersRepositoryImpl folders(store);
            const QList<FolderItem> loaded = folders.loadAll();
            QCOMPARE(loaded.size(), 1);
            QCOMPARE(loaded.first().name, QStringLiteral("Good"));
            // Reading keeps nothing aside: only a save over the list does.
            QVERIFY(!store->data(asideKey));

            FolderItem renamed = loaded.first();
            renamed.name = QStringLiteral("Renamed");
            folders.saveAll({renamed});
            folders.saveAll({renamed}); // a second save keeps one copy, not two
            QVERIFY(store->synchronize());
        }
        auto reopened = openStore(env);
        QCOMPARE(FoldersRepositoryImpl(reopened).loadAll().first().name, QStringLiteral("Renamed"));
        const QJsonArray aside = QJsonDocument::fromJson(*reopened->data(asideKey)).array();
        QCOMPARE(aside.size(), 2);
        QCOMPARE(aside.at(0).toObject().value(QStringLiteral("name")).toString(), QStringLiteral("Bad"));
        QCOMPARE(aside.at(1).toString(), QStringLiteral("not a record"));

        // The same for widgets and workflows, which share the rule.
        reopened->set(QByteArray(R"([{"id": "x"}])"), QStringLiteral("workflows_storage_v1"));
        WorkflowsRepositoryImpl workflows(reopened);
        QVERIFY(workflows.load().isEmpty());
        workflows.save({});
        QCOMPARE(QJsonDocument::fromJson(*reopened->data(QStringLiteral("workflows_storage_v1.unreadable"))).array().size(), 1);
    }

    void recentAppsAreNewestFirstWithoutRepeatsAndBounded()
    {
        TempEnvironment env;
        RecentAppsServiceImpl recent(openStore(env));
        for (int i = 0; i < RecentAppsServiceImpl::kLimit + 5; ++i)
            recent.noteLaunched(QStringLiteral("/a/%1.app").arg(i));
        recent.noteLaunched(QStringLiteral("/a/10.app")); // again: moves to the front, once
        const QStringList list = recent.recentApps();
        QCOMPARE(list.size(), RecentAppsServiceImpl::kLimit);
        QCOMPARE(list.first(), QStringLiteral("/a/10.app"));
        QCOMPARE(list.count(QStringLiteral("/a/10.app")), 1);
        QCOMPARE(list.at(1), QStringLiteral("/a/%1.app").arg(RecentAppsServiceImpl::kLimit + 4));
        QCOMPARE(recent.removeDeleted([](const QString &p) { return p != QStringLiteral("/a/10.app"); }), 1);
        QVERIFY(!RecentAppsServiceImpl(openStore(env)).recentApps().contains(QStringLiteral("/a/10.app")));
    }

    void foldersRoundTripAndDecodeDefaults()
    {
        TempEnvironment env;
        FolderItem folder;
        folder.id = QUuid::createUuid();
        folder.name = QStringLiteral("Work");
        folder.appPaths = {QStringLiteral("/a/A.app"), QStringLiteral("/a/B.app")};
        folder.systemFolderPaths = {QStringLiteral("/home/me/Documents")};
        folder.slots = {QStringLiteral("A:/a/B.app"), QString(), QStringLiteral("/a/A.app")};
        folder.originalGridSlots = {{QStringLiteral("/a/A.app"), 3}, {QStringLiteral("/a/B.app"), 9}};
        {
            auto store = openStore(env);
            FoldersRepositoryImpl(store).saveAll({folder});
            store->synchronize();
        }
        auto reopened = openStore(env);
        const auto loaded = FoldersRepositoryImpl(reopened).loadAll();
        QCOMPARE(loaded.size(), 1);
        QCOMPARE(loaded.first(), folder);

        // Stored by an older version: only the required keys.
        const QByteArray old = QStringLiteral(R"([{"id":"%1","name":"Old","appPaths":["/x/X.app","/x/Y.app"]}])")
                                   .arg(Uuids::toText(folder.id))
                                   .toUtf8();
        reopened->set(old, QStringLiteral("LaunchpadFolders_v1"));
        const FolderItem legacy = FoldersRepositoryImpl(reopened).loadAll().value(0);
        QCOMPARE(legacy.slots, legacy.appPaths);
        QVERIFY(legacy.systemFolderPaths.isEmpty());
        QVERIFY(legacy.originalGridSlots.isEmpty());
    }

    void undecodableFoldersReadEmptyAndStayStored()
    {
        TempEnvironment env;
        auto store = openStore(env);
        const QByteArray missingName = R"([{"id":"6F1A2B3C-0000-4000-8000-000000000001","appPaths":[]}])";
        store->set(missingName, QStringLiteral("LaunchpadFolders_v1"));
        QVERIFY(FoldersRepositoryImpl(store).loadAll().isEmpty());
        QCOMPARE(*store->data(QStringLiteral("LaunchpadFolders_v1")), missingName); // replaced only by the next save

        store->set(QByteArray("not json"), QStringLiteral("LaunchpadFolders_v1"));
        QVERIFY(FoldersRepositoryImpl(store).loadAll().isEmpty());
        store->set(QByteArray(R"([{"id":"not-a-uuid","name":"n","appPaths":[]}])"), QStringLiteral("LaunchpadFolders_v1"));
        QVERIFY(FoldersRepositoryImpl(store).loadAll().isEmpty());
        // A remembered cell past any 64-bit integer is no cell.
        store->set(QByteArray(R"([{"id":"6F1A2B3C-0000-4000-8000-000000000001","name":"n","appPaths":[],)"
                              R"("originalGridSlots":{"/a/A.app":1e20}}])"),
                   QStringLiteral("LaunchpadFolders_v1"));
        QVERIFY(FoldersRepositoryImpl(store).loadAll().isEmpty());
    }

    void widgetsAndWorkflowsRoundTrip()
    {
        TempEnvironment env;
        WidgetItem clock{QUuid::createUuid(), QStringLiteral("clock"), WidgetSize::size3x2, {{"format", "24h"}}};
        WorkflowItem morning;
        morning.id = QUuid::createUuid();
        morning.name = QStringLiteral("Morning");
        morning.iconType = WorkflowIconType::image;
        morning.appPaths = {QStringLiteral("/a/Mail.app")};
        morning.folderPaths = {QStringLiteral("/home/me")};
        morning.launchIntervalSeconds = -2;
        {
            auto store = openStore(env);
            auto files = std::make_shared<FileSystemStore>(env.dataDir());
            WidgetsRepositoryImpl(store, files).save({clock});
            WorkflowsRepositoryImpl(store).save({morning});
            store->synchronize();
        }
        auto store = openStore(env);
        QCOMPARE(WidgetsRepositoryImpl(store, nullptr).load(), QList<WidgetItem>{clock});
        const auto workflows = WorkflowsRepositoryImpl(store).load();
        QCOMPARE(workflows, QList<WorkflowItem>{morning});
        QCOMPARE(workflows.first().effectiveLaunchInterval(), 0.0);
    }

    void hiddenAppsNeverHoldAPathTwice()
    {
        TempEnvironment env;
        auto store = openStore(env);
        HiddenAppsServiceImpl hidden(store);
        hidden.hide(QStringLiteral("/a/A.app"));
        hidden.hide(QStringLiteral("/a/A.app"));
        hidden.hide(QStringLiteral("/a/B.app"));
        hidden.show(QStringLiteral("/a/Never.app"));
        QCOMPARE(hidden.hiddenApps(), (QStringList{QStringLiteral("/a/A.app"), QStringLiteral("/a/B.app")}));

        QCOMPARE(hidden.removeDeleted([](const QString &p) { return p.endsWith(QLatin1String("B.app")); }), 1);
        QCOMPARE(HiddenAppsServiceImpl(openStore(env)).hiddenApps(), QStringList{QStringLiteral("/a/B.app")});
    }

    void mapRepositoriesCacheAndWriteThrough()
    {
        TempEnvironment env;
        auto store = openStore(env);
        AppNameRepositoryImpl names(store);
        names.setCustomName(QStringLiteral("/a/A.app"), QStringLiteral("  Editor "));
        QCOMPARE(names.displayName(QStringLiteral("/a/A.app"), QStringLiteral("A")), QStringLiteral("Editor"));
        QCOMPARE(names.displayName(QStringLiteral("/a/B.app"), QStringLiteral("B")), QStringLiteral("B"));
        names.setCustomName(QStringLiteral("/a/A.app"), QStringLiteral("   ")); // blank: back to the app's own name
        QVERIFY(!names.customName(QStringLiteral("/a/A.app")));

        FolderIconStyleRepositoryImpl styles(store);
        FolderIconStyle style;
        style.tint = QStringLiteral("#FF8800");
        style.scale = 1.5;
        styles.setStyle(QStringLiteral("F1"), style);
        names.setCustomName(QStringLiteral("/a/C.app"), QStringLiteral("Cee"));
        store->synchronize();

        auto reopened = openStore(env);
        QCOMPARE(FolderIconStyleRepositoryImpl(reopened).style(QStringLiteral("F1")), style);
        QCOMPARE(AppNameRepositoryImpl(reopened).all(), (QMap<QString, QString>{{QStringLiteral("/a/C.app"), QStringLiteral("Cee")}}));

        // A map that no longer decodes reads as empty instead of failing.
        reopened->set(QByteArray("[1,2]"), QStringLiteral("CustomAppNamesV1"));
        QVERIFY(AppNameRepositoryImpl(reopened).all().isEmpty());
    }

    void customIconFilesAreManaged()
    {
        TempEnvironment env;
        auto store = openStore(env);
        auto files = std::make_shared<FileSystemStore>(env.dataDir());
        AppsCustomizationRepositoryImpl icons(store, files);

        const QString source = env.path(QStringLiteral("icon.png"));
        QImage image(2048, 1024, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QVERIFY(image.save(source));
        const auto icon = icons.importImage(QStringLiteral("/a/A.app"), source);
        QVERIFY(icon);
        QVERIFY(icon->imagePath.startsWith(env.dataDir() + QStringLiteral("/CustomIcons/")));
        QCOMPARE(QImage(icon->imagePath).width(), 1024);
        QVERIFY(icon->isPNG);

        QString error;
        QFile garbage(env.path(QStringLiteral("bad.png")));
        QVERIFY(garbage.open(QIODevice::WriteOnly));
        garbage.write("not an image");
        garbage.close();
        QVERIFY(!icons.importImage(QStringLiteral("/a/B.app"), garbage.fileName(), &error));
        QCOMPARE(error, QStringLiteral("CustomIconImport: The selected image could not be optimized for an app icon."));

        // An asset icon has no file; removing it must not delete anything.
        const QString bystander = env.path(QStringLiteral("asset:star"));
        QFile(bystander).open(QIODevice::WriteOnly);
        icons.setIcon(QStringLiteral("/a/C.app"), {QStringLiteral("asset:star"), true, CustomAppIconBackgroundMode::transparent});
        icons.setAssetIconsApplied(true);
        icons.removeIcon(QStringLiteral("/a/C.app"));
        QVERIFY(QFile::exists(bystander));

        icons.removeIcon(QStringLiteral("/a/A.app"));
        QVERIFY(!QFile::exists(icon->imagePath));
        icons.setIcon(QStringLiteral("/a/D.app"), {QStringLiteral("asset:moon"), true, CustomAppIconBackgroundMode::material});
        icons.removeAllAssetIcons();
        QVERIFY(icons.all().isEmpty());
        QVERIFY(!icons.assetIconsApplied());
    }

    void appearanceIsPerDisplayAndClamped()
    {
        TempEnvironment env;
        auto store = openStore(env);
        AppearanceRepositoryImpl appearance(store);
        const DisplayProfile laptop{QStringLiteral("eDP-1"), 64, 160};
        const DisplayProfile monitor{QStringLiteral("DP-2"), 48, 256};
        appearance.setIconSize(laptop, 400);
        appearance.setColumns(laptop, 9);
        appearance.setShowLabels(laptop, false);
        QCOMPARE(appearance.iconSize(laptop), 160.0);
        QCOMPARE(*store->number(QStringLiteral("iconSize@eDP-1")), 160.0); // clamped before it is stored
        QCOMPARE(appearance.columns(laptop), 9);
        QCOMPARE(appearance.columns(monitor), AppearanceRepositoryImpl::kDefaultColumns); // a monitor never seen
        QVERIFY(appearance.showLabels(monitor));
        QVERIFY(!appearance.showLabels(laptop));
        store->set(10, QStringLiteral("iconSize@DP-2")); // written by hand below the display's minimum
        QCOMPARE(appearance.iconSize(monitor), 48.0);

        // Values outside their range or set read as the allowed ones.
        store->set(QStringLiteral("purple"), QStringLiteral("titleColorOverride"));
        QCOMPARE(appearance.titleColorOverride(), QStringLiteral("auto"));
        appearance.setLiquidGlassTintIntensity(5);
        QCOMPARE(appearance.liquidGlassTintIntensity(), 0.8);
        // A NaN passes every clamp; it is neither stored nor read.
        appearance.setIconSize(laptop, std::nan(""));
        QCOMPARE(appearance.iconSize(laptop), 160.0);
        store->set(std::numeric_limits<double>::quiet_NaN(), QStringLiteral("liquidGlassTintIntensity"));
        QVERIFY(std::isfinite(appearance.liquidGlassTintIntensity()));
        store->set(1e300, QStringLiteral("columns@DP-2"));
        QCOMPARE(appearance.columns(monitor), AppearanceRepositoryImpl::kDefaultColumns);

        // Writing the value already stored writes nothing.
        appearance.setTheme(QStringLiteral("dark"));
        store->synchronize();
        const QDateTime before = QFileInfo(store->fileName()).lastModified();
        QTest::qWait(20);
        appearance.setTheme(QStringLiteral("dark"));
        QCOMPARE(QFileInfo(store->fileName()).lastModified(), before);
    }
};

QTEST_GUILESS_MAIN(RepositoriesTest)
#include "test_repositories.moc"
