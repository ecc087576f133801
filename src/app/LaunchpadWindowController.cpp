#include "app/LaunchpadWindowController.h"

#include "catalogue/AppMonitor.h"
#include "catalogue/AppSourceFoldersStore.h"
#include "catalogue/CatalogueCache.h"
#include "catalogue/AppsRepositoryImpl.h"
#include "catalogue/SystemFoldersService.h"
#include "input/GesturesManager.h"
#include "input/HotCornersManager.h"
#include "input/HotKeyManager.h"
#include "input/KnockToLaunchManager.h"
#include "layout/FolderAppsGrid.h"
#include "layout/LaunchpadViewModel.h"
#include "spaces/SpaceStorageProvider.h"
#include "spaces/SpacesAutoSwitchService.h"
#include "spaces/SpacesRepository.h"
#include "spaces/SpacesViewModel.h"
#include "storage/FileSystemStore.h"
#include "storage/MigrationService.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStore.h"

#include <QPointer>

LaunchpadWindowController::LaunchpadWindowController(const StorageLocations &locations,
                                                     const CataloguePlatform &catalogue, InputPlatform input,
                                                     QObject *parent)
    : QObject(parent)
    , m_input(input.completed())
    , m_inputSettings(UserDefaultsStore::standard(locations.configDirectory))
    , m_hotKeyManager(std::make_unique<HotKeyManager>(m_inputSettings, *m_input.hotKeys, *m_input.activity))
    , m_hotCornersManager(
          std::make_unique<HotCornersManager>(m_inputSettings, *m_input.pointer, *m_input.activity, *m_input.clock))
    , m_knockToLaunchManager(std::make_unique<KnockToLaunchManager>(m_inputSettings))
    , m_appMonitor(std::make_unique<AppMonitor>())
    , m_composition(CompositionRoot::build(locations, catalogue))
{
    m_hotKeyManager->setOnToggle([this] { toggleOverlay(); });
    m_hotKeyManager->registerHotKey();
    m_hotCornersManager->setOnActivate([this] { toggleOverlay(); });
    // The manager already holds the stored flag, so this changes nothing: a
    // stored-on corner starts monitoring at the first activation.
    m_hotCornersManager->setEnabled(m_inputSettings->boolValue(QLatin1String(HotCornersManager::kEnabledKey)));

    // Before any model reads stored data.
    MigrationService(m_composition.userDefaultsStore, m_composition.fileSystemStore).runAll();

    // After the migrations: one of them switches the pinch on for everyone.
    m_gesturesManager = std::make_unique<GesturesManager>(m_inputSettings, *m_input.touchpads, m_input.power.get(),
                                                          *m_input.clock);
    m_gesturesManager->setOnOpen([this] { showOverlay(); });
    m_gesturesManager->setOnClose([this] { hideOverlay(); });

    m_layout = new LaunchpadViewModel(m_composition.layoutServices(), this);
    // The first frame draws from the last run's catalogue; each finished scan
    // refreshes the cache for the next start. Apps the scan could not vouch
    // for are kept in it too: their last names and identities are all that
    // is known of them.
    const QString cache = m_composition.fileSystemStore->pathFor(QLatin1String(CatalogueCache::kFileName));
    m_cachedApps = CatalogueCache::load(cache);
    m_layout->preloadApps(m_cachedApps);
    connect(m_layout, &LaunchpadViewModel::loadFinished, this, [this, cache] {
        const QList<AppItem> seen = m_layout->apps() + m_layout->unavailableApps();
        if (!m_layout->isLoading() && !m_layout->apps().isEmpty() && seen != m_cachedApps) {
            m_cachedApps = seen;
            CatalogueCache::save(cache, m_cachedApps);
            // A newly installed app may be one an imported theme has an icon for.
            spaces().adoptPendingIcons(m_layout->apps());
        }
    });
    // An install or removal reloads the catalogue and reconciles the grid.
    connect(this, &LaunchpadWindowController::catalogueChanged, m_layout, &LaunchpadViewModel::loadInitial);
    m_layout->loadInitial();
    // Read at each change, so whatever fills the composition's provider later is asked.
    m_workflows = new WorkflowsViewModel(*m_layout, m_composition.workflowIconsDirectory(), [this] {
        return m_composition.otherProfiles ? m_composition.otherProfiles() : OtherProfiles{};
    }, this);
    m_composition.systemFoldersService->preWarm();

    watchCatalogue();

    // Spaces: the grid follows a switch, the active Space's snapshot follows
    // the grid, rules pick a Space by time, and each Space's shortcut picks it.
    SpacesViewModel &spaces = *m_composition.spacesViewModel;
    spaces.setLayoutModel(m_layout);
    m_autoSwitch = std::make_unique<SpacesAutoSwitchService>(m_composition.userDefaultsStore);
    spaces.setAutoSwitchService(m_autoSwitch.get());
    m_autoSwitch->start([this] { return this->spaces().spaceItems(); },
                        [this](const SpaceItem &space) {
                            // The rule keeps matching while its Space is in use.
                            if (this->spaces().activeSpaceId() != space.id)
                                this->spaces().switchTo(space.id, false);
                        });
    m_hotKeyManager->setSpaceHotKeyCallback([this](const QUuid &id) { this->spaces().switchTo(id, true); });
    connect(&spaces, &SpacesViewModel::spacesChanged, this, &LaunchpadWindowController::updateSpaceHotKeys);
    connect(&spaces, &SpacesViewModel::activeSpaceChanged, this, &LaunchpadWindowController::watchActiveSuite);
    updateSpaceHotKeys();

    // `tillmora defaults write`, a second copy or a hand edit change the file
    // behind the launcher's back; what they change takes effect here at once.
    m_composition.userDefaultsStore->watchExternalChanges(
        this, [this](const QStringList &keys) { takeInChangedSettings(keys); });
    watchActiveSuite();
    UserDefaultsStore::setSaveStatusHandler([self = QPointer<LaunchpadWindowController>(this)](bool saved, const QString &error) {
        if (self)
            Q_EMIT self->saveStatusChanged(saved, error);
    });
}

