#include "CatalogueFixtures.h"
#include "foundation/BundleIdentity.h"
#include "catalogue/AppsRepositoryImpl.h"
#include "catalogue/BundleInfo.h"
#include "catalogue/SmallFile.h"
#include "common/Unprivileged.h"
#include "fakes/FakeAppSource.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <sys/stat.h>

using namespace CatalogueFixtures;

namespace {

BundleSpec app(const QString &identifier, PlistFormat format = PlistFormat::Xml)
{
    return {identifier, QString(), QString(), QString(), format};
}

}

class TestAppsRepository : public QObject {
    Q_OBJECT

private:
    QString dir(const QString &relative)
    {
        const QString path = m_root.path() + u'/' + relative;
        QDir().mkpath(path);
        return path;
    }
    QTemporaryDir m_root;

private Q_SLOTS:
    void init() { QVERIFY(QDir(m_root.path()).removeRecursively() && QDir().mkpath(m_root.path())); }

    void readsXmlAndBinaryInfoPlists()
    {
        const QString apps = dir("Applications");
        makeBundle(apps, "Xml.app", {"com.example.xml", "XmlName", "Xml Display", {}, PlistFormat::Xml});
        makeBundle(apps, "Binary.app", {"com.example.bin", "BinaryName", {}, {}, PlistFormat::Binary});
        makeBundle(apps, "Bare.app", app("com.example.bare", PlistFormat::Binary));

        const auto items = AppsRepositoryImpl({apps}).fetch();
        // Display name first, then the bundle name, then the file name.
        QCOMPARE(names(items), QStringList({"Bare", "BinaryName", "Xml Display"}));
        QCOMPARE(items[2].path, apps + "/Xml.app");
        // Ids follow the path: a second scan gives the same ids.
        QCOMPARE(AppsRepositoryImpl({apps}).fetch(), items);
        QVERIFY(items[0].id != items[1].id);
    }

    void ordersEntriesAndKeepsFirstFound()
    {
        const QString first = dir("First");
        const QString nested = dir("First/Utilities");
        const QString second = dir("Second");
        for (const char *name : {"beta.app", "alpha.app", "Alpha.app", "Gamma.app"})
            makeBundle(first, name, app(QString("com.example.") + name));
        makeBundle(nested, "Tool.app", app("com.example.tool"));
        makeBundle(second, "Delta.app", app("com.example.delta"));

        // "Utilities" is both a sub-folder of the first folder and a search
        // folder of its own, and the first folder is listed twice.
        const auto items = AppsRepositoryImpl({first, second, nested, first + "/"}).fetch();
        QCOMPARE(paths(items), QStringList({first + "/Alpha.app", first + "/alpha.app", first + "/beta.app",
                                            first + "/Gamma.app", nested + "/Tool.app", second + "/Delta.app"}));
    }

    void searchesOneSubFolderLevel()
    {
        const QString apps = dir("Applications");
        makeBundle(apps + "/Suite", "Tool.app", app("com.example.tool"));
        makeBundle(apps + "/Suite/Deeper", "Deep.app", app("com.example.deep"));
        makeBundle(apps + "/Outer.app/Contents/Helpers", "Helper.app", app("com.example.helper"));
        makeBundle(apps, "Outer.app", app("com.example.outer"));
        // A link to a folder is not a suite folder.
        QVERIFY(QFile::link(apps + "/Suite", apps + "/LinkedSuite"));

        QCOMPARE(paths(AppsRepositoryImpl({apps}).fetch()),
                 QStringList({apps + "/Outer.app", apps + "/Suite/Tool.app"}));
    }

