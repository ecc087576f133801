#include "foundation/WidgetItem.h"

#include "foundation/JsonFields.h"
#include "foundation/Uuids.h"

#include <array>

namespace {
struct SizeInfo {
    WidgetSize size;
    int columns;
    int rows;
    const char *caseName;
};
constexpr std::array<SizeInfo, 4> kSizes{{
    {WidgetSize::size2x2, 2, 2, "size2x2"},
    {WidgetSize::size3x2, 3, 2, "size3x2"},
    {WidgetSize::size2x3, 2, 3, "size2x3"},
    {WidgetSize::size3x3, 3, 3, "size3x3"},
}};
const SizeInfo &info(WidgetSize size) { return kSizes[size_t(size)]; }
}

namespace WidgetSizes {
int columns(WidgetSize size) { return info(size).columns; }
int rows(WidgetSize size) { return info(size).rows; }
QString caseName(WidgetSize size) { return QLatin1String(info(size).caseName); }
QString dimensions(WidgetSize size) { return QStringLiteral("%1x%2").arg(columns(size)).arg(rows(size)); }

std::optional<WidgetSize> fromCaseName(const QString &name)
{
    for (const SizeInfo &s : kSizes)
        if (name == QLatin1String(s.caseName))
            return s.size;
    return std::nullopt;
}

std::optional<WidgetSize> fromDimensions(const QString &text)
{
    for (const SizeInfo &s : kSizes)
        if (text.trimmed() == dimensions(s.size))
            return s.size;
    return std::nullopt;
}
}

QJsonObject WidgetItem::toJson() const
{
    return {{"id", Uuids::toText(id)}, {"kind", kind}, {"size", WidgetSizes::caseName(size)}, {"settings", settings}};
}

std::optional<WidgetItem> WidgetItem::fromJson(const QJsonObject &json, QString *error)
{
    JsonFields f(json);
    WidgetItem item;
    item.id = f.uuid("id");
    item.kind = f.string("kind");
    const QString sizeName = f.string("size");
    item.settings = f.optionalObject("settings");
    if (f.ok()) {
        const auto size = WidgetSizes::fromCaseName(sizeName);
        if (!size) {
            if (error)
                *error = QStringLiteral("key \"size\": unknown widget size \"%1\"").arg(sizeName);
            return std::nullopt;
        }
        item.size = *size;
    }
    return f.result(item, error);
}
