#include "app/LaunchpadWindowController.h"

#include "layout/LaunchpadViewModel.h"
#include "organise/WorkflowsRepository.h"
#include "storage/FoldersRepository.h"
#include "storage/HiddenAppsService.h"
#include "storage/OrderRepository.h"
#include "storage/UserDefaultsStore.h"
#include "storage/WidgetsRepository.h"

static LayoutServices layoutServices(const CompositionRoot &root)
{
    LayoutServices services;
    // The composition carries no application scanner yet; until it does the
    // model loads and repairs the stored layout without reconciling it.
    services.appsRepo = nullptr;
    services.foldersRepo = root.foldersRepo;
    services.orderRepo = root.orderRepo;
    services.widgetsRepo = root.widgetsRepo;
    services.workflowsRepo = root.workflowsRepo;
    services.hiddenAppsService = root.hiddenAppsService;
    services.preferences = root.userDefaultsStore;
    return services;
}

LaunchpadWindowController::LaunchpadWindowController(const StorageLocations &locations, QObject *parent)
    : QObject(parent)
    , m_composition(CompositionRoot::build(locations))
    , m_layout(new LaunchpadViewModel(layoutServices(m_composition), this))
{
    m_layout->loadInitial();
}

LaunchpadWindowController::~LaunchpadWindowController() = default;

void LaunchpadWindowController::showOverlay() { setOverlayVisible(true); }
void LaunchpadWindowController::hideOverlay() { setOverlayVisible(false); }
void LaunchpadWindowController::toggleOverlay() { setOverlayVisible(!m_overlayVisible); }
void LaunchpadWindowController::onCatalogueChanged() { m_layout->loadInitial(); }

void LaunchpadWindowController::setOverlayVisible(bool visible)
{
    if (m_overlayVisible == visible)
        return;
    m_overlayVisible = visible;
    Q_EMIT overlayVisibleChanged(visible);
}
