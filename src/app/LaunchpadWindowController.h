#pragma once

#include "app/CompositionRoot.h"
#include "layout/LaunchpadViewModel.h"

#include <QObject>

// Owns the composition and the services for the life of the process, and the
// overlay's visibility. The overlay view (ui/) follows overlayVisible; the
// core stays free of any display.
class LaunchpadWindowController : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool overlayVisible READ overlayVisible NOTIFY overlayVisibleChanged)
    Q_PROPERTY(LaunchpadViewModel *layout READ layout CONSTANT)
public:
    explicit LaunchpadWindowController(const StorageLocations &locations, QObject *parent = nullptr);
    ~LaunchpadWindowController() override;

    CompositionRoot &composition() { return m_composition; }
    bool overlayVisible() const { return m_overlayVisible; }
    // The layout model, created after the composition and loaded at once.
    LaunchpadViewModel *layout() const { return m_layout; }

public Q_SLOTS:
    void showOverlay();
    void hideOverlay();
    void toggleOverlay();
    // The installed applications changed on disk (the app monitor's
    // debounced notice): the layout reloads its catalogue.
    void onCatalogueChanged();

Q_SIGNALS:
    void overlayVisibleChanged(bool visible);

private:
    void setOverlayVisible(bool visible);

    CompositionRoot m_composition;
    LaunchpadViewModel *m_layout = nullptr;
    bool m_overlayVisible = false;
};
