// Wall time of `tillmora layout --json` run headless against a profile of
// 1,000 applications, beside `tillmora --version` (process start alone) and
// `tillmora defaults read` (start + settings, no layout), and a headless
// `tillmora space switch` between two Spaces of those apps.
// Usage: build/bench/cli_bench [runs]
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <functional>
#include <cstdio>
#include <vector>

namespace {
double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(3, atoi(argv[1])) : 11;
    QTemporaryDir home;
    QProcess::execute(QStringLiteral(TILLMORA_SOURCE_DIR "/scripts/demo-apps.sh"), {home.filePath("share"), "1000"});
    QProcessEnvironment pe = QProcessEnvironment::systemEnvironment();
    for (const char *v : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
        QDir().mkpath(home.filePath(v));
        pe.insert(v, home.filePath(v));
    }
    pe.insert("XDG_DATA_DIRS", home.filePath("share"));
    pe.insert("TILLMORA_APP_DIRS", home.filePath("no-bundles"));
    pe.remove("DISPLAY");

    // The median wall time of runs of the command argsFor(run) gives.
    const auto timeEach = [&](const std::function<QStringList(int)> &argsFor) {
        std::vector<double> samples;
        for (int i = 0; i < runs; ++i) {
            const QStringList args = argsFor(i);
            QProcess p;
            p.setProcessEnvironment(pe);
            QElapsedTimer t;
            t.start();
            p.start(QStringLiteral(TILLMORA_BINARY), args);
            p.waitForFinished(60000);
            samples.push_back(t.nsecsElapsed() / 1e6);
            if (p.exitCode() != 0)
                std::fprintf(stderr, "%s failed: %s\n", qPrintable(args.join(' ')), p.readAllStandardError().constData());
        }
        return median(samples);
    };
    const auto time = [&](const QStringList &args) { return timeEach([&](int) { return args; }); };
    // First runs: reading commands store nothing, so one change stores the
    // migrations and the first layout.
    QProcess apps;
    apps.setProcessEnvironment(pe);
    apps.start(QStringLiteral(TILLMORA_BINARY), {"apps"});
    apps.waitForFinished(60000);
    time({"move", QStringLiteral("A:") + QString::fromUtf8(apps.readAllStandardOutput()).section(u'\t', 0, 0), "0"});
    const double version = time({"--version"});
    const double defaults = time({"defaults", "read", "LaunchpadApp_Slots_v1"});
    const double layout = time({"layout", "--json"});
    // Two Spaces of the same 1,000 apps, switched back and forth headless.
    QProcess create;
    create.setProcessEnvironment(pe);
    create.start(QStringLiteral(TILLMORA_BINARY), {"space", "create", "Work"});
    create.waitForFinished(60000);
    const QString work = QString::fromUtf8(create.readAllStandardOutput()).trimmed();
    const double switches = timeEach([&](int i) {
        return QStringList{"space", "switch", i % 2 ? QStringLiteral("standard") : work};
    });
    std::printf("cli benchmark, 1000 desktop entries, median of %d runs\n", runs);
    std::printf("tillmora --version           %7.1f ms (process start)\n", version);
    std::printf("tillmora defaults read KEY   %7.1f ms (start + settings)\n", defaults);
    std::printf("tillmora layout --json       %7.1f ms (start + migrations + load + scan + reconcile)\n", layout);
    std::printf("tillmora space switch ID     %7.1f ms (start + capture, apply and save of two profiles)\n",
                switches);
    return 0;
}
