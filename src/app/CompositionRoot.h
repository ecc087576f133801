#pragma once

#include "catalogue/CataloguePlatform.h"
#include "layout/LayoutServices.h"
#include "layout/WorkflowsViewModel.h"

#include <QStringList>
#include <memory>

class AppearanceRepositoryImpl;
class AppIconLookup;
class AppsRepositoryImpl;
class AppNameRepositoryImpl;
class AppsCustomizationRepositoryImpl;
class Clock;
class FileSystemStore;
class FolderIconStyleRepositoryImpl;
class FoldersRepositoryImpl;
class HiddenAppsServiceImpl;
class OrderRepositoryImpl;
class RecentAppsServiceImpl;
class SpaceStorageProvider;
class SpacesRepositoryImpl;
class SpacesSnapshotService;
class SpacesViewModel;
class SystemFolderPanelAssetCache;
class SystemFoldersServiceImpl;
class UserDefaultsStore;
class UserDefaultsStoreType;
class WallpaperRepositoryImpl;
class WidgetsRepositoryImpl;
class WorkflowLaunchService;
class WorkflowsRepositoryImpl;

// Where the process keeps its data; tests point these at temporary folders.
struct StorageLocations {
    QString configDirectory; // preferences domains; empty = $XDG_CONFIG_HOME/tillmora
    QString dataDirectory;   // application support; empty = $XDG_DATA_HOME/tillmora

    static StorageLocations fromEnvironment();
};

// The shared services, built once at start-up and handed to every model.
// Every repository of what a profile holds (grid, folders, hidden apps,
// widgets, workflows, names, icons, look) is built over layoutStore, the
// store that follows the active Space; the activation inputs and the Spaces
// list itself stay in the standard store.
struct CompositionRoot {
    std::shared_ptr<AppsRepositoryImpl> appsRepo;
    // The bundle folders: the standard seven, or TILLMORA_APP_DIRS.
    QStringList appSearchDirectories;
    std::shared_ptr<FoldersRepositoryImpl> foldersRepo;
    std::shared_ptr<OrderRepositoryImpl> orderRepo;
    // The profile's wallpaper image, and the machine's look without one.
    std::shared_ptr<WallpaperRepositoryImpl> wallpaperRepo;
    std::shared_ptr<AppearanceRepositoryImpl> appearanceRepo;
    std::shared_ptr<UserDefaultsStore> userDefaultsStore;
    std::shared_ptr<FileSystemStore> fileSystemStore;
    std::shared_ptr<HiddenAppsServiceImpl> hiddenAppsService;
    std::shared_ptr<RecentAppsServiceImpl> recentAppsService;
    std::shared_ptr<FolderIconStyleRepositoryImpl> folderIconStyleRepo;
    std::shared_ptr<WidgetsRepositoryImpl> widgetsRepo;
    std::shared_ptr<AppsCustomizationRepositoryImpl> appsCustomizationRepository;
    std::shared_ptr<AppNameRepositoryImpl> appNameRepository;
    std::shared_ptr<WorkflowsRepositoryImpl> workflowsRepo;
    std::shared_ptr<UserDefaultsStoreType> layoutStore;
    std::shared_ptr<SpaceStorageProvider> spaceStorageProvider;
    std::shared_ptr<SpacesRepositoryImpl> spacesRepo;
    std::shared_ptr<SpacesSnapshotService> spacesSnapshotService;
    std::shared_ptr<SpacesViewModel> spacesViewModel;
    // Opening applications and icons; the launcher is null when the platform
    // has none (headless tests).
    std::shared_ptr<AppLauncher> appLauncher;
    std::shared_ptr<AppIconLookup> appIconLookup;
    // The main loop's clock, for services that wait.
    std::shared_ptr<Clock> clock;
    std::shared_ptr<SystemFoldersServiceImpl> systemFoldersService;
    std::shared_ptr<SystemFolderPanelAssetCache> systemFolderAssets;
    std::shared_ptr<WorkflowLaunchService> workflowLaunchService;
    // The profiles a new or deleted workflow reaches besides the shown one
    // (the Spaces); none until Spaces provide them.
    OtherProfilesProvider otherProfiles;
    // Where images chosen as workflow icons are kept.
    QString workflowIconsDirectory() const;

    // What the layout model reads and writes through.
    LayoutServices layoutServices() const;

    // Writes the standard store and every Space suite; false with the
    // reason when one could not be written.
    bool synchronize(QString *error = nullptr) const;

    static CompositionRoot build(const StorageLocations &locations, const CataloguePlatform &catalogue = {});
};
