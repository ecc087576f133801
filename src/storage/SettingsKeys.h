#pragma once

// Settings keys of the layout data and the user customisations. A new format
// gets a new key (or a migration), never a reused one.
namespace SettingsKeys {
inline constexpr const char *kFolders = "LaunchpadFolders_v1";
inline constexpr const char *kSlots = "LaunchpadApp_Slots_v1";
inline constexpr const char *kAppOrder = "LaunchpadApp_AppOrder_v1";
inline constexpr const char *kFolderOrder = "LaunchpadApp_FolderOrder_v1";
inline constexpr const char *kCombinedOrder = "LaunchpadApp_CombinedOrder_v1";
inline constexpr const char *kHiddenApps = "hiddenApps_v1";
inline constexpr const char *kRecentApps = "recentApps";
inline constexpr const char *kWidgets = "widgets_storage_v1";
inline constexpr const char *kWorkflows = "workflows_storage_v1";
inline constexpr const char *kCustomAppNames = "CustomAppNamesV1";
inline constexpr const char *kCustomAppIcons = "CustomAppIconsV1";
inline constexpr const char *kAssetIconsApplied = "AssetIconsAppliedV1";
inline constexpr const char *kFolderIconStyles = "FolderIconStylesV1";
inline constexpr const char *kAdditionalAppSourceFolders = "additionalAppSourceFolders_v1";
inline constexpr const char *kCacheAutoCleanupLastRunAt = "cache.autoCleanup.lastRunAt";
inline constexpr const char *kLegacyOrphanPurgeDone = "cache.legacyOrphanPurge.v1.done";
inline constexpr const char *kShowDockIcon = "ShowDockIcon";
}

// The wallpaper image. Older versions kept a custom background image as
// bytes inside the settings (customBackgroundImageData); the migration writes
// them to a file in "Wallpapers" and stores that file's path here.
namespace SettingsKeys {
inline constexpr const char *kCustomBackgroundImagePath = "customBackgroundImagePath";
inline constexpr const char *kLegacyCustomBackgroundImageData = "customBackgroundImageData";
// What the overlay shows when the profile names no image (standard store):
// "desktop" (the desktop's own wallpaper) or "color", and the colour as
// "#RRGGBB".
inline constexpr const char *kBackgroundStyle = "backgroundStyle";
inline constexpr const char *kBackgroundColor = "backgroundColor";
}

// Appearance, per display: the base name, "@", then the display's key
namespace SettingsKeys {
inline constexpr char16_t kDisplaySeparator = u'@';
// The display the overlay last laid its grid out for: commands run without a
// display cut pages as the user last saw them.
inline constexpr const char *kLastOverlayDisplay = "overlay.lastDisplay";
// The icon sizes that display allows (it fits a page's rows on the screen).
inline constexpr const char *kLastOverlayDisplayMinIconSize = "overlay.lastDisplay.minIconSize";
inline constexpr const char *kLastOverlayDisplayMaxIconSize = "overlay.lastDisplay.maxIconSize";
inline constexpr const char *kIconSize = "iconSize";
inline constexpr const char *kShowLabels = "showLabels";
inline constexpr const char *kColumns = "columns";
inline constexpr const char *kRows = "rows";
}

// Appearance
namespace SettingsKeys {
inline constexpr const char *kGlassIntensity = "glassIntensity";
inline constexpr const char *kTheme = "theme";
inline constexpr const char *kTitleColorOverride = "titleColorOverride";
inline constexpr const char *kLiquidGlassEnabled = "liquidGlassEnabled";
inline constexpr const char *kLiquidGlassExplicitlyDisabledByUser = "liquidGlassExplicitlyDisabledByUser";
inline constexpr const char *kLiquidGlassMaterialStyle = "liquidGlassMaterialStyle";
inline constexpr const char *kLiquidGlassTintStandard = "liquidGlassTintStandard";
inline constexpr const char *kLiquidGlassTintIntensity = "liquidGlassTintIntensity";
inline constexpr const char *kLiquidGlassTintHue = "liquidGlassTintHue";
inline constexpr const char *kBlurEnabled = "blurEnabled";
inline constexpr const char *kFilledBackgroundEnabled = "filledBackgroundEnabled";
inline constexpr const char *kCellBackgroundEnabled = "cellBackgroundEnabled";
inline constexpr const char *kFolderAppsGrid = "folderAppsGrid";
}

// Backgrounds
namespace SettingsKeys {
inline constexpr const char *kSunBackgroundEnabled = "sunBackgroundEnabled";
inline constexpr const char *kSunBackgroundAutoEnabled = "sunBackgroundAutoEnabled";
inline constexpr const char *kSunBackgroundManualTime = "sunBackgroundManualTime";
inline constexpr const char *kWeatherBackgroundEnabled = "weatherBackgroundEnabled";
inline constexpr const char *kWeatherBackgroundAutoEnabled = "weatherBackgroundAutoEnabled";
inline constexpr const char *kWeatherBackgroundCity = "weatherBackgroundCity";
inline constexpr const char *kWeatherBackgroundManualType = "weatherBackgroundManualType";
inline constexpr const char *kWeatherBackgroundManualTime = "weatherBackgroundManualTime";
}

// The overlay and the shell
namespace SettingsKeys {
inline constexpr const char *kShowOverFullscreenEnabled = "ShowOverFullscreenEnabled";
inline constexpr const char *kClassicViewEnabled = "ClassicViewEnabled";
inline constexpr const char *kShowHideButtonEnabled = "ShowHideButtonEnabled";
inline constexpr const char *kSearchLocation = "SearchLocation";
inline constexpr const char *kClassicViewAutoConfigDone = "ClassicViewAutoConfigDone";
inline constexpr const char *kShowCategoriesAsMainPage = "ShowCategoriesAsMainPage";
}

// Activation inputs
namespace SettingsKeys {
inline constexpr const char *kHotKeyKeyCode = "hotKey.keyCode";
inline constexpr const char *kHotKeyModifiers = "hotKey.modifiers";
inline constexpr const char *kHotKeyEnabled = "hotKey.enabled";
inline constexpr const char *kHotCornerEnabled = "hotCorner.enabled";
inline constexpr const char *kHotCornerSelected = "hotCorner.selected";
inline constexpr const char *kGesturePinchEnabled = "gesture.pinch.enabled";
inline constexpr const char *kGesturePinchFingerCount = "gesture.pinch.fingerCount";
inline constexpr const char *kKnockToLaunchEnabled = "knockToLaunch.enabled";
}

// Spaces
namespace SettingsKeys {
inline constexpr const char *kSpacesItems = "Spaces_Items_v1";
inline constexpr const char *kSpacesActiveSpaceId = "Spaces_ActiveSpaceId";
}

// One-time migrations: each step sets its flag when done
namespace SettingsKeys {
inline constexpr const char *kMigrationLiquidGlassDone = "migration.liquidGlass.enableForAll.done";
inline constexpr const char *kMigrationGesturePinchDone = "migration.gesturePinch.enableForAll.done";
inline constexpr const char *kMigrationShowOverFullscreenDone = "migration.showOverFullscreen.enableForAll.done";
inline constexpr const char *kMigrationHideButtonDone = "migration.hideButton.disableForAll.done";
}

// Theme packages (standard store)
namespace SettingsKeys {
inline constexpr const char *kExportedThemeIds = "Theme_ExportedThemeIds_v1";
inline constexpr const char *kImportedThemeIds = "Theme_ImportedThemeIds_v1";
}
