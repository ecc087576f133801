#include "spaces/SpaceEditViewModel.h"

#include "spaces/SpaceTexts.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

SpaceEditViewModel::SpaceEditViewModel(QObject *parent) : QObject(parent) {}

std::optional<double> SpaceEditViewModel::parseTime(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,2}):(\\d{2})$"));
    const auto match = pattern.match(text.trimmed());
    if (!match.hasMatch())
        return std::nullopt;
    const int hours = match.captured(1).toInt();
    const int minutes = match.captured(2).toInt();
    if (minutes > 59 || hours > 24 || (hours == 24 && minutes != 0))
        return std::nullopt;
    return hours + minutes / 60.0;
}

QString SpaceEditViewModel::formatTime(double hours)
{
    const int total = int(std::lround(std::clamp(hours, 0.0, 24.0) * 60));
    return QString::asprintf("%02d:%02d", total / 60, total % 60);
}

QString SpaceEditViewModel::rangeError(const QString &startText, const QString &endText)
{
    const auto start = parseTime(startText);
    if (!start)
        return QLatin1String(SpaceTexts::kInvalidStartTime);
    const auto end = parseTime(endText);
    if (!end)
        return QLatin1String(SpaceTexts::kInvalidEndTime);
    if (*end <= *start)
        return QLatin1String(SpaceTexts::kStartAfterEnd);
    return {};
}

void SpaceEditViewModel::load(const SpaceItem &space)
{
    m_space = space;
    m_rows.clear();
    for (const SpaceTrigger &t : space.triggers) {
        Row row;
        row.kind = t.kind;
        row.hasTime = t.startHour && t.endHour;
        row.startText = formatTime(t.startHour.value_or(9));
        row.endText = formatTime(t.endHour.value_or(17));
        row.weekdays = t.weekdays.value_or(QList<int>());
        m_rows.append(row);
    }
    m_errorKey.clear();
    Q_EMIT changed();
}

SpaceItem SpaceEditViewModel::edited() const
{
    SpaceItem space = m_space;
    space.triggers.clear();
    for (const Row &row : m_rows) {
        SpaceTrigger t;
        t.kind = row.kind;
        if (row.hasTime || row.kind == SpaceTrigger::Kind::timeOfDay) {
            t.startHour = parseTime(row.startText);
            t.endHour = parseTime(row.endText);
        }
        if (row.kind == SpaceTrigger::Kind::daysOfWeek) {
            QList<int> days = row.weekdays;
            std::sort(days.begin(), days.end());
            t.weekdays = days;
        }
        space.triggers.append(t);
    }
    return space;
}

void SpaceEditViewModel::setName(const QString &name)
{
    m_space.name = name;
    Q_EMIT changed();
}

void SpaceEditViewModel::setEmoji(const QString &emoji)
{
    m_space.emoji = emoji;
    Q_EMIT changed();
}

void SpaceEditViewModel::setIconBackgroundColor(const QString &color)
{
    m_space.iconBackgroundColor = color;
    Q_EMIT changed();
}

void SpaceEditViewModel::setAutoSwitchEnabled(bool enabled)
{
    m_space.autoSwitchEnabled = enabled;
    Q_EMIT changed();
}

QVariantList SpaceEditViewModel::triggers() const
{
    QVariantList list;
    for (const Row &row : m_rows) {
        QVariantList days;
        for (int d : row.weekdays)
            days.append(d);
        list.append(QVariantMap{{"kind", SpaceTrigger::kindName(row.kind)},
                                {"startText", row.startText},
                                {"endText", row.endText},
                                {"hasTime", row.hasTime || row.kind == SpaceTrigger::Kind::timeOfDay},
                                {"weekdays", days}});
    }
    return list;
}

void SpaceEditViewModel::setHotKey(qint64 keyCode, quint64 modifiers)
{
    m_space.hotKeyKeyCode = keyCode;
    m_space.hotKeyModifiers = modifiers;
    Q_EMIT changed();
}

void SpaceEditViewModel::clearHotKey()
{
    m_space.hotKeyKeyCode.reset();
    m_space.hotKeyModifiers.reset();
    Q_EMIT changed();
}

void SpaceEditViewModel::addTimeRange()
{
    m_rows.append(Row{SpaceTrigger::Kind::timeOfDay, QStringLiteral("09:00"), QStringLiteral("17:00"), true, {}});
    Q_EMIT changed();
}

void SpaceEditViewModel::addDays()
{
    m_rows.append(Row{SpaceTrigger::Kind::daysOfWeek, QStringLiteral("09:00"), QStringLiteral("17:00"), false,
                      {1, 2, 3, 4, 5}});
    Q_EMIT changed();
}

void SpaceEditViewModel::addFocus()
{
    m_rows.append(Row{SpaceTrigger::Kind::focusMode, QStringLiteral("09:00"), QStringLiteral("17:00"), false, {}});
    Q_EMIT changed();
}

void SpaceEditViewModel::removeTrigger(int index)
{
    if (!valid(index))
        return;
    m_rows.removeAt(index);
    Q_EMIT changed();
}

void SpaceEditViewModel::setStartText(int index, const QString &text)
{
    if (!valid(index))
        return;
    Row &row = m_rows[index];
    row.startText = text;
    const auto start = parseTime(text);
    const auto end = parseTime(row.endText);
    if (start && end && *end <= *start)
        row.endText = formatTime(std::min(*start + 1, 24.0));
    Q_EMIT changed();
}

void SpaceEditViewModel::setEndText(int index, const QString &text)
{
    if (!valid(index))
        return;
    m_rows[index].endText = text;
    Q_EMIT changed();
}

void SpaceEditViewModel::setTimed(int index, bool timed)
{
    if (!valid(index))
        return;
    m_rows[index].hasTime = timed;
    Q_EMIT changed();
}

void SpaceEditViewModel::toggleWeekday(int index, int weekday)
{
    if (!valid(index) || weekday < 1 || weekday > 7)
        return;
    QList<int> &days = m_rows[index].weekdays;
    if (!days.removeOne(weekday))
        days.append(weekday);
    Q_EMIT changed();
}

void SpaceEditViewModel::setWeekdays(int index, const QList<int> &weekdays)
{
    if (!valid(index))
        return;
    m_rows[index].weekdays.clear();
    for (int day : weekdays)
        if (day >= 1 && day <= 7 && !m_rows[index].weekdays.contains(day))
            m_rows[index].weekdays.append(day);
    Q_EMIT changed();
}

bool SpaceEditViewModel::validate()
{
    m_errorKey.clear();
    for (const Row &row : m_rows) {
        if (!row.hasTime && row.kind != SpaceTrigger::Kind::timeOfDay)
            continue;
        m_errorKey = rangeError(row.startText, row.endText);
        if (!m_errorKey.isEmpty())
            break;
    }
    Q_EMIT changed();
    return m_errorKey.isEmpty();
}
