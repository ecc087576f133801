// The real `tillmora` executable in temporary XDG folders with fixture
// bundles: headless commands change the stored profile as the model would,
// a running launcher carries commands out itself, and every rejected command
// leaves the stored data byte for byte as it was.
#include "CatalogueFixtures.h"
#include "cli/Verbs.h"
#include "common/CommandRun.h"
#include "common/TempEnvironment.h"

#include <QDir>
#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

using Run = CommandRun;

class CommandLineTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TempEnvironment> env;
    QString apps;

    // No desktop entries of the machine: only the fixture bundles.
    QProcessEnvironment processEnvironment() const
    {
        return commandEnvironment(apps, env->path(QStringLiteral("no-share")));
    }

    // fileSizeLimit > 0 runs the command as on a nearly full disk: no file
    // it writes may grow past that many bytes.
    Run tillmora(const QStringList &args, rlim_t fileSizeLimit = 0)
    {
        std::function<void()> nearlyFullDisk;
        if (fileSizeLimit > 0) {
            nearlyFullDisk = [fileSizeLimit] {
                const rlimit limit{fileSizeLimit, fileSizeLimit};
                ::signal(SIGXFSZ, SIG_IGN);
                ::setrlimit(RLIMIT_FSIZE, &limit);
            };
        }
        return runCommand(QStringLiteral(TILLMORA_BINARY), args, processEnvironment(), {}, nearlyFullDisk);
    }

    QString app(const QString &name) const { return apps + u'/' + name + QStringLiteral(".app"); }
    QString key(const QString &name) const { return QStringLiteral("A:") + app(name); }

    QByteArray storedBytes() const
    {
        QFile f(env->configDir() + QStringLiteral("/com.tillmora.Tillmora.json"));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    // In the background, as at login; true once it listens for commands.
    bool startLauncher(QProcess &launcher)
    {
        // Its log is read below; a launcher logs only warnings unless asked.
        QProcessEnvironment pe = processEnvironment();
        pe.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("com.tillmora.Tillmora.*=true"));
        launcher.setProcessEnvironment(pe);
        launcher.start(QStringLiteral(TILLMORA_BINARY), {"--login-item"});
        const QString socket = env->runtimeDir() + QStringLiteral("/tillmora/instance.sock");
        QElapsedTimer waited;
        waited.start();
        while (launcher.state() != QProcess::NotRunning && !QFile::exists(socket) && waited.elapsed() < 20000)
            QTest::qWait(50);
        return QFile::exists(socket);
    }

    QJsonObject layoutJson() { return QJsonDocument::fromJson(tillmora({"layout", "--json"}).out.toUtf8()).object(); }