    void readsOnlySmallRegularFiles_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<SmallFile::Status>("status");
        QTest::newRow("exactly the cap") << "cap" << SmallFile::Status::Read;
        QTest::newRow("one byte over the cap") << "over" << SmallFile::Status::Refused;
        QTest::newRow("2 GB, sparse") << "huge" << SmallFile::Status::Refused;
        QTest::newRow("FIFO without a writer") << "fifo" << SmallFile::Status::Refused;
        QTest::newRow("link to /dev/zero") << "zero" << SmallFile::Status::Refused;
        QTest::newRow("dangling link") << "dangling" << SmallFile::Status::Missing;
        QTest::newRow("mode 000") << "locked" << SmallFile::Status::Unreadable;
    }

    void readsOnlySmallRegularFiles()
    {
        QFETCH(QString, name);
        QFETCH(SmallFile::Status, status);
        const QString path = m_root.path() + u'/' + name;
        const QMap<QString, qint64> sizes{{"cap", SmallFile::kMaxBytes}, {"over", SmallFile::kMaxBytes + 1},
                                          {"huge", qint64(2) << 30}, {"locked", 8}};
        QFile file(path);
        if (sizes.contains(name))
            QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(sizes[name]));
        file.close();
        if (name == "fifo")
            QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        else if (name == "zero" || name == "dangling")
            QVERIFY(QFile::link(name == "zero" ? "/dev/zero" : m_root.path() + "/nowhere", path));
        else if (name == "locked")
            QVERIFY(QFile::setPermissions(path, {}));

        Unprivileged unprivileged;
        if (name == "locked" && !Unprivileged::lockedOut(path))
            QSKIP("this process can read files of mode 000");
        const auto result = SmallFile::read(path);
        QCOMPARE(result.status, status);
        QCOMPARE(result.bytes.size(), status == SmallFile::Status::Read ? sizes[name] : 0);
    }

    // An app missing from a scan counts as gone only where the scan could
    // look: a folder that is unreadable or missing this time proves nothing.
    // Links back up and an Info.plist that is a FIFO or /dev/zero must not
    // keep the scan from ending.
    void knowsWhatIsGone_data()
    {
        QTest::addColumn<QString>("relative");
        QTest::addColumn<bool>("gone");
        QTest::newRow("removed from a listed folder") << "Apps/Removed.app" << true;
        QTest::newRow("there, but no application any more") << "Apps/Plain.app" << true;
        QTest::newRow("folder of mode 000") << "Locked/Far.app" << false;
        QTest::newRow("folder missing (not mounted)") << "Unmounted/Far.app" << false;
        QTest::newRow("suite folder removed") << "Apps/OldSuite/Tool.app" << true;
        QTest::newRow("suite folder of mode 000") << "Apps/LockedSuite/Tool.app" << false;
        QTest::newRow("bundle of mode 000") << "Apps/LockedBundle.app" << false;
        QTest::newRow("folder this process does not scan") << "Elsewhere/X.app" << false;
    }

    void knowsWhatIsGone()
    {
        QFETCH(QString, relative);
        QFETCH(bool, gone);
        const QString root = m_root.path();
        makeBundle(dir("Apps"), "Keep.app", app("com.example.keep"));
        makeBundle(dir("Apps"), "Plain.app", app({}));
        makeBundle(dir("Apps/LockedSuite"), "Tool.app", app("com.example.tool"));
        makeBundle(dir("Apps"), "LockedBundle.app", app("com.example.locked"));
        makeBundle(dir("Locked"), "Far.app", app("com.example.far"));
        makeBundle(dir("Elsewhere"), "X.app", app("com.example.x"));
        QVERIFY(QFile::link(".", root + "/Apps/self") && QFile::link(".", root + "/Apps/again"));
        QCOMPARE(::mkfifo(QFile::encodeName(dir("Apps/Fifo.app/Contents") + "/Info.plist").constData(), 0600), 0);
        QVERIFY(QFile::link("/dev/zero", dir("Apps/Zero.app/Contents") + "/Info.plist"));
        const QStringList locked = {root + "/Locked", root + "/Apps/LockedSuite", root + "/Apps/LockedBundle.app"};
        for (const QString &path : locked)
            QVERIFY(QFile::setPermissions(path, {}));
        const auto restore = qScopeGuard([&] {
            for (const QString &path : locked)
                QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        });

        Unprivileged unprivileged;
        if (!Unprivileged::lockedOut(root + "/Locked"))
            QSKIP("this process can read folders of mode 000");
        const AppScan scan = AppsRepositoryImpl({root + "/Apps", root + "/Locked", root + "/Unmounted"}).scan();
        QCOMPARE(paths(scan.apps()), QStringList({root + "/Apps/Keep.app"}));
        QCOMPARE(scan.isKnownGone(root + u'/' + relative), gone);
    }

    void takesOnlyFinderFromCoreServices()
    {
        const QString core = dir("CoreServices");
        const QString apps = dir("Applications");
        makeBundle(core, "Finder.app", app("com.apple.finder"));
        makeBundle(core, "Dock.app", app("com.apple.dock"));
        makeBundle(core + "/Applications", "Archive Utility.app", app("com.apple.archiveutility"));
        makeBundle(apps, "Dock.app", app("com.example.dock"));

        const auto items = AppsRepositoryImpl({apps, core}, core).fetch();
        QCOMPARE(paths(items), QStringList({apps + "/Dock.app", core + "/Finder.app"}));
    }

    // Every case searches both folders; this program's own bundle is
    // Applications/Mine.app with the identifier com.example.own.
    void exclusionRules_data()
    {
        QTest::addColumn<QString>("bundle");
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("displayName");
        QTest::addColumn<bool>("included");

        QTest::newRow("ordinary") << "Applications/Notes.app" << "com.example.notes" << "Notes" << "Notes" << true;
        QTest::newRow("own fixed identifier, other file name")
            << "Applications/Copy.app" << QString(BundleIdentity::kIdentifier) << "Copy" << "" << false;
        QTest::newRow("own running identifier") << "Applications/Copy.app" << "com.example.own" << "" << "" << false;
        QTest::newRow("own bundle path, other identifier")
            << "Applications/Mine.app" << "com.example.some-other-build" << "" << "" << false;
        QTest::newRow("identifier word") << "Applications/Grid.app" << "org.example.LaunchPadX" << "" << "" << false;
        QTest::newRow("bundle name word") << "Applications/Grid.app" << "org.example.grid" << "Quick Launcher" << ""
                                          << false;
        QTest::newRow("display name word") << "Applications/Grid.app" << "org.example.grid" << "Grid" << "TILLMORA"
                                           << false;
        QTest::newRow("listed file name") << "Applications/App Launcher.app" << "org.example.a" << "" << "" << false;
        QTest::newRow("file name word") << "Applications/MyLaunchpadThing.app" << "org.example.b" << "" << "" << false;
        QTest::newRow("word only in the folder") << "Launchers/Runner.app" << "org.example.runner" << "" << "" << true;
    }

    void exclusionRules()
    {
        QFETCH(QString, bundle);
        QFETCH(QString, identifier);
        QFETCH(QString, name);
        QFETCH(QString, displayName);
        QFETCH(bool, included);

        const QString path = makeBundle(m_root.path(), bundle, {identifier, name, displayName, {}, PlistFormat::Binary});
        AppsRepositoryImpl repo({dir("Applications"), dir("Launchers")});
        repo.setOwnBundle(m_root.path() + "/Applications/Mine.app", "com.example.own");
        QCOMPARE(repo.shouldIncludeApp(path), included);
        QCOMPARE(repo.fetch().size(), included ? 1 : 0);
    }

    void safariOnlyFromTheCryptex()
    {
        AppsRepositoryImpl repo({});
        const BundleInfo safari{"com.apple.Safari", "Safari", {}, {}};
        QVERIFY(!repo.shouldIncludeApp("/Applications/Safari.app", safari));
        QVERIFY(repo.shouldIncludeApp("/System/Cryptexes/App/System/Applications/Safari.app", safari));
        // Only that exact path: a Safari anywhere else is listed.
        QVERIFY(repo.shouldIncludeApp("/Applications/Utilities/Safari.app", safari));
    }

    void skipsBadInput()
    {
        const QString apps = dir("Applications");
        makeBundle(apps, "Good.app", app("com.example.good"));
        writeFile(apps + "/Garbage.app/Contents/Info.plist", "<plist><dict><key>CFBundle");
        writeFile(apps + "/ArrayRoot.app/Contents/Info.plist", "<?xml version=\"1.0\"?><plist><array/></plist>");
        writeFile(apps + "/Empty.app/Contents/Info.plist", "");
        QDir().mkpath(apps + "/NoPlist.app/Contents");
        makeBundle(apps, "NoIdentifier.app", {{}, "Nameless", {}, {}, PlistFormat::Binary});
        writeFile(apps + "/File.app", "not a folder");
        QVERIFY(QFile::link(apps + "/Missing.app", apps + "/Broken.app"));
        // A "search folder" that is a file, and one that does not exist.
        writeFile(m_root.path() + "/plain-file", "x");

        const auto items =
            AppsRepositoryImpl({m_root.path() + "/plain-file", m_root.path() + "/vanished", apps}).fetch();
        QCOMPARE(paths(items), QStringList({apps + "/Good.app"}));
    }

    void rescanReadsOnlyWhatChanged()
    {
        const QString apps = dir("Applications");
        const QString bundle = makeBundle(apps, "Editor.app", {"com.example.editor", "Editor", {}, {}});
        makeBundle(apps, "Viewer.app", {"com.example.viewer", "Viewer", {}, {}});
        AppsRepositoryImpl repo({apps});
        QCOMPARE(names(repo.fetch()), QStringList({"Editor", "Viewer"}));

        // An update rewrites the Info.plist; a removed bundle leaves the list.
        makeBundle(apps, "Editor.app", {"com.example.editor", "Editor", "Editor Pro", {}, PlistFormat::Binary});
        QVERIFY(QDir(apps + "/Viewer.app").removeRecursively());
        QCOMPARE(names(repo.fetch()), QStringList({"Editor Pro"}));
        // Reinstalled under a launcher's identifier, it is excluded.
        makeBundle(apps, "Editor.app", {"com.example.launcher", "Editor", {}, {}});
        QVERIFY(repo.fetch().isEmpty());
        QVERIFY(QFile::remove(bundle + "/Contents/Info.plist"));
        writeFile(bundle + "/Info.plist", plistBytes({"com.example.flat", "Flat", {}, {}}));
        QCOMPARE(names(repo.fetch()), QStringList({"Flat"}));
    }

    void appendsUserFoldersAndSources()
    {
        const QString apps = dir("Applications");
        const QString user = dir("UserApps");
        makeBundle(apps, "A.app", app("com.example.a"));
        makeBundle(user, "U.app", app("com.example.u"));
        auto source = std::make_shared<FakeAppSource>();
        source->items = {AppItems::make("/usr/share/applications/z.desktop", "Zed"),
                         AppItems::make(apps + "/A.app", "Duplicate of a bundle")};
        source->directories = {"/usr/share/applications"};

        AppsRepositoryImpl repo({apps});
        repo.addSource(source);
        repo.setUserFolders({user});
        const auto items = repo.fetch();
        QCOMPARE(paths(items), QStringList({apps + "/A.app", user + "/U.app", "/usr/share/applications/z.desktop"}));
        QCOMPARE(items[0].displayName, QString("A"));
        QCOMPARE(repo.watchedDirectories(), QStringList({apps, user, "/usr/share/applications"}));
    }

    void searchDirectoriesFromEnvironment()
    {
        qunsetenv(AppsRepositoryImpl::kAppDirsVariable);
        // The user's own folder comes first: its copy of an app wins.
        QCOMPARE(AppsRepositoryImpl::searchDirectoriesFromEnvironment().first(), QDir::homePath() + "/Applications");

        qputenv(AppsRepositoryImpl::kAppDirsVariable, "/opt/a::/opt/b/");
        QCOMPARE(AppsRepositoryImpl::searchDirectoriesFromEnvironment(), QStringList({"/opt/a", "/opt/b"}));
        qunsetenv(AppsRepositoryImpl::kAppDirsVariable);
    }
};

QTEST_GUILESS_MAIN(TestAppsRepository)
#include "test_apps_repository.moc"
