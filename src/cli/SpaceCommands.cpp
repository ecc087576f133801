#include "cli/SpaceCommands.h"

#include "cli/Verbs.h"
#include "foundation/Uuids.h"
#include "input/ShortcutNames.h"
#include "spaces/SpaceEditViewModel.h"
#include "spaces/SpaceTexts.h"
#include "spaces/SpacesAutoSwitchService.h"
#include "spaces/SpacesViewModel.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace SpaceCommands {

// A Space by id or by its exact name; a name two Spaces share is refused.
std::optional<SpaceItem> findSpace(const SpacesViewModel &spaces, const QString &text, QString *error)
{
    if (const auto id = Uuids::fromText(text)) {
        if (const auto space = spaces.space(*id))
            return space;
    }
    std::optional<SpaceItem> found;
    for (const SpaceItem &s : spaces.spaceItems()) {
        if (s.name != text)
            continue;
        if (found) {
            *error = QStringLiteral("two Spaces are named '%1'; use the id").arg(text);
            return std::nullopt;
        }
        found = s;
    }
    if (!found)
        *error = QStringLiteral("no Space '%1'; see 'tillmora space list'").arg(text);
    return found;
}

namespace {

const QLatin1String kStandard("standard");

bool validColor(const QString &hex)
{
    static const QRegularExpression pattern(QStringLiteral("^#([0-9A-Fa-f]{3}|[0-9A-Fa-f]{6}|[0-9A-Fa-f]{8})$"));
    return pattern.match(hex).hasMatch();
}

CommandResult list(const QStringList &args, const SpacesViewModel &spaces)
{
    if (args.size() > 1 || (args.size() == 1 && args.first() != QLatin1String("--json")))
        return CommandResult::usage(QStringLiteral("expected 'space list [--json]'"));
    const auto active = spaces.activeSpaceId();
    if (!args.isEmpty()) {
        QJsonArray items;
        for (const SpaceItem &s : spaces.spaceItems())
            items.append(s.toJson());
        const QJsonObject json{{"spaces", items},
                               {"activeSpaceId", active ? QJsonValue(Uuids::toText(*active)) : QJsonValue()}};
        return CommandResult::ok(QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Indented)));
    }
    QString out = QStringLiteral("%1\tstandard\t\tStandard\n").arg(active ? QString() : QStringLiteral("*"));
    for (const SpaceItem &s : spaces.spaceItems())
        out += QStringLiteral("%1\t%2\t%3\t%4\n")
                   .arg(active == s.id ? QStringLiteral("*") : QString(), Uuids::toText(s.id), s.emoji, s.name);
    return CommandResult::ok(out);
}

CommandResult create(const QStringList &args, SpacesViewModel &spaces)
{
    QString name, emoji = QStringLiteral("✨"), color = QStringLiteral("#5B7FFF");
    bool defaultLayout = false;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString &a = args.at(i);
        if ((a == QLatin1String("--emoji") || a == QLatin1String("--color")) && i + 1 < args.size()) {
            (a == QLatin1String("--emoji") ? emoji : color) = args.at(++i);
        } else if (a == QLatin1String("--default-layout")) {
            defaultLayout = true;
        } else if (!a.startsWith(QLatin1String("--")) && name.isNull()) {
            name = a;
        } else {
            return CommandResult::usage(Verbs::expected("space"));
        }
    }
    if (name.trimmed().isEmpty())
        return CommandResult::usage(QStringLiteral("a Space needs a name"));
    if (!validColor(color))
        return CommandResult::usage(QStringLiteral("'%1' is not a colour; use #RRGGBB").arg(color));
    const SpaceItem space = spaces.createSpace(name.trimmed(), emoji, color, !defaultLayout);
    return CommandResult::ok(Uuids::toText(space.id) + u'\n');
}

CommandResult switchSpace(const QStringList &args, SpacesViewModel &spaces)
{
    if (args.size() != 1)
        return CommandResult::usage(QStringLiteral("expected 'space switch ID|NAME|standard'"));
    if (args.first() == kStandard) {
        spaces.switchTo(std::nullopt, true);
        return CommandResult::ok();
    }
    QString error;
    const auto space = findSpace(spaces, args.first(), &error);
    if (!space)
        return CommandResult::usage(error);
    spaces.switchTo(space->id, true);
    return CommandResult::ok();
}

