#pragma once

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <optional>

// The grid's value records. JSON keys are the field names.

struct AppItem {
    QUuid id;
    QString path;
    QString displayName;
    // What makes it the same application at another path: the desktop-file
    // id of a desktop entry, the CFBundleIdentifier of a bundle. Optional in
    // JSON (records written before it read as empty: no identity known).
    QString identity{};

    QJsonObject toJson() const;
    static std::optional<AppItem> fromJson(const QJsonObject &json, QString *error = nullptr);
    bool operator==(const AppItem &) const = default;
};

struct FolderItem {
    QUuid id;
    QString name;
    QStringList appPaths;
    QStringList systemFolderPaths;
    // The folder's own paged cells: app paths (optionally "A:"), "WF:" keys, "".
    QStringList slots;
    // Main-grid cell an app had before it moved into the folder.
    QMap<QString, qint64> originalGridSlots;

    QString key() const;
    QJsonObject toJson() const;
    // "id", "name" and "appPaths" are required; a missing "slots" is a copy
    // of "appPaths" (folders written before folder pages existed).
    static std::optional<FolderItem> fromJson(const QJsonObject &json, QString *error = nullptr);
    bool operator==(const FolderItem &) const = default;
};

struct SystemFolderItem {
    QUuid id;
    QString path;
    QString displayName;
    QString iconName;

    QJsonObject toJson() const;
    static std::optional<SystemFolderItem> fromJson(const QJsonObject &json, QString *error = nullptr);
    bool operator==(const SystemFolderItem &) const = default;
};

struct SystemFolderCategory {
    QString id;
    QString name;
    QString iconName;
    QList<SystemFolderItem> subfolders;
};
