#include "spaces/ThemePackage.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QSet>
#include <QUuid>

#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace ThemePackageLayout {

namespace {

using ArchivePtr = std::unique_ptr<archive, int (*)(archive *)>;
using EntryPtr = std::unique_ptr<archive_entry, void (*)(archive_entry *)>;

constexpr qint64 kChunk = 64 * 1024;

bool fail(QString *error, const QString &text)
{
    if (error)
        *error = text;
    return false;
}

QString archiveText(archive *a)
{
    const char *text = archive_error_string(a);
    return text ? QString::fromUtf8(text) : QStringLiteral("unknown archive error");
}

// The entry's name as a relative path of plain components, or empty with
// *error set. Names come in UTF-8 (or the archive's own code page, which
// must still decode as UTF-8) and are compared in composed form.
QString normalisedName(archive_entry *entry, bool isDirectory, QString *error)
{
    const char *raw = archive_entry_pathname_utf8(entry);
    if (!raw)
        raw = archive_entry_pathname(entry);
    if (!raw || !*raw) {
        fail(error, QStringLiteral("an entry has no name"));
        return {};
    }
    const QByteArray bytes(raw);
    QString name = QString::fromUtf8(bytes);
    if (name.toUtf8() != bytes) {
        fail(error, QStringLiteral("an entry's name is not UTF-8"));
        return {};
    }
    const auto refuse = [&](const char *why) {
        fail(error, QStringLiteral("entry \"%1\": %2").arg(name, QLatin1String(why)));
        return QString();
    };
    for (const QChar c : name)
        if (c.unicode() < 0x20 || c.unicode() == 0x7f)
            return refuse("control character in the name");
    if (name.contains(u'\\'))
        return refuse("backslash in the name");
    if (name.startsWith(u'/'))
        return refuse("absolute name");
    if (isDirectory && name.endsWith(u'/'))
        name.chop(1);
    const QStringList parts = name.split(u'/');
    if (parts.size() > 2)
        return refuse("nested too deeply");
    for (const QString &part : parts) {
        if (part.isEmpty() || part == QLatin1String(".") || part == QLatin1String(".."))
            return refuse("name leaves its folder");
        if (part.toUtf8().size() > 255)
            return refuse("name too long");
    }
    if (parts.first().size() == 2 && parts.first().at(1) == u':')
        return refuse("drive name");
    return name.normalized(QString::NormalizationForm_C);
}

// The names taken so far, folded so that two names one case-insensitive or
// normalising file system would merge are refused as well.
struct Names {
    QSet<QString> files;
    QSet<QString> folders;

    bool take(const QString &name, bool isDirectory, QString *error)
    {
        const QString key = name.toCaseFolded();
        if (files.contains(key) || (!isDirectory && folders.contains(key)))
            return fail(error, QStringLiteral("entry \"%1\": duplicate name").arg(name));
        const qsizetype slash = key.lastIndexOf(u'/');
        if (slash > 0) {
            const QString parent = key.left(slash);
            if (files.contains(parent))
                return fail(error, QStringLiteral("entry \"%1\": its folder is a file").arg(name));
            folders.insert(parent);
        }
        (isDirectory ? folders : files).insert(key);
        return true;
    }
};

bool makeFolder(const QString &path, QString *error)
{
    const QByteArray local = QFile::encodeName(path);
    if (::mkdir(local.constData(), 0700) != 0 && errno != EEXIST)
        return fail(error, QStringLiteral("%1: %2").arg(path, QString::fromLocal8Bit(strerror(errno))));
    struct stat st {};
    if (::lstat(local.constData(), &st) != 0 || !S_ISDIR(st.st_mode))
        return fail(error, QStringLiteral("%1 is not a folder").arg(path));
    return true;
}

}

QString packageFileName(const QString &spaceName)
{
    QString name = spaceName.trimmed();
    static const QString removed = QStringLiteral("/\\:*?\"<>|");
    name.removeIf([](QChar c) { return removed.contains(c); });
    if (name.isEmpty())
        name = QStringLiteral("Space");
    return name + u'.' + QLatin1String(kExtension);
}

