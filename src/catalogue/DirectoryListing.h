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
// folder cannot be listed (missing, not a folder, no permission).
std::optional<QList<Entry>> list(const QString &path);

}