void LaunchpadWindowController::updateSpaceHotKeys()
{
    QList<SpaceHotKey> hotKeys;
    for (const SpaceItem &space : spaces().spaceItems())
        hotKeys.append(SpaceHotKey{space.id, space.name, space.hotKeyKeyCode, space.hotKeyModifiers});
    // The list also changes when only the active Space does; the grabs stay
    // as they are then instead of being made again on every switch.
    if (m_spaceHotKeys && *m_spaceHotKeys == hotKeys)
        return;
    m_spaceHotKeys = hotKeys;
    m_hotKeyManager->updateSpaceHotKeys(hotKeys);
}

void LaunchpadWindowController::watchActiveSuite()
{
    const auto active = spaces().activeSpaceId();
    if (!active || m_watchedSuites.contains(*active))
        return;
    m_watchedSuites.insert(*active);
    const QUuid id = *active;
    m_composition.spaceStorageProvider->storeForSpace(id)->watchExternalChanges(this, [this, id](const QStringList &keys) {
        if (spaces().activeSpaceId() != id)
            return;
        takeInChangedProfile(keys);
        Q_EMIT settingsChangedElsewhere(keys);
    });
}

void LaunchpadWindowController::watchCatalogue()
{
    m_appMonitor->stop();
    m_appMonitor->start(m_composition.appsRepo->watchedDirectories(), [this] { Q_EMIT catalogueChanged(); });
}

QStringList LaunchpadWindowController::extraAppFolders() const
{
    return AppSourceFoldersStore::paths(AppSourceFoldersStore::loadAll(*m_composition.layoutStore));
}

void LaunchpadWindowController::setExtraAppFolders(const QStringList &folders)
{
    QList<FolderEntry> entries;
    for (const QString &folder : folders)
        entries.append(FolderEntry{folder, {}});
    AppSourceFoldersStore::saveAll(*m_composition.layoutStore, entries);
    takeInExtraAppFolders();
}

void LaunchpadWindowController::takeInExtraAppFolders()
{
    m_composition.appsRepo->setUserFolders(extraAppFolders());
    watchCatalogue();
    Q_EMIT catalogueChanged();
}

