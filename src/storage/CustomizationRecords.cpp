#include "storage/CustomizationRecords.h"

#include "foundation/JsonFields.h"

QJsonObject CustomAppIcon::toJson() const
{
    return {{"imagePath", imagePath},
            {"isPNG", isPNG},
            {"backgroundMode",
             backgroundMode == CustomAppIconBackgroundMode::transparent ? "transparent" : "material"}};
}

std::optional<CustomAppIcon> CustomAppIcon::fromJson(const QJsonObject &json, QString *error)
{
    JsonFields f(json);
    CustomAppIcon icon;
    icon.imagePath = f.string("imagePath");
    icon.isPNG = f.optionalBool("isPNG", true);
    const QString mode = f.optionalString("backgroundMode", QStringLiteral("material"));
    icon.backgroundMode = mode == QLatin1String("transparent") ? CustomAppIconBackgroundMode::transparent
                                                               : CustomAppIconBackgroundMode::material;
    return f.result(icon, error);
}

QJsonObject FolderIconStyle::toJson() const
{
    return {{"tint", tint},   {"overlayImagePath", overlayImagePath}, {"overlayMode", overlayMode},
            {"overlayFit", overlayFit}, {"scale", scale}, {"offsetX", offsetX}, {"offsetY", offsetY}};
}

std::optional<FolderIconStyle> FolderIconStyle::fromJson(const QJsonObject &json, QString *error)
{
    JsonFields f(json);
    FolderIconStyle style;
    style.tint = f.optionalString("tint");
    style.overlayImagePath = f.optionalString("overlayImagePath");
    style.overlayMode = f.optionalString("overlayMode", QStringLiteral("none"));
    style.overlayFit = f.optionalString("overlayFit", QStringLiteral("fit"));
    style.scale = f.optionalDouble("scale", 1.0);
    style.offsetX = f.optionalDouble("offsetX", 0.0);
    style.offsetY = f.optionalDouble("offsetY", 0.0);
    return f.result(style, error);
}
