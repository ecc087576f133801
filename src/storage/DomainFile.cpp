#include "storage/DomainFile.h"

#include "foundation/Logging.h"
#include "storage/PropertyListValue.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLockFile>
#include <QSaveFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace DomainFile {

namespace {

constexpr QFileDevice::Permissions kPrivateFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
constexpr QFileDevice::Permissions kPrivateFolder =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
// A lock file that names no process is another writer's only for the moment
// between creating and filling it; older than this, it is left over.
constexpr qint64 kUnreadableLockGraceMs = 1000;

bool ensurePrivateFolder(const QString &folder, QString *error)
{
    if (!QDir().mkpath(folder)) {
        *error = QStringLiteral("cannot create the folder %1").arg(folder);
        return false;
    }
    QFile::setPermissions(folder, kPrivateFolder);
    return true;
}

// Makes the rename itself durable, not only the file's contents.
void syncFolder(const QString &folder)
{
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

bool saveBytes(const QString &path, const QByteArray &bytes, QString *error)
{
    QSaveFile file(path);
    // Unbuffered, so a short write (a full disk, a size limit) shows up in
    // write()'s count instead of vanishing in a later flush.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        *error = file.errorString();
        return false;
    }
    file.setPermissions(kPrivateFile);
    if (file.write(bytes) != bytes.size()) {
        *error = file.error() != QFileDevice::NoError ? file.errorString() : QStringLiteral("only part of the file could be written (is the disk full?)");
        file.cancelWriting();
        return false;
    }
    // commit() flushes and syncs the temporary file, and renames it only if
    // every write succeeded (a full disk shows up here, at the flush).
    if (!file.commit()) {
        *error = file.errorString();
        return false;
    }
    syncFolder(QFileInfo(path).absolutePath());
    return true;
}

bool lock(QLockFile &lockFile, QString *error)
{
    // Age alone never makes a lock stale: a writer that is merely slow (or
    // stopped) keeps it. A dead owner is recognised at once by QLockFile.
    lockFile.setStaleLockTime(0);
    const QDeadlineTimer deadline(kLockTimeoutMs);
    while (!lockFile.tryLock(50)) {
        if (lockFile.error() != QLockFile::LockFailedError) {
            *error = QStringLiteral("cannot create the lock file %1").arg(lockFile.fileName());
            return false;
        }
        qint64 pid = 0;
        QString host, app;
        const QFileInfo info(lockFile.fileName());
        if (!lockFile.getLockInfo(&pid, &host, &app) && info.exists()
            && info.lastModified().msecsTo(QDateTime::currentDateTime()) > kUnreadableLockGraceMs) {
            qCWarning(lcPersistence, "Removing the lock file %s: it names no writer",
                      qUtf8Printable(lockFile.fileName()));
            QFile::remove(lockFile.fileName());
            continue;
        }
        if (deadline.hasExpired()) {
            *error = QStringLiteral("the settings are locked by another process (%1, pid %2)").arg(app).arg(pid);
            return false;
        }
    }
    return true;
}

// Keeps the bytes of a file that could not be parsed before it is replaced,
// so the user's data can be recovered. One copy per content.
bool keepUnparsable(const QString &path, const QByteArray &bytes, QString *error)
{
    const QString hash = QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex().left(12));
    const QString copy = path + QStringLiteral(".unreadable-") + hash;
    if (QFileInfo(copy).size() == bytes.size())
        return true;
    QString reason;
    if (!saveBytes(copy, bytes, &reason)) {
        *error = QStringLiteral("the unreadable settings file could not be kept (%1)").arg(reason);
        return false;
    }
    qCWarning(lcPersistence, "Settings file %s was unreadable; it is replaced now and a copy was kept at %s",
              qUtf8Printable(path), qUtf8Printable(copy));
    return true;
}

}

Content parse(const QByteArray &bytes, const QString &fileName, bool quiet)
{
    Content content;
    if (bytes.trimmed().isEmpty())
        return content;
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject()) {
        content.unparsable = true;
        if (!quiet)
            qCWarning(lcPersistence, "Settings file %s could not be read (%s); it reads as empty", qUtf8Printable(fileName),
                  qUtf8Printable(error.error != QJsonParseError::NoError ? error.errorString()
                                                                          : QStringLiteral("not a JSON object")));
        return content;
    }
    const QJsonObject root = doc.object();
    for (auto it = root.begin(); it != root.end(); ++it) {
        bool ok = false;
        const QVariant value = PropertyListValue::fromJson(it.value(), &ok);
        if (ok) {
            content.values.insert(it.key(), value);
        } else {
            content.undecodable.insert(it.key(), it.value());
            if (!quiet)
                qCWarning(lcPersistence,
                          "Settings key \"%s\" in %s could not be decoded; it reads as empty and is kept until it is written",
                          qUtf8Printable(it.key()), qUtf8Printable(fileName));
        }
    }
    return content;
}

QByteArray serialize(const Content &content)
{
    QJsonObject root = content.undecodable;
    for (auto it = content.values.cbegin(); it != content.values.cend(); ++it)
        root.insert(it.key(), PropertyListValue::toJson(it.value()));
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

std::optional<QByteArray> readBytes(const QString &path, QString *error)
{
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return QByteArray();
    // Only a regular file: a fifo would block, a device never ends.
    if (!info.isFile()) {
        *error = QStringLiteral("%1 is not a regular file").arg(path);
        return std::nullopt;
    }
    if (info.size() > kMaxFileBytes) {
        *error = QStringLiteral("%1 is larger than %2 bytes").arg(path).arg(kMaxFileBytes);
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return std::nullopt;
    }
    QByteArray bytes = file.read(kMaxFileBytes + 1);
    if (file.error() != QFileDevice::NoError || bytes.size() > kMaxFileBytes) {
        *error = file.error() != QFileDevice::NoError ? file.errorString()
                                                       : QStringLiteral("%1 grew while read").arg(path);
        return std::nullopt;
    }
    return bytes;
}

std::optional<Content> read(const QString &path, QString *error)
{
    const auto bytes = readBytes(path, error);
    if (!bytes)
        return std::nullopt;
    return parse(*bytes, path);
}

std::optional<Stamp> stampOf(const QString &path)
{
    struct stat info {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return std::nullopt;
    return Stamp{quint64(info.st_ino), qint64(info.st_size),
                 qint64(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec};
}

bool write(const QString &path, const Changes &changes, Content *merged, QString *error,
           std::optional<Stamp> *written)
{
    if (!ensurePrivateFolder(QFileInfo(path).absolutePath(), error))
        return false;
    QLockFile lockFile(path + QStringLiteral(".lock"));
    if (!lock(lockFile, error))
        return false;
    // What is on disk now, under the lock: another process may have written
    // since this one last read, and its keys must survive.
    const auto bytes = readBytes(path, error);
    if (!bytes)
        return false;
    Content content = parse(*bytes, path, true);
    if (content.unparsable && !keepUnparsable(path, *bytes, error))
        return false;
    content.unparsable = false;
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        content.undecodable.remove(it.key());
        if (it.value())
            content.values.insert(it.key(), *it.value());
        else
            content.values.remove(it.key());
    }
    const QByteArray out = serialize(content);
    if (out != *bytes && !saveBytes(path, out, error))
        return false;
    if (written)
        *written = stampOf(path);
    *merged = std::move(content);
    return true;
}

}
