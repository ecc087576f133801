#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QUuid>
#include <optional>

// One automatic-switch rule of a Space. Hours are hours since midnight
// (9.5 = 09:30), the end exclusive; weekdays count 1 = Monday ... 7 = Sunday.
struct SpaceTrigger {
    enum class Kind { timeOfDay, daysOfWeek, focusMode };
    Kind kind = Kind::timeOfDay;
    std::optional<double> startHour;
    std::optional<double> endHour;
    std::optional<QList<int>> weekdays;

    static QString kindName(Kind kind);
    static std::optional<Kind> kindFromName(const QString &name);

    // Whether the rule holds at hour `now` (hours since midnight) on rule
    // weekday `weekday`. focusMode never holds: nothing tells us the focus.
    bool matches(double now, int weekday) const;

    QJsonObject toJson() const;
    static std::optional<SpaceTrigger> fromJson(const QJsonObject &json, QString *error = nullptr);
    bool operator==(const SpaceTrigger &) const = default;
};

struct SpecialSpaceOptions {
    bool music = false;
    bool decorations = false;
    bool ambientEffects = false;
    QJsonObject toJson() const;
    static SpecialSpaceOptions fromJson(const QJsonObject &json);
    bool operator==(const SpecialSpaceOptions &) const = default;
};

// One Space: a complete layout profile with its own settings suite.
struct SpaceItem {
    QUuid id;
    QString name;
    QString emoji;
    QString iconBackgroundColor;
    std::optional<qint64> hotKeyKeyCode;
    std::optional<quint64> hotKeyModifiers;
    bool autoSwitchEnabled = false;
    QList<SpaceTrigger> triggers;
    QUuid snapshotId;
    QDateTime createdAt;
    std::optional<QString> specialSpaceKind;
    std::optional<SpecialSpaceOptions> specialOptions;
    bool isCurrent = false;

    bool hasHotKey() const { return hotKeyKeyCode.has_value() && hotKeyModifiers.has_value(); }

    QJsonObject toJson() const;
    static std::optional<SpaceItem> fromJson(const QJsonObject &json, QString *error = nullptr);
    bool operator==(const SpaceItem &) const = default;
};
