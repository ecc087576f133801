#pragma once

#include <QList>
#include <QString>
#include <optional>

// Listing one folder without following anything, in a stable order.
namespace DirectoryListing {

struct Entry {
    enum class Type { Directory, Symlink, Other };
    QString name;
    Type type = Type::Other;
};

// The folder's entries in ascending name order, case-insensitive, ties by
// exact name, so every scan takes them in the same order. Nothing when the
// folder cannot be listed (missing, not a folder, no permission) or the
// listing broke off part-way: a partial listing would read as removed apps.
std::optional<QList<Entry>> list(const QString &path);
// The same for a folder already open; takes over (and closes) the descriptor.
std::optional<QList<Entry>> list(int directoryFd);

}
