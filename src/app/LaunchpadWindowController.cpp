#include "app/LaunchpadWindowController.h"

#include "input/GesturesManager.h"
#include "input/HotCornersManager.h"
#include "input/HotKeyManager.h"
#include "input/KnockToLaunchManager.h"
#include "storage/UserDefaultsStore.h"

LaunchpadWindowController::LaunchpadWindowController(const StorageLocations &locations, InputPlatform input,
                                                     QObject *parent)
    : QObject(parent)
    , m_input(input.completed())
    , m_inputSettings(UserDefaultsStore::standard(locations.configDirectory))
    , m_hotKeyManager(std::make_unique<HotKeyManager>(m_inputSettings, *m_input.hotKeys, *m_input.activity))
    , m_hotCornersManager(
          std::make_unique<HotCornersManager>(m_inputSettings, *m_input.pointer, *m_input.activity, *m_input.clock))
    , m_knockToLaunchManager(std::make_unique<KnockToLaunchManager>(m_inputSettings))
    , m_composition(CompositionRoot::build(locations))
{
    m_hotKeyManager->setOnToggle([this] { toggleOverlay(); });
    m_hotKeyManager->registerHotKey();
    m_hotCornersManager->setOnActivate([this] { toggleOverlay(); });
    // A stored-on corner is already on: monitoring begins at the first
    // activation of the application.
    if (m_inputSettings->boolValue(QLatin1String(HotCornersManager::kEnabledKey)))
        m_hotCornersManager->setEnabled(true);

    m_gesturesManager = std::make_unique<GesturesManager>(m_inputSettings, *m_input.touchpads, m_input.power.get(),
                                                          *m_input.clock);
    m_gesturesManager->setOnOpen([this] { showOverlay(); });
    m_gesturesManager->setOnClose([this] { hideOverlay(); });
}

LaunchpadWindowController::~LaunchpadWindowController()
{
    m_hotKeyManager->stop();
    m_hotCornersManager->setEnabled(false);
}

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
