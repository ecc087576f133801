// Spaces over real settings files: which store a layout repository reaches,
// what a switch carries between profiles, and what deleting leaves behind.
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "foundation/Uuids.h"
#include "spaces/SpaceStorageProvider.h"
#include "spaces/SpacesRepository.h"
#include "spaces/SpacesSnapshotService.h"
#include "spaces/SpacesViewModel.h"
#include "storage/FileSystemStore.h"
#include "storage/OrderRepository.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStore.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QSignalSpy>
#include <QTest>

class SpacesTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TempEnvironment> env;
    std::shared_ptr<UserDefaultsStore> main;
    std::shared_ptr<SpaceStorageProvider> provider;
    std::shared_ptr<SpacesRepositoryImpl> repository;
    std::shared_ptr<SpacesSnapshotService> snapshots;
    std::shared_ptr<FileSystemStore> files;

    std::unique_ptr<SpacesViewModel> model()
    {
        return std::make_unique<SpacesViewModel>(repository, snapshots, provider);
    }
    QString suiteFile(const QUuid &id) const
    {
        return env->configDir() + u'/' + SpaceStorageProvider::suiteName(id) + QStringLiteral(".json");
    }
    static QStringList slotsIn(UserDefaultsStoreType &store)
    {
        return store.stringList(QLatin1String(SettingsKeys::kSlots));
    }

