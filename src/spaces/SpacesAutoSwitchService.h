#pragma once

#include "spaces/SpaceItem.h"

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <functional>
#include <memory>

class UserDefaultsStoreType;

// Picks a Space by its time and weekday rules every half minute. A Space the
// user left by hand is not forced back the same day until a later time range
// of it begins. Main thread only.
class SpacesAutoSwitchService : public QObject {
    Q_OBJECT
public:
    static constexpr const char *kSuppressKey = "Spaces_SuppressAutoSwitchUntilUserSelectsSpace";
    static constexpr int kIntervalMs = 30000;

    using SpacesProvider = std::function<QList<SpaceItem>()>;
    using OnSwitch = std::function<void(const SpaceItem &)>;
    using Now = std::function<QDateTime()>;

    explicit SpacesAutoSwitchService(std::shared_ptr<UserDefaultsStoreType> standardStore, Now now = {},
                                     QObject *parent = nullptr);

    void start(SpacesProvider spacesProvider, OnSwitch onSwitch);
    void stop();
    bool isRunning() const { return m_timer.isActive(); }
    // The user picked a Space by hand, leaving `left`.
    void noteManualSelection(const QUuid &left);

    // One check, as the timer does it.
    void evaluate();
    // The Space the rules pick at `at`, without switching or remembering
    // anything; for dry runs.
    std::optional<SpaceItem> pick(const QList<SpaceItem> &spaces, const QDateTime &at) const;

    // Rule weekday of a date: 1 = Monday ... 7 = Sunday.
    static int ruleWeekday(const QDate &date);

private:
    struct Record {
        QString day;
        double startHour = 0;
    };
    struct Choice {
        SpaceItem space;
        double startHour = 0;
    };
    std::optional<Choice> choose(const QList<SpaceItem> &spaces, const QDateTime &at,
                                 QSet<QUuid> *suppressed) const;
    void rollOver(const QDate &today);

    std::shared_ptr<UserDefaultsStoreType> m_store;
    Now m_now;
    QTimer m_timer;
    SpacesProvider m_spacesProvider;
    OnSwitch m_onSwitch;
    QString m_lastDayString;
    QHash<QUuid, Record> m_autoSwitchRecord;
    QSet<QUuid> m_suppressedSpaceIdsToday;
};
