#include "spaces/SpaceTexts.h"

#include <QtGlobal>

namespace SpaceTexts {
//% "Another Space already uses this shortcut. Choose a different one."
const char *const kConflictAlert = QT_TRID_NOOP("settings.spaces.conflict.alert");
//% "The start time is not a valid time (HH:mm)."
const char *const kInvalidStartTime = QT_TRID_NOOP("settings.spaces.triggers.error.invalidStartTime");
//% "The end time is not a valid time (HH:mm)."
const char *const kInvalidEndTime = QT_TRID_NOOP("settings.spaces.triggers.error.invalidEndTime");
//% "The end time must be later than the start time."
const char *const kStartAfterEnd = QT_TRID_NOOP("settings.spaces.triggers.error.startAfterEnd");
//% "Start with the current settings"
const char *const kCreateWithCurrentSettings = QT_TRID_NOOP("settings.spaces.createWithCurrentSettings");
//% "Start with the default layout"
const char *const kCreateWithDefaultLayout = QT_TRID_NOOP("settings.spaces.createWithDefaultLayout");
const char *const kWeekdays[7] = {
    //% "Mon"
    QT_TRID_NOOP("settings.spaces.triggers.weekday.mon"),
    //% "Tue"
    QT_TRID_NOOP("settings.spaces.triggers.weekday.tue"),
    //% "Wed"
    QT_TRID_NOOP("settings.spaces.triggers.weekday.wed"),
    //% "Thu"
    QT_TRID_NOOP("settings.spaces.triggers.weekday.thu"),
    //% "Fri"
    QT_TRID_NOOP("settings.spaces.triggers.weekday.fri"),
    //% "Sat"
    QT_TRID_NOOP("settings.spaces.triggers.weekday.sat"),
    //% "Sun"
    QT_TRID_NOOP("settings.spaces.triggers.weekday.sun"),
};

QString text(const char *id)
{
    return qtTrId(id);
}
}
