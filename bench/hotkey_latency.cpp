// Latency of the toggle hotkey: a synthetic Super+4 (xdotool under a private
// Xvfb) to the manager's toggle action, which the window controller binds to
// the overlay's toggle. Prints the medians of 20 presses.
#include "common/XvfbServer.h"
#include "input/ApplicationActivity.h"
#include "input/HotKeyManager.h"
#include "platform/linux/XcbHotKeyService.h"
#include "storage/UserDefaultsStore.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <cstdio>

namespace {
double median(QList<double> v)
{
    std::sort(v.begin(), v.end());
    return v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2;
}

void print(const char *what, const QList<double> &ms)
{
    std::printf("%-58s median %8.3f ms  min %8.3f  max %8.3f  (n=%lld)\n", what, median(ms),
                *std::min_element(ms.begin(), ms.end()), *std::max_element(ms.begin(), ms.end()),
                static_cast<long long>(ms.size()));
}
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    constexpr int kPresses = 20;
    if (!XvfbServer::haveTools()) {
        std::printf("Xvfb and xdotool are needed\n");
        return 1;
    }
    XvfbServer server;
    if (!server.isRunning()) {
        std::printf("Xvfb did not start\n");
        return 1;
    }

    QTemporaryDir dir;
    auto store = std::make_shared<UserDefaultsStore>(QStringLiteral("bench"), QStringLiteral("bench"), dir.path());
    XcbHotKeyService service(server.display());
    QtApplicationActivity activity;
    HotKeyManager manager(store, service, activity);

    QElapsedTimer clock;
    clock.start();
    qint64 received = -1, toggled = -1;
    // Installed before the manager's: sees the press as it is read from X.
    service.installHandler([&](HotKeyId) { received = clock.nsecsElapsed(); });
    manager.setOnToggle([&] { toggled = clock.nsecsElapsed(); });
    manager.registerHotKey();

    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(server.display()));
    QList<double> total, dispatch, xdotoolRun;
    for (int i = 0; i < kPresses + 1; ++i) {
        received = toggled = -1;
        QProcess xdotool;
        xdotool.setProcessEnvironment(env);
        const qint64 launched = clock.nsecsElapsed();
        xdotool.start(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("0"),
                                                  QStringLiteral("super+4")});
        QDeadlineTimer deadline(5000);
        while (toggled < 0 && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
        xdotool.waitForFinished(5000);
        const qint64 finished = clock.nsecsElapsed();
        if (toggled < 0) {
            std::printf("press %d: no toggle within 5 s\n", i);
            return 1;
        }
        if (i == 0)
            continue; // warm-up: first connection, keymap loading
        total.append(double(toggled - launched) / 1e6);
        dispatch.append(double(toggled - received) / 1e6);
        xdotoolRun.append(double(finished - launched) / 1e6);
    }
    std::printf("Toggle hotkey latency under Xvfb %s, %d presses of Super+4:\n", server.display().constData(),
                kPresses);
    print("xdotool started -> toggle action (end to end)", total);
    print("press read from the X connection -> toggle action", dispatch);
    print("xdotool run time (start to exit), for reference", xdotoolRun);
    return 0;
}
