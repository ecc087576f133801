#pragma once

#include "app/CompositionRoot.h"

#include <QObject>

// Owns the composition and the services for the life of the process, and the
// overlay's visibility. The overlay view (ui/) follows overlayVisible; the
// core stays free of any display.
class LaunchpadWindowController : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool overlayVisible READ overlayVisible NOTIFY overlayVisibleChanged)
public:
    explicit LaunchpadWindowController(const StorageLocations &locations, QObject *parent = nullptr);
    ~LaunchpadWindowController() override;

    CompositionRoot &composition() { return m_composition; }
    bool overlayVisible() const { return m_overlayVisible; }

public Q_SLOTS:
    void showOverlay();
    void hideOverlay();
    void toggleOverlay();

Q_SIGNALS:
    void overlayVisibleChanged(bool visible);

private:
    void setOverlayVisible(bool visible);

    CompositionRoot m_composition;
    bool m_overlayVisible = false;
};
