#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "platform/Platform.h"
#include "platform/linux/LinuxDesktopWallpaperSource.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <gio/gio.h>

#include <QTest>

// The platform is chosen once from the session: only an X11 session gets the
// X11 adaptors; elsewhere the missing facilities are logged once each.
class PlatformTest : public QObject {
    Q_OBJECT

    static QStringList unavailableLines(const LogCapture &log)
    {
        QStringList lines;
        for (const QString &message : log.messages())
            if (message.contains(QLatin1String("not available")))
                lines.append(message);
        return lines;
    }

private Q_SLOTS:
    void sessionFromQtPlatformAndEnvironment_data()
    {
        QTest::addColumn<QString>("qtPlatform");
        QTest::addColumn<QString>("xdgSessionType");
        QTest::addColumn<QString>("expected");
        QTest::newRow("xcb in an X11 session") << "xcb" << "x11" << "x11";
        QTest::newRow("xcb on Xwayland") << "xcb" << "wayland" << "x11";
        QTest::newRow("wayland plugin") << "wayland" << "wayland" << "wayland";
        QTest::newRow("wayland-egl plugin, no session type") << "wayland-egl" << "" << "wayland";
        QTest::newRow("offscreen in a Wayland session") << "offscreen" << "WAYLAND" << "wayland";
        QTest::newRow("offscreen in an X11 session") << "offscreen" << "x11" << "other";
        QTest::newRow("command line on a console") << "" << "tty" << "other";
    }

    void sessionFromQtPlatformAndEnvironment()
    {
        QFETCH(QString, qtPlatform);
        QFETCH(QString, xdgSessionType);
        QFETCH(QString, expected);
        QCOMPARE(QString::fromLatin1(Platform::sessionName(Platform::sessionFor(qtPlatform, xdgSessionType))), expected);
    }

    void detectsTheRunningQtPlatform()
    {
        // The suite runs on the offscreen plugin.
        qunsetenv("XDG_SESSION_TYPE");
        QCOMPARE(Platform().session(), Platform::Session::Other);
        qputenv("XDG_SESSION_TYPE", "wayland");
        QCOMPARE(Platform().session(), Platform::Session::Wayland);
        qunsetenv("XDG_SESSION_TYPE");
    }

    void inputAdaptorsFollowTheSession_data()
    {
        QTest::addColumn<int>("session");
        QTest::addColumn<bool>("x11");
        QTest::addColumn<QStringList>("reasons"); // how the "not available" lines start
        QTest::newRow("x11") << int(Platform::Session::X11) << true << QStringList();
        QTest::newRow("wayland") << int(Platform::Session::Wayland) << false
                                 << QStringList{"Global hotkeys are not available on Wayland; use `tillmora toggle`",
                                                "Hot corners are not available on Wayland"};
        // Elsewhere the reason names the Qt platform.
        QTest::newRow("other") << int(Platform::Session::Other) << false
                               << QStringList{"Global hotkeys are not available without an X11 session (Qt platform \"offscreen\")",
                                              "Hot corners are not available without an X11 session (Qt platform \"offscreen\")"};
    }

    void inputAdaptorsFollowTheSession()
    {
        QFETCH(int, session);
        QFETCH(bool, x11);
        QFETCH(QStringList, reasons);
        LogCapture log;
        const InputPlatform input = Platform(Platform::Session(session)).input();
        QCOMPARE(bool(input.hotKeys), x11);
        QCOMPARE(bool(input.pointer), x11);
        // Neither touchpads nor sleep and wake need X.
        QVERIFY(input.touchpads && input.power && input.activity && input.clock);
        const QStringList lines = unavailableLines(log);
        QCOMPARE(lines.size(), reasons.size());
        for (qsizetype i = 0; i < lines.size(); ++i)
            QVERIFY2(lines[i].startsWith(reasons[i]), qPrintable(lines[i]));
    }

