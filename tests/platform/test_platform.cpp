#include "common/LogCapture.h"
#include "platform/Platform.h"

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
        QTest::newRow("xcb without a session type") << "xcb" << "" << "x11";
        QTest::newRow("xcb on Xwayland") << "xcb" << "wayland" << "x11";
        QTest::newRow("wayland plugin") << "wayland" << "wayland" << "wayland";
        QTest::newRow("wayland-egl plugin, no session type") << "wayland-egl" << "" << "wayland";
        QTest::newRow("offscreen in a Wayland session") << "offscreen" << "WAYLAND" << "wayland";
        QTest::newRow("offscreen in an X11 session") << "offscreen" << "x11" << "other";
        QTest::newRow("command line on a console") << "" << "tty" << "other";
        QTest::newRow("minimal") << "minimal" << "" << "other";
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

    void x11SessionGetsTheX11Adaptors()
    {
        LogCapture log;
        const InputPlatform input = Platform(Platform::Session::X11).input();
        QVERIFY(input.hotKeys);
        QVERIFY(input.pointer);
        QVERIFY(input.touchpads);
        QVERIFY(input.power);
        QVERIFY(unavailableLines(log).isEmpty());
    }

    void waylandLeavesHotKeysAndCornersInertAndSaysWhy()
    {
        LogCapture log;
        const InputPlatform input = Platform(Platform::Session::Wayland).input();
        QVERIFY(!input.hotKeys);
        QVERIFY(!input.pointer);
        // Neither touchpads nor sleep and wake need X.
        QVERIFY(input.touchpads);
        QVERIFY(input.power);
        QVERIFY(input.activity);
        QVERIFY(input.clock);
        const QStringList lines = unavailableLines(log);
        QCOMPARE(lines.size(), 2);
        QVERIFY2(lines[0].startsWith(QLatin1String("Global hotkeys are not available on Wayland; use `tillmora toggle`")),
                 qPrintable(lines[0]));
        QVERIFY2(lines[1].startsWith(QLatin1String("Hot corners are not available on Wayland")), qPrintable(lines[1]));
    }

    void withoutAnXSessionTheReasonNamesTheQtPlatform()
    {
        LogCapture log;
        const InputPlatform input = Platform(Platform::Session::Other).input();
        QVERIFY(!input.hotKeys);
        QVERIFY(!input.pointer);
        QVERIFY(input.touchpads);
        const QStringList lines = unavailableLines(log);
        QCOMPARE(lines.size(), 2);
        for (const QString &line : lines)
            QVERIFY2(line.contains(QLatin1String("without an X11 session (Qt platform \"offscreen\")")), qPrintable(line));
    }

    void catalogueAddsDesktopEntriesAndALauncher()
    {
        const CataloguePlatform catalogue = Platform(Platform::Session::Other).catalogue();
        QCOMPARE(catalogue.appSources.size(), 1);
        QVERIFY(catalogue.appSources.first());
        QVERIFY(catalogue.launcher);
    }

    void sessionLineNamesTheChoice()
    {
        LogCapture log;
        Platform(Platform::Session::Wayland).logSession();
        QCOMPARE(log.matching(QStringLiteral("Session type: ")).size(), 1);
        QVERIFY(log.matching(QStringLiteral("Session type: wayland (Qt platform \"offscreen\"")).size() == 1);
    }
};

QTEST_MAIN(PlatformTest)
#include "test_platform.moc"
