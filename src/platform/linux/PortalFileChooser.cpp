#include "platform/linux/PortalFileChooser.h"

#include "foundation/Logging.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QUrl>
#include <QUuid>

namespace {
constexpr const char *kService = "org.freedesktop.portal.Desktop";
constexpr const char *kPath = "/org/freedesktop/portal/desktop";
constexpr const char *kInterface = "org.freedesktop.portal.FileChooser";

// Waits for the Response signal of one portal request, then goes.
class PortalRequest final : public QObject {
    Q_OBJECT
public:
    PortalRequest(FileChooser::Chosen chosen, QObject *parent) : QObject(parent), m_chosen(std::move(chosen)) {}

public Q_SLOTS:
    void response(uint code, const QVariantMap &results)
    {
        QString path;
        // 0: the user chose; 1: cancelled; 2: failed otherwise.
        if (code == 0) {
            const QStringList uris = results.value(QStringLiteral("uris")).toStringList();
            if (!uris.isEmpty())
                path = QUrl(uris.first()).toLocalFile();
        }
        m_chosen(path);
        deleteLater();
    }

private:
    FileChooser::Chosen m_chosen;
};
}

bool PortalFileChooser::choose(Kind kind, const QString &title, Chosen chosen)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()
        || !bus.interface()->isServiceRegistered(QLatin1String(kService)).value())
        return false;
    // The request's object path is known in advance from the handle token,
    // so the answer cannot arrive before we listen for it.
    const QString token = QStringLiteral("tillmora%1").arg(QUuid::createUuid().toString(QUuid::Id128));
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    const QString requestPath = QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(sender, token);
    auto *request = new PortalRequest(std::move(chosen), this);
    bus.connect(QLatin1String(kService), requestPath, QStringLiteral("org.freedesktop.portal.Request"),
                QStringLiteral("Response"), request, SLOT(response(uint, QVariantMap)));

    QVariantMap options{{QStringLiteral("handle_token"), token}, {QStringLiteral("modal"), true}};
    // Images are checked when chosen; the portal is not given a filter.
    if (kind == Kind::Folder)
        options.insert(QStringLiteral("directory"), true);
    QDBusMessage call = QDBusMessage::createMethodCall(QLatin1String(kService), QLatin1String(kPath),
                                                       QLatin1String(kInterface), QStringLiteral("OpenFile"));
    call << QString() << title << options;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [request](QDBusPendingCallWatcher *w) {
        const QDBusPendingReply<QDBusObjectPath> reply = *w;
        w->deleteLater();
        if (reply.isError()) {
            qCWarning(lcServices, "The file chooser portal refused: %s", qUtf8Printable(reply.error().message()));
            request->response(2, {});
        }
    });
    return true;
}

#include "PortalFileChooser.moc"