    void sessionLineNamesTheChoice()
    {
        LogCapture log;
        Platform(Platform::Session::Wayland).logSession();
        QCOMPARE(log.matching(QStringLiteral("Session type: ")).size(), 1);
        QCOMPARE(log.matching(QStringLiteral("Session type: wayland (Qt platform \"offscreen\"")).size(), 1);
    }

    // GNOME's settings through GLib's keyfile backend: the dark picture when
    // the desktop prefers dark and the file is there, else the light one;
    // a change while running is reported.
    void theDesktopWallpaperFollowsGnomeSettings()
    {
        GSettingsSchemaSource *schemas = g_settings_schema_source_get_default();
        GSettingsSchema *schema = schemas ? g_settings_schema_source_lookup(schemas, "org.gnome.desktop.background", TRUE) : nullptr;
        if (!schema)
            QSKIP("GNOME's desktop schemas are not installed");
        g_settings_schema_unref(schema);
        TempEnvironment env;
        qputenv("GSETTINGS_BACKEND", "keyfile");
        qputenv("XDG_CURRENT_DESKTOP", "GNOME");
        qunsetenv("DBUS_SESSION_BUS_ADDRESS"); // the portal is not asked
        const QString light = env.path(QStringLiteral("light.png"));
        const QString dark = env.path(QStringLiteral("dark.png"));
        QImage(4, 4, QImage::Format_RGB32).save(light);
        const QString folder = qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/glib-2.0/settings");
        QVERIFY(QDir().mkpath(folder));
        QFile keyfile(folder + QStringLiteral("/keyfile"));
        QVERIFY(keyfile.open(QIODevice::WriteOnly));
        keyfile.write(QStringLiteral("[org/gnome/desktop/background]\npicture-uri='file://%1'\npicture-uri-dark='file://%2'\n"
                                     "[org/gnome/desktop/interface]\ncolor-scheme='prefer-dark'\n")
                          .arg(light, dark)
                          .toUtf8());
        keyfile.close();

        LinuxDesktopWallpaperSource source;
        int changes = 0;
        source.setChangedHandler([&] { ++changes; });
        QCOMPARE(source.current().scheme, DesktopWallpaperSource::State::Scheme::Dark);
        QCOMPARE(source.current().wallpaperPath, light); // the dark picture is missing
        QImage(4, 4, QImage::Format_RGB32).save(dark);
        QCOMPARE(source.current().wallpaperPath, dark);

        GSettings *settings = g_settings_new("org.gnome.desktop.interface");
        g_settings_set_string(settings, "color-scheme", "prefer-light");
        g_settings_sync();
        QTRY_VERIFY_WITH_TIMEOUT(changes > 0, 5000);
        QCOMPARE(source.current().scheme, DesktopWallpaperSource::State::Scheme::Light);
        QCOMPARE(source.current().wallpaperPath, light);
        g_object_unref(settings);
    }

    void plasmaNamesItsWallpaperInTheAppletsFile()
    {
        TempEnvironment env;
        QFile file(env.path(QStringLiteral("appletsrc")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Containments][1][Applets][4][Configuration][General]\nImage=file:///not/this.png\n"
                   "[Containments][2][Wallpaper][org.kde.image][General]\nImage=file:///home/u/Pictures/sea%20side.jpg\n"
                   "SlidePaths=/usr/share/wallpapers/\n"
                   "[Containments][3][Wallpaper][org.kde.image][General]\nImage=/second/screen.png\n");
        file.close();
        QCOMPARE(LinuxDesktopWallpaperSource::plasmaWallpaper(file.fileName()), QStringLiteral("/home/u/Pictures/sea side.jpg"));
        QCOMPARE(LinuxDesktopWallpaperSource::localPath(QStringLiteral("https://example.com/a.jpg")), QString());
        QVERIFY(LinuxDesktopWallpaperSource::plasmaWallpaper(env.path(QStringLiteral("absent"))).isEmpty());
    }
};

QTEST_MAIN(PlatformTest)
#include "test_platform.moc"
