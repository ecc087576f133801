#include "spaces/ThemeManifest.h"

#include "foundation/JsonFields.h"
#include "foundation/Uuids.h"
#include "storage/UserDefaultsStoreType.h"

ThemeManifest ThemeManifest::forSpace(const SpaceItem &space, const QUuid &themeId, const QDateTime &now)
{
    ThemeManifest manifest;
    manifest.themeId = themeId;
    manifest.name = space.name;
    manifest.emoji = space.emoji;
    manifest.iconBackgroundColor = space.iconBackgroundColor;
    manifest.appVersion = QStringLiteral(TILLMORA_VERSION);
    manifest.specialSpaceKind = space.specialSpaceKind;
    manifest.specialOptions = space.specialOptions;
    manifest.createdAt = now;
    return manifest;
}

QJsonObject ThemeManifest::toJson() const
{
    QJsonObject json{{"themeId", Uuids::toText(themeId)},
                     {"name", name},
                     {"emoji", emoji},
                     {"iconBackgroundColor", iconBackgroundColor},
                     {"appVersion", appVersion},
                     {"schemaVersion", schemaVersion},
                     {"createdAt", createdAt.toUTC().toString(Qt::ISODate)}};
    if (specialSpaceKind)
        json.insert(QLatin1String("specialSpaceKind"), *specialSpaceKind);
    if (specialOptions)
        json.insert(QLatin1String("specialOptions"), specialOptions->toJson());
    return json;
}

std::optional<ThemeManifest> ThemeManifest::fromJson(const QJsonObject &json, QString *error)
{
    JsonFields f(json);
    ThemeManifest manifest;
    manifest.themeId = f.uuid("themeId");
    manifest.name = f.string("name");
    manifest.emoji = f.optionalString("emoji");
    manifest.iconBackgroundColor = f.optionalString("iconBackgroundColor");
    manifest.appVersion = f.optionalString("appVersion");
    const QJsonValue schema = json.value(QLatin1String("schemaVersion"));
    if (!schema.isDouble() || schema.toDouble() != double(qint64(schema.toDouble()))) {
        if (error)
            *error = QStringLiteral("key \"schemaVersion\": expected an integer");
        return std::nullopt;
    }
    manifest.schemaVersion = int(qBound<qint64>(qint64(INT_MIN), qint64(schema.toDouble()), qint64(INT_MAX)));
    manifest.createdAt = QDateTime::fromString(json.value(QLatin1String("createdAt")).toString(), Qt::ISODate);
    if (json.value(QLatin1String("specialSpaceKind")).isString())
        manifest.specialSpaceKind = json.value(QLatin1String("specialSpaceKind")).toString();
    if (json.value(QLatin1String("specialOptions")).isObject())
        manifest.specialOptions = SpecialSpaceOptions::fromJson(json.value(QLatin1String("specialOptions")).toObject());
    return f.result(manifest, error);
}

void ThemeManifest::rememberThemeId(UserDefaultsStoreType &store, const char *key, const QUuid &themeId)
{
    QStringList ids = store.stringList(QLatin1String(key));
    if (ids.contains(Uuids::toText(themeId)))
        return;
    ids.append(Uuids::toText(themeId));
    store.set(ids, QLatin1String(key));
}