void LaunchpadWindowController::takeInChangedProfile(const QStringList &keys)
{
    if (keys.contains(QLatin1String(SettingsKeys::kAdditionalAppSourceFolders)))
        takeInExtraAppFolders();
    static const QSet<QString> kLayoutKeys = {
        QLatin1String(SettingsKeys::kSlots),          QLatin1String(SettingsKeys::kFolders),
        QLatin1String(SettingsKeys::kHiddenApps),     QLatin1String(SettingsKeys::kWidgets),
        QLatin1String(SettingsKeys::kWorkflows),      QLatin1String(SettingsKeys::kCustomAppNames),
        QLatin1String(SettingsKeys::kCustomAppIcons), QLatin1String(SettingsKeys::kFolderIconStyles),
        QLatin1String(SettingsKeys::kAdditionalAppSourceFolders)};
    const auto touches = [&](const QSet<QString> &set) {
        return std::any_of(keys.cbegin(), keys.cend(), [&](const QString &key) { return set.contains(key); });
    };
    if (touches(kLayoutKeys))
        m_layout->loadInitial();
}

void LaunchpadWindowController::takeInChangedSettings(const QStringList &keys)
{
    if (keys.contains(QLatin1String(SpacesRepositoryImpl::kItemsKey))
        || keys.contains(QLatin1String(SpacesRepositoryImpl::kActiveSpaceIdKey)))
        spaces().reload();
    // The standard store holds the profile only while no Space is active.
    if (!spaces().activeSpaceId())
        takeInChangedProfile(keys);

    const UserDefaultsStoreType &store = *m_inputSettings;
    if (keys.contains(QLatin1String(SettingsKeys::kHotKeyEnabled)))
        m_hotKeyManager->setEnabled(store.boolValue(QLatin1String(SettingsKeys::kHotKeyEnabled)));
    if (keys.contains(QLatin1String(SettingsKeys::kHotKeyKeyCode))
        || keys.contains(QLatin1String(SettingsKeys::kHotKeyModifiers))) {
        const auto code = store.integer(QLatin1String(SettingsKeys::kHotKeyKeyCode));
        const auto modifiers = store.integer(QLatin1String(SettingsKeys::kHotKeyModifiers));
        if (code && modifiers && *modifiers >= 0
            && (quint32(*code) != m_hotKeyManager->currentKeyCode()
                || quint64(*modifiers) != m_hotKeyManager->currentModifiers()))
            m_hotKeyManager->updateHotKey(quint64(*modifiers), *code);
    }
    if (keys.contains(QLatin1String(SettingsKeys::kHotCornerSelected)))
        m_hotCornersManager->setSelectedCorner(
            HotCornerGeometry::fromRawValue(store.string(QLatin1String(SettingsKeys::kHotCornerSelected)).value_or(QString())));
    if (keys.contains(QLatin1String(SettingsKeys::kFolderAppsGrid))) {
        const auto raw = store.string(QLatin1String(SettingsKeys::kFolderAppsGrid)).value_or(QString());
        m_layout->setFolderAppsGrid(FolderAppsGrids::fromRawValue(raw).value_or(FolderAppsGrids::kDefault));
    }
    if (keys.contains(QLatin1String(SettingsKeys::kHotCornerEnabled)))
        m_hotCornersManager->setEnabled(store.boolValue(QLatin1String(SettingsKeys::kHotCornerEnabled)));
    Q_EMIT settingsChangedElsewhere(keys);
}

LaunchpadWindowController::~LaunchpadWindowController()
{
    // The controller lives as long as the process, so this runs only at exit:
    // the inputs are released but their settings stay as the user left them.
    UserDefaultsStore::setSaveStatusHandler({});
    m_hotKeyManager->stop();
    m_hotCornersManager->stopMonitoring();
    m_appMonitor->stop();
}

void LaunchpadWindowController::showOverlay() { setOverlayVisible(true); }
void LaunchpadWindowController::hideOverlay() { setOverlayVisible(false); }
void LaunchpadWindowController::toggleOverlay() { setOverlayVisible(!m_overlayVisible); }
void LaunchpadWindowController::openSettings() { Q_EMIT settingsRequested(); }

void LaunchpadWindowController::setOverlayVisible(bool visible)
{
    if (m_overlayVisible == visible)
        return;
    m_overlayVisible = visible;
    Q_EMIT overlayVisibleChanged(visible);
}
