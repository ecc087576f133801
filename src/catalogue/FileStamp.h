#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

// What tells that a file is still the one read before: any rewrite, replace
// or rename onto it changes one of these. Following symlinks.
struct FileStamp {
    qint64 inode = 0;
    qint64 size = 0;
    qint64 modifiedNs = 0;
    qint64 changedNs = 0;

    // Nothing when the file cannot be stat'ed; error, if given, gets errno.
    static std::optional<FileStamp> of(const QString &path, int *error = nullptr);
    bool operator==(const FileStamp &) const = default;
};
