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
//% "You imported this theme before"
const char *const kThemeDuplicateTitle = QT_TRID_NOOP("settings.spaces.theme.duplicate.title");
//% "Importing it again adds another Space with the same look."
const char *const kThemeDuplicateMessage = QT_TRID_NOOP("settings.spaces.theme.duplicate.message");
//% "Import Again"
const char *const kThemeImportAgain = QT_TRID_NOOP("settings.spaces.theme.duplicate.importButton");
//% "The theme has its own folders"
const char *const kThemeFoldersTitle = QT_TRID_NOOP("settings.spaces.theme.folders.title");
//% "Keep the folders you have, or take the theme's folders into the new Space?"
const char *const kThemeFoldersMessage = QT_TRID_NOOP("settings.spaces.theme.folders.message");
//% "Keep My Folders"
const char *const kThemeKeepMine = QT_TRID_NOOP("settings.spaces.theme.folders.keepMine");
//% "Use the Theme's Folders"
const char *const kThemeUseTheme = QT_TRID_NOOP("settings.spaces.theme.folders.useTheme");
//% "The theme is now a Space"
const char *const kThemeImportedTitle = QT_TRID_NOOP("settings.spaces.theme.imported.title");
//% "Switch Now"
const char *const kThemeSwitchNow = QT_TRID_NOOP("settings.spaces.theme.imported.switchButton");
//% "Later"
const char *const kThemeLater = QT_TRID_NOOP("settings.spaces.theme.imported.laterButton");
//% "No Spaces yet. Create a Space to save your current setup."
const char *const kThemeNoSpaces = QT_TRID_NOOP("settings.spaces.theme.mySpaces.empty");
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
