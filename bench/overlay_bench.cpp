// Overlay timings and memory, each beside the same figure for a minimal Qt
// Quick window with a 7 x 5 grid of plain rectangles (the floor):
//   (a) cold start to the first frame of the overlay,
//   (b) hidden -> shown to the first frame swapped,
//   (c) a synthetic Super+4 press to the overlay's first frame,
//   (d) peak memory of the launcher with 500 applications and their icons.
// Runs its own Xvfb. Usage: build/bench/overlay_bench [runs [wallpaper]]
// A wallpaper (e.g. a 3840x2160 JPEG) is made the desktop's, as GNOME's
// settings would name it, so the launcher shows it behind the grid.
#include "common/XvfbServer.h"
#include "ui/RenderingBackend.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QQuickView>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

const QByteArray kFloorQml = R"(
import QtQuick
Rectangle {
    width: 1600; height: 1000; color: "#151b2b"
    Grid {
        anchors.centerIn: parent; columns: 7; spacing: 24
        Repeater { model: 35; Rectangle { width: 120; height: 120; radius: 26; color: "#7b8aa8" } }
    }
}
)";

double median(std::vector<double> v)
{
    if (v.empty())
        return -1;
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

// --floor: the minimal window. Prints "frame 0" once the first frame is on
// screen, then hides and shows itself five times, printing each show's time
// to the first frame swapped.
int floorMain(int argc, char **argv)
{
    // The same renderer the launcher picks on this machine.
    RenderingBackend::chooseBeforeApplication();
    QGuiApplication app(argc, argv);
    QTemporaryDir dir;
    QFile qml(dir.filePath(QStringLiteral("floor.qml")));
    qml.open(QIODevice::WriteOnly);
    qml.write(kFloorQml);
    qml.close();
    QQuickView view;
    view.setSource(QUrl::fromLocalFile(qml.fileName()));
    QElapsedTimer shown;
    bool waiting = true;
    int cycles = 0;
    QObject::connect(&view, &QQuickWindow::frameSwapped, &app, [&] {
        if (!waiting)
            return;
        waiting = false;
        std::printf("frame %.3f\n", shown.isValid() ? shown.nsecsElapsed() / 1e6 : 0.0);
        std::fflush(stdout);
        if (cycles++ == 5)
            return;
        QTimer::singleShot(200, &app, [&] {
            view.hide();
            QCoreApplication::processEvents();
            shown.start();
            waiting = true;
            view.show();
        });
    });
    view.show();
    return app.exec();
}

struct Launcher {
    QProcess process;
    QByteArray log;

    // Waits for the next "<what>: first frame after X ms" line; returns X, or -1.
    double nextFrame(int timeoutMs = 20000, const QString &what = QStringLiteral("Overlay shown"))
    {
        const QRegularExpression line(what + QStringLiteral(": first frame after ([0-9.]+) ms"));
        QElapsedTimer t;
        t.start();
        while (t.elapsed() < timeoutMs) {
            const auto match = line.match(QString::fromUtf8(log));
            if (match.hasMatch()) {
                log = log.mid(match.capturedEnd());
                return match.captured(1).toDouble();
            }
            process.waitForReadyRead(50);
            log += process.readAllStandardError();
        }
        return -1;
    }
};

// The first app of the grid, to move one so the two Spaces differ.
QString firstApp(const QProcessEnvironment &pe)
{
    QProcess p;
    p.setProcessEnvironment(pe);
    p.start(QStringLiteral(TILLMORA_BINARY), {"apps"});
    p.waitForFinished(20000);
    return QString::fromUtf8(p.readAllStandardOutput()).section(u'\t', 0, 0);
}

qint64 peakKiB(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &l : status.readAll().split('\n'))
        if (l.startsWith("VmHWM:"))
            return l.mid(6).trimmed().split(' ').first().toLongLong();
    return -1;
}

}

