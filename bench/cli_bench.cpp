// Wall time of `tillmora layout --json` run headless against a profile of
// 1,000 applications, beside `tillmora --version` (process start alone) and
// `tillmora defaults read` (start + settings, no layout), and a headless
// `tillmora space switch` between two Spaces of those apps. And the cost of
// a command handed to a running launcher (`tillmora hide`) against a stand-in
// launcher that answers at once, beside its floor: starting `true` plus one
// round trip on the same socket.
// Usage: build/bench/cli_bench [runs]
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <thread>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <functional>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {
double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

// A launcher that answers every request at once with success: what is left
// of a handed-over command is the client's own start and the round trip.
class StandInLauncher {
public:
    explicit StandInLauncher(const QString &path)
    {
        m_fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray local = QFile::encodeName(path);
        std::memcpy(address.sun_path, local.constData(), size_t(local.size()) + 1);
        ::bind(m_fd, reinterpret_cast<sockaddr *>(&address), sizeof address);
        ::listen(m_fd, 16);
        m_thread = std::thread([this] {
            for (;;) {
                const int client = ::accept(m_fd, nullptr, nullptr);
                if (client < 0 || m_stop)
                    break;
                char buffer[4096];
                std::string request;
                for (ssize_t n; request.find('\n') == std::string::npos && (n = ::read(client, buffer, sizeof buffer)) > 0;)
                    request.append(buffer, size_t(n));
                const char reply[] = "{\"err\":\"\",\"exitCode\":0,\"out\":\"\"}\n";
                (void)!::write(client, reply, sizeof reply - 1);
                ::close(client);
            }
        });
    }
    ~StandInLauncher()
    {
        m_stop = true;
        ::shutdown(m_fd, SHUT_RDWR);
        m_thread.join();
        ::close(m_fd);
    }

private:
    int m_fd = -1;
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};

double roundTrip(const QString &path)
{
    QElapsedTimer t;
    t.start();
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray local = QFile::encodeName(path);
    std::memcpy(address.sun_path, local.constData(), size_t(local.size()) + 1);
    ::connect(fd, reinterpret_cast<sockaddr *>(&address), sizeof address);
    const char request[] = "{\"command\":\"cli\",\"args\":[\"hide\"]}\n";
    (void)!::write(fd, request, sizeof request - 1);
    char buffer[256];
    (void)!::read(fd, buffer, sizeof buffer);
    ::close(fd);
    return t.nsecsElapsed() / 1e6;
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

    // Handed to a running launcher.
    const QString socketFolder = home.filePath("XDG_RUNTIME_DIR") + QStringLiteral("/tillmora");
    QDir().mkpath(socketFolder);
    QFile::setPermissions(socketFolder, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    const QString socketPath = socketFolder + QStringLiteral("/instance.sock");
    std::vector<double> handed, floor;
    {
        StandInLauncher launcher(socketPath);
        for (int i = 0; i < std::max(runs, 31); ++i) {
            QProcess p;
            p.setProcessEnvironment(pe);
            QElapsedTimer t;
            t.start();
            p.start(QStringLiteral(TILLMORA_BINARY), {"hide"});
            p.waitForFinished(10000);
            handed.push_back(t.nsecsElapsed() / 1e6);
            QProcess truth;
            t.restart();
            truth.start(QStringLiteral("true"), QStringList());
            truth.waitForFinished(10000);
            floor.push_back(t.nsecsElapsed() / 1e6 + roundTrip(socketPath));
        }
    }
    std::printf("tillmora hide (to a launcher) %6.2f ms   floor (true + one round trip) %.2f ms   ratio %.2f\n",
                median(handed), median(floor), median(handed) / median(floor));
    return 0;
}