std::shared_ptr<void> makeStagingFolder(const QString &prefix, QString *path, QString *error)
{
    const QString folder = QDir(QDir::tempPath()).filePath(prefix + QUuid::createUuid().toString(QUuid::WithoutBraces));
    if (!QDir().mkpath(QDir::tempPath()) || ::mkdir(QFile::encodeName(folder).constData(), 0700) != 0) {
        fail(error, QStringLiteral("%1: %2").arg(folder, QString::fromLocal8Bit(strerror(errno))));
        return nullptr;
    }
    *path = folder;
    return std::shared_ptr<QString>(new QString(folder), [](QString *f) {
        QDir(*f).removeRecursively();
        delete f;
    });
}

const QStringList &knownTopLevelNames()
{
    static const QStringList names{QLatin1String(kManifestFile),       QLatin1String(kSnapshotFile),
                                   QLatin1String(kAppsFile),           QLatin1String(kWallpaperFolder),
                                   QLatin1String(kNotchBackgroundFolder), QLatin1String(kCustomIconsFolder),
                                   QLatin1String(kWorkflowIconsFolder), QLatin1String(kWidgetsFolder),
                                   QLatin1String(kFolderIconsFolder)};
    return names;
}

std::optional<ArchiveError> writeArchive(const QString &folder, const QString &destination, QString *detail)
{
    const auto failed = [&](const QString &text) {
        if (detail)
            *detail = text;
        return std::optional<ArchiveError>(ArchiveError::dittoFailed);
    };
    QFile::remove(destination);
    // Written beside the destination and renamed: a failed export leaves no
    // half package behind under the name the user chose.
    const QString part = destination + QStringLiteral(".part");
    QFile::remove(part);

    ArchivePtr a(archive_write_new(), archive_write_free);
    if (archive_write_set_format_zip(a.get()) != ARCHIVE_OK
        || archive_write_open_filename(a.get(), QFile::encodeName(part).constData()) != ARCHIVE_OK)
        return failed(archiveText(a.get()));

    QStringList paths;
    QDirIterator it(folder, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        paths.append(QDir(folder).relativeFilePath(it.next()));
    paths.sort();

    QByteArray buffer(kChunk, Qt::Uninitialized);
    for (const QString &relative : paths) {
        const QFileInfo info(QDir(folder).filePath(relative));
        EntryPtr entry(archive_entry_new(), archive_entry_free);
        archive_entry_set_pathname_utf8(entry.get(), (info.isDir() ? relative + u'/' : relative).toUtf8().constData());
        archive_entry_set_filetype(entry.get(), info.isDir() ? AE_IFDIR : AE_IFREG);
        archive_entry_set_perm(entry.get(), info.isDir() ? 0755 : 0644);
        archive_entry_set_mtime(entry.get(), info.lastModified().toSecsSinceEpoch(), 0);
        if (!info.isDir())
            archive_entry_set_size(entry.get(), info.size());
        // Images are compressed already: deflating them again costs time
        // and gains nothing; the JSON files shrink well.
        if (info.suffix().compare(QLatin1String("json"), Qt::CaseInsensitive) == 0)
            archive_write_zip_set_compression_deflate(a.get());
        else
            archive_write_zip_set_compression_store(a.get());
        if (archive_write_header(a.get(), entry.get()) != ARCHIVE_OK) {
            QFile::remove(part);
            return failed(archiveText(a.get()));
        }
        if (info.isDir())
            continue;
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly)) {
            QFile::remove(part);
            return failed(file.errorString());
        }
        for (qint64 n; (n = file.read(buffer.data(), kChunk)) > 0;) {
            if (archive_write_data(a.get(), buffer.constData(), size_t(n)) < 0) {
                QFile::remove(part);
                return failed(archiveText(a.get()));
            }
        }
    }
    if (archive_write_close(a.get()) != ARCHIVE_OK) {
        QFile::remove(part);
        return failed(archiveText(a.get()));
    }
    if (!QFileInfo(part).isFile())
        return ArchiveError::archiveMissing;
    if (!QFile::rename(part, destination)) {
        QFile::remove(part);
        return failed(QStringLiteral("could not write %1").arg(destination));
    }
    if (!QFileInfo(destination).isFile())
        return ArchiveError::archiveMissing;
    return std::nullopt;
}