private Q_SLOTS:
    void init()
    {
        env = std::make_unique<TempEnvironment>();
        apps = env->path(QStringLiteral("Applications"));
        for (const char *name : {"Alpha", "Bravo", "Charlie", "Delta", "Echo"})
            CatalogueFixtures::makeBundle(apps, QLatin1String(name) + QStringLiteral(".app"),
                                          {QStringLiteral("org.example.") + QLatin1String(name), QLatin1String(name)});
    }

    void headlessCommandsChangeTheStoredProfile()
    {
        Run r = tillmora({"apps"});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out.count(u'\n'), 5);
        QVERIFY(r.out.contains(app("Alpha") + "\tAlpha\n"));

        // The first load lays the apps out and saves them.
        QJsonArray slots = layoutJson()["slots"].toArray();
        QCOMPARE(slots.size(), 5);
        QCOMPARE(slots.at(0).toString(), key("Alpha"));

        QCOMPARE(tillmora({"move", app("Alpha"), "12"}).exitCode, 0);
        slots = layoutJson()["slots"].toArray();
        QCOMPARE(slots.at(12).toString(), key("Alpha"));
        QCOMPARE(slots.at(0).toString(), QString());

        r = tillmora({"folder", "create", "Work", "--slot", "1", app("Bravo"), app("Charlie")});
        QCOMPARE(r.exitCode, 0);
        const QString folderId = r.out.trimmed();
        QJsonObject layout = layoutJson();
        QCOMPARE(layout["slots"].toArray().at(1).toString(), "F:" + folderId);
        QCOMPARE(layout["folders"].toArray().at(0)["name"].toString(), QStringLiteral("Work"));

        QCOMPARE(tillmora({"hide", app("Delta")}).exitCode, 0);
        layout = layoutJson();
        QCOMPARE(layout["hiddenApps"].toArray().at(0).toString(), app("Delta"));
        QVERIFY(!layout["slots"].toArray().contains(key("Delta")));

        r = tillmora({"widget", "add", "clock", "2x2", "--slot", "20"});
        QCOMPARE(r.exitCode, 0);
        const QString widgetId = r.out.trimmed();
        slots = layoutJson()["slots"].toArray();
        QCOMPARE(slots.at(20).toString(), "W:" + widgetId);
        QCOMPARE(slots.at(29).toString(), "WB:" + widgetId); // rows are 8 wide

        QCOMPARE(tillmora({"folder", "delete", folderId}).exitCode, 0);
        layout = layoutJson();
        QVERIFY(layout["folders"].toArray().isEmpty());
        QVERIFY(layout["slots"].toArray().contains(key("Bravo")));

        // Plain layout: one line per page, tabs between cells, "-" for empty ones.
        r = tillmora({"layout"});
        QCOMPARE(r.out.count(u'\n'), 1);
        QCOMPARE(r.out.split(u'\n').first().split(u'\t').size(), 40);
        QVERIFY(r.out.contains("\t-\t"));
    }

    void rejectedCommandsChangeNothing_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("unknown command") << QStringList{"frobnicate"};
        QTest::newRow("unknown option") << QStringList{"layout", "--xml"};
        QTest::newRow("missing argument") << QStringList{"move"};
        QTest::newRow("index not a number") << QStringList{"move", "{Alpha}", "x"};
        // Indices are checked before anything changes: no wrap-around, no
        // thousands of empty pages, no negative cells.
        QTest::newRow("index past the next page") << QStringList{"move", "{Alpha}", "80"};
        QTest::newRow("index of 2^31 - 1") << QStringList{"move", "{Alpha}", "2147483647"};
        QTest::newRow("index of 2^32 + 1") << QStringList{"move", "{Alpha}", "4294967297"};
        QTest::newRow("negative index") << QStringList{"move", "{Alpha}", "-1"};
        QTest::newRow("widget of an unknown kind") << QStringList{"widget", "add", "nonsense", "2x2"};
        QTest::newRow("widget cell removed as an icon") << QStringList{"remove", "W:6F1A2B3C-0000-4000-8000-000000000001"};
        QTest::newRow("bare verb with arguments") << QStringList{"toggle", "extra"};
        QTest::newRow("widget far away") << QStringList{"widget", "add", "clock", "2x2", "--slot", "99999"};
        QTest::newRow("folder far away") << QStringList{"folder", "create", "F", "--slot", "1000000", "{Alpha}"};
        QTest::newRow("unknown app key") << QStringList{"place", "A:/nowhere/Ghost.app"};
        QTest::newRow("malformed key") << QStringList{"place", "A:  "};
        QTest::newRow("widget key moved as icon") << QStringList{"move", "W:6F1A2B3C-0000-4000-8000-000000000001", "3"};
        QTest::newRow("unknown folder") << QStringList{"folder", "rename", "6F1A2B3C-0000-4000-8000-000000000001", "X"};
        QTest::newRow("folder grid shape") << QStringList{"folder", "move", "nope", "A:/x.app", "1", "--grid", "9x9"};
        QTest::newRow("folder without apps") << QStringList{"folder", "create", "Empty"};
        QTest::newRow("widget size") << QStringList{"widget", "add", "clock", "4x4"};
        QTest::newRow("unknown widget") << QStringList{"widget", "move", "6F1A2B3C-0000-4000-8000-000000000001", "3"};
        QTest::newRow("hide unknown app") << QStringList{"hide", "/nowhere/Ghost.app"};
        QTest::newRow("unhide not hidden") << QStringList{"unhide", "/nowhere/Ghost.app"};
        QTest::newRow("defaults bad int") << QStringList{"defaults", "write", "k", "-int", "twelve"};
        QTest::newRow("defaults bad type") << QStringList{"defaults", "write", "k", "-colour", "red"};
        QTest::newRow("defaults unknown key") << QStringList{"defaults", "delete", "never.written"};
    }

    void rejectedCommandsChangeNothing()
    {
        QFETCH(QStringList, args);
        args.replaceInStrings(QStringLiteral("{Alpha}"), app(QStringLiteral("Alpha")));
        // A move onto its own cell changes nothing but stores the first layout
        // (reading commands store nothing).
        QCOMPARE(tillmora({"move", key("Alpha"), "0"}).exitCode, 0);
        const QByteArray before = storedBytes();
        QVERIFY(!before.isEmpty());

        const Run r = tillmora(args);
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.startsWith(QLatin1String("tillmora: ")) && r.err.count(u'\n') == 1, qPrintable(r.err));
        QVERIFY(r.out.isEmpty());
        QCOMPARE(storedBytes(), before);
    }

    // An operation the layout turns down exits 1 with its reason on one
    // line and leaves the stored data as it was. "{X}" stands for app X.
    void refusedOperationsSayWhy_data()
    {
        QTest::addColumn<QStringList>("setup");
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("err");
        QTest::newRow("already on the grid") << QStringList{"move", "{Alpha}", "0"} << QStringList{"place", "{Alpha}"}
                                             << "A:{Alpha} was not placed: it is already on the grid";
        QTest::newRow("inside a folder") << QStringList{"folder", "create", "F", "{Charlie}"}
                                         << QStringList{"place", "{Charlie}"}
                                         << "A:{Charlie} was not placed: it is inside a folder";
        QTest::newRow("already hidden") << QStringList{"hide", "{Bravo}"} << QStringList{"hide", "{Bravo}"}
                                        << "{Bravo} was not hidden: it is already hidden";
        QTest::newRow("onto a widget") << QStringList{"widget", "add", "clock", "2x2", "--slot", "20"}
                                       << QStringList{"move", "{Alpha}", "21"}
                                       << "A:{Alpha} was not moved: the cell belongs to a widget";
    }
    void refusedOperationsSayWhy()
    {
        QFETCH(QStringList, setup);
        QFETCH(QStringList, args);
        QFETCH(QString, err);
        const auto apply = [this](QString text) {
            for (const char *name : {"Alpha", "Bravo", "Charlie"})
                text.replace(QStringLiteral("{%1}").arg(QLatin1String(name)), app(QLatin1String(name)));
            return text;
        };
        for (QString &a : setup)
            a = apply(a);
        for (QString &a : args)
            a = apply(a);
        QCOMPARE(tillmora(setup).exitCode, 0);
        const QByteArray before = storedBytes();
        const Run r = tillmora(args);
        QCOMPARE(r.exitCode, 1);
        QCOMPARE(r.err, QStringLiteral("tillmora: ") + apply(err) + u'\n');
        QCOMPARE(storedBytes(), before);
    }

    // A change that cannot be saved is a failure, said as such; nothing the
    // command printed may name what was not kept, and the old file stays.
    void aSaveThatFailsIsReportedAndKeepsTheOldFile()
    {
        QCOMPARE(tillmora({"folder", "create", "First", app("Alpha")}).exitCode, 0);
        const QByteArray before = storedBytes();
        QVERIFY(before.size() > 512);
        const Run r = tillmora({"folder", "create", "Second", app("Bravo")}, rlim_t(before.size() / 2));
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.contains(QStringLiteral("could not be saved")), qPrintable(r.err));
        QVERIFY(r.out.isEmpty());
        QCOMPARE(storedBytes(), before);
        const Run d = tillmora({"defaults", "write", "theme", "-string", "dark"}, rlim_t(before.size() / 2));
        QCOMPARE(d.exitCode, 1);
        QCOMPARE(storedBytes(), before);
    }

    // On a real full disk (a small tmpfs with room for the lock file but
    // not for the new settings file) and on a read-only mount, changes fail
    // with the reason and reading commands still work; the file stays.
    void aFullOrReadOnlyDiskKeepsTheOldFile()
    {
        const QString mountPoint = env->path(QStringLiteral("config"));
        QDir().mkpath(mountPoint);
        const auto mount = [&](const QStringList &options) {
            return QProcess::execute(QStringLiteral("mount"),
                                     {"-t", "tmpfs", "-o", options.join(u','), "tmpfs", mountPoint}) == 0;
        };
        if (::getuid() != 0 || !mount({"size=256k", "mode=0700"}))
            QSKIP("needs root allowed to mount a tmpfs");
        const auto unmount = qScopeGuard([&] { QProcess::execute(QStringLiteral("umount"), {mountPoint}); });

        QCOMPARE(tillmora({"folder", "create", "First", app("Alpha")}).exitCode, 0);
        const QByteArray before = storedBytes();
        {
            // Fill the disk, then free one page: the lock file fits, the new file does not.
            QFile filler(mountPoint + QStringLiteral("/filler"));
            QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            const QByteArray block(4096, 'f');
            while (filler.write(block) == block.size()) {
            }
            filler.close();
            QVERIFY(filler.resize(filler.size() - 4096));
        }
        const Run full = tillmora({"folder", "create", "Second", app("Bravo")});
        QCOMPARE(full.exitCode, 1);
        QVERIFY2(full.err.contains(QStringLiteral("could not be saved")), qPrintable(full.err));
        QCOMPARE(storedBytes(), before);
        QCOMPARE(tillmora({"layout"}).exitCode, 0);
        QCOMPARE(storedBytes(), before);

        QVERIFY(QProcess::execute(QStringLiteral("mount"), {"-o", "remount,ro", mountPoint}) == 0);
        const Run readOnly = tillmora({"folder", "create", "Third", app("Charlie")});
        QCOMPARE(readOnly.exitCode, 1);
        QVERIFY(readOnly.out.isEmpty()); // no id of a folder never stored
        const Run write = tillmora({"defaults", "write", "theme", "-string", "dark"});
        QCOMPARE(write.exitCode, 1);
        QVERIFY2(write.err.contains(QStringLiteral("could not")), qPrintable(write.err));
        QCOMPARE(tillmora({"layout", "--json"}).exitCode, 0);
        QCOMPARE(storedBytes(), before);
    }

    // Reading never writes, whatever the file holds.
    void readOnlyCommandsLeaveEveryFileAsItWas()
    {
        QCOMPARE(tillmora({"folder", "create", "Box", app("Alpha"), app("Bravo")}).exitCode, 0);
        const QString path = env->configDir() + QStringLiteral("/com.tillmora.Tillmora.json");
        // A value a newer version might write, and a hand edit.
        QJsonObject root = QJsonDocument::fromJson(storedBytes()).object();
        root.insert(QStringLiteral("futureKey"), QJsonObject{{QStringLiteral("vector"), QJsonArray{1, 2}}});
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(QJsonDocument(root).toJson());
        f.close();
        const QByteArray before = storedBytes();
        const QDateTime modified = QFileInfo(path).lastModified();
        for (const QStringList &args : {QStringList{"apps"}, QStringList{"layout"}, QStringList{"layout", "--json"},
                                        QStringList{"defaults", "read"}, QStringList{"defaults", "read", "futureKey"}})
            tillmora(args);
        // Run from cron or ssh, a narrower view sees none of the apps; reading
        // the layout then must not reconcile the folder away.
        const QString allApps = apps;
        apps = env->path(QStringLiteral("no-apps"));
        QCOMPARE(tillmora({"layout"}).exitCode, 0);
        apps = allApps;
        QCOMPARE(storedBytes(), before);
        QCOMPARE(QFileInfo(path).lastModified(), modified);
        QCOMPARE(layoutJson().value(QStringLiteral("folders")).toArray().size(), 1);
        // And the bad key survives a write of other keys.
        QCOMPARE(tillmora({"hide", app("Charlie")}).exitCode, 0);
        QVERIFY(QJsonDocument::fromJson(storedBytes()).object().contains(QStringLiteral("futureKey")));
    }

    // Plain output is one record per line, fields split by tabs: a name
    // holding either cannot forge a line or a field.
    void namesCannotForgeLinesOrFields()
    {
        CatalogueFixtures::makeBundle(apps, QStringLiteral("Forged.app"),
                                      {QStringLiteral("org.example.Forged"), QStringLiteral("Evil\tName\n/forged\\x")});
        const Run r = tillmora({"apps"});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out.count(u'\n'), 6);
        QVERIFY2(r.out.contains(app("Forged") + QStringLiteral("\tEvil\\tName\\n/forged\\\\x\n")), qPrintable(r.out));
        for (const QString &line : r.out.split(u'\n', Qt::SkipEmptyParts))
            QCOMPARE(line.count(u'\t'), 1);
    }

    // Without a display, pages are cut as the overlay last showed them.
    void headlessCommandsUseTheUsersGrid()
    {
        QCOMPARE(tillmora({"defaults", "write", "overlay.lastDisplay", "-string", "HDMI-1"}).exitCode, 0);
        QCOMPARE(tillmora({"defaults", "write", "columns@HDMI-1", "-int", "4"}).exitCode, 0);
        QCOMPARE(tillmora({"defaults", "write", "rows@HDMI-1", "-int", "2"}).exitCode, 0);
        const Run far = tillmora({"move", app("Alpha"), "99"});
        QCOMPARE(far.exitCode, 2);
        QVERIFY2(far.err.contains(QStringLiteral("from 0 to 15")), qPrintable(far.err));
    }

    void defaultsReadAndWriteTypedValues()
    {
        QCOMPARE(tillmora({"defaults", "write", "hotKey.keyCode", "-int", "18"}).exitCode, 0);
        QCOMPARE(tillmora({"defaults", "write", "glassIntensity", "-float", "0.5"}).exitCode, 0);
        QCOMPARE(tillmora({"defaults", "write", "list", "-array", "a", "b"}).exitCode, 0);
        QCOMPARE(tillmora({"defaults", "write", "blob", "-data", "00ff"}).exitCode, 0);
        QCOMPARE(tillmora({"defaults", "write", "LaunchpadFolders_v1", "-json", "[]"}).exitCode, 0);
        QCOMPARE(tillmora({"defaults", "write", "--suite", "com.tillmora.space.X", "theme", "-string", "dark"}).exitCode, 0);

        QCOMPARE(tillmora({"defaults", "read", "hotKey.keyCode"}).out, QStringLiteral("18\n"));
        QCOMPARE(tillmora({"defaults", "read", "list"}).out.simplified(), QStringLiteral("[ \"a\", \"b\" ]"));
        QCOMPARE(tillmora({"defaults", "read", "blob"}).out.simplified(), QStringLiteral("{ \"data\": \"AP8=\" }"));
        QCOMPARE(tillmora({"defaults", "read", "LaunchpadFolders_v1"}).out.simplified(), QStringLiteral("[ ]"));
        QCOMPARE(tillmora({"defaults", "read", "--suite", "com.tillmora.space.X", "theme"}).out, QStringLiteral("\"dark\"\n"));
        const QJsonObject all = QJsonDocument::fromJson(tillmora({"defaults", "read"}).out.toUtf8()).object();
        QCOMPARE(all.value(QStringLiteral("glassIntensity")).toDouble(), 0.5);
        QVERIFY(!all.contains(QStringLiteral("theme"))); // that went to the Space's own suite

        QCOMPARE(tillmora({"defaults", "delete", "blob"}).exitCode, 0);
        QCOMPARE(tillmora({"defaults", "read", "blob"}).exitCode, 2);
    }

    void aRunningLauncherCarriesCommandsOut()
    {
        QProcess launcher;
        const auto stop = qScopeGuard([&] {
            launcher.terminate();
            launcher.waitForFinished(10000);
        });
        QVERIFY(startLauncher(launcher));

        QCOMPARE(tillmora({"move", app("Echo"), "0"}).exitCode, 0);
        QCOMPARE(layoutJson()["slots"].toArray().at(0).toString(), key("Echo"));
        // The move was made by the launcher's own model: its log has the move.
        QByteArray launcherLog;
        const QByteArray moveLine = "[DRAG LOG] Moving " + key("Echo").toUtf8();
        QTRY_VERIFY2_WITH_TIMEOUT((launcherLog += launcher.readAllStandardError()).contains(moveLine),
                                  launcherLog.right(2000).constData(), 5000);
        QCOMPARE(tillmora({"toggle"}).exitCode, 0);
        QCOMPARE(tillmora({"place", "A:/nowhere/Ghost.app"}).exitCode, 2);
        // What the launcher does not take runs in the full program, and a
        // relative path is the caller's, not the launcher's.
        const Run unknown = tillmora({"bogus"});
        QCOMPARE(unknown.exitCode, 2);
        QVERIFY2(unknown.err.contains(QStringLiteral("unknown command or option 'bogus'")), qPrintable(unknown.err));
        QCOMPARE(tillmora({"space", "create", "Shared"}).exitCode, 0);
        QProcess exporter;
        exporter.setProcessEnvironment(processEnvironment());
        exporter.setWorkingDirectory(env->root());
        exporter.start(QStringLiteral(TILLMORA_BINARY), {"theme", "export", "Shared", "shared.tillmoratheme"});
        QVERIFY(exporter.waitForFinished(30000));
        QCOMPARE(exporter.exitCode(), 0);
        QVERIFY(QFile::exists(env->path(QStringLiteral("shared.tillmoratheme"))));

        // A change written behind the launcher's back is taken in: its next
        // save builds on it instead of its stale view.
        QCOMPARE(tillmora({"defaults", "write", "hiddenApps_v1", "-array", app("Bravo")}).exitCode, 0);
        QTRY_VERIFY_WITH_TIMEOUT((launcherLog += launcher.readAllStandardError()).count("loadInitial() called") >= 2,
                                 10000);
        QCOMPARE(tillmora({"move", app("Charlie"), "0"}).exitCode, 0);
        QVERIFY(!layoutJson()["slots"].toArray().contains(key("Bravo")));
        QCOMPARE(tillmora({"defaults", "delete", "hiddenApps_v1"}).exitCode, 0);

        // A save the launcher cannot make now (another writer holds the
        // lock) fails the command; reading commands still answer, and the
        // change reaches the disk once the lock is free.
        {
            QLockFile held(env->configDir() + QStringLiteral("/com.tillmora.Tillmora.json.lock"));
            QVERIFY(held.lock());
            const Run blocked = tillmora({"move", app("Delta"), "0"});
            QCOMPARE(blocked.exitCode, 1);
            QVERIFY2(blocked.err.contains(QStringLiteral("could not be saved yet")), qPrintable(blocked.err));
            QCOMPARE(tillmora({"layout"}).exitCode, 0);
        }
        const auto storedFirstSlot = [this] {
            const QJsonObject stored = QJsonDocument::fromJson(storedBytes()).object();
            return stored.value(QStringLiteral("LaunchpadApp_Slots_v1")).toArray().at(0).toString();
        };
        QTRY_COMPARE_WITH_TIMEOUT(storedFirstSlot(), key("Delta"), 30000);

        // An answer means the change is on disk: killed right after, the
        // launcher loses nothing it acknowledged.
        const Run created = tillmora({"folder", "create", "Before", app("Alpha")});
        QCOMPARE(created.exitCode, 0);
        const QString id = created.out.trimmed();
        QCOMPARE(tillmora({"folder", "rename", id, "After"}).exitCode, 0);
        launcher.kill();
        launcher.waitForFinished(10000);
        const QJsonArray folders = layoutJson()["folders"].toArray();
        QCOMPARE(folders.size(), 1);
        QCOMPARE(folders.first().toObject().value(QStringLiteral("name")).toString(), QStringLiteral("After"));
    }

    // Each Space keeps its own grid through switches back and forth, and
    // every command acts on the active one.
    void spacesKeepTheirOwnGrids()
    {
        QCOMPARE(tillmora({"move", app("Alpha"), "7"}).exitCode, 0);
        const QString work = tillmora({"space", "create", "Work", "--emoji", "💼"}).out.trimmed();
        const Run home = tillmora({"space", "create", "Home", "--default-layout"});
        QCOMPARE(home.exitCode, 0);
        QCOMPARE(tillmora({"space", "switch", "Work"}).exitCode, 0);
        QCOMPARE(layoutJson()["slots"].toArray().at(7).toString(), key("Alpha")); // a copy of the profile
        QCOMPARE(tillmora({"move", app("Echo"), "0"}).exitCode, 0);
        QCOMPARE(tillmora({"space", "switch", home.out.trimmed()}).exitCode, 0);
        QCOMPARE(layoutJson()["slots"].toArray().at(0).toString(), key("Alpha")); // the default layout
        QCOMPARE(tillmora({"hide", app("Bravo")}).exitCode, 0);

        QCOMPARE(tillmora({"space", "switch", "standard"}).exitCode, 0);
        QJsonObject layout = layoutJson();
        QCOMPARE(layout["slots"].toArray().at(7).toString(), key("Alpha"));
        QVERIFY(layout["hiddenApps"].toArray().isEmpty());
        QCOMPARE(tillmora({"space", "switch", work}).exitCode, 0);
        QCOMPARE(layoutJson()["slots"].toArray().at(0).toString(), key("Echo"));

        const Run list = tillmora({"space", "list"});
        QCOMPARE(list.out, QStringLiteral("\tstandard\t\tStandard\n*\t%1\t💼\tWork\n\t%2\t✨\tHome\n")
                               .arg(work, home.out.trimmed()));
        const QJsonObject json = QJsonDocument::fromJson(tillmora({"space", "list", "--json"}).out.toUtf8()).object();
        QCOMPARE(json["activeSpaceId"].toString(), work);
        QCOMPARE(json["spaces"].toArray().at(0)["name"].toString(), QStringLiteral("Work"));

        // Refused edits say why in words and change nothing.
        QCOMPARE(tillmora({"space", "edit", work, "--hotkey", "ctrl+super+1"}).exitCode, 0);
        const QByteArray before = storedBytes();
        const QList<std::pair<QStringList, QString>> refused{
            {{"space", "edit", "Home", "--hotkey", "ctrl+super+1"}, "Another Space already uses this shortcut"},
            {{"space", "edit", "Home", "--trigger", "time 17:00-09:00"}, "The end time must be later"},
            {{"space", "edit", "Home", "--trigger", "time", "9:75-10:00"}, "The start time is not a valid time"},
            {{"space", "edit", "Home", "--trigger", "days mon,fun"}, "unknown weekday 'fun'"},
            {{"space", "switch", "Nowhere"}, "no Space 'Nowhere'"}};
        for (const auto &[args, reason] : refused) {
            const Run r = tillmora(args);
            QCOMPARE(r.exitCode, 2);
            QVERIFY2(r.err.contains(reason), qPrintable(r.err));
        }
        QCOMPARE(storedBytes(), before);

        QCOMPARE(tillmora({"space", "edit", "Home", "--auto-switch", "on", "--trigger", "days", "sat,sun"}).exitCode, 0);
        QCOMPARE(tillmora({"space", "auto-switch", "--at", "2026-11-22T10:00"}).out.trimmed(), home.out.trimmed());
        QCOMPARE(tillmora({"space", "auto-switch", "--at", "2026-11-23T10:00"}).out.trimmed(), QStringLiteral("none"));

        QCOMPARE(tillmora({"space", "delete", work}).exitCode, 0);
        QVERIFY(!QFile::exists(env->configDir() + QStringLiteral("/com.tillmora.space.%1.json").arg(work)));
        QCOMPARE(layoutJson()["slots"].toArray().at(7).toString(), key("Alpha")); // back on the standard profile
    }

    // A new workflow lands in every profile, the ones not in use included;
    // deleting it clears it from all of them.
    void workflowsReachEveryProfile()
    {
        // Work starts as a copy, so its stored copy holds a grid that must not
        // come back without the workflow when Work is opened.
        QCOMPARE(tillmora({"space", "create", "Work"}).exitCode, 0);
        QCOMPARE(tillmora({"space", "create", "Home", "--default-layout"}).exitCode, 0);
        QCOMPARE(tillmora({"space", "switch", "Home"}).exitCode, 0);
        const Run made = tillmora({"workflow", "create", "Morning", "--app", app("Alpha")});
        QCOMPARE(made.exitCode, 0);
        const QString key = QStringLiteral("WF:") + made.out.trimmed();
        const auto everywhere = [&](bool present) {
            for (const char *profile : {"Work", "standard", "Home"}) {
                QCOMPARE(tillmora({"space", "switch", profile}).exitCode, 0);
                QVERIFY2(layoutJson()["slots"].toArray().contains(key) == present, profile);
            }
        };
        everywhere(true);
        QCOMPARE(tillmora({"workflow", "delete", made.out.trimmed()}).exitCode, 0);
        everywhere(false);
    }

    // The running launcher switches at once, and a change it reported done
    // in a Space survives a kill.
    void aRunningLauncherSwitchesSpaces()
    {
        const QString work = tillmora({"space", "create", "Work"}).out.trimmed();
        QProcess launcher;
        const auto stop = qScopeGuard([&] {
            launcher.terminate();
            launcher.waitForFinished(10000);
        });
        QVERIFY(startLauncher(launcher));

        QCOMPARE(tillmora({"space", "switch", work}).exitCode, 0);
        QCOMPARE(tillmora({"move", app("Delta"), "12"}).exitCode, 0);
        QCOMPARE(tillmora({"space", "switch", "standard"}).exitCode, 0);
        QCOMPARE(layoutJson()["slots"].toArray().at(3).toString(), key("Delta"));
        QCOMPARE(tillmora({"space", "switch", work}).exitCode, 0);
        const Run created = tillmora({"folder", "create", "Kept", app("Charlie")});
        QCOMPARE(created.exitCode, 0);
        launcher.kill();
        launcher.waitForFinished(10000);

        const QJsonObject layout = layoutJson();
        QCOMPARE(layout["slots"].toArray().at(12).toString(), key("Delta"));
        QCOMPARE(layout["folders"].toArray().first()["name"].toString(), QStringLiteral("Kept"));
        QCOMPARE(QJsonDocument::fromJson(tillmora({"space", "list", "--json"}).out.toUtf8())["activeSpaceId"].toString(),
                 work);
    }

    // With no display the launcher says so instead of aborting, and toggle
    // does not claim to have shown anything.
    void withoutADisplayNothingPretendsToStart()
    {
        for (const QStringList &args : {QStringList{}, QStringList{"toggle"}}) {
            QProcess p;
            QProcessEnvironment pe = processEnvironment();
            pe.remove(QStringLiteral("QT_QPA_PLATFORM"));
            pe.remove(QStringLiteral("WAYLAND_DISPLAY"));
            p.setProcessEnvironment(pe);
            p.start(QStringLiteral(TILLMORA_BINARY), args);
            QVERIFY(p.waitForFinished(30000));
            QCOMPARE(p.exitStatus(), QProcess::NormalExit);
            QCOMPARE(p.exitCode(), 1);
            QVERIFY(p.readAllStandardError().contains("tillmora: "));
        }
    }

    // Which verbs --help lists is the verb table's business (tst_verbs).
    void helpAndVersionPrintAndExitZero()
    {
        const Run help = tillmora({"--help"});
        QCOMPARE(help.exitCode, 0);
        QCOMPARE(help.out, Verbs::helpText());
        const Run version = tillmora({"--version"});
        QCOMPARE(version.exitCode, 0);
        QVERIFY(version.out.startsWith(QLatin1String("tillmora ")));
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "test_command_line.moc"
