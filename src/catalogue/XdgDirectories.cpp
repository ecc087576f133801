#include "catalogue/XdgDirectories.h"

#include <QDir>

namespace XdgDirectories {

QString dataHome()
{
    const QString value = qEnvironmentVariable("XDG_DATA_HOME");
    return QDir::isAbsolutePath(value) ? QDir::cleanPath(value) : QDir::homePath() + QStringLiteral("/.local/share");
}

QStringList dataDirs()
{
    QStringList out;
    for (const QString &dir : qEnvironmentVariable("XDG_DATA_DIRS").split(u':', Qt::SkipEmptyParts))
        if (QDir::isAbsolutePath(dir))
            out.append(QDir::cleanPath(dir));
    if (out.isEmpty())
        out = {QStringLiteral("/usr/local/share"), QStringLiteral("/usr/share")};
    return out;
}

QStringList systemExportDirs()
{
    return {QStringLiteral("/var/lib/flatpak/exports/share"), QStringLiteral("/var/lib/snapd/desktop")};
}

QStringList dataDirsWithExports(const QStringList &exportDirs)
{
    QStringList out{dataHome()};
    out += dataDirs();
    out.append(dataHome() + QStringLiteral("/flatpak/exports/share"));
    for (const QString &dir : exportDirs)
        out.append(QDir::cleanPath(dir));
    out.removeDuplicates();
    return out;
}

}
