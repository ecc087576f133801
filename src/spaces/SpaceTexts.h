#pragma once

#include <QString>

// The Spaces texts are message ids, shown through the translation catalogue
// (English built in, see translations/); never show an id itself.
namespace SpaceTexts {
extern const char *const kConflictAlert;
extern const char *const kInvalidStartTime;
extern const char *const kInvalidEndTime;
extern const char *const kStartAfterEnd;
extern const char *const kCreateWithCurrentSettings;
extern const char *const kCreateWithDefaultLayout;
// Theme packages: the questions of an import and their answers.
extern const char *const kThemeDuplicateTitle;
extern const char *const kThemeDuplicateMessage;
extern const char *const kThemeImportAgain;
extern const char *const kThemeFoldersTitle;
extern const char *const kThemeFoldersMessage;
extern const char *const kThemeKeepMine;
extern const char *const kThemeUseTheme;
extern const char *const kThemeImportedTitle;
extern const char *const kThemeSwitchNow;
extern const char *const kThemeLater;
extern const char *const kThemeNoSpaces;
// Monday first, as rule weekdays count.
extern const char *const kWeekdays[7];

// The text of a message id in the user's language.
QString text(const char *id);
}
