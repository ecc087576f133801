#pragma once

#include "app/CompositionRoot.h"

#include <QObject>
#include <memory>

class AppMonitor;

// Owns the composition and the services for the life of the process, and the
// overlay's visibility. The overlay view (ui/) follows overlayVisible; the
// core stays free of any display.
class LaunchpadWindowController : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool overlayVisible READ overlayVisible NOTIFY overlayVisibleChanged)
public:
    explicit LaunchpadWindowController(const StorageLocations &locations, const CataloguePlatform &catalogue = {},
                                       QObject *parent = nullptr);
    ~LaunchpadWindowController() override;

    CompositionRoot &composition() { return m_composition; }
    bool overlayVisible() const { return m_overlayVisible; }
    AppMonitor *appMonitor() const { return m_appMonitor.get(); }

public Q_SLOTS:
    void showOverlay();
    void hideOverlay();
    void toggleOverlay();

Q_SIGNALS:
    void overlayVisibleChanged(bool visible);
    // Applications were installed or removed (after a quiet second); the
    // layout model reloads the catalogue.
    void catalogueChanged();

private:
    void setOverlayVisible(bool visible);

    std::unique_ptr<AppMonitor> m_appMonitor;
    CompositionRoot m_composition;
    bool m_overlayVisible = false;
};
