#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

// The theme package file: a ZIP archive of one staging folder, written and
// read with libarchive. Reading is the dangerous half: a package may come from
// anyone, so extraction takes only plain files and folders, keeps every name
// inside the staging folder and stops at the limits below, counting the bytes
// it actually inflates instead of the sizes the archive claims.
namespace ThemePackageLayout {

inline constexpr const char *kExtension = "tillmoratheme";
inline constexpr const char *kManifestFile = "manifest.json";
inline constexpr const char *kSnapshotFile = "snapshot.json";
// Which app a path of the snapshot names, so that another machine can find
// it at another path: { path: { "identity": ..., "name": ... } }.
inline constexpr const char *kAppsFile = "apps.json";
inline constexpr const char *kWallpaperFolder = "Wallpaper";
inline constexpr const char *kNotchBackgroundFolder = "NotchBackground";
inline constexpr const char *kCustomIconsFolder = "CustomIcons";
inline constexpr const char *kWorkflowIconsFolder = "WorkflowIcons";
inline constexpr const char *kWidgetsFolder = "Widgets";
inline constexpr const char *kFolderIconsFolder = "FolderIcons";

enum class ArchiveError { dittoFailed, archiveMissing };

// The default file name for a Space: its name trimmed, without / \ : * ? " < > |,
// "Space" when nothing is left, plus the package extension.
QString packageFileName(const QString &spaceName);

// Replaces destination with a ZIP of the folder's contents (no enclosing
// folder). *detail says what failed.
std::optional<ArchiveError> writeArchive(const QString &folder, const QString &destination, QString *detail = nullptr);

struct Limits {
    int maxEntries = 4096;
    qint64 maxEntryBytes = 256ll << 20;
    qint64 maxTotalBytes = 1024ll << 20;
    // Inflated bytes per compressed byte read, over the whole archive once
    // more than ratioGraceBytes have come out (small JSON files compress well).
    qint64 maxRatio = 100;
    qint64 ratioGraceBytes = 4ll << 20;
};

// Unpacks the package into stagingFolder, which must exist and be empty.
// Entries outside the package's known top-level names are skipped unread.
// False with the reason on the first violation; the caller removes the
// staging folder.
bool extractArchive(const QString &package, const QString &stagingFolder, QString *error, const Limits &limits = {});

// A new private folder prefix + UUID in the temporary directory, removed
// with everything in it when the last copy of the handle goes; null with
// *error when it could not be made.
std::shared_ptr<void> makeStagingFolder(const QString &prefix, QString *path, QString *error);

// The top-level names a package may carry.
const QStringList &knownTopLevelNames();

}