bool extractArchive(const QString &package, const QString &stagingFolder, QString *error, const Limits &limits)
{
    ArchivePtr a(archive_read_new(), archive_read_free);
    archive_read_support_format_zip(a.get());
    if (archive_read_open_filename(a.get(), QFile::encodeName(package).constData(), size_t(kChunk)) != ARCHIVE_OK)
        return fail(error, archiveText(a.get()));

    Names names;
    int entries = 0;
    qint64 total = 0;
    QByteArray buffer(kChunk, Qt::Uninitialized);
    archive_entry *entry = nullptr;
    for (;;) {
        const int status = archive_read_next_header(a.get(), &entry);
        if (status == ARCHIVE_EOF)
            break;
        if (status != ARCHIVE_OK)
            return fail(error, archiveText(a.get()));
        if (++entries > limits.maxEntries)
            return fail(error, QStringLiteral("more than %1 entries").arg(limits.maxEntries));

        const mode_t type = archive_entry_filetype(entry);
        const bool isDirectory = type == AE_IFDIR;
        QString name = normalisedName(entry, isDirectory, error);
        if (name.isEmpty())
            return false;
        if (archive_entry_is_encrypted(entry))
            return fail(error, QStringLiteral("entry \"%1\" is encrypted").arg(name));
        if (archive_entry_hardlink(entry) || archive_entry_symlink(entry) || (type != AE_IFREG && !isDirectory))
            return fail(error, QStringLiteral("entry \"%1\" is not a plain file or folder").arg(name));
        if (!knownTopLevelNames().contains(name.section(u'/', 0, 0))) {
            archive_read_data_skip(a.get());
            continue;
        }
        if (!names.take(name, isDirectory, error))
            return false;
        if (archive_entry_size_is_set(entry) && archive_entry_size(entry) > limits.maxEntryBytes)
            return fail(error, QStringLiteral("entry \"%1\" is too large").arg(name));

        const QString target = QDir(stagingFolder).filePath(name);
        if (name.contains(u'/') && !makeFolder(QFileInfo(target).path(), error))
            return false;
        if (isDirectory) {
            if (!makeFolder(target, error))
                return false;
            continue;
        }
        // O_EXCL and O_NOFOLLOW: nothing that stands there already is
        // followed or overwritten.
        const int fd = ::open(QFile::encodeName(target).constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                              0600);
        if (fd < 0)
            return fail(error, QStringLiteral("%1: %2").arg(target, QString::fromLocal8Bit(strerror(errno))));
        const auto closeFd = qScopeGuard([fd] { ::close(fd); });
        qint64 written = 0;
        for (;;) {
            const la_ssize_t n = archive_read_data(a.get(), buffer.data(), size_t(kChunk));
            if (n < 0)
                return fail(error, QStringLiteral("entry \"%1\": %2").arg(name, archiveText(a.get())));
            if (n == 0)
                break;
            written += n;
            total += n;
            if (written > limits.maxEntryBytes)
                return fail(error, QStringLiteral("entry \"%1\" is too large").arg(name));
            if (total > limits.maxTotalBytes)
                return fail(error, QStringLiteral("the package holds more than %1 bytes").arg(limits.maxTotalBytes));
            const qint64 read = archive_filter_bytes(a.get(), -1);
            if (total > limits.ratioGraceBytes && total > limits.maxRatio * qMax<qint64>(read, 1))
                return fail(error, QStringLiteral("entry \"%1\" inflates too far").arg(name));
            for (qint64 done = 0; done < n;) {
                const ssize_t w = ::write(fd, buffer.constData() + done, size_t(n - done));
                if (w < 0 && errno == EINTR)
                    continue;
                if (w <= 0)
                    return fail(error, QStringLiteral("%1: %2").arg(target, QString::fromLocal8Bit(strerror(errno))));
                done += w;
            }
        }
    }
    return true;
}

}
