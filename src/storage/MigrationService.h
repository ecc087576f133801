#pragma once

#include "storage/SettingsKeys.h"

#include <QLoggingCategory>
#include <functional>
#include <memory>

class FileSystemStore;
class UserDefaultsStoreType;

// Brings what an older version left in the main store up to what this
// version expects. Runs once per launch, before any model reads the layout;
// every step either checks that its target is still absent or keeps a done
// flag, so running all of them on every launch writes nothing after the first.
class MigrationService {
public:
    // Done flags. Step 4 (glass on) keeps its own flag as well: it must not
    // switch the glass back on for a user who later turned it off.
    static constexpr const char *kLiquidGlassDoneFlag = SettingsKeys::kMigrationLiquidGlassDone;
    static constexpr const char *kGesturePinchDoneFlag = SettingsKeys::kMigrationGesturePinchDone;
    static constexpr const char *kShowOverFullscreenDoneFlag = SettingsKeys::kMigrationShowOverFullscreenDone;
    static constexpr const char *kHideButtonDoneFlag = SettingsKeys::kMigrationHideButtonDone;
    static constexpr const char *kWallpapersFolder = "Wallpapers";

    MigrationService(std::shared_ptr<UserDefaultsStoreType> defaults, std::shared_ptr<FileSystemStore> fs);

    // The twelve steps, in their fixed order. No step can stop the launch.
    void runAll();

    void migrateTheme();                  // 1
    void migrateTitleColor();             // 2
    void migrateGlassMaterial();          // 3
    void migrateGlassEnabled();           // 4
    void migratePinchGesture();           // 5
    void migrateShowOverFullscreen();     // 6
    void migrateHideButton();             // 7
    void migrateSunBackground();          // 8
    void migrateWeatherBackground();      // 9
    void migrateBackgroundImageToFile();  // 10
    void migrateFoldersToSlots();         // 11
    void clearDanglingActiveSpace();      // 12

private:
    // Nothing stored under the key; registered defaults do not count.
    bool isAbsent(const char *key) const;
    // Stores the value when the key is absent; true when it wrote.
    bool fillAbsent(const char *key, const QVariant &value);
    // Runs the step unless its done flag is set, then sets the flag.
    void once(const char *flag, const std::function<void()> &step);

    std::shared_ptr<UserDefaultsStoreType> m_defaults;
    std::shared_ptr<FileSystemStore> m_fs;
    const QLoggingCategory &m_logger;
};