const char *const kDayNames[7] = {"mon", "tue", "wed", "thu", "fri", "sat", "sun"};

// "HH:mm-HH:mm" into the editor's row; the message id when it is wrong.
QString readRange(const QString &text, QString *start, QString *end)
{
    const qsizetype dash = text.indexOf(u'-');
    *start = dash < 0 ? text : text.left(dash);
    *end = dash < 0 ? QString() : text.mid(dash + 1);
    return SpaceEditViewModel::rangeError(*start, *end);
}

// Adds one --trigger to the editor; args[*i] is the first word of its rule.
// Returns the error to print, empty when it was taken.
QString addTrigger(const QStringList &args, qsizetype *i, SpaceEditViewModel &edit)
{
    QStringList words = args.at(*i).split(u' ', Qt::SkipEmptyParts);
    // The rule may come as one argument ("time 09:00-17:00") or as several.
    const auto more = [&] { return *i + 1 < args.size() && !args.at(*i + 1).startsWith(QLatin1String("--")); };
    if (words.size() == 1 && (words.first() == QLatin1String("time") || words.first() == QLatin1String("days")) && more()) {
        words.append(args.at(++*i));
        if (words.first() == QLatin1String("days") && more() && args.at(*i + 1).contains(u':'))
            words.append(args.at(++*i));
    }
    const QString kind = words.value(0);
    const int row = int(edit.triggers().size());
    QString start, end;
    if (kind == QLatin1String("focus") && words.size() == 1) {
        edit.addFocus();
        return {};
    }
    if (kind == QLatin1String("time") && words.size() == 2) {
        if (const QString error = readRange(words.at(1), &start, &end); !error.isEmpty())
            return SpaceTexts::text(error.toLatin1().constData());
        edit.addTimeRange();
        edit.setEndText(row, end);
        edit.setStartText(row, start);
        return {};
    }
    if (kind == QLatin1String("days") && (words.size() == 2 || words.size() == 3)) {
        QList<int> days;
        for (const QString &day : words.at(1).toLower().split(u',', Qt::SkipEmptyParts)) {
            const auto *it = std::find_if(std::begin(kDayNames), std::end(kDayNames),
                                          [&](const char *n) { return day == QLatin1String(n); });
            if (it == std::end(kDayNames))
                return QStringLiteral("unknown weekday '%1'; use mon, tue, wed, thu, fri, sat or sun").arg(day);
            days.append(int(it - std::begin(kDayNames)) + 1);
        }
        if (days.isEmpty())
            return QStringLiteral("'days' needs at least one weekday");
        if (words.size() == 3) {
            if (const QString error = readRange(words.at(2), &start, &end); !error.isEmpty())
                return SpaceTexts::text(error.toLatin1().constData());
        }
        edit.addDays();
        edit.setWeekdays(row, days);
        if (words.size() == 3) {
            edit.setTimed(row, true);
            edit.setEndText(row, end);
            edit.setStartText(row, start);
        }
        return {};
    }
    return QStringLiteral("a trigger is 'time HH:mm-HH:mm', 'days mon,tue,...', 'days mon,fri HH:mm-HH:mm' or 'focus'");
}

