#include "platform/linux/AutostartEntry.h"

#include "platform/linux/LinuxApplicationPlatform.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace AutostartEntry {

QString path()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/autostart/tillmora.desktop");
}

bool isEnabled()
{
    return QFile::exists(path());
}

bool setEnabled(bool enabled, const QString &executable, QString *error)
{
    if (!enabled) {
        if (!QFile::exists(path()) || QFile::remove(path()))
            return true;
        if (error)
            *error = QStringLiteral("Could not remove %1").arg(path());
        return false;
    }
    QDir().mkpath(QFileInfo(path()).absolutePath());
    QSaveFile file(path());
    if (!file.open(QIODevice::WriteOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    // Exec quoting per the desktop entry rules: the path in double quotes.
    QString quoted = executable;
    quoted.replace(u'\\', QLatin1String("\\\\")).replace(u'"', QLatin1String("\\\"")).replace(u'$', QLatin1String("\\$"));
    const QString text = QStringLiteral("[Desktop Entry]\nType=Application\nName=Tillmora\n"
                                        "Comment=Application launcher\nExec=\"%1\" %2\nIcon=tillmora\n"
                                        "X-GNOME-Autostart-enabled=true\nNoDisplay=true\n")
                             .arg(quoted, QLatin1String(LinuxApplicationPlatform::kLoginItemFlag));
    file.write(text.toUtf8());
    if (!file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

}
