#include "app/InstanceChannel.h"

#include "app/InstanceRequest.h"
#include "foundation/Logging.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QPointer>
#include <QStandardPaths>
#include <QTimer>

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kProbeTimeoutMs = 2000;
constexpr qint64 kMaxRequestBytes = InstanceRequest::kMaxBytes;
// Clients at once, and how long one may sit without sending a request.
constexpr int kMaxClients = 32;
constexpr int kIdleClientMs = 10000;
constexpr int kRelistenCheckMs = 500;

// The uid of the process at the other end of a connected socket.
std::optional<uid_t> peerUser(const QLocalSocket &socket)
{
#ifdef SO_PEERCRED
    struct ucred credentials {};
    socklen_t length = sizeof credentials;
    if (getsockopt(int(socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &credentials, &length) == 0)
        return credentials.uid;
#endif
    return std::nullopt;
}

bool isOwnUser(const QLocalSocket &socket)
{
    const auto uid = peerUser(socket);
    return uid && *uid == getuid();
}

// The socket's folder must be a real folder of this user that nobody else
// can enter: otherwise another local user could answer in our place. A
// missing folder is made so.
bool securedFolder(const QString &folder)
{
    const QByteArray path = QFile::encodeName(folder);
    struct stat info {};
    if (::lstat(path.constData(), &info) != 0) {
        if (!QDir().mkpath(QFileInfo(folder).absolutePath()) || ::mkdir(path.constData(), 0700) != 0
            || ::lstat(path.constData(), &info) != 0)
            return false;
    }
    if (!S_ISDIR(info.st_mode) || info.st_uid != getuid() || (info.st_mode & 077) != 0) {
        qCWarning(lcApp, "Refusing the socket folder %s: it must be a folder of this user that only this user can open",
                  qUtf8Printable(folder));
        return false;
    }
    return true;
}

QByteArray line(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

// The peer's process id from the kernel, valid even before it answers.
qint64 peerProcessId(const QLocalSocket &socket)
{
#ifdef SO_PEERCRED
    struct ucred credentials {};
    socklen_t length = sizeof credentials;
    if (getsockopt(int(socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &credentials, &length) == 0)
        return credentials.pid;
#endif
    return 0;
}

std::optional<QJsonObject> readReply(QLocalSocket &socket, int timeoutMs)
{
    while (!socket.canReadLine()) {
        if (socket.bytesAvailable() > kMaxRequestBytes || !socket.waitForReadyRead(timeoutMs))
            return std::nullopt;
    }
    const QJsonDocument doc = QJsonDocument::fromJson(socket.readLine());
    if (!doc.isObject())
        return std::nullopt;
    return doc.object();
}

}

InstanceChannel::InstanceChannel(QString socketPath, QObject *parent)
    : QObject(parent)
    , m_socketPath(std::move(socketPath))
{
}

InstanceChannel::~InstanceChannel()
{
    if (m_server)
        m_server->close();
}

QString InstanceChannel::defaultSocketPath()
{
    // Without XDG_RUNTIME_DIR, a folder of our own under the temp folder
    // (checked before use: see securedFolder).
    const QString runtime = qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")
                                ? QDir::tempPath() + QStringLiteral("/tillmora-%1").arg(getuid())
                                : QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return runtime + QStringLiteral("/tillmora/instance.sock");
}

bool InstanceChannel::isListening() const
{
    return m_server && m_server->isListening();
}

std::optional<InstanceChannel::Peer> InstanceChannel::probe() const
{
    QLocalSocket socket;
    socket.connectToServer(m_socketPath);
    if (!socket.waitForConnected(kProbeTimeoutMs) || !isOwnUser(socket))
        return std::nullopt;
    Peer peer;
    peer.processId = peerProcessId(socket);
    socket.write(line({{"command", "hello"}}));
    socket.flush();
    if (const auto reply = readReply(socket, kProbeTimeoutMs)) {
        if (reply->contains(QLatin1String("pid")))
            peer.processId = reply->value(QLatin1String("pid")).toInteger();
        peer.terminating = reply->value(QLatin1String("terminating")).toBool();
    }
    return peer;
}

std::optional<InstanceChannel::Peer> InstanceChannel::claimOrFindRunning()
{
    const QString folder = QFileInfo(m_socketPath).absolutePath();
    // Without XDG_RUNTIME_DIR the parent is ours in the temp folder: check it too.
    if ((folder.startsWith(QDir::tempPath() + u'/') && !securedFolder(QFileInfo(folder).absolutePath()))
        || !securedFolder(folder))
        return std::nullopt;
    QLockFile lock(m_socketPath + QStringLiteral(".lock"));
    lock.setStaleLockTime(10000);
    if (!lock.tryLock(10000))
        qCWarning(lcApp, "Could not lock %s.lock; going on without it", qUtf8Printable(m_socketPath));

    if (auto peer = probe(); peer && !peer->terminating)
        return peer;

    // Nobody answers (or the owner is quitting): the socket is ours to take.
    if (!listen())
        return std::nullopt;
    // A failed accept (no descriptors left in a connection flood) makes the
    // server close its socket and remove the file, with no signal: without
    // this watch the launcher would stop listening for good and a second
    // copy would start.
    auto *watch = new QTimer(this);
    connect(watch, &QTimer::timeout, this, [this] {
        if (m_server->isListening())
            return;
        if (probe()) {
            qCWarning(lcApp, "Another copy took over %s", qUtf8Printable(m_socketPath));
            return;
        }
        qCWarning(lcApp, "The instance socket stopped accepting (%s); listening again",
                  qUtf8Printable(m_server->errorString()));
        listen();
    });
    watch->start(kRelistenCheckMs);
    return std::nullopt;
}

bool InstanceChannel::listen()
{
    QLocalServer::removeServer(m_socketPath);
    if (!m_server) {
        m_server = new QLocalServer(this);
        m_server->setSocketOptions(QLocalServer::UserAccessOption);
        connect(m_server, &QLocalServer::newConnection, this, &InstanceChannel::acceptConnections);
    }
    if (!m_server->listen(m_socketPath)) {
        qCWarning(lcApp, "Could not listen on %s: %s", qUtf8Printable(m_socketPath),
                  qUtf8Printable(m_server->errorString()));
        return false;
    }
    return true;
}

void InstanceChannel::acceptConnections()
{
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        // Only this user's processes, only so many at once.
        if (!isOwnUser(*socket) || m_clients >= kMaxClients) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        ++m_clients;
        connect(socket, &QObject::destroyed, this, [this] { --m_clients; });
        // A client that sends nothing is dropped; once it asked, it may wait.
        auto *idle = new QTimer(socket);
        idle->setSingleShot(true);
        connect(idle, &QTimer::timeout, socket, &QLocalSocket::abort);
        idle->start(kIdleClientMs);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket, idle] {
            if (!socket->canReadLine() && socket->bytesAvailable() > kMaxRequestBytes) {
                qCWarning(lcApp, "Dropped a client whose request exceeded %lld bytes", kMaxRequestBytes);
                socket->abort();
                return;
            }
            if (socket->canReadLine())
                idle->stop();
            while (socket->canReadLine()) {
                const auto parsed = InstanceRequest::parse(socket->readLine(kMaxRequestBytes + 1));
                if (!std::holds_alternative<InstanceRequest::Request>(parsed)) {
                    socket->abort();
                    return;
                }
                const auto &[request, hello] = std::get<InstanceRequest::Request>(parsed);
                QPointer<QLocalSocket> target(socket);
                const Reply reply = [target](const QJsonObject &answer) {
                    if (!target)
                        return; // the client gave up waiting
                    target->write(line(answer));
                    target->flush();
                };
                if (hello)
                    reply({{"pid", QCoreApplication::applicationPid()}, {"terminating", m_terminating}});
                else if (m_handler)
                    m_handler(request, reply);
                else
                    reply({{"error", "unsupported request"}});
            }
        });
    }
}

std::optional<QJsonObject> InstanceChannel::send(const QString &socketPath, const QJsonObject &request, int timeoutMs)
{
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    // Another user's process behind our socket path must not hear our
    // arguments, nor answer for the launcher.
    if (!socket.waitForConnected(timeoutMs) || !isOwnUser(socket))
        return std::nullopt;
    socket.write(line(request));
    socket.flush();
    return readReply(socket, timeoutMs);
}
