#include "catalogue/AppSourceFoldersStore.h"

#include "foundation/Logging.h"
#include "foundation/JsonFields.h"
#include "foundation/RecordList.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"

QJsonObject FolderEntry::toJson() const
{
    // Bytes travel as base64 text, the usual JSON form of binary data.
    return {{"path", path}, {"bookmarkData", QString::fromLatin1(bookmarkData.toBase64())}};
}

std::optional<FolderEntry> FolderEntry::fromJson(const QJsonObject &json, QString *error)
{
    JsonFields f(json);
    FolderEntry entry;
    entry.path = f.string("path");
    const QString bookmark = f.string("bookmarkData");
    auto decoded = QByteArray::fromBase64Encoding(bookmark.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (f.ok() && !decoded) {
        if (error)
            *error = QStringLiteral("key \"bookmarkData\": expected base64 text");
        return std::nullopt;
    }
    entry.bookmarkData = *decoded;
    return f.result(entry, error);
}

namespace AppSourceFoldersStore {

QList<FolderEntry> loadAll(const UserDefaultsStoreType &store)
{
    const auto bytes = store.data(QLatin1String(SettingsKeys::kAdditionalAppSourceFolders));
    if (!bytes)
        return {};
    QString error;
    const auto entries = RecordList::decode<FolderEntry>(*bytes, &error);
    if (!entries) {
        qCWarning(lcPersistence, "Failed to decode app source folders: %s", qUtf8Printable(error));
        return {};
    }
    return *entries;
}

void saveAll(UserDefaultsStoreType &store, const QList<FolderEntry> &entries)
{
    store.set(RecordList::encode(entries), QLatin1String(SettingsKeys::kAdditionalAppSourceFolders));
}

QStringList paths(const QList<FolderEntry> &entries)
{
    QStringList out;
    for (const FolderEntry &entry : entries)
        out.append(entry.path);
    return out;
}

}
