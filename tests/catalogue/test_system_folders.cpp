// The system-folder service: one scan for concurrent callers, cached path
// checks, opening through the stored URI with the plain path as fallback,
// and the folder panel's names and icons from GIO.
#include "catalogue/SystemFolderPanelAssetCache.h"
#include "catalogue/SystemFoldersService.h"
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "fakes/FakeAppLauncher.h"
#include "fakes/FakeClock.h"
#include "platform/linux/GioFolderAssets.h"
#include "storage/UserDefaultsStore.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

namespace {
class CountingAssets final : public FolderAssetSource {
public:
    mutable int asked = 0;
    std::optional<Assets> assetsOf(const QString &path) const override
    {
        ++asked;
        if (path.endsWith(QLatin1String("gone")))
            return std::nullopt;
        return Assets{QStringLiteral("Shown"), QStringLiteral("folder-documents")};
    }
};
}

class SystemFoldersTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TempEnvironment> env;
    std::shared_ptr<FakeAppLauncher> launcher;
    std::shared_ptr<FakeClock> clock;
    std::shared_ptr<UserDefaultsStore> store;
    std::unique_ptr<SystemFoldersServiceImpl> service;

    QString makeFolder(const QString &name) const
    {
        const QString path = env->path(name);
        QDir().mkpath(path);
        return path;
    }

private Q_SLOTS:
    void init()
    {
        env = std::make_unique<TempEnvironment>();
        launcher = std::make_shared<FakeAppLauncher>();
        clock = std::make_shared<FakeClock>();
        store = UserDefaultsStore::standard(env->configDir());
        service = std::make_unique<SystemFoldersServiceImpl>(store, launcher, clock);
    }

    void concurrentRequestsShareOneScanAndAnEmptyListIsNotCached()
    {
        LogCapture log;
        int answers = 0;
        service->categories([&](const QList<SystemFolderCategory> &c) { answers += c.isEmpty() ? 1 : 100; });
        service->categories([&](const QList<SystemFolderCategory> &c) { answers += c.isEmpty() ? 1 : 100; });
        QTRY_COMPARE(answers, 2);
        QCOMPARE(log.count(QStringLiteral("Returning empty categories - manual folder selection only")), 1);
        QCOMPARE(log.count(QStringLiteral("Scan already in flight, awaiting result…")), 1);
        // Within 30 s, but the cached list is empty: scanned again.
        clock->advance(1);
        service->categories([&](const QList<SystemFolderCategory> &) { ++answers; });
        QTRY_COMPARE(answers, 3);
        QCOMPARE(log.count(QStringLiteral("Returning empty categories - manual folder selection only")), 2);
        QVERIFY(log.matching(QStringLiteral("Returning cached categories")).isEmpty());
    }

    void pathChecksAreCachedUntilCleared()
    {
        const QString folder = makeFolder(QStringLiteral("Projects"));
        QVERIFY(service->isValidPath(folder));
        QVERIFY(!service->isValidPath(env->path(QStringLiteral("nothing"))));
        QVERIFY(QDir(folder).removeRecursively());
        QVERIFY(service->isValidPath(folder));
        service->clearValidPathCache();
        QVERIFY(!service->isValidPath(folder));
    }

    void foldersOpenThroughTheirStoredUriOrElseByPath()
    {
        const QString folder = makeFolder(QStringLiteral("My Projects"));
        service->rememberFolder(folder);
        const auto bookmark = store->data(QStringLiteral("folder_bookmark_") + folder);
        QVERIFY(bookmark);
        QCOMPARE(QUrl(QString::fromUtf8(*bookmark)), QUrl::fromLocalFile(folder));
        QVERIFY(service->openFolder(folder));
        QCOMPARE(launcher->openedLocations.last(), QUrl::fromLocalFile(folder));

        // A bookmark that names nothing any more: logged, opened by path.
        store->set(QByteArray("file:///nowhere/at/all"), QStringLiteral("folder_bookmark_") + folder);
        LogCapture log;
        QVERIFY(service->openFolder(folder));
        QCOMPARE(launcher->openedLocations.size(), 2);
        QCOMPARE(launcher->openedLocations.last(), QUrl::fromLocalFile(folder));
        QVERIFY(log.contains(QStringLiteral("Failed to resolve bookmark for opening folder: /nowhere/at/all is not a folder")));

        // A folder that is gone opens nothing and says so.
        QVERIFY(QDir(folder).removeRecursively());
        const auto result = service->openFolder(folder);
        QVERIFY(!result);
        QVERIFY(result.error.contains(QStringLiteral("no longer exists")));
        QCOMPARE(launcher->openedLocations.size(), 2);
    }

    void panelAssetsAreAskedOncePerPathWithAFallbackForGoneFolders()
    {
        auto source = std::make_shared<CountingAssets>();
        SystemFolderPanelAssetCache cache(source);
        QCOMPARE(cache.displayName(QStringLiteral("/home/u/Documents")), QStringLiteral("Shown"));
        QCOMPARE(cache.iconName(QStringLiteral("/home/u/Documents")), QStringLiteral("folder-documents"));
        QCOMPARE(cache.displayName(QStringLiteral("/home/u/Old/gone")), QStringLiteral("gone"));
        QCOMPARE(cache.iconName(QStringLiteral("/home/u/Old/gone")), QStringLiteral("folder"));
        cache.displayName(QStringLiteral("/home/u/Documents"));
        QCOMPARE(source->asked, 2);
    }

    void gioGivesTheUserFoldersTheirThemedIcons()
    {
        // GLib reads the user folders once per process, from $HOME and
        // $XDG_CONFIG_HOME/user-dirs.dirs (both in the temporary environment)
        // at its first call: this is the process's only one.
        QFile dirs(env->path(QStringLiteral("config/user-dirs.dirs")));
        QVERIFY(QDir().mkpath(QFileInfo(dirs).absolutePath()));
        QVERIFY(dirs.open(QIODevice::WriteOnly));
        dirs.write("XDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n");
        dirs.close();
        const QString papers = makeFolder(QStringLiteral("home/Papers"));
        const QString plain = makeFolder(QStringLiteral("home/Plain"));

        GioFolderAssets gio;
        QCOMPARE(gio.assetsOf(papers)->iconName, QStringLiteral("folder-documents"));
        QCOMPARE(gio.assetsOf(papers)->displayName, QStringLiteral("Papers"));
        QCOMPARE(gio.assetsOf(plain)->iconName, QStringLiteral("folder"));
        QVERIFY(!gio.assetsOf(env->path(QStringLiteral("missing"))));
    }
};

QTEST_GUILESS_MAIN(SystemFoldersTest)
#include "test_system_folders.moc"
