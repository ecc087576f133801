#pragma once

#include <QStringList>

#include <QJsonObject>
#include <QString>
#include <QUuid>
#include <optional>

// The four widget footprints, columns x rows.
enum class WidgetSize { size2x2, size3x2, size2x3, size3x3 };

namespace WidgetSizes {
int columns(WidgetSize size);
int rows(WidgetSize size);
QString caseName(WidgetSize size);                       // "size3x2"
QString dimensions(WidgetSize size);                     // "3x2"
std::optional<WidgetSize> fromCaseName(const QString &name);
std::optional<WidgetSize> fromDimensions(const QString &text);
}

// The widget kinds the overlay can draw.
namespace WidgetKinds {
inline const QStringList &known()
{
    static const QStringList kinds{QStringLiteral("clock"), QStringLiteral("date")};
    return kinds;
}
}

// A widget on the grid. Its position is stored only as "W:"/"WB:" markers in
// the slot list; the record carries what it shows.
struct WidgetItem {
    QUuid id;
    QString kind;          // "clock", "date", ...
    WidgetSize size = WidgetSize::size2x2;
    QJsonObject settings;  // kind-specific

    QJsonObject toJson() const;
    static std::optional<WidgetItem> fromJson(const QJsonObject &json, QString *error = nullptr);
    bool operator==(const WidgetItem &) const = default;
};
