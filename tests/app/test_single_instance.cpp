// The single-instance channel with real processes: racing copies, a socket
// left by a killed owner, and the real executable handing over to the first.
#include "app/InstanceChannel.h"
#include "common/TempEnvironment.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLocalSocket>
#include <QScopeGuard>
#include <QProcess>
#include <QTest>

#include <QStandardPaths>
#include <QTemporaryDir>

#include <csignal>
#include <fcntl.h>
#include <future>
#include <sys/resource.h>
#include <unistd.h>
#include <cstdio>

namespace {

// --child claim SOCKET HOLD_MS: prints "primary PID" or "secondary PID".
// --child send SOCKET: prints "answered" or "refused".
int childMain(const QStringList &args)
{
    if (args.value(0) == QLatin1String("send")) {
        const bool answered = InstanceChannel::send(args.value(1), {{"command", "hello"}}, 3000).has_value();
        std::printf(answered ? "answered\n" : "refused\n");
        return 0;
    }
    InstanceChannel channel(args.value(1));
    const auto peer = channel.claimOrFindRunning();
    if (peer) {
        std::printf("secondary %lld\n", peer->processId);
        return 0;
    }
    if (!channel.isListening())
        return 3;
    std::printf("primary %lld\n", QCoreApplication::applicationPid());
    std::fflush(stdout);
    QTest::qWait(args.value(2).toInt());
    return 0;
}

QProcess *startClaim(QObject *parent, const QString &socket, int holdMs)
{
    auto *p = new QProcess(parent);
    p->start(QCoreApplication::applicationFilePath(),
             {QStringLiteral("--child"), QStringLiteral("claim"), socket, QString::number(holdMs)});
    return p;
}

}

class SingleInstanceTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void racingCopiesElectExactlyOnePrimary()
    {
        TempEnvironment env;
        const QString socket = env.runtimeDir() + QStringLiteral("/tillmora/instance.sock");
        for (int round = 0; round < 3; ++round) {
            QList<QProcess *> copies;
            for (int i = 0; i < 4; ++i)
                copies.append(startClaim(this, socket, 1500));
            QStringList primaries, secondaries;
            for (QProcess *p : copies) {
                QVERIFY(p->waitForFinished(20000));
                const QString out = QString::fromUtf8(p->readAllStandardOutput()).trimmed();
                (out.startsWith(QLatin1String("primary")) ? primaries : secondaries).append(out);
                delete p;
            }
            QCOMPARE(primaries.size(), 1);
            const QString primaryPid = primaries.first().section(u' ', 1);
            for (const QString &s : secondaries)
                QCOMPARE(s.section(u' ', 1), primaryPid); // everyone found the same owner
        }
    }

    void socketOfAKilledOwnerIsReplaced()
    {
        TempEnvironment env;
        const QString socket = env.runtimeDir() + QStringLiteral("/tillmora/instance.sock");
        QProcess *owner = startClaim(this, socket, 60000);
        QVERIFY(owner->waitForReadyRead(10000));
        QVERIFY(owner->readAllStandardOutput().startsWith("primary"));
        ::kill(pid_t(owner->processId()), SIGKILL);
        QVERIFY(owner->waitForFinished());
        QVERIFY(QFile::exists(socket)); // left behind

        InstanceChannel channel(socket);
        QVERIFY(!channel.claimOrFindRunning());
        QVERIFY(channel.isListening());
    }

    // The socket's folder must be this user's alone: a folder others can
    // enter (or a link planted in its place) is refused, not used.
    void aSocketFolderOthersCanEnterIsRefused()
    {
        TempEnvironment env;
        const QString folder = env.runtimeDir() + QStringLiteral("/tillmora");
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(QFile::setPermissions(folder, QFileDevice::Permissions(0x7777)));
        InstanceChannel open(folder + QStringLiteral("/instance.sock"));
        QVERIFY(!open.claimOrFindRunning());
        QVERIFY(!open.isListening());

        const QString planted = env.runtimeDir() + QStringLiteral("/planted");
        QVERIFY(QDir().mkpath(planted));
        QVERIFY(QFile::link(planted, env.runtimeDir() + QStringLiteral("/linked")));
        InstanceChannel linked(env.runtimeDir() + QStringLiteral("/linked/instance.sock"));
        QVERIFY(!linked.claimOrFindRunning());
        QVERIFY(!linked.isListening());
    }

    // A client that floods the launcher with one endless line is dropped,
    // and the launcher goes on answering others.
    void anOversizedRequestIsDroppedAndTheServerStaysUp()
    {
        TempEnvironment env;
        const QString socket = env.runtimeDir() + QStringLiteral("/tillmora/instance.sock");
        QProcess *owner = startClaim(this, socket, 60000);
        QVERIFY(owner->waitForReadyRead(10000));
        QVERIFY(owner->readAllStandardOutput().startsWith("primary"));
        const auto stop = qScopeGuard([owner] {
            owner->kill();
            owner->waitForFinished();
        });
        QLocalSocket flood;
        flood.connectToServer(socket);
        QVERIFY(flood.waitForConnected(5000));
        const QByteArray chunk(256 * 1024, 'x');
        for (int i = 0; i < 12 && flood.state() == QLocalSocket::ConnectedState; ++i) {
            flood.write(chunk);
            flood.waitForBytesWritten(2000);
        }
        QTRY_COMPARE_WITH_TIMEOUT(flood.state(), QLocalSocket::UnconnectedState, 10000);
        QVERIFY(InstanceChannel::send(socket, {{"command", "hello"}}, 5000).has_value());
    }

    // Accepting fails when the process has no descriptor left (a flood);
    // the launcher must go on listening once descriptors are free again.
    void anAcceptFailureDoesNotEndListening()
    {
        TempEnvironment env;
        const QString socket = env.runtimeDir() + QStringLiteral("/tillmora/instance.sock");
        InstanceChannel channel(socket);
        QVERIFY(!channel.claimOrFindRunning());
        QVERIFY(channel.isListening());

        QLocalSocket waiting;
        waiting.connectToServer(socket);
        QVERIFY(waiting.waitForConnected(2000));
        rlimit saved{};
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &saved), 0);
        std::vector<int> taken;
        {
            const int probe = ::open("/dev/null", O_RDONLY);
            rlimit tight = saved;
            tight.rlim_cur = rlim_t(probe + 8);
            ::close(probe);
            QCOMPARE(::setrlimit(RLIMIT_NOFILE, &tight), 0);
            for (int fd; (fd = ::open("/dev/null", O_RDONLY)) >= 0;)
                taken.push_back(fd);
        }
        QTRY_VERIFY_WITH_TIMEOUT(!channel.isListening(), 5000);
        for (int fd : taken)
            ::close(fd);
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &saved), 0);

        QTRY_VERIFY_WITH_TIMEOUT(channel.isListening(), 5000);
        auto answer = std::async(std::launch::async, [&] {
            return InstanceChannel::send(socket, {{"command", "hello"}}, 5000).has_value();
        });
        QTRY_VERIFY_WITH_TIMEOUT(answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready, 10000);
        QVERIFY(answer.get());
    }

    // Another local user (run through setpriv as "nobody") can neither talk
    // to the launcher nor plant the socket folder it would use.
    void anotherUserCanNeitherTalkNorPlant()
    {
        if (::getuid() != 0 || QStandardPaths::findExecutable(QStringLiteral("setpriv")).isEmpty())
            QSKIP("needs root and setpriv to act as a second user");
        const auto asNobody = [](const QStringList &args) {
            QProcess p;
            p.start(QStringLiteral("setpriv"), QStringList{QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
                                                           QStringLiteral("--clear-groups"), QStringLiteral("--")}
                                                   + args);
            p.waitForFinished(20000);
            return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
        };
        // The layout used without XDG_RUNTIME_DIR: /tmp/<own folder>/tillmora.
        const QString base = QDir::tempPath() + QStringLiteral("/tillmora-second-user-%1").arg(QCoreApplication::applicationPid());
        const auto cleanUp = qScopeGuard([base] {
            QDir(base + QStringLiteral("-mine")).removeRecursively();
            QDir(base + QStringLiteral("-planted")).removeRecursively();
        });
        const QString socket = base + QStringLiteral("-mine/tillmora/instance.sock");
        InstanceChannel channel(socket);
        QVERIFY(!channel.claimOrFindRunning());
        QVERIFY(channel.isListening());
        auto reply = std::async(std::launch::async, [&] {
            return asNobody({QCoreApplication::applicationFilePath(), QStringLiteral("--child"), QStringLiteral("send"),
                             socket});
        });
        QTRY_VERIFY_WITH_TIMEOUT(reply.wait_for(std::chrono::seconds(0)) == std::future_status::ready, 20000);
        QCOMPARE(reply.get(), QStringLiteral("refused"));

        // The folder a launcher would make, made first by the other user.
        const QString planted = base + QStringLiteral("-planted");
        asNobody({QStringLiteral("mkdir"), QStringLiteral("-m"), QStringLiteral("700"), planted});
        QVERIFY(QFileInfo(planted).isDir());
        InstanceChannel victim(planted + QStringLiteral("/tillmora/instance.sock"));
        QVERIFY(!victim.claimOrFindRunning());
        QVERIFY(!victim.isListening());
        QVERIFY(!QFileInfo::exists(planted + QStringLiteral("/tillmora")));
    }

    void secondExecutableHandsOverAndQuits()
    {
        TempEnvironment env;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("com.tillmora.Tillmora.*=true")); // the log is read below
        environment.insert(QStringLiteral("TILLMORA_APP_DIRS"), env.path(QStringLiteral("no-apps")));

        QProcess first;
        first.setProcessEnvironment(environment);
        first.start(QStringLiteral(TILLMORA_BINARY), {QStringLiteral("--login-item")});
        QVERIFY(first.waitForStarted());
        const QString socket = env.runtimeDir() + QStringLiteral("/tillmora/instance.sock");
        QTRY_VERIFY_WITH_TIMEOUT(InstanceChannel::send(socket, {{"command", "hello"}}, 500).has_value(), 20000);

        QProcess second;
        second.setProcessEnvironment(environment);
        second.start(QStringLiteral(TILLMORA_BINARY));
        QVERIFY(second.waitForFinished(20000));
        QCOMPARE(second.exitCode(), 0);
        const QString log = QString::fromUtf8(second.readAllStandardError());
        QVERIFY2(log.contains(QStringLiteral("Another Tillmora instance is already running (pid %1); activating it and "
                                             "quitting this one.")
                                  .arg(first.processId())),
                 qPrintable(log));
        QCOMPARE(first.state(), QProcess::Running);

        first.terminate();
        QVERIFY(first.waitForFinished(10000));
    }
};

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc > 1 && QByteArray(argv[1]) == "--child")
        return childMain(app.arguments().mid(2));
    SingleInstanceTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_single_instance.moc"
