// The real launcher on a private X server: Super+4 maps and unmaps the
// overlay window, and resting the pointer in the chosen corner brings it up.
#include "common/TempEnvironment.h"
#include "common/XvfbServer.h"
#include "storage/UserDefaultsStore.h"

#include <QProcess>
#include <QTest>

class ActivationEndToEndTest : public QObject {
    Q_OBJECT

    // xdotool's search fails when no window matches.
    static bool overlayMapped(const XvfbServer &x)
    {
        return x.xdotool({"search", "--onlyvisible", "--name", "^Tillmora$"});
    }

private Q_SLOTS:
    void shortcutAndHotCornerShowTheOverlay()
    {
        if (!XvfbServer::haveTools())
            QSKIP("Xvfb and xdotool are needed");
        XvfbServer x;
        QVERIFY(x.isRunning());
        TempEnvironment env;
        {
            auto store = UserDefaultsStore::standard(env.configDir());
            store->set(true, QStringLiteral("hotCorner.enabled"));
            store->set(QStringLiteral("topLeft"), QStringLiteral("hotCorner.selected"));
            store->synchronize();
        }
        QProcess launcher;
        QProcessEnvironment pe = QProcessEnvironment::systemEnvironment();
        pe.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(x.display()));
        pe.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        pe.insert(QStringLiteral("TILLMORA_APP_DIRS"), env.path(QStringLiteral("no-bundles")));
        pe.insert(QStringLiteral("XDG_DATA_DIRS"), env.path(QStringLiteral("no-share")));
        launcher.setProcessEnvironment(pe);
        launcher.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        launcher.start(QStringLiteral(TILLMORA_BINARY), {});
        QVERIFY(launcher.waitForStarted());
        const auto stop = qScopeGuard([&] {
            launcher.terminate();
            launcher.waitForFinished(10000);
        });
        x.xdotool({"mousemove", "800", "500"});

        // An ordinary launch shows the overlay once started.
        QTRY_VERIFY_WITH_TIMEOUT(overlayMapped(x), 20000);
        QVERIFY(x.xdotool({"key", "super+4"}));
        QTRY_VERIFY_WITH_TIMEOUT(!overlayMapped(x), 10000);
        QVERIFY(x.xdotool({"key", "super+4"}));
        QTRY_VERIFY_WITH_TIMEOUT(overlayMapped(x), 10000);
        QVERIFY(x.xdotool({"key", "super+4"}));
        QTRY_VERIFY_WITH_TIMEOUT(!overlayMapped(x), 10000);

        // The corner: the pointer rests in the top-left corner for the dwell.
        QVERIFY(x.xdotool({"mousemove", "1", "1"}));
        QTRY_VERIFY_WITH_TIMEOUT(overlayMapped(x), 10000);
    }
};

QTEST_GUILESS_MAIN(ActivationEndToEndTest)
#include "test_activation_end_to_end.moc"
