#include "storage/FileSystemStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

FileSystemStore::FileSystemStore(const QString &appSupportDirectory)
    : m_appSupportDirectory(appSupportDirectory)
{
}

QString FileSystemStore::defaultDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/tillmora");
}

QString FileSystemStore::pathFor(const QString &relative) const
{
    return QDir(m_appSupportDirectory).filePath(relative);
}

static bool fail(QString *error, const QString &message)
{
    if (error)
        *error = message;
    return false;
}

bool FileSystemStore::ensureDirectory(const QString &path, QString *error) const
{
    const QFileInfo info(path);
    if (info.isDir())
        return true;
    if (info.exists())
        return fail(error, QStringLiteral("%1 exists and is not a folder").arg(path));
    if (!QDir().mkpath(path))
        return fail(error, QStringLiteral("Could not create folder %1").arg(path));
    return true;
}

bool FileSystemStore::copyItem(const QString &source, const QString &destination, QString *error) const
{
    if (!QFileInfo(source).isFile())
        return fail(error, QStringLiteral("%1 does not exist or is not a file").arg(source));
    if (!removeItemIfExists(destination, error))
        return false;
    QFile in(source);
    if (!in.copy(destination))
        return fail(error, QStringLiteral("Could not copy %1 to %2: %3").arg(source, destination, in.errorString()));
    return true;
}

bool FileSystemStore::removeItemIfExists(const QString &path, QString *error) const
{
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return true;
    const bool removed = info.isDir() && !info.isSymLink() ? QDir(path).removeRecursively() : QFile::remove(path);
    return removed ? true : fail(error, QStringLiteral("Could not remove %1").arg(path));
}
