#include "CatalogueFixtures.h"
#include "common/TempEnvironment.h"
#include "platform/linux/DesktopEntrySource.h"

#include <QDir>
#include <QLocale>
#include <QTest>
#include <sys/stat.h>

using namespace CatalogueFixtures;

namespace {

QString entry(const QString &name, const QString &extra = {})
{
    return QStringLiteral("Type=Application\nName=%1\nExec=true %U\n").arg(name) + extra;
}

}

// GIO reads the current desktop once per process, so the environment is set
// up once and each case clears the folders.
class TestDesktopEntrySource : public QObject {
    Q_OBJECT

private:
    TempEnvironment m_env;
    QString home() const { return m_env.path("data/applications"); }
    QString system1() const { return m_env.path("sys1/applications"); }
    QString system2() const { return m_env.path("sys2/applications"); }
    QString snap() const { return m_env.path("snap/applications"); }
    DesktopEntrySource source() const { return DesktopEntrySource({m_env.path("snap")}); }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_DATA_DIRS", (m_env.path("sys1") + ":relative/ignored:" + m_env.path("sys2")).toLocal8Bit());
        qputenv("XDG_CURRENT_DESKTOP", "TestDesk:Other");
        qputenv("LANGUAGE", "de");
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    void init()
    {
        for (const QString &dir : {home(), system1(), system2(), snap(), m_env.path("data/flatpak")})
            QDir(dir).removeRecursively();
    }

    void listsFoldersInPrecedenceOrder()
    {
        QCOMPARE(source().applicationDirectories(),
                 QStringList({home(), system1(), system2(), m_env.path("data/flatpak/exports/share/applications"),
                              snap()}));
    }

    void firstEntryOfAnIdWins()
    {
        const QString user = makeDesktopEntry(home(), "editor.desktop", entry("User Editor"));
        makeDesktopEntry(system1(), "editor.desktop", entry("System Editor"));
        const QString viewer = makeDesktopEntry(system1(), "viewer.desktop", entry("Viewer One"));
        makeDesktopEntry(system2(), "viewer.desktop", entry("Viewer Two"));
        // A sub-folder makes the id "vendor-tool.desktop".
        const QString tool = makeDesktopEntry(system1(), "vendor/tool.desktop", entry("Vendor Tool"));
        makeDesktopEntry(system2(), "vendor-tool.desktop", entry("Plain Tool"));
        // A hidden entry deletes the id for every folder below it.
        makeDesktopEntry(home(), "removed.desktop", entry("Removed", "Hidden=true\n"));
        makeDesktopEntry(system1(), "removed.desktop", entry("Still There"));

        // In name order: User Editor, Vendor Tool, Viewer One.
        QCOMPARE(paths(source().fetch()), QStringList({user, tool, viewer}));
    }

    void leavesOutWhatTheDesktopDoesNotShow()
    {
        makeDesktopEntry(system1(), "shown.desktop", entry("Shown"));
        makeDesktopEntry(system1(), "nodisplay.desktop", entry("NoDisplay", "NoDisplay=true\n"));
        makeDesktopEntry(system1(), "onlyhere.desktop", entry("Only Here", "OnlyShowIn=Other;\n"));
        makeDesktopEntry(system1(), "onlyelsewhere.desktop", entry("Only Elsewhere", "OnlyShowIn=KDE;\n"));
        makeDesktopEntry(system1(), "nothere.desktop", entry("Not Here", "NotShowIn=TestDesk;\n"));
        makeDesktopEntry(system1(), "tryexec.desktop", entry("Installed", "TryExec=true\n"));
        makeDesktopEntry(system1(), "uninstalled.desktop", entry("Uninstalled", "TryExec=/nonexistent/tool\n"));
        makeDesktopEntry(system1(), "noexec.desktop", "Type=Application\nName=Gone\nExec=/nonexistent/gone\n");
        makeDesktopEntry(system1(), "link.desktop", "Type=Link\nName=Link\nURL=https://example.org\n");
        writeFile(system1() + "/garbage.desktop", "this is not a key file\n\x01\x02");
        writeFile(system1() + "/notes.txt", "[Desktop Entry]\nType=Application\nName=Text\nExec=true\n");
        QVERIFY(QFile::link(system1() + "/missing.desktop", system1() + "/broken.desktop"));
        // The program itself and other launchers, by id or by name.
        makeDesktopEntry(system1(), "com.tillmora.Tillmora.desktop", entry("Grid"));
        makeDesktopEntry(system1(), "org.example.applauncher.desktop", entry("Apps"));
        makeDesktopEntry(system1(), "menu.desktop", entry("Quick Launcher", "Name[de]=Programmstarter\n"));
        makeDesktopEntry(system1(), "deck.desktop", entry("Deck", "Name[de]=Tillmora-Deck\n"));

        QCOMPARE(names(source().fetch()), QStringList({"Installed", "Only Here", "Shown"}));
    }

