#include "app/CompositionRoot.h"

#include "catalogue/AppIconLookup.h"
#include "catalogue/AppSourceFoldersStore.h"
#include "catalogue/AppsRepositoryImpl.h"
#include "catalogue/SystemFolderPanelAssetCache.h"
#include "catalogue/SystemFoldersService.h"
#include "foundation/Clock.h"
#include "organise/WorkflowLaunchService.h"
#include "organise/WorkflowsRepository.h"
#include "storage/AppNameRepository.h"
#include "storage/AppearanceRepository.h"
#include "storage/AppsCustomizationRepository.h"
#include "storage/FileSystemStore.h"
#include "storage/FolderIconStyleRepository.h"
#include "storage/FoldersRepository.h"
#include "storage/HiddenAppsService.h"
#include "storage/RecentAppsService.h"
#include "storage/OrderRepository.h"
#include "storage/UserDefaultsStore.h"
#include "storage/WidgetsRepository.h"

#include <QDir>

StorageLocations StorageLocations::fromEnvironment()
{
    return {UserDefaultsStore::defaultDirectory(), FileSystemStore::defaultDirectory()};
}

CompositionRoot CompositionRoot::build(const StorageLocations &locations, const CataloguePlatform &catalogue)
{
    CompositionRoot root;
    root.userDefaultsStore = UserDefaultsStore::standard(locations.configDirectory);
    root.fileSystemStore = std::make_shared<FileSystemStore>(
        locations.dataDirectory.isEmpty() ? FileSystemStore::defaultDirectory() : locations.dataDirectory);

    root.appSearchDirectories = AppsRepositoryImpl::searchDirectoriesFromEnvironment();
    root.appsRepo = std::make_shared<AppsRepositoryImpl>(root.appSearchDirectories);
    for (const auto &source : catalogue.appSources)
        root.appsRepo->addSource(source);
    root.appsRepo->setUserFolders(AppSourceFoldersStore::paths(AppSourceFoldersStore::loadAll(*root.userDefaultsStore)));
    root.appLauncher = catalogue.launcher;
    root.appIconLookup = std::make_shared<AppIconLookupImpl>(catalogue.appSources);
    root.layoutStore = root.userDefaultsStore;

    root.foldersRepo = std::make_shared<FoldersRepositoryImpl>(root.layoutStore);
    root.orderRepo = std::make_shared<OrderRepositoryImpl>(root.layoutStore);
    root.appearanceRepo = std::make_shared<AppearanceRepositoryImpl>(root.userDefaultsStore);
    root.hiddenAppsService = std::make_shared<HiddenAppsServiceImpl>(root.layoutStore);
    root.recentAppsService = std::make_shared<RecentAppsServiceImpl>(root.userDefaultsStore);
    root.folderIconStyleRepo = std::make_shared<FolderIconStyleRepositoryImpl>(root.userDefaultsStore);
    root.widgetsRepo = std::make_shared<WidgetsRepositoryImpl>(root.layoutStore, root.fileSystemStore);
    root.appNameRepository = std::make_shared<AppNameRepositoryImpl>(root.userDefaultsStore);
    root.appsCustomizationRepository =
        std::make_shared<AppsCustomizationRepositoryImpl>(root.userDefaultsStore, root.fileSystemStore);
    root.workflowsRepo = std::make_shared<WorkflowsRepositoryImpl>(root.layoutStore);

    root.clock = std::make_shared<QtClock>();
    // Bookmarks of placed folders live in the standard store whatever the Space.
    root.systemFoldersService =
        std::make_shared<SystemFoldersServiceImpl>(root.userDefaultsStore, root.appLauncher, root.clock);
    root.systemFolderAssets = std::make_shared<SystemFolderPanelAssetCache>(catalogue.folderAssets);
    root.workflowLaunchService = std::make_shared<WorkflowLaunchService>(
        root.appLauncher, root.systemFoldersService, root.userDefaultsStore, root.clock);
    return root;
}

QString CompositionRoot::workflowIconsDirectory() const
{
    return fileSystemStore->pathFor(QStringLiteral("WorkflowIcons"));
}

LayoutServices CompositionRoot::layoutServices() const
{
    LayoutServices services;
    services.appsRepo = appsRepo;
    services.foldersRepo = foldersRepo;
    services.orderRepo = orderRepo;
    services.widgetsRepo = widgetsRepo;
    services.workflowsRepo = workflowsRepo;
    services.hiddenAppsService = hiddenAppsService;
    services.recentAppsService = recentAppsService;
    services.appNames = appNameRepository;
    services.appIcons = appsCustomizationRepository;
    services.preferences = userDefaultsStore;
    return services;
}
