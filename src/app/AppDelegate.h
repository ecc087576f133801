#pragma once

#include "app/CompositionRoot.h"
#include "input/InputPlatform.h"

#include <QObject>
#include <functional>
#include <memory>

class ApplicationPlatform;
class LaunchpadWindowController;

// The menu-bar-and-overlay program's start-up and shutdown logic, free of any
// particular platform: the platform adaptor answers the questions it asks.
class AppDelegate : public QObject {
    Q_OBJECT
public:
    // Builds the status item (tray) for the window controller, where the
    // desktop has one; returns nullptr otherwise.
    using StatusItemFactory = std::function<std::unique_ptr<QObject>(LaunchpadWindowController &)>;

    AppDelegate(ApplicationPlatform &platform, StorageLocations locations, QObject *parent = nullptr);
    ~AppDelegate() override;

    void setStatusItemFactory(StatusItemFactory factory) { m_statusItemFactory = std::move(factory); }
    // The platform's application sources and launcher, handed to the catalogue.
    void setCataloguePlatform(CataloguePlatform catalogue) { m_catalogue = std::move(catalogue); }
    // Builds the adaptors the activation inputs run on, once the window
    // controller is created (never in a copy that quits at once).
    void setInputPlatformFactory(std::function<InputPlatform()> factory) { m_inputFactory = std::move(factory); }

    void applicationWillFinishLaunching();
    // Returns false when another instance runs and this one is quitting.
    bool applicationDidFinishLaunching();
    // Dock click or a second copy's activation: show the overlay.
    bool applicationShouldHandleReopen(bool hasVisibleWindows);
    bool applicationShouldTerminateAfterLastWindowClosed() const { return false; }
    void applicationWillTerminate();

    bool launchedAsLoginItem() const { return m_launchedAsLoginItem; }
    LaunchpadWindowController *windowController() const { return m_windowController.get(); }
    QObject *statusBarController() const { return m_statusBarController.get(); }

    // "ShowDockIcon": the launcher in the taskbar; kept and applied at once.
    bool showsDockIcon() const;
    void setShowsDockIcon(bool show);

Q_SIGNALS:
    void dockIconVisibilityChanged(bool visible);
    // Emitted once the window controller exists, before the first show.
    void windowControllerCreated(LaunchpadWindowController *controller);

private:
    void purgeLegacyCachesOnce();

    ApplicationPlatform &m_platform;
    StorageLocations m_locations;
    StatusItemFactory m_statusItemFactory;
    CataloguePlatform m_catalogue;
    std::function<InputPlatform()> m_inputFactory;
    std::unique_ptr<LaunchpadWindowController> m_windowController;
    std::unique_ptr<QObject> m_statusBarController;
    bool m_launchedAsLoginItem = false;
};
