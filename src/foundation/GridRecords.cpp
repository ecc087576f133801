#include "foundation/GridRecords.h"

#include "foundation/JsonFields.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"

QJsonObject AppItem::toJson() const
{
    return {{"id", Uuids::toText(id)}, {"path", path}, {"displayName", displayName}, {"identity", identity}};
}

std::optional<AppItem> AppItem::fromJson(const QJsonObject &json, QString *error)
{
    JsonFields f(json);
    AppItem item{f.uuid("id"), f.string("path"), f.string("displayName"), f.optionalString("identity")};
    return f.result(item, error);
}

QString FolderItem::key() const
{
    return SlotKey::folder(id);
}

QJsonObject FolderItem::toJson() const
{
    QJsonObject original;
    for (auto it = originalGridSlots.cbegin(); it != originalGridSlots.cend(); ++it)
        original.insert(it.key(), it.value());
    return {{"id", Uuids::toText(id)},
            {"name", name},
            {"appPaths", toJsonArray(appPaths)},
            {"systemFolderPaths", toJsonArray(systemFolderPaths)},
            {"slots", toJsonArray(slots)},
            {"originalGridSlots", original}};
}

std::optional<FolderItem> FolderItem::fromJson(const QJsonObject &json, QString *error)
{
    JsonFields f(json);
    FolderItem folder;
    folder.id = f.uuid("id");
    folder.name = f.string("name");
    folder.appPaths = f.stringList("appPaths");
    folder.systemFolderPaths = f.optionalStringList("systemFolderPaths").value_or(QStringList());
    folder.slots = f.optionalStringList("slots").value_or(folder.appPaths);
    const QJsonObject original = f.optionalObject("originalGridSlots");
    for (auto it = original.begin(); it != original.end(); ++it) {
        // Converting a double outside qint64's range is undefined: such a
        // cell is no integer we can hold, like a string is not.
        const double cell = it.value().toDouble();
        if (!it.value().isDouble() || !(cell >= -0x1p63 && cell < 0x1p63)) {
            if (error)
                *error = QStringLiteral("key \"originalGridSlots\": expected integers");
            return std::nullopt;
        }
        folder.originalGridSlots.insert(it.key(), qint64(cell));
    }
    return f.result(folder, error);
}

QJsonObject SystemFolderItem::toJson() const
{
    return {{"id", Uuids::toText(id)}, {"path", path}, {"displayName", displayName}, {"iconName", iconName}};
}

std::optional<SystemFolderItem> SystemFolderItem::fromJson(const QJsonObject &json, QString *error)
{
    JsonFields f(json);
    SystemFolderItem item{f.uuid("id"), f.string("path"), f.string("displayName"), f.string("iconName")};
    return f.result(item, error);
}
