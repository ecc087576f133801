#include "CatalogueFixtures.h"
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "common/XvfbServer.h"
#include "platform/linux/GioAppLauncher.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <xcb/xcb.h>

using namespace CatalogueFixtures;

namespace {

// Appends its arguments, one a line, and the startup id it was given.
const char *kRecorder = "#!/bin/sh\n"
                        "out=\"$1\"; shift\n"
                        "{ for a in \"$@\"; do printf '%s\\n' \"$a\"; done\n"
                        "  printf 'STARTUP=%s\\n--\\n' \"$DESKTOP_STARTUP_ID\"; } >> \"$out\"\n";

QStringList readLaunches(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(QStringLiteral("--\n"), Qt::SkipEmptyParts);
}

}

// GIO reads its folders once per process: one environment for all cases.
class TestGioAppLauncher : public QObject {
    Q_OBJECT

private:
    TempEnvironment m_env;
    QString m_recorder;
    QString applications() const { return m_env.path("data/applications"); }
    QString out(const QString &name) const { return m_env.path("out/" + name); }

    QString recorderEntry(const QString &fileName, const QString &outFile, const QString &codes, const QString &extra)
    {
        return makeDesktopEntry(applications(), fileName,
                                QString("Type=Application\nName=Recorder\nIcon=recorder-icon\nExec=%1 %2 %3\n%4")
                                    .arg(m_recorder, outFile, codes, extra));
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_DATA_DIRS", m_env.path("sys").toLocal8Bit());
        // No session bus: GIO must not try to start one.
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
        qunsetenv("DISPLAY");
        QDir().mkpath(m_env.path("out"));
        m_recorder = m_env.path("bin/recorder.sh");
        writeFile(m_recorder, kRecorder);
        QFile::setPermissions(m_recorder, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);

        // The default handler of folders and of the "tillmora-test" scheme.
        recorderEntry("handler.desktop", out("handler"), "%u",
                      "MimeType=inode/directory;x-scheme-handler/tillmora-test;\n");
        writeFile(m_env.path("config/mimeapps.list"),
                  "[Default Applications]\ninode/directory=handler.desktop\n"
                  "x-scheme-handler/tillmora-test=handler.desktop\n");
    }

    void launchesADesktopEntryWithItsFieldCodes()
    {
        const QString entry = recorderEntry("fields.desktop", out("fields"), "--name %c --file %k --icon-arg %i %U",
                                            "StartupNotify=true\n");
        GioAppLauncher launcher;
        const auto result = launcher.openApp({QUuid(), entry, "Recorder"});
        QVERIFY2(result.ok, qPrintable(result.error));
        QTRY_COMPARE_WITH_TIMEOUT(readLaunches(out("fields")).size(), 1, 5000);
        // %U with no files expands to nothing; without an X server there is
        // no startup notification to take part in.
        QCOMPARE(readLaunches(out("fields")).first(),
                 QString("--name\nRecorder\n--file\n%1\n--icon-arg\n--icon\nrecorder-icon\nSTARTUP=\n").arg(entry));
    }

    void opensBundlesFoldersAndUrlsWithTheDefaultHandler()
    {
        const QString bundle = makeBundle(m_env.path("Applications"), "Thing.app", {"com.example.thing", {}, {}, {}});
        GioAppLauncher launcher;
        QVERIFY(launcher.openApp({QUuid(), bundle, "Thing"}).ok);
        QVERIFY(launcher.openLocation(QUrl::fromLocalFile(m_env.path("out"))).ok);
        QVERIFY(launcher.openLocation(QUrl(m_env.path("Applications"))).ok);
        QVERIFY(launcher.openLocation(QUrl("tillmora-test://open/this?x=1")).ok);
        QTRY_COMPARE_WITH_TIMEOUT(readLaunches(out("handler")).size(), 4, 5000);
        QStringList urls;
        for (const QString &launch : readLaunches(out("handler")))
            urls.append(launch.section(u'\n', 0, 0));
        urls.sort();
        // GIO hands "%u" a local file as its path.
        QStringList expected{bundle, m_env.path("out"), m_env.path("Applications"), "tillmora-test://open/this?x=1"};
        expected.sort();
        QCOMPARE(urls, expected);
    }

    void failuresAreReportedAndLogged()
    {
        LogCapture log;
        GioAppLauncher launcher;
        const QString missing = applications() + "/uninstalled.desktop";
        const auto gone = launcher.openApp({QUuid(), missing, "Gone"});
        QVERIFY(!gone.ok);
        QCOMPARE(gone.error, missing + " is not a launchable desktop entry");
        QVERIFY(log.contains(QString("Failed to open %1: %2").arg(missing, gone.error)));

        const auto noHandler = launcher.openLocation(QUrl("tillmora-nohandler://x"));
        QVERIFY(!noHandler.ok);
        QVERIFY(!noHandler.error.isEmpty());
        QCOMPARE(log.matching("Failed to open tillmora-nohandler://x: ").size(), 1);
        QVERIFY(!launcher.openLocation(QUrl("relative/path")).ok);
    }

    void announcesTheLaunchToTheWindowManager()
    {
        const XvfbServer xvfb({320, 240});
        if (!xvfb.isRunning())
            QSKIP("Xvfb is not installed");
        const QByteArray display = xvfb.display();
        qputenv("DISPLAY", display);
        const auto cleanup = qScopeGuard([] { qunsetenv("DISPLAY"); });

        // Listen as a window manager does: property-change events on the root.
        xcb_connection_t *wm = xcb_connect(display.constData(), nullptr);
        QVERIFY(!xcb_connection_has_error(wm));
        const auto closeWm = qScopeGuard([&] { xcb_disconnect(wm); });
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(wm)).data->root;
        const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_request_check(wm, xcb_change_window_attributes_checked(wm, root, XCB_CW_EVENT_MASK, &mask));

        const QString entry = recorderEntry("notify.desktop", out("notify"), "", "StartupNotify=true\n");
        QVERIFY(GioAppLauncher().openApp({QUuid(), entry, "Recorder"}).ok);

        QByteArray message;
        QTRY_VERIFY_WITH_TIMEOUT(
            [&] {
                while (xcb_generic_event_t *event = xcb_poll_for_event(wm)) {
                    if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE) {
                        const auto *client = reinterpret_cast<xcb_client_message_event_t *>(event);
                        message.append(reinterpret_cast<const char *>(client->data.data8), 20);
                    }
                    free(event);
                }
                return message.contains('\0');
            }(),
            20000); // generous: the shared machines run the suite in parallel
        message.truncate(message.indexOf('\0'));
        QTRY_COMPARE_WITH_TIMEOUT(readLaunches(out("notify")).size(), 1, 5000);
        const QString startupId = readLaunches(out("notify")).first().section("STARTUP=", 1).trimmed();

        QVERIFY2(startupId.startsWith("tillmora-") && startupId.contains("_TIME"), qPrintable(startupId));
        QVERIFY(startupId.section("_TIME", 1).toULongLong() > 0);
        QVERIFY2(message.startsWith("new: ID=\"" + startupId.toUtf8() + "\" NAME=\"Recorder\" SCREEN=\"0\""),
                 message.constData());
        QVERIFY(message.contains("APPLICATION_ID=\"" + entry.toUtf8() + '"'));
        QVERIFY(message.contains("ICON=\"recorder-icon\""));
    }
};

QTEST_GUILESS_MAIN(TestGioAppLauncher)
#include "test_gio_app_launcher.moc"
