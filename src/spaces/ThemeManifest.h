#pragma once

#include "spaces/SpaceItem.h"

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QUuid>
#include <optional>

class UserDefaultsStoreType;

// What a theme package says about itself: the Space it was made from and
// the program and package schema that wrote it.
struct ThemeManifest {
    static constexpr int kSchemaVersion = 1;

    QUuid themeId;
    QString name;
    QString emoji;
    QString iconBackgroundColor;
    QString appVersion;
    int schemaVersion = kSchemaVersion;
    std::optional<QString> specialSpaceKind;
    std::optional<SpecialSpaceOptions> specialOptions;
    QDateTime createdAt;

    static ThemeManifest forSpace(const SpaceItem &space, const QUuid &themeId, const QDateTime &now);
    QJsonObject toJson() const;
    static std::optional<ThemeManifest> fromJson(const QJsonObject &json, QString *error = nullptr);

    // Adds the theme id to the list stored under key (exported or imported
    // here), once.
    static void rememberThemeId(UserDefaultsStoreType &store, const char *key, const QUuid &themeId);
};
