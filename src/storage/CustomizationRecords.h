#pragma once

#include <QJsonObject>
#include <QString>
#include <optional>

enum class CustomAppIconBackgroundMode { material, transparent };

// A user-chosen icon of one application.
struct CustomAppIcon {
    QString imagePath; // absolute file path, or "asset:" + name of a built-in icon
    bool isPNG = true;
    CustomAppIconBackgroundMode backgroundMode = CustomAppIconBackgroundMode::material;

    bool isAsset() const { return imagePath.startsWith(QLatin1String("asset:")); }
    QJsonObject toJson() const;
    static std::optional<CustomAppIcon> fromJson(const QJsonObject &json, QString *error = nullptr);
    bool operator==(const CustomAppIcon &) const = default;
};

// The look of one folder's icon.
struct FolderIconStyle {
    QString tint;             // colour as "#RRGGBB", empty for none
    QString overlayImagePath; // empty for none
    QString overlayMode;      // "none", "image", "emoji"
    QString overlayFit;       // "fit", "fill"
    double scale = 1.0;
    double offsetX = 0.0;
    double offsetY = 0.0;

    QJsonObject toJson() const;
    static std::optional<FolderIconStyle> fromJson(const QJsonObject &json, QString *error = nullptr);
    bool operator==(const FolderIconStyle &) const = default;
};
