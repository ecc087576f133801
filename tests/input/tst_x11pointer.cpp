#include "common/XvfbServer.h"
#include "input/ApplicationActivity.h"
#include "foundation/Clock.h"
#include "input/HotCornersManager.h"
#include "platform/linux/X11PointerSource.h"
#include "storage/UserDefaultsStore.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>

// The pointer source and the hot corners against a real X server: Qt runs
// on xcb, on a private Xvfb, and xdotool moves the pointer.
class X11PointerTest : public QObject {
    Q_OBJECT

public:
    explicit X11PointerTest(XvfbServer &server) : server(server) {}

private:
    XvfbServer &server;

    bool moveTo(int x, int y) const
    {
        return server.xdotool({QStringLiteral("mousemove"), QString::number(x), QString::number(y)});
    }

private Q_SLOTS:
    void pointerScreensAndRawMotion()
    {
        X11PointerSource pointer(server.display());
        QCOMPARE(pointer.screenGeometries(), QList<QRect>{QRect(0, 0, 1280, 800)});
        QVERIFY(moveTo(100, 200));
        QCOMPARE(pointer.cursorPosition(), QPoint(100, 200));

        QVERIFY(pointer.isMotionListenerAllowed());
        int moves = 0;
        QVERIFY(pointer.startMotionListener([&] { ++moves; }));
        // A warp (mousemove) moves no device; relative motion goes through
        // the XTEST pointer like a mouse does.
        QVERIFY(server.xdotool({QStringLiteral("mousemove_relative"), QStringLiteral("5"), QStringLiteral("5")}));
        QTRY_VERIFY_WITH_TIMEOUT(moves > 0, 5000);
        pointer.stopMotionListener();
    }

    void restingInTheCornerActivatesAfterTheDwell()
    {
        QTemporaryDir dir;
        auto store = std::make_shared<UserDefaultsStore>(QStringLiteral("corners"), QStringLiteral("corners"), dir.path());
        X11PointerSource pointer(server.display());
        QtApplicationActivity activity;
        QtClock clock;
        HotCornersManager manager(store, pointer, activity, clock);
        QElapsedTimer sinceEntry;
        qint64 firstActivation = -1;
        manager.setOnActivate([&] {
            if (firstActivation < 0)
                firstActivation = sinceEntry.elapsed();
        });
        manager.setSelectedCorner(HotCorner::topRight);
        QVERIFY(moveTo(640, 400));
        manager.setEnabled(true);
        QTest::qWait(200);
        QCOMPARE(firstActivation, qint64(-1));

        sinceEntry.start();
        QVERIFY(moveTo(1279, 0));
        QTRY_VERIFY_WITH_TIMEOUT(firstActivation >= 0, 5000);
        QVERIFY2(firstActivation >= 300, qPrintable(QString::number(firstActivation)));
        manager.setEnabled(false);
    }
};

int main(int argc, char **argv)
{
    if (!XvfbServer::haveTools()) {
        std::puts("SKIP: Xvfb and xdotool are needed");
        return 0;
    }
    XvfbServer server;
    if (!server.isRunning())
        return 1;
    qputenv("DISPLAY", server.display());
    qputenv("QT_QPA_PLATFORM", "xcb");
    QGuiApplication app(argc, argv);
    X11PointerTest test(server);
    return QTest::qExec(&test, argc, argv);
}

#include "tst_x11pointer.moc"