CommandResult edit(const QStringList &args, SpacesViewModel &spaces)
{
    if (args.isEmpty())
        return CommandResult::usage(Verbs::expected("space"));
    QString error;
    const auto space = findSpace(spaces, args.first(), &error);
    if (!space)
        return CommandResult::usage(error);
    SpaceEditViewModel edit;
    edit.load(*space);
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString &a = args.at(i);
        const bool hasValue = i + 1 < args.size();
        if (a == QLatin1String("--clear-triggers")) {
            while (!edit.triggers().isEmpty())
                edit.removeTrigger(0);
            continue;
        }
        if (!hasValue)
            return CommandResult::usage(Verbs::expected("space"));
        const QString value = args.at(++i);
        if (a == QLatin1String("--name")) {
            if (value.trimmed().isEmpty())
                return CommandResult::usage(QStringLiteral("a Space needs a name"));
            edit.setName(value.trimmed());
        } else if (a == QLatin1String("--emoji")) {
            edit.setEmoji(value);
        } else if (a == QLatin1String("--color")) {
            if (!validColor(value))
                return CommandResult::usage(QStringLiteral("'%1' is not a colour; use #RRGGBB").arg(value));
            edit.setIconBackgroundColor(value);
        } else if (a == QLatin1String("--hotkey")) {
            if (value == QLatin1String("none")) {
                edit.clearHotKey();
            } else if (const auto combo = ShortcutNames::parse(value);
                       combo && (combo->modifierFlags != 0 || ShortcutNames::standsAlone(combo->keyCode))) {
                edit.setHotKey(combo->keyCode, combo->modifierFlags);
            } else {
                return CommandResult::usage(
                    QStringLiteral("'%1' is not a shortcut; write it like ctrl+super+1").arg(value));
            }
        } else if (a == QLatin1String("--auto-switch")) {
            if (value != QLatin1String("on") && value != QLatin1String("off"))
                return CommandResult::usage(QStringLiteral("--auto-switch takes on or off"));
            edit.setAutoSwitchEnabled(value == QLatin1String("on"));
        } else if (a == QLatin1String("--trigger")) {
            if (const QString problem = addTrigger(args, &i, edit); !problem.isEmpty())
                return CommandResult::usage(problem);
        } else {
            return CommandResult::usage(Verbs::expected("space"));
        }
    }
    if (!edit.validate())
        return CommandResult::usage(SpaceTexts::text(edit.errorKey().toLatin1().constData()));
    QString errorKey;
    if (!spaces.updateSpace(edit.edited(), &errorKey))
        return CommandResult::usage(SpaceTexts::text(errorKey.toLatin1().constData()));
    return CommandResult::ok();
}

CommandResult remove(const QStringList &args, SpacesViewModel &spaces)
{
    if (args.size() != 1)
        return CommandResult::usage(QStringLiteral("expected 'space delete ID'"));
    QString error;
    const auto space = findSpace(spaces, args.first(), &error);
    if (!space)
        return CommandResult::usage(error);
    if (!spaces.deleteSpace(space->id, &error))
        return CommandResult::failure(QStringLiteral("the Space is deleted but not all its files are: %1").arg(error));
    return CommandResult::ok();
}

CommandResult autoSwitch(const QStringList &args, SpacesViewModel &spaces, const std::shared_ptr<UserDefaultsStoreType> &standard)
{
    QString at;
    bool json = false;
    for (qsizetype i = 0; i < args.size(); ++i) {
        if (args.at(i) == QLatin1String("--at") && i + 1 < args.size())
            at = args.at(++i);
        else if (args.at(i) == QLatin1String("--json"))
            json = true;
        else
            return CommandResult::usage(QStringLiteral("expected 'space auto-switch --at ISO-LOCAL-DATETIME [--json]'"));
    }
    const QDateTime when = QDateTime::fromString(at, Qt::ISODate);
    if (at.isEmpty() || !when.isValid())
        return CommandResult::usage(QStringLiteral("--at takes a local date and time such as 2026-11-23T09:30"));
    const SpacesAutoSwitchService service(standard);
    const auto picked = service.pick(spaces.spaceItems(), when);
    if (json)
        return CommandResult::ok(QString::fromUtf8(
            QJsonDocument(QJsonObject{{"spaceId", picked ? QJsonValue(Uuids::toText(picked->id)) : QJsonValue()},
                                      {"name", picked ? QJsonValue(picked->name) : QJsonValue()}})
                .toJson(QJsonDocument::Compact)) + u'\n');
    return CommandResult::ok((picked ? Uuids::toText(picked->id) : QStringLiteral("none")) + u'\n');
}

}

bool readsOnly(const QStringList &args)
{
    const QString sub = args.value(0);
    return sub == QLatin1String("list") || sub == QLatin1String("auto-switch");
}

CommandResult run(const QStringList &args, SpacesViewModel &spaces)
{
    const QString sub = args.value(0);
    const QStringList rest = args.mid(1);
    if (sub == QLatin1String("list"))
        return list(rest, spaces);
    if (sub == QLatin1String("create"))
        return create(rest, spaces);
    if (sub == QLatin1String("switch"))
        return switchSpace(rest, spaces);
    if (sub == QLatin1String("edit"))
        return edit(rest, spaces);
    if (sub == QLatin1String("delete"))
        return remove(rest, spaces);
    if (sub == QLatin1String("auto-switch"))
        return autoSwitch(rest, spaces, spaces.standardStore());
    return CommandResult::usage(Verbs::expected("space"));
}

}
