#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <optional>

// One theme package offered by the themes catalogue: a .tillmoratheme ZIP
// file on the web with the size and checksum it must arrive with.
struct SpacesCatalogTheme {
    // Who made a piece of the theme, for the credits line.
    struct Credit {
        QString name;
        QString url;
        QString type;

        static std::optional<Credit> fromJson(const QJsonObject &json, QString *error);
        QJsonObject toJson() const;
        bool operator==(const Credit &) const = default;
    };

    QString id;          // the catalogue entry
    QString themeId;     // the theme itself, the same across catalogue revisions
    QString name;
    QString description;
    QString screenshotURL;
    QString downloadURL; // absolute, or relative to the catalogue document
    qint64 fileSize = 0;
    QString sha256;      // hex, either case
    int packageSchemaVersion = 1;
    std::optional<Credit> author;
    std::optional<Credit> wallpaper;
    QList<Credit> widgets;
    QList<Credit> icons;

    static std::optional<SpacesCatalogTheme> fromJson(const QJsonObject &json, QString *error);
    QJsonObject toJson() const;
    bool operator==(const SpacesCatalogTheme &) const = default;
};

// The catalogue document.
struct SpacesThemeCatalog {
    int schemaVersion = 1;
    QList<SpacesCatalogTheme> themes;

    static std::optional<SpacesThemeCatalog> fromJson(const QByteArray &document, QString *error);
    QByteArray toJson() const;
    const SpacesCatalogTheme *theme(const QString &id) const;
};
