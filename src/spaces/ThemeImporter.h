#pragma once

#include "foundation/GridRecords.h"
#include "spaces/SpaceItem.h"
#include "spaces/ThemeManifest.h"
#include "spaces/ThemePackage.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QStringList>
#include <memory>
#include <optional>
#include <variant>

class FileSystemStore;
class SpaceStorageProvider;
class SpacesSnapshotService;
class SpacesViewModel;
class UserDefaultsStoreType;

// The alerts of exporting and importing, as the overlay raises them.
enum class ThemeAlertKind { exportConfirm, outdated, duplicate, folderChoice, imported, invalidPackage, exportFailed };
QString themeAlertName(ThemeAlertKind kind);

// Reading a theme package (inspect: nothing changes) and adding it as a new
// Space (import). A package may come from anyone: see ThemePackageLayout for
// what extraction refuses.
class ThemeImporter {
public:
    enum class ImportError { requiresNewerApp, invalidPackage };
    enum class FolderChoice { useTheme, keepMine };

    static constexpr const char *kInvalidPackageText = "The file is damaged or is not a Tillmora theme.";
    static QString outdatedText(const QString &appVersion);
    // Where the icons of apps not installed here wait, in the Space's folder.
    static constexpr const char *kPendingIconsFile = "PendingIcons.json";

    struct Failure {
        ImportError error = ImportError::invalidPackage;
        QString appVersion; // requiresNewerApp: the version that wrote the package
        QString detail;     // what exactly was wrong, for the log
        QString message() const;
    };

    // The unpacked package; its staging folder goes with the last copy.
    struct Inspection {
        ThemeManifest manifest;
        QJsonObject snapshot;
        QString packageRoot;
        QJsonObject apps;
        // The questions to ask before importing.
        bool alreadyImported = false; // duplicate
        bool foldersDiffer = false;   // folderChoice
        int themeAppCount = 0;
        int matchedAppCount = 0;
        std::shared_ptr<void> staging;
    };

    struct FolderReconciliation {
        QJsonArray data;
        QStringList keptAppPaths;
        QStringList allThemeAppPaths;
        QList<QUuid> removedFolderIds;
    };

    struct Result {
        SpaceItem space;
        QJsonObject snapshot;
        int matchedAppCount = 0;
        int themeAppCount = 0;
        int pendingIconCount = 0;
    };

    ThemeImporter(std::shared_ptr<FileSystemStore> fs, std::shared_ptr<SpacesSnapshotService> snapshotService,
                  std::shared_ptr<SpaceStorageProvider> provider);

    // installed: the apps of this machine, for the counts and the questions.
    std::variant<Inspection, Failure> inspect(const QString &package, const QList<AppItem> &installed,
                                              const ThemePackageLayout::Limits &limits = {}) const;
    std::optional<Result> importTheme(const Inspection &inspection, FolderChoice choice,
                                      const QList<AppItem> &installed, SpacesViewModel &spaces, QString *error);

    // Gives the waiting icons of the Space whose files are in assetFolder to
    // those of their apps that are installed now; returns how many.
    static int applyPendingIcons(const QString &assetFolder, UserDefaultsStoreType &suite,
                                 const QList<AppItem> &installed);

    // The theme's folders with only the apps found here; a folder left
    // with nothing in it is removed.
    static FolderReconciliation reconcileFolders(const QJsonArray &themeFolders,
                                                 const std::function<std::optional<QString>(const QString &)> &map);

private:
    QJsonArray ownFolders() const;

    std::shared_ptr<FileSystemStore> m_files;
    std::shared_ptr<SpacesSnapshotService> m_snapshots;
    std::shared_ptr<SpaceStorageProvider> m_provider;
};

// Puts what the theme does not place into the free cells of its grid, in
// name order, and the rest after the last cell.
namespace ThemeSlotFiller {
struct PlacementEntry {
    QString sortName;
    QString token;
};
QJsonArray fill(const QJsonArray &slots, QList<PlacementEntry> entries);
}