private Q_SLOTS:
    void init()
    {
        env = std::make_unique<TempEnvironment>();
        main = UserDefaultsStore::standard(env->configDir());
        provider = std::make_shared<SpaceStorageProvider>(main, env->configDir());
        repository = std::make_shared<SpacesRepositoryImpl>(main);
        files = std::make_shared<FileSystemStore>(env->dataDir());
        snapshots = std::make_shared<SpacesSnapshotService>(main, files);
    }

    void repositoriesFollowTheActiveAndPinnedSpace()
    {
        auto aware = std::make_shared<SpaceAwareStore>(provider, main);
        auto pinned = std::make_shared<SpaceAwareStore>(provider, main, true);
        OrderRepositoryImpl order(aware);
        order.setSlots({"A:/standard"});
        QCOMPARE(slotsIn(*main), QStringList{"A:/standard"});

        const QUuid work = QUuid::createUuid(), home = QUuid::createUuid();
        provider->setActiveSpaceId(work);
        QVERIFY(order.slots().isEmpty()); // a fresh Space starts with its own, empty grid
        order.setSlots({"A:/work"});
        QCOMPARE(slotsIn(*main), QStringList{"A:/standard"});

        provider->setPinnedSpaceId(home);
        pinned->set(QStringList{"A:/home"}, QLatin1String(SettingsKeys::kSlots));
        QCOMPARE(order.slots(), QStringList{"A:/work"}); // unpinned stores stay on the active Space
        QCOMPARE(slotsIn(*provider->storeForSpace(home)), QStringList{"A:/home"});
        provider->setPinnedSpaceId(std::nullopt);
        QCOMPARE(slotsIn(*pinned), QStringList{"A:/work"});

        QVERIFY(provider->synchronizeAll());
        QVERIFY(QFile::exists(suiteFile(work)) && QFile::exists(suiteFile(home)));
        // The suites are ordinary settings files of their own.
        UserDefaultsStore reread(SpaceStorageProvider::suiteName(work), std::nullopt, env->configDir());
        QCOMPARE(slotsIn(reread), QStringList{"A:/work"});

        provider.reset();
        QCOMPARE(slotsIn(*aware), QStringList{"A:/standard"}); // no provider: the standard profile
    }

    void switchingCarriesEachProfileAndBacksUpTheStandardOne()
    {
        main->set(QStringList{"A:/std"}, QLatin1String(SettingsKeys::kSlots));
        main->set(QStringLiteral("tinted"), QLatin1String(SettingsKeys::kLiquidGlassMaterialStyle));
        auto spaces = model();
        const SpaceItem copy = spaces->createSpace("Copy", "💼", "#112233", true);
        const SpaceItem blank = spaces->createSpace("Blank", "🏠", "#445566", false);
        QCOMPARE(slotsIn(*provider->storeForSpace(copy.id)), QStringList{"A:/std"});
        QVERIFY(slotsIn(*provider->storeForSpace(blank.id)).isEmpty());

        spaces->switchTo(copy.id, true);
        QCOMPARE(provider->activeSpaceId(), copy.id);
        QCOMPARE(repository->activeSpaceId(), copy.id);
        QVERIFY(repository->loadSpaces().at(0).isCurrent && !repository->loadSpaces().at(1).isCurrent);
        // Leaving the standard profile backed up its background and glass.
        const QVariantMap background = *main->dictionary(SpacesSnapshotService::kStandardBackgroundBackupKey);
        QCOMPARE(background["weatherManualType"].toString(), QStringLiteral("clear"));
        QCOMPARE(background["weatherCity"].toString(), QStringLiteral("London"));
        QCOMPARE(main->dictionary(SpacesSnapshotService::kStandardGlassBackupKey)->value("materialStyle"),
                 QVariant("tinted"));

        provider->activeStore()->set(QStringList{"A:/copy"}, QLatin1String(SettingsKeys::kSlots));
        spaces->switchTo(blank.id, true);
        // The snapshot of the Space left never lags behind its suite.
        QCOMPARE(repository->loadSnapshot(copy.id)->value("slots").toArray().first().toString(), QStringLiteral("A:/copy"));

        // Back on the standard profile the backup is written back; glass that
        // was absent then is absent again.
        main->removeObject(QLatin1String(SettingsKeys::kLiquidGlassMaterialStyle));
        main->set(0.7, QLatin1String(SettingsKeys::kLiquidGlassTintHue));
        spaces->switchTo(std::nullopt, true);
        QCOMPARE(*main->string(QLatin1String(SettingsKeys::kLiquidGlassMaterialStyle)), QStringLiteral("tinted"));
        QVERIFY(!main->persistedObject(QLatin1String(SettingsKeys::kLiquidGlassTintHue)).isValid());
        QVERIFY(!main->persistedObject(SpacesSnapshotService::kStandardGlassBackupKey).isValid());
        QCOMPARE(slotsIn(*provider->activeStore()), QStringList{"A:/std"});
        QVERIFY(!repository->activeSpaceId());
    }

    void switchingToTheActiveSpaceOnlySavesItsSnapshot()
    {
        auto spaces = model();
        const SpaceItem work = spaces->createSpace("Work", "💼", "#112233", false);
        spaces->switchTo(work.id, true);
        QSignalSpy switched(spaces.get(), &SpacesViewModel::spaceDidSwitch);
        const QByteArray listBefore = *main->data(SpacesRepositoryImpl::kItemsKey);
        provider->activeStore()->set(QStringList{"A:/new"}, QLatin1String(SettingsKeys::kSlots));
        spaces->switchTo(work.id, true);
        QCOMPARE(switched.count(), 0);
        QCOMPARE(*main->data(SpacesRepositoryImpl::kItemsKey), listBefore);
        QCOMPARE(repository->loadSnapshot(work.id)->value("slots").toArray().first().toString(), QStringLiteral("A:/new"));
    }

    void hiddenAppsOfTheLiveSuiteAreNeverLost()
    {
        auto spaces = model();
        const SpaceItem work = spaces->createSpace("Work", "💼", "#112233", false);
        auto suite = provider->storeForSpace(work.id);
        LogCapture log;

        // The snapshot already hides more than the suite: nothing to do, nothing said.
        QJsonObject superset{{"hiddenApps", QJsonArray{"/a", "/b"}}};
        suite->set(QStringList{"/a"}, QLatin1String(SettingsKeys::kHiddenApps));
        QCOMPARE(snapshots->recoverHiddenApps(superset, *suite), 0L);
        QCOMPARE(superset.value("hiddenApps").toArray().size(), 2);
        QVERIFY(log.matching("Recovered").isEmpty());

        // A stale snapshot applied on switching would un-hide /c; it is kept hidden.
        suite->set(QStringList{"/a", "/c"}, QLatin1String(SettingsKeys::kHiddenApps));
        repository->saveSnapshot(QJsonObject{{"hiddenApps", QJsonArray{"/a"}}}, work.id);
        spaces->switchTo(work.id, true);
        QCOMPARE(suite->stringList(QLatin1String(SettingsKeys::kHiddenApps)), (QStringList{"/a", "/c"}));
        QVERIFY(log.contains(QStringLiteral("Recovered 1 hidden app(s) from live Space suite.")));
    }

    void aStaleActiveIdIsCleared()
    {
        repository->setActiveSpaceId(QUuid::createUuid());
        repository->saveSpaces({});
        LogCapture log;
        SpacesViewModel::restoreActiveSpace(*provider, *repository);
        QVERIFY(!provider->activeSpaceId() && !repository->activeSpaceId());
        QVERIFY(log.contains(QStringLiteral("Spaces: cleared activeSpaceId (no spaces list)")));
    }

    void aMissingWallpaperIsRecoveredFromTheStandardOne()
    {
        const QString standardImage = env->path("wall.png");
        QFile f(standardImage);
        QVERIFY(f.open(QIODevice::WriteOnly) && f.write("png") == 3);
        f.close();
        main->set(standardImage, QLatin1String(SettingsKeys::kCustomBackgroundImagePath));
        auto spaces = model();
        const SpaceItem work = spaces->createSpace("Work", "💼", "#112233", true);
        // The copy owns its wallpaper: the standard one may go.
        const QString own = *provider->storeForSpace(work.id)->string(QLatin1String(SettingsKeys::kCustomBackgroundImagePath));
        QCOMPARE(own, snapshots->assetFolder(work.id) + QStringLiteral("/wallpaper.png"));

        QVERIFY(QFile::remove(own));
        LogCapture log;
        spaces->switchTo(work.id, true);
        QVERIFY(QFile::exists(own));
        QVERIFY(log.contains(QStringLiteral("Recovered missing active Space wallpaper from standard path.")));
    }

    void deletingASpaceLeavesNothingBehind()
    {
        auto spaces = model();
        const SpaceItem keep = spaces->createSpace("Keep", "💼", "#112233", false);
        main->set(env->path("nowhere.png"), QLatin1String(SettingsKeys::kCustomBackgroundImagePath));
        const SpaceItem gone = spaces->createSpace("Gone", "🏠", "#445566", true);
        QDir().mkpath(snapshots->assetFolder(gone.id));
        spaces->switchTo(gone.id, true);
        provider->activeStore()->set(QStringList{"A:/x"}, QLatin1String(SettingsKeys::kSlots));
        QVERIFY(provider->synchronizeAll());
        QVERIFY(QFile::exists(suiteFile(gone.id)));

        QString error;
        QVERIFY2(spaces->deleteSpace(gone.id, &error), qPrintable(error));
        QVERIFY(!provider->activeSpaceId()); // the active Space was left first
        QVERIFY(provider->synchronizeAll());
        QVERIFY(!QFile::exists(suiteFile(gone.id)));
        QVERIFY(!QDir(snapshots->assetFolder(gone.id)).exists());
        QVERIFY(!main->persistedObject(SpacesRepositoryImpl::snapshotKey(gone.id)).isValid());
        QCOMPARE(repository->loadSpaces().size(), 1);
        QCOMPARE(repository->loadSpaces().first().id, keep.id);
    }
};

QTEST_GUILESS_MAIN(SpacesTest)
#include "tst_spaces.moc"
