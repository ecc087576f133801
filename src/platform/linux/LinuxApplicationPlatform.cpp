#include "platform/linux/LinuxApplicationPlatform.h"

#include "app/InstanceChannel.h"
#include "foundation/Logging.h"

#include <QCoreApplication>
#include <QDir>
#include <QFontDatabase>
#include <QTimer>

LinuxApplicationPlatform::LinuxApplicationPlatform(InstanceChannel &channel, QStringList arguments)
    : m_channel(channel)
    , m_arguments(std::move(arguments))
{
}

bool LinuxApplicationPlatform::launchedAsLoginItem() const
{
    return m_arguments.contains(QLatin1String(kLoginItemFlag));
}

qint64 LinuxApplicationPlatform::ownProcessId() const
{
    return QCoreApplication::applicationPid();
}

QList<ApplicationPlatform::RunningInstance> LinuxApplicationPlatform::runningInstances()
{
    QList<RunningInstance> instances;
    if (const auto peer = m_channel.claimOrFindRunning())
        instances.append({peer->processId, peer->terminating});
    else if (m_channel.isListening())
        instances.append({ownProcessId(), false});
    return instances;
}

void LinuxApplicationPlatform::activate(qint64)
{
    if (!InstanceChannel::send(m_channel.socketPath(), {{"command", "activate"}}))
        qCWarning(lcApp, "The running instance did not answer the activation request");
}

void LinuxApplicationPlatform::terminate()
{
    // Queued: the event loop may not run yet when start-up decides to quit.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
}

void LinuxApplicationPlatform::setDockIconVisible(bool visible)
{
    m_dockIconVisible = visible;
}

void LinuxApplicationPlatform::registerFonts()
{
    const QDir appDir(QCoreApplication::applicationDirPath());
    const QStringList folders{appDir.filePath(QStringLiteral("../share/tillmora/Fonts")),
                              appDir.filePath(QStringLiteral("../share/tillmora/Shared/Fonts"))};
    for (const QString &folder : folders) {
        const QDir dir(folder);
        for (const QString &file : dir.entryList({QStringLiteral("*.ttf"), QStringLiteral("*.otf")}, QDir::Files))
            if (QFontDatabase::addApplicationFont(dir.filePath(file)) < 0)
                qCWarning(lcApp, "Could not register font %s", qUtf8Printable(dir.filePath(file)));
    }
}
