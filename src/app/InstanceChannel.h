#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

class QLocalServer;

// The per-user channel between copies of the program: a local socket that the
// running instance listens on. Requests and replies are one JSON object per
// line. Claiming is done under a lock file, so of two copies starting at once
// exactly one becomes the running instance; a socket left by a crash is
// recognised (nobody answers) and replaced.
class InstanceChannel : public QObject {
    Q_OBJECT
public:
    using Reply = std::function<void(const QJsonObject &reply)>;
    // Answers a request now or later (a command may wait for a load to end).
    using Handler = std::function<void(const QJsonObject &request, Reply reply)>;

    struct Peer {
        qint64 processId = 0;
        bool terminating = false;
    };

    explicit InstanceChannel(QString socketPath = defaultSocketPath(), QObject *parent = nullptr);
    ~InstanceChannel() override;

    // $XDG_RUNTIME_DIR/tillmora/instance.sock (a private temp folder without it).
    static QString defaultSocketPath();

    // Finds the running instance, or becomes it. Returns the peer when another
    // process owns the channel; nothing when this process now listens.
    std::optional<Peer> claimOrFindRunning();
    bool isListening() const;

    // Requests other than "hello" go to the handler on the main thread.
    void setHandler(Handler handler) { m_handler = std::move(handler); }
    // Answered in "hello" replies, so a quitting instance is not counted.
    void setTerminating(bool terminating) { m_terminating = terminating; }

    // Client side: one request to the running instance, or nothing.
    static std::optional<QJsonObject> send(const QString &socketPath, const QJsonObject &request, int timeoutMs = 5000);

    QString socketPath() const { return m_socketPath; }

private:
    bool listen();
    void acceptConnections();
    std::optional<Peer> probe() const;

    QString m_socketPath;
    QLocalServer *m_server = nullptr;
    Handler m_handler;
    bool m_terminating = false;
    int m_clients = 0;
};
