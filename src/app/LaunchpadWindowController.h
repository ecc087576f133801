#pragma once

#include "app/CompositionRoot.h"
#include "input/HotKeyManager.h"
#include "input/InputPlatform.h"
#include "layout/LaunchpadViewModel.h"

#include <QObject>
#include <QSet>
#include <QUuid>
#include <memory>

class AppMonitor;
class GesturesManager;
class HotCornersManager;
class KnockToLaunchManager;
class SpacesAutoSwitchService;
class SpacesViewModel;
class UserDefaultsStoreType;

// Owns the composition and the services for the life of the process, and the
// overlay's visibility. The overlay view (ui/) follows overlayVisible; the
// core stays free of any display.
class LaunchpadWindowController : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool overlayVisible READ overlayVisible NOTIFY overlayVisibleChanged)
    Q_PROPERTY(LaunchpadViewModel *layout READ layout CONSTANT)
public:
    // catalogue: the platform's application sources and launcher; input: the
    // adaptors of the activation inputs (missing ones leave their input inert).
    explicit LaunchpadWindowController(const StorageLocations &locations, const CataloguePlatform &catalogue = {},
                                       InputPlatform input = {}, QObject *parent = nullptr);
    ~LaunchpadWindowController() override;

    CompositionRoot &composition() { return m_composition; }
    AppMonitor *appMonitor() const { return m_appMonitor.get(); }
    HotKeyManager &hotKeyManager() { return *m_hotKeyManager; }
    HotCornersManager &hotCornersManager() { return *m_hotCornersManager; }
    KnockToLaunchManager &knockToLaunchManager() { return *m_knockToLaunchManager; }
    GesturesManager &gesturesManager() { return *m_gesturesManager; }
    SpacesViewModel &spaces() const { return *m_composition.spacesViewModel; }
    SpacesAutoSwitchService &autoSwitch() { return *m_autoSwitch; }
    // The layout model, created after the migrations and loaded at once.
    LaunchpadViewModel *layout() const { return m_layout; }
    // Creating, editing and deleting workflows, over the layout model.
    WorkflowsViewModel *workflows() const { return m_workflows; }
    bool overlayVisible() const { return m_overlayVisible; }

public Q_SLOTS:
    void showOverlay();
    void hideOverlay();
    // The folders the user added as extra sources of applications: kept,
    // scanned and watched at once.
    QStringList extraAppFolders() const;
    void setExtraAppFolders(const QStringList &folders);
    void toggleOverlay();
    // `tillmora settings`: the view side opens its settings window on settingsRequested.
    void openSettings();

Q_SIGNALS:
    void settingsRequested();
    // Changed in this process by a command (another process's changes come
    // as settingsChangedElsewhere): views re-read the look, or the names
    // and icons of the apps.
    void appearanceChanged();
    void appsCustomized();
    void overlayVisibleChanged(bool visible);
    // The installed applications changed on disk (after the monitor's quiet second).
    void catalogueChanged();
    // Another process changed these settings; the layout and the inputs have
    // taken them in already, views re-read what they show.
    void settingsChangedElsewhere(const QStringList &keys);
    // Saving the user's changes started failing (with the reason), or works
    // again; the changes are kept and retried meanwhile.
    void saveStatusChanged(bool saved, const QString &error);

private:
    void watchCatalogue();
    void takeInExtraAppFolders();
    void setOverlayVisible(bool visible);
    void takeInChangedSettings(const QStringList &keys);
    void takeInChangedProfile(const QStringList &keys);
    void watchActiveSuite();
    void updateSpaceHotKeys();

    // Declared in start-up order: the activation managers and the app monitor
    // come before the composition, the gestures after the migrations.
    InputPlatform m_input;
    std::shared_ptr<UserDefaultsStoreType> m_inputSettings;
    std::unique_ptr<HotKeyManager> m_hotKeyManager;
    std::unique_ptr<HotCornersManager> m_hotCornersManager;
    std::unique_ptr<KnockToLaunchManager> m_knockToLaunchManager;
    std::unique_ptr<AppMonitor> m_appMonitor;
    CompositionRoot m_composition;
    std::unique_ptr<GesturesManager> m_gesturesManager;
    LaunchpadViewModel *m_layout = nullptr;
    std::unique_ptr<SpacesAutoSwitchService> m_autoSwitch;
    QSet<QUuid> m_watchedSuites;
    std::optional<QList<SpaceHotKey>> m_spaceHotKeys; // as last handed to the hotkey manager
    WorkflowsViewModel *m_workflows = nullptr;
    QList<AppItem> m_cachedApps;
    bool m_overlayVisible = false;
};
