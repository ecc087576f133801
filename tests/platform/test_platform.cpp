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
};

QTEST_MAIN(PlatformTest)
#include "test_platform.moc"
