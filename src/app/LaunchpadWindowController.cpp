#include "app/LaunchpadWindowController.h"

#include "catalogue/AppMonitor.h"
#include "catalogue/AppsRepositoryImpl.h"
#include "storage/MigrationService.h"
#include "storage/UserDefaultsStore.h"

LaunchpadWindowController::LaunchpadWindowController(const StorageLocations &locations,
                                                     const CataloguePlatform &catalogue, QObject *parent)
    : QObject(parent)
    , m_appMonitor(std::make_unique<AppMonitor>())
    , m_composition(CompositionRoot::build(locations, catalogue))
{
    // Before any model reads stored data.
    MigrationService(m_composition.userDefaultsStore, m_composition.fileSystemStore).runAll();

    m_appMonitor->start(m_composition.appsRepo->watchedDirectories(), [this] { Q_EMIT catalogueChanged(); });
}

LaunchpadWindowController::~LaunchpadWindowController() = default;

void LaunchpadWindowController::showOverlay() { setOverlayVisible(true); }
void LaunchpadWindowController::hideOverlay() { setOverlayVisible(false); }
void LaunchpadWindowController::toggleOverlay() { setOverlayVisible(!m_overlayVisible); }

void LaunchpadWindowController::setOverlayVisible(bool visible)
{
    if (m_overlayVisible == visible)
        return;
    m_overlayVisible = visible;
    Q_EMIT overlayVisibleChanged(visible);
}
