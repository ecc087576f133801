#include "app/CompositionRoot.h"

#include "catalogue/AppIconLookup.h"
#include "catalogue/AppSourceFoldersStore.h"
#include "catalogue/AppsRepositoryImpl.h"
#include "catalogue/SystemFolderPanelAssetCache.h"
#include "catalogue/SystemFoldersService.h"
#include "foundation/Clock.h"
#include "organise/WorkflowLaunchService.h"
#include "organise/WorkflowsRepository.h"
#include "spaces/SpaceStorageProvider.h"
#include "spaces/SpacesRepository.h"
#include "spaces/SpacesSnapshotService.h"
#include "spaces/SpacesViewModel.h"
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
#include "storage/WallpaperRepository.h"
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

    // Before any repository reads: the layout comes from the active Space.
    root.spaceStorageProvider = std::make_shared<SpaceStorageProvider>(root.userDefaultsStore, locations.configDirectory);
    root.spacesRepo = std::make_shared<SpacesRepositoryImpl>(root.userDefaultsStore);
    SpacesViewModel::restoreActiveSpace(*root.spaceStorageProvider, *root.spacesRepo);
    root.layoutStore = std::make_shared<SpaceAwareStore>(root.spaceStorageProvider, root.userDefaultsStore);

    root.appSearchDirectories = AppsRepositoryImpl::searchDirectoriesFromEnvironment();
    root.appsRepo = std::make_shared<AppsRepositoryImpl>(root.appSearchDirectories);
    for (const auto &source : catalogue.appSources)
        root.appsRepo->addSource(source);
    root.appsRepo->setUserFolders(AppSourceFoldersStore::paths(AppSourceFoldersStore::loadAll(*root.layoutStore)));
    root.appLauncher = catalogue.launcher;
    root.appIconLookup = std::make_shared<AppIconLookupImpl>(catalogue.appSources);

    root.foldersRepo = std::make_shared<FoldersRepositoryImpl>(root.layoutStore);
    root.orderRepo = std::make_shared<OrderRepositoryImpl>(root.layoutStore);
    root.wallpaperRepo =
        std::make_shared<WallpaperRepositoryImpl>(root.layoutStore, root.userDefaultsStore, root.fileSystemStore);
    root.appearanceRepo = std::make_shared<AppearanceRepositoryImpl>(root.layoutStore, root.userDefaultsStore);
    root.hiddenAppsService = std::make_shared<HiddenAppsServiceImpl>(root.layoutStore);
    root.recentAppsService = std::make_shared<RecentAppsServiceImpl>(root.layoutStore);
    root.folderIconStyleRepo = std::make_shared<FolderIconStyleRepositoryImpl>(root.layoutStore);
    root.widgetsRepo = std::make_shared<WidgetsRepositoryImpl>(root.layoutStore, root.fileSystemStore);
    root.appNameRepository = std::make_shared<AppNameRepositoryImpl>(root.layoutStore);
    root.appsCustomizationRepository =
        std::make_shared<AppsCustomizationRepositoryImpl>(root.layoutStore, root.fileSystemStore);
    root.workflowsRepo = std::make_shared<WorkflowsRepositoryImpl>(root.layoutStore);

    root.spacesSnapshotService = std::make_shared<SpacesSnapshotService>(root.userDefaultsStore, root.fileSystemStore);
    root.spacesViewModel =
        std::make_shared<SpacesViewModel>(root.spacesRepo, root.spacesSnapshotService, root.spaceStorageProvider);
    // A new workflow goes to every profile: the standard one and each Space.
    root.otherProfiles = [provider = std::weak_ptr(root.spaceStorageProvider),
                          spaces = std::weak_ptr(root.spacesViewModel)] {
        OtherProfiles others;
        const auto p = provider.lock();
        const auto model = spaces.lock();
        if (!p || !model)
            return others;
        const auto active = p->activeSpaceId();
        if (active)
            others.stores.append(p->mainStore());
        for (const SpaceItem &space : model->spaceItems())
            if (space.id != active)
                others.stores.append(p->storeForSpace(space.id));
        others.spaceCount = long(model->spaceItems().size());
        others.written = [spaces] {
            if (const auto model = spaces.lock())
                model->refreshSnapshots();
        };
        return others;
    };

    root.clock = std::make_shared<QtClock>();
    // Bookmarks of placed folders live in the standard store whatever the Space.
    root.systemFoldersService =
        std::make_shared<SystemFoldersServiceImpl>(root.userDefaultsStore, root.appLauncher, root.clock);
    root.systemFolderAssets = std::make_shared<SystemFolderPanelAssetCache>(catalogue.folderAssets);
    root.workflowLaunchService = std::make_shared<WorkflowLaunchService>(
        root.appLauncher, root.systemFoldersService, root.userDefaultsStore, root.clock);
    return root;
}

bool CompositionRoot::synchronize(QString *error) const
{
    const bool ok = spaceStorageProvider->synchronizeAll();
    if (!ok && error)
        *error = spaceStorageProvider->lastError();
    return ok;
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
