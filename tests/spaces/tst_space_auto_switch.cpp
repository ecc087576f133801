// The automatic switch on a fake clock, and the editor's time checks.
#include "spaces/SpaceEditViewModel.h"
#include "spaces/SpaceTexts.h"
#include "spaces/SpacesAutoSwitchService.h"
#include "storage/UserDefaultsStore.h"
#include "common/TempEnvironment.h"

#include <QTest>

namespace {

SpaceTrigger range(double start, double end)
{
    return SpaceTrigger{SpaceTrigger::Kind::timeOfDay, start, end, std::nullopt};
}

SpaceTrigger days(QList<int> weekdays, std::optional<double> start = {}, std::optional<double> end = {})
{
    return SpaceTrigger{SpaceTrigger::Kind::daysOfWeek, start, end, weekdays};
}

SpaceItem space(const char *name, QList<SpaceTrigger> triggers)
{
    SpaceItem s;
    s.id = QUuid::createUuid();
    s.name = QLatin1String(name);
    s.autoSwitchEnabled = true;
    s.triggers = triggers;
    return s;
}

// 2026-11-23 is a Monday.
QDateTime at(int day, int hour, int minute = 0)
{
    return QDateTime(QDate(2026, 11, day), QTime(hour, minute));
}

}

class SpaceAutoSwitchTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TempEnvironment> env;
    std::shared_ptr<UserDefaultsStore> store;
    QDateTime now;
    QList<SpaceItem> spaces;
    QStringList switched;
    std::unique_ptr<SpacesAutoSwitchService> service;

private Q_SLOTS:
    void init()
    {
        env = std::make_unique<TempEnvironment>();
        store = UserDefaultsStore::standard(env->configDir());
        switched.clear();
        service = std::make_unique<SpacesAutoSwitchService>(store, [this] { return now; });
        service->start([this] { return spaces; }, [this](const SpaceItem &s) { switched.append(s.name); });
    }

    void rulesMatchByTimeAndWeekday()
    {
        const SpaceTrigger night = range(22, 6);
        QVERIFY(night.matches(23.5, 1));
        QVERIFY(night.matches(5 + 59 / 60.0, 1));
        QVERIFY(!night.matches(6, 1));
        QVERIFY(!night.matches(12, 1));

        const SpaceTrigger weekend = days({6, 7});
        QVERIFY(weekend.matches(0, 7) && weekend.matches(23.9, 6));
        QVERIFY(!weekend.matches(12, 1));
        const SpaceTrigger mornings = days({1}, 9, 12);
        QVERIFY(mornings.matches(9, 1) && !mornings.matches(12, 1) && !mornings.matches(10, 2));
        const SpaceTrigger focus{SpaceTrigger::Kind::focusMode, 0, 24, std::nullopt};
        QVERIFY(!focus.matches(12, 1));

        QCOMPARE(SpacesAutoSwitchService::ruleWeekday(QDate(2026, 11, 22)), 7); // Sunday
        QCOMPARE(SpacesAutoSwitchService::ruleWeekday(QDate(2026, 11, 23)), 1); // Monday
    }

    void theFirstMatchingSpaceWins()
    {
        spaces = {space("Off", {range(0, 24)}), space("Work", {range(9, 17)}), space("Late", {range(9, 18)})};
        spaces[0].autoSwitchEnabled = false;
        now = at(23, 10);
        service->evaluate();
        QCOMPARE(switched, QStringList{"Work"});
        now = at(23, 17, 30);
        service->evaluate();
        QCOMPARE(switched, (QStringList{"Work", "Late"}));
        now = at(23, 19);
        service->evaluate();
        QCOMPARE(switched.size(), 2);
    }

    void aSpaceLeftByHandStaysLeftUntilItsNextRange()
    {
        spaces = {space("Work", {range(9, 12), range(13, 17)})};
        now = at(23, 9, 30);
        service->evaluate();
        QCOMPARE(switched, QStringList{"Work"});

        service->noteManualSelection(spaces[0].id);
        now = at(23, 11);
        service->evaluate();
        QCOMPARE(switched.size(), 1); // the morning rule does not force it back

        now = at(23, 13, 30);
        service->evaluate();
        QCOMPARE(switched.size(), 2); // the afternoon range has begun

        // A new day forgets what was left.
        service->noteManualSelection(spaces[0].id);
        now = at(24, 9, 30);
        service->evaluate();
        QCOMPARE(switched.size(), 3);
    }

    void theSuppressKeyStopsEveryRule()
    {
        spaces = {space("Always", {range(0, 24)})};
        store->set(true, QLatin1String(SpacesAutoSwitchService::kSuppressKey));
        now = at(23, 10);
        service->evaluate();
        QVERIFY(switched.isEmpty());
        QVERIFY(!service->pick(spaces, now));
        store->removeObject(QLatin1String(SpacesAutoSwitchService::kSuppressKey));
        QCOMPARE(service->pick(spaces, now)->name, QStringLiteral("Always"));
    }

    void timeRangesAreCheckedInOrder()
    {
        using E = SpaceEditViewModel;
        QCOMPARE(E::rangeError("9:60", "25:00"), QLatin1String(SpaceTexts::kInvalidStartTime));
        QCOMPARE(E::rangeError("09:00", "24:01"), QLatin1String(SpaceTexts::kInvalidEndTime));
        QCOMPARE(E::rangeError("17:00", "09:00"), QLatin1String(SpaceTexts::kStartAfterEnd));
        QCOMPARE(E::rangeError("09:00", "09:00"), QLatin1String(SpaceTexts::kStartAfterEnd));
        QVERIFY(E::rangeError("9:00", "24:00").isEmpty());

        SpaceEditViewModel edit;
        edit.load(space("Work", {}));
        edit.addTimeRange();
        QCOMPARE(edit.triggers().at(0).toMap()["endText"].toString(), QStringLiteral("17:00"));
        // A start at or after the end pushes the end an hour on, at most to midnight.
        edit.setStartText(0, QStringLiteral("18:15"));
        QCOMPARE(edit.triggers().at(0).toMap()["endText"].toString(), QStringLiteral("19:15"));
        edit.setStartText(0, QStringLiteral("23:30"));
        QCOMPARE(edit.triggers().at(0).toMap()["endText"].toString(), QStringLiteral("24:00"));
        QVERIFY(edit.validate());
        QCOMPARE(*edit.edited().triggers.at(0).startHour, 23.5);

        edit.setEndText(0, QStringLiteral("noon"));
        QVERIFY(!edit.validate());
        QCOMPARE(edit.errorKey(), QLatin1String(SpaceTexts::kInvalidEndTime));
    }
};

QTEST_GUILESS_MAIN(SpaceAutoSwitchTest)
#include "tst_space_auto_switch.moc"
