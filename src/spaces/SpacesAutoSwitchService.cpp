#include "spaces/SpacesAutoSwitchService.h"

#include "storage/UserDefaultsStoreType.h"

namespace {

QString dayString(const QDate &date)
{
    return QString::asprintf("%04d%02d%02d", date.year(), date.month(), date.day());
}

}

SpacesAutoSwitchService::SpacesAutoSwitchService(std::shared_ptr<UserDefaultsStoreType> standardStore, Now now,
                                                 QObject *parent)
    : QObject(parent)
    , m_store(std::move(standardStore))
    , m_now(now ? std::move(now) : Now([] { return QDateTime::currentDateTime(); }))
{
    m_timer.setInterval(kIntervalMs);
    // Half a minute either way does not matter; a coarse timer saves wake-ups.
    m_timer.setTimerType(Qt::CoarseTimer);
    connect(&m_timer, &QTimer::timeout, this, &SpacesAutoSwitchService::evaluate);
}

void SpacesAutoSwitchService::start(SpacesProvider spacesProvider, OnSwitch onSwitch)
{
    m_spacesProvider = std::move(spacesProvider);
    m_onSwitch = std::move(onSwitch);
    m_timer.start();
}

void SpacesAutoSwitchService::stop()
{
    m_timer.stop();
}

int SpacesAutoSwitchService::ruleWeekday(const QDate &date)
{
    return date.dayOfWeek(); // Qt counts 1 = Monday ... 7 = Sunday already
}

void SpacesAutoSwitchService::rollOver(const QDate &today)
{
    const QString day = dayString(today);
    if (day == m_lastDayString)
        return;
    m_lastDayString = day;
    m_autoSwitchRecord.clear();
    m_suppressedSpaceIdsToday.clear();
}

void SpacesAutoSwitchService::noteManualSelection(const QUuid &left)
{
    rollOver(m_now().date());
    const auto it = m_autoSwitchRecord.constFind(left);
    if (it != m_autoSwitchRecord.cend() && it->day == m_lastDayString)
        m_suppressedSpaceIdsToday.insert(left);
}

std::optional<SpacesAutoSwitchService::Choice>
SpacesAutoSwitchService::choose(const QList<SpaceItem> &spaces, const QDateTime &at, QSet<QUuid> *suppressed) const
{
    const QTime time = at.time();
    const double now = time.hour() + time.minute() / 60.0;
    const int weekday = ruleWeekday(at.date());
    for (const SpaceItem &space : spaces) {
        if (!space.autoSwitchEnabled || space.triggers.isEmpty())
            continue;
        for (const SpaceTrigger &trigger : space.triggers) {
            if (!trigger.matches(now, weekday))
                continue;
            if (suppressed->contains(space.id)) {
                const double recorded = m_autoSwitchRecord.value(space.id).startHour;
                // Only a later time range of the Space brings it back today.
                if (!trigger.startHour || !(recorded < *trigger.startHour))
                    continue;
                suppressed->remove(space.id);
            }
            return Choice{space, trigger.startHour.value_or(0)};
        }
    }
    return std::nullopt;
}

std::optional<SpaceItem> SpacesAutoSwitchService::pick(const QList<SpaceItem> &spaces, const QDateTime &at) const
{
    if (m_store->boolValue(QLatin1String(kSuppressKey)))
        return std::nullopt;
    QSet<QUuid> suppressed;
    const auto choice = choose(spaces, at, &suppressed);
    return choice ? std::optional(choice->space) : std::nullopt;
}

void SpacesAutoSwitchService::evaluate()
{
    if (m_store->boolValue(QLatin1String(kSuppressKey)) || !m_spacesProvider || !m_onSwitch)
        return;
    const QDateTime at = m_now();
    rollOver(at.date());
    const auto choice = choose(m_spacesProvider(), at, &m_suppressedSpaceIdsToday);
    if (!choice)
        return;
    m_onSwitch(choice->space);
    m_autoSwitchRecord.insert(choice->space.id, Record{m_lastDayString, choice->startHour});
}
