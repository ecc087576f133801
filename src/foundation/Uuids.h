#pragma once

#include <QString>
#include <QUuid>
#include <optional>

// UUIDs as the canonical upper-case text used in slot keys and records.
namespace Uuids {
inline QString toText(const QUuid &id) { return id.toString(QUuid::WithoutBraces).toUpper(); }
inline QString newText() { return toText(QUuid::createUuid()); }
inline std::optional<QUuid> fromText(const QString &text)
{
    const QUuid id = QUuid::fromString(text.trimmed());
    if (id.isNull() && text.trimmed() != QLatin1String("00000000-0000-0000-0000-000000000000"))
        return std::nullopt;
    return id;
}
}
