#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <optional>

class UserDefaultsStoreType;

// A folder the user added as an extra source of applications. On Linux the
// folder needs no security-scoped bookmark; bookmarkData is kept (empty) so
// the stored format stays the same everywhere.
struct FolderEntry {
    QString path;
    QByteArray bookmarkData;

    QJsonObject toJson() const;
    static std::optional<FolderEntry> fromJson(const QJsonObject &json, QString *error = nullptr);
    bool operator==(const FolderEntry &) const = default;
};

// The user-added source folders: one JSON list under
// "additionalAppSourceFolders_v1" in the standard store.
namespace AppSourceFoldersStore {
// Absent or undecodable reads as an empty list.
QList<FolderEntry> loadAll(const UserDefaultsStoreType &store);
void saveAll(UserDefaultsStoreType &store, const QList<FolderEntry> &entries);
QStringList paths(const QList<FolderEntry> &entries);
}
