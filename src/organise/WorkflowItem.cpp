#include "organise/WorkflowItem.h"

#include "foundation/JsonFields.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"

QString WorkflowItem::key() const
{
    return SlotKey::workflow(id);
}

QJsonObject WorkflowItem::toJson() const
{
    return {{"id", Uuids::toText(id)},
            {"name", name},
            {"iconType", iconType == WorkflowIconType::image ? "image" : "emoji"},
            {"emoji", emoji},
            {"backgroundColorHex", backgroundColorHex},
            {"imagePath", imagePath},
            {"isPNG", isPNG},
            {"appPaths", toJsonArray(appPaths)},
            {"folderPaths", toJsonArray(folderPaths)},
            {"launchIntervalSeconds", launchIntervalSeconds}};
}

std::optional<WorkflowItem> WorkflowItem::fromJson(const QJsonObject &json, QString *error)
{
    JsonFields f(json);
    WorkflowItem item;
    item.id = f.uuid("id");
    item.name = f.string("name");
    const QString iconType = f.optionalString("iconType", QStringLiteral("emoji"));
    if (iconType != QLatin1String("emoji") && iconType != QLatin1String("image")) {
        if (error)
            *error = QStringLiteral("key \"iconType\": unknown value \"%1\"").arg(iconType);
        return std::nullopt;
    }
    item.iconType = iconType == QLatin1String("image") ? WorkflowIconType::image : WorkflowIconType::emoji;
    item.emoji = f.optionalString("emoji");
    item.backgroundColorHex = f.optionalString("backgroundColorHex");
    item.imagePath = f.optionalString("imagePath");
    item.isPNG = f.optionalBool("isPNG", false);
    item.appPaths = f.optionalStringList("appPaths").value_or(QStringList());
    item.folderPaths = f.optionalStringList("folderPaths").value_or(QStringList());
    item.launchIntervalSeconds = f.optionalDouble("launchIntervalSeconds", 0);
    return f.result(item, error);
}
