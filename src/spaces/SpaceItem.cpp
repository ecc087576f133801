#include "spaces/SpaceItem.h"

#include "foundation/JsonFields.h"
#include "foundation/Uuids.h"

#include <QJsonArray>
#include <cmath>

namespace {

std::optional<double> optionalHour(const QJsonObject &json, const char *key, QString *error)
{
    const QJsonValue v = json.value(QLatin1String(key));
    if (v.isUndefined() || v.isNull())
        return std::nullopt;
    if (!v.isDouble() || !std::isfinite(v.toDouble())) {
        if (error && error->isEmpty())
            *error = QStringLiteral("key \"%1\": expected a number").arg(QLatin1String(key));
        return std::nullopt;
    }
    return v.toDouble();
}

bool timeHolds(double start, double end, double now)
{
    // A range whose start is after its end runs across midnight.
    return start <= end ? (start <= now && now < end) : (now >= start || now < end);
}

}

QString SpaceTrigger::kindName(Kind kind)
{
    switch (kind) {
    case Kind::timeOfDay: return QStringLiteral("timeOfDay");
    case Kind::daysOfWeek: return QStringLiteral("daysOfWeek");
    case Kind::focusMode: return QStringLiteral("focusMode");
    }
    return {};
}

std::optional<SpaceTrigger::Kind> SpaceTrigger::kindFromName(const QString &name)
{
    for (Kind k : {Kind::timeOfDay, Kind::daysOfWeek, Kind::focusMode})
        if (kindName(k) == name)
            return k;
    return std::nullopt;
}

bool SpaceTrigger::matches(double now, int weekday) const
{
    switch (kind) {
    case Kind::timeOfDay: return startHour && endHour && timeHolds(*startHour, *endHour, now);
    case Kind::daysOfWeek:
        if (!weekdays || !weekdays->contains(weekday))
            return false;
        return !startHour || !endHour || timeHolds(*startHour, *endHour, now);
    case Kind::focusMode: return false;
    }
    return false;
}

QJsonObject SpaceTrigger::toJson() const
{
    QJsonObject json{{"kind", kindName(kind)}};
    if (startHour)
        json.insert(QLatin1String("startHour"), *startHour);
    if (endHour)
        json.insert(QLatin1String("endHour"), *endHour);
    if (weekdays) {
        QJsonArray days;
        for (int d : *weekdays)
            days.append(d);
        json.insert(QLatin1String("weekdays"), days);
    }
    return json;
}

std::optional<SpaceTrigger> SpaceTrigger::fromJson(const QJsonObject &json, QString *error)
{
    QString failure;
    SpaceTrigger trigger;
    const auto kind = kindFromName(json.value(QLatin1String("kind")).toString());
    if (!kind)
        failure = QStringLiteral("key \"kind\": expected timeOfDay, daysOfWeek or focusMode");
    else
        trigger.kind = *kind;
    trigger.startHour = optionalHour(json, "startHour", &failure);
    trigger.endHour = optionalHour(json, "endHour", &failure);
    const QJsonValue days = json.value(QLatin1String("weekdays"));
    if (days.isArray()) {
        QList<int> list;
        for (const QJsonValue &d : days.toArray()) {
            if (!d.isDouble() || d.toDouble() != std::floor(d.toDouble()) || d.toInt() < 1 || d.toInt() > 7) {
                failure = QStringLiteral("key \"weekdays\": expected days 1 ... 7");
                break;
            }
            if (!list.contains(d.toInt()))
                list.append(d.toInt());
        }
        trigger.weekdays = list;
    } else if (!days.isUndefined() && !days.isNull()) {
        failure = QStringLiteral("key \"weekdays\": expected a list");
    }
    if (!failure.isEmpty()) {
        if (error)
            *error = failure;
        return std::nullopt;
    }
    return trigger;
}

QJsonObject SpaceItem::toJson() const
{
    QJsonArray triggerList;
    for (const SpaceTrigger &t : triggers)
        triggerList.append(t.toJson());
    QJsonObject json{{"id", Uuids::toText(id)},
                     {"name", name},
                     {"emoji", emoji},
                     {"iconBackgroundColor", iconBackgroundColor},
                     {"autoSwitchEnabled", autoSwitchEnabled},
                     {"triggers", triggerList},
                     {"snapshotId", Uuids::toText(snapshotId)},
                     {"createdAt", createdAt.toUTC().toString(Qt::ISODate)},
                     {"isCurrent", isCurrent}};
    if (hotKeyKeyCode)
        json.insert(QLatin1String("hotKeyKeyCode"), *hotKeyKeyCode);
    if (hotKeyModifiers)
        json.insert(QLatin1String("hotKeyModifiers"), qint64(*hotKeyModifiers));
    if (specialSpaceKind)
        json.insert(QLatin1String("specialSpaceKind"), *specialSpaceKind);
    if (specialOptions)
        json.insert(QLatin1String("specialOptions"), specialOptions->toJson());
    return json;
}

QJsonObject SpecialSpaceOptions::toJson() const
{
    return {{"music", music}, {"decorations", decorations}, {"ambientEffects", ambientEffects}};
}

SpecialSpaceOptions SpecialSpaceOptions::fromJson(const QJsonObject &o)
{
    return {o.value(QLatin1String("music")).toBool(), o.value(QLatin1String("decorations")).toBool(),
            o.value(QLatin1String("ambientEffects")).toBool()};
}

std::optional<SpaceItem> SpaceItem::fromJson(const QJsonObject &json, QString *error)
{
    JsonFields f(json);
    SpaceItem item;
    item.id = f.uuid("id");
    item.name = f.string("name");
    item.emoji = f.optionalString("emoji");
    item.iconBackgroundColor = f.optionalString("iconBackgroundColor");
    item.autoSwitchEnabled = f.optionalBool("autoSwitchEnabled", false);
    item.snapshotId = json.contains(QLatin1String("snapshotId")) ? f.uuid("snapshotId") : item.id;
    item.isCurrent = f.optionalBool("isCurrent", false);
    item.createdAt = QDateTime::fromString(json.value(QLatin1String("createdAt")).toString(), Qt::ISODate);
    const QJsonValue code = json.value(QLatin1String("hotKeyKeyCode"));
    const QJsonValue modifiers = json.value(QLatin1String("hotKeyModifiers"));
    // A key code outside 32 bits or negative modifiers cannot be a shortcut;
    // the Space keeps everything else.
    if (code.isDouble() && code.toDouble() >= 0 && code.toDouble() <= 4294967295.0)
        item.hotKeyKeyCode = qint64(code.toDouble());
    if (modifiers.isDouble() && modifiers.toDouble() >= 0)
        item.hotKeyModifiers = quint64(modifiers.toDouble());
    if (json.value(QLatin1String("specialSpaceKind")).isString())
        item.specialSpaceKind = json.value(QLatin1String("specialSpaceKind")).toString();
    if (json.value(QLatin1String("specialOptions")).isObject())
        item.specialOptions = SpecialSpaceOptions::fromJson(json.value(QLatin1String("specialOptions")).toObject());
    for (const QJsonValue &t : json.value(QLatin1String("triggers")).toArray()) {
        QString triggerError;
        const auto trigger = t.isObject() ? SpaceTrigger::fromJson(t.toObject(), &triggerError) : std::nullopt;
        if (!trigger) {
            if (error)
                *error = QStringLiteral("key \"triggers\": %1").arg(triggerError.isEmpty() ? QStringLiteral("expected an object") : triggerError);
            return std::nullopt;
        }
        item.triggers.append(*trigger);
    }
    return f.result(item, error);
}