int main(int argc, char **argv)
{
    if (argc > 1 && QByteArray(argv[1]) == "--floor")
        return floorMain(argc, argv);
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(3, atoi(argv[1])) : 9;
    const QString wallpaper = argc > 2 ? QFileInfo(QString::fromLocal8Bit(argv[2])).absoluteFilePath() : QString();

    XvfbServer x;
    if (!x.isRunning()) {
        std::fprintf(stderr, "Xvfb and xdotool are needed\n");
        return 1;
    }
    QTemporaryDir home;
    QProcess::execute(QStringLiteral(TILLMORA_SOURCE_DIR "/scripts/demo-apps.sh"), {home.filePath("share"), "500"});
    QProcessEnvironment pe = QProcessEnvironment::systemEnvironment();
    pe.insert("DISPLAY", QString::fromLatin1(x.display()));
    pe.insert("QT_QPA_PLATFORM", "xcb");
    pe.insert("XDG_DATA_DIRS", home.filePath("share") + ":/usr/share");
    pe.insert("TILLMORA_APP_DIRS", home.filePath("no-bundles"));
    pe.insert("QT_LOGGING_RULES", "com.tillmora.*.debug=false");

    // (a) and (b), floor.
    std::vector<double> floorCold, floorShow;
    for (int i = 0; i < runs; ++i) {
        QProcess floor;
        floor.setProcessEnvironment(pe);
        QElapsedTimer t;
        t.start();
        floor.start(QCoreApplication::applicationFilePath(), {"--floor"});
        floor.waitForReadyRead(20000);
        floorCold.push_back(t.nsecsElapsed() / 1e6);
        floor.readLine();
        for (int k = 0; k < 5; ++k) {
            while (!floor.canReadLine() && floor.waitForReadyRead(20000)) {
            }
            floorShow.push_back(floor.readLine().split(' ').value(1).trimmed().toDouble());
        }
        floor.kill();
        floor.waitForFinished();
    }

    // (a), (b), (c), (d): the launcher, a fresh profile each cold start.
    std::vector<double> cold, show, hotkey, spaceSwitch;
    qint64 peak = 0;
    for (int i = 0; i < runs; ++i) {
        QTemporaryDir profile;
        QProcessEnvironment lpe = pe;
        for (const char *v : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
            QDir().mkpath(profile.filePath(v));
            lpe.insert(v, profile.filePath(v));
        }
        if (!wallpaper.isEmpty()) {
            // GLib's keyfile backend stands in for the desktop's settings.
            QDir().mkpath(profile.filePath("XDG_CONFIG_HOME/glib-2.0/settings"));
            QFile keyfile(profile.filePath("XDG_CONFIG_HOME/glib-2.0/settings/keyfile"));
            keyfile.open(QIODevice::WriteOnly);
            keyfile.write("[org/gnome/desktop/background]\npicture-uri='" + QUrl::fromLocalFile(wallpaper).toEncoded()
                          + "'\n");
            keyfile.close();
            lpe.insert("GSETTINGS_BACKEND", "keyfile");
        }
        QFile::setPermissions(profile.filePath("XDG_RUNTIME_DIR"), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        Launcher launcher;
        launcher.process.setProcessEnvironment(lpe);
        QElapsedTimer t;
        t.start();
        launcher.process.start(QStringLiteral(TILLMORA_BINARY), {});
        if (launcher.nextFrame() < 0) {
            std::fprintf(stderr, "the launcher showed no frame:\n%s\n", launcher.log.constData());
            return 1;
        }
        cold.push_back(t.nsecsElapsed() / 1e6);
        QThread::msleep(1500); // icons decoded, scan finished
        const auto command = [&lpe](const char *verb) {
            QProcess p;
            p.setProcessEnvironment(lpe);
            p.start(QStringLiteral(TILLMORA_BINARY), {QLatin1String(verb)});
            p.waitForFinished(20000);
        };
        for (int k = 0; k < 5; ++k) {
            command("hide");
            command("show");
            show.push_back(launcher.nextFrame());
        }
        if (i < 4) { // Super+4 round trips: hide, then time press -> frame
            for (int k = 0; k < 5; ++k) {
                x.xdotool({"key", "super+4"}); // hides
                QThread::msleep(100);
                QElapsedTimer press;
                press.start();
                x.xdotool({"key", "super+4"});
                if (launcher.nextFrame(5000) >= 0)
                    hotkey.push_back(press.nsecsElapsed() / 1e6);
            }
        }
        if (i < 3) { // (e) two Spaces of 500 apps, differently arranged
            QProcess p;
            p.setProcessEnvironment(lpe);
            const auto run = [&](const QStringList &args) {
                p.start(QStringLiteral(TILLMORA_BINARY), args);
                p.waitForFinished(20000);
                return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
            };
            const QString work = run({"space", "create", "Work"});
            const QString home = run({"space", "create", "Home", "--default-layout"});
            run({"space", "switch", home});
            run({"move", QStringLiteral("A:") + firstApp(lpe), "39"});
            for (int k = 0; k < 6; ++k) {
                run({"space", "switch", k % 2 ? home : work});
                const double frame = launcher.nextFrame(5000, QStringLiteral("Space switched"));
                if (frame >= 0)
                    spaceSwitch.push_back(frame);
            }
        }
        peak = std::max(peak, peakKiB(launcher.process.processId()));
        std::fprintf(stderr, "run %d: cold %.1f ms, show %.1f ms\n", i + 1, cold.back(), show.back());
        launcher.process.terminate();
        launcher.process.waitForFinished(10000);
    }

    std::printf("overlay benchmark, %d runs, 500 demo apps, 1600x1000 Xvfb (software rendering), wallpaper: %s\n", runs,
                wallpaper.isEmpty() ? "none" : qUtf8Printable(wallpaper));
    std::printf("(a) cold start to first frame:   launcher %8.1f ms   floor %8.1f ms   ratio %.2f\n", median(cold),
                median(floorCold), median(cold) / median(floorCold));
    std::printf("(b) hidden -> shown first frame: launcher %8.1f ms   floor %8.1f ms   ratio %.2f, beyond floor %.1f ms\n",
                median(show), median(floorShow), median(show) / median(floorShow), median(show) - median(floorShow));
    std::printf("(c) Super+4 press to first frame (median of %zu, includes xdotool's own run): %.1f ms\n", hotkey.size(),
                median(hotkey));
    std::printf("(e) Space switch (500 apps each) to first frame: %8.1f ms   hidden -> shown %8.1f ms   ratio %.2f\n",
                median(spaceSwitch), median(show), median(spaceSwitch) / median(show));
    std::printf("(d) peak memory of the launcher with 500 apps and icons: %.1f MB\n", peak / 1024.0);
    return 0;
}
