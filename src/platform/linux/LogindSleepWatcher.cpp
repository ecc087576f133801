#include "platform/linux/LogindSleepWatcher.h"

#include "foundation/Logging.h"

#include <QDBusConnection>

LogindSleepWatcher::LogindSleepWatcher(QObject *parent)
    : SleepWakeSource(parent)
{
    QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected()
        || !bus.connect(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
                        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"), this,
                        SLOT(prepareForSleep(bool))))
        qCDebug(lcServices, "[Gestures] No logind on the system bus: touchpads are not re-armed after sleep");
}

void LogindSleepWatcher::prepareForSleep(bool start)
{
    if (start)
        Q_EMIT willSleep();
    else
        Q_EMIT didWake();
}