    // Links back up are entered once, not for ever, and what is no regular
    // file is never waited on.
    void walkIsBoundedAndReadsDoNotBlock()
    {
        const QString editor = makeDesktopEntry(system1(), "editor.desktop", entry("Editor"));
        const QString tool = makeDesktopEntry(system1(), "vendor/tool.desktop", entry("Tool"));
        QVERIFY(QFile::link(".", system1() + "/self"));
        QVERIFY(QFile::link(".", system1() + "/again"));
        QVERIFY(QFile::link("..", system1() + "/vendor/up"));
        QCOMPARE(::mkfifo(QFile::encodeName(system1() + "/fifo.desktop").constData(), 0600), 0);
        QVERIFY(QFile::link("/dev/zero", system1() + "/zero.desktop"));

        QCOMPARE(paths(source().fetch()), QStringList({editor, tool}));
    }

    // A menu editor's copy in the user's folder masks the system entry: that
    // one is no app of its own any more. A folder not scanned proves nothing.
    void knowsWhatIsGone()
    {
        const QString masked = makeDesktopEntry(system1(), "editor.desktop", entry("Editor"));
        makeDesktopEntry(home(), "editor.desktop", entry("My Editor"));
        const AppScan scan = source().scan();
        QVERIFY(scan.isKnownGone(masked));
        QVERIFY(scan.isKnownGone(system1() + "/removed.desktop"));
        QVERIFY(!scan.isKnownGone(m_env.path("unscanned/applications/tool.desktop")));
        QCOMPARE(scan.apps().first().identity, QString("editor.desktop"));
    }

    void showsLocalizedNamesInLocaleOrder()
    {
        makeDesktopEntry(system1(), "zebra.desktop", entry("Zebra", "Name[de]=Ameise\n"));
        makeDesktopEntry(system1(), "b.desktop", entry("banana"));
        makeDesktopEntry(system1(), "e1.desktop", entry("Eagle"));
        makeDesktopEntry(system1(), "e2.desktop", entry("Émile"));
        makeDesktopEntry(system1(), "f.desktop", entry("fox"));
        makeDesktopEntry(system2(), "c.desktop", entry("Cherry"));
        QCOMPARE(names(source().fetch()), QStringList({"Ameise", "banana", "Cherry", "Eagle", "Émile", "fox"}));
    }

    void readsFlatpakAndSnapExports()
    {
        const QString flatpak = makeDesktopEntry(m_env.path("data/flatpak/exports/share/applications"),
                                                 "org.example.Paint.desktop", entry("Paint"));
        const QString snapEntry = makeDesktopEntry(snap(), "chat_chat.desktop", entry("Chat"));
        QCOMPARE(paths(source().fetch()), QStringList({snapEntry, flatpak})); // Chat, Paint
    }

    void rescanFollowsEditsAndInstalledPrograms()
    {
        const QString bin = m_env.path("bin");
        QDir().mkpath(bin);
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", bin.toLocal8Bit() + ':' + path);
        const auto restore = qScopeGuard([&] { qputenv("PATH", path); });

        const QString editor = makeDesktopEntry(system1(), "editor.desktop", entry("Editor"));
        makeDesktopEntry(system1(), "tool.desktop", entry("Tool", "TryExec=tillmora-test-tool\n"));
        const DesktopEntrySource scanner = source();
        QCOMPARE(names(scanner.fetch()), QStringList({"Editor"}));

        // The tool's program is installed: its entry shows without changing.
        writeFile(bin + "/tillmora-test-tool", "#!/bin/sh\n");
        QFile::setPermissions(bin + "/tillmora-test-tool", QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        QCOMPARE(names(scanner.fetch()), QStringList({"Editor", "Tool"}));

        makeDesktopEntry(system1(), "editor.desktop", entry("Editor", "NoDisplay=true\n"));
        QCOMPARE(names(scanner.fetch()), QStringList({"Tool"}));
        makeDesktopEntry(system1(), "editor.desktop", entry("Writer"));
        QCOMPARE(scanner.fetch().last().path, editor);
        QCOMPARE(names(scanner.fetch()), QStringList({"Tool", "Writer"}));

        QVERIFY(QFile::remove(bin + "/tillmora-test-tool"));
        QCOMPARE(names(scanner.fetch()), QStringList({"Writer"}));
    }

    void reportsTheIconName()
    {
        const QString themed = makeDesktopEntry(system1(), "a.desktop", entry("A", "Icon=accessories-text-editor\n"));
        const QString file = makeDesktopEntry(system1(), "b.desktop", entry("B", "Icon=/opt/b/icon.png\n"));
        const QString none = makeDesktopEntry(system1(), "c.desktop", entry("C"));
        QCOMPARE(source().iconReference(themed)->themeName, QString("accessories-text-editor"));
        QCOMPARE(source().iconReference(file)->themeName, QString("/opt/b/icon.png"));
        QVERIFY(!source().iconReference(none));
        QVERIFY(!source().iconReference("/Applications/Notes.app"));
    }
};

QTEST_GUILESS_MAIN(TestDesktopEntrySource)
#include "test_desktop_entry_source.moc"
