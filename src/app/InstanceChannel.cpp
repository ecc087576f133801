#include "app/InstanceChannel.h"

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

#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int kProbeTimeoutMs = 2000;

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
        if (!socket.waitForReadyRead(timeoutMs))
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
    QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (runtime.isEmpty())
        runtime = QDir::tempPath() + QStringLiteral("/tillmora-%1").arg(getuid());
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
    if (!socket.waitForConnected(kProbeTimeoutMs))
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
    QDir().mkpath(QFileInfo(m_socketPath).absolutePath());
    QFile::setPermissions(QFileInfo(m_socketPath).absolutePath(),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QLockFile lock(m_socketPath + QStringLiteral(".lock"));
    lock.setStaleLockTime(10000);
    if (!lock.tryLock(10000))
        qCWarning(lcApp, "Could not lock %s.lock; going on without it", qUtf8Printable(m_socketPath));

    if (auto peer = probe(); peer && !peer->terminating)
        return peer;

    // Nobody answers (or the owner is quitting): the socket is ours to take.
    QLocalServer::removeServer(m_socketPath);
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server->listen(m_socketPath)) {
        qCWarning(lcApp, "Could not listen on %s: %s", qUtf8Printable(m_socketPath),
                  qUtf8Printable(m_server->errorString()));
        return std::nullopt;
    }
    connect(m_server, &QLocalServer::newConnection, this, &InstanceChannel::acceptConnections);
    return std::nullopt;
}

void InstanceChannel::acceptConnections()
{
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            while (socket->canReadLine()) {
                const QJsonObject request = QJsonDocument::fromJson(socket->readLine()).object();
                QPointer<QLocalSocket> target(socket);
                const Reply reply = [target](const QJsonObject &answer) {
                    if (!target)
                        return; // the client gave up waiting
                    target->write(line(answer));
                    target->flush();
                };
                if (request.value(QLatin1String("command")).toString() == QLatin1String("hello"))
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
    if (!socket.waitForConnected(timeoutMs))
        return std::nullopt;
    socket.write(line(request));
    socket.flush();
    return readReply(socket, timeoutMs);
}
