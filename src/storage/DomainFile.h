#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QVariant>
#include <optional>

// One preferences domain on disk: a JSON object from key to typed value (see
// PropertyListValue), written as a whole under a lock file. Every write
// re-reads the file under the lock, merges its own changes over what is
// there, writes a temporary file, checks every step, syncs it to disk and
// only then renames it over the old one. A failure leaves the old file
// byte-identical and is returned to the caller.
namespace DomainFile {

struct Content {
    QMap<QString, QVariant> values;
    // Keys whose value could not be decoded (a typo, a newer version's tag).
    // They read as absent but are written back unchanged until set.
    QJsonObject undecodable;
    // The whole file was not a JSON object; values is empty.
    bool unparsable = false;
};

// Changes made since the last write: a value, or nothing for a removal.
using Changes = QMap<QString, std::optional<QVariant>>;

// Decodes key by key; each bad key is logged with its name (unless quiet:
// a writer re-reading under the lock keeps bad keys without repeating them).
Content parse(const QByteArray &bytes, const QString &fileName, bool quiet = false);
QByteArray serialize(const Content &content);

// The file's bytes: empty when it does not exist. Only regular files of a
// sane size are read. Returns nothing (and sets *error) when it cannot be
// read; callers must then not replace it.
std::optional<QByteArray> readBytes(const QString &path, QString *error);

// Reads the file as it is now (no lock: writers rename whole files).
std::optional<Content> read(const QString &path, QString *error);

// Which version of the file is on disk: a rename gives a new inode, a
// rewrite a new time or size.
struct Stamp {
    quint64 inode = 0;
    qint64 size = 0;
    qint64 modifiedNs = 0;
    bool operator==(const Stamp &) const = default;
};
std::optional<Stamp> stampOf(const QString &path);

// Applies changes under the lock and writes. On success *merged holds what
// the file now contains and *written (when given) its stamp, taken under the
// lock. On failure nothing on disk changed.
bool write(const QString &path, const Changes &changes, Content *merged, QString *error,
           std::optional<Stamp> *written = nullptr);

// How long a writer waits for another writer's lock before giving up.
inline constexpr int kLockTimeoutMs = 3000;
// The largest settings file read (larger is refused, never truncated).
inline constexpr qint64 kMaxFileBytes = 256 * 1024 * 1024;

}
