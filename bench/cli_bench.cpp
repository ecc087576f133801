// Wall time of `tillmora layout --json` run headless against a profile of
// 1,000 applications, beside `tillmora --version` (process start alone) and
// `tillmora defaults read` (start + settings, no layout).
// Usage: build/bench/cli_bench [runs]
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
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

    const auto time = [&](const QStringList &args) {
        std::vector<double> samples;
        for (int i = 0; i < runs; ++i) {
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
    time({"apps"}); // first run: migrations and the first layout are stored
    const double version = time({"--version"});
    const double defaults = time({"defaults", "read", "LaunchpadApp_Slots_v1"});
    const double layout = time({"layout", "--json"});
    std::printf("cli benchmark, 1000 desktop entries, median of %d runs\n", runs);
    std::printf("tillmora --version           %7.1f ms (process start)\n", version);
    std::printf("tillmora defaults read KEY   %7.1f ms (start + settings)\n", defaults);
    std::printf("tillmora layout --json       %7.1f ms (start + migrations + load + scan + reconcile)\n", layout);
    return 0;
}
