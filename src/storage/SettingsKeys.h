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
}
