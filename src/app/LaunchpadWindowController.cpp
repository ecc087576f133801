#include "app/LaunchpadWindowController.h"

LaunchpadWindowController::LaunchpadWindowController(const StorageLocations &locations, QObject *parent)
    : QObject(parent)
    , m_composition(CompositionRoot::build(locations))
{
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
