#pragma once

#include "foundation/GridRecords.h"
#include "spaces/SpaceItem.h"

#include <QJsonObject>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVariantList>
#include <memory>

class LaunchpadViewModel;
class SpaceStorageProvider;
class SpacesAutoSwitchService;
class SpacesRepository;
class SpacesSnapshotService;
class UserDefaultsStoreType;

// The Spaces the user keeps and the one in use. A switch swaps the store
// under every layout repository (through the provider) and reloads the grid;
// the active Space's snapshot follows its edits. Main thread only.
class SpacesViewModel : public QObject {
    Q_OBJECT
    // Each: {id, name, emoji, color, isCurrent, hasHotKey}; the standard
    // profile is not in the list.
    Q_PROPERTY(QVariantList spaces READ spacesForView NOTIFY spacesChanged)
    // Empty for the standard profile.
    Q_PROPERTY(QString activeSpaceId READ activeSpaceIdText NOTIFY activeSpaceChanged)
    Q_PROPERTY(bool isTransitioning READ isTransitioning NOTIFY isTransitioningChanged)
public:
    static constexpr int kAutoSaveDelayMs = 400;

    SpacesViewModel(std::shared_ptr<SpacesRepository> repository, std::shared_ptr<SpacesSnapshotService> snapshots,
                    std::shared_ptr<SpaceStorageProvider> provider, QObject *parent = nullptr);
    ~SpacesViewModel() override;

    // At start-up, before any repository reads: points the provider at the
    // stored active Space, forgetting an id that names no Space.
    static void restoreActiveSpace(SpaceStorageProvider &provider, SpacesRepository &repository);

    // The launcher's grid: reloaded after a switch, and its edits saved into
    // the active Space's snapshot.
    void setLayoutModel(LaunchpadViewModel *layout);
    void setAutoSwitchService(SpacesAutoSwitchService *service);

    QList<SpaceItem> spaceItems() const { return m_spaces; }
    // Where the automatic switch's suppression is kept.
    std::shared_ptr<UserDefaultsStoreType> standardStore() const;
    std::optional<SpaceItem> space(const QUuid &id) const;
    std::optional<QUuid> activeSpaceId() const;
    QString activeSpaceIdText() const;
    bool isTransitioning() const { return m_isTransitioning; }
    QVariantList spacesForView() const;

    // Returns the new Space. Copies the current profile, or starts from the
    // default layout.
    SpaceItem createSpace(const QString &name, const QString &emoji, const QString &color, bool withCurrentSettings);
    // Adds a Space made elsewhere (an imported theme) with its profile; its
    // files are already in its asset folder.
    SpaceItem addSpace(SpaceItem space, const QJsonObject &snapshot);
    // Replaces the stored Space of the same id. False (and the message id in
    // *errorKey) when its shortcut belongs to another Space.
    bool updateSpace(const SpaceItem &space, QString *errorKey = nullptr);
    bool deleteSpace(const QUuid &id, QString *error = nullptr);
    // The Space another than `except` that uses this shortcut.
    std::optional<SpaceItem> hotKeyOwner(qint64 keyCode, quint64 modifiers, const QUuid &except) const;

    // target: a Space id, or none for the standard profile. byUser: the
    // user's own choice (it ends automatic-switch suppression).
    void switchTo(std::optional<QUuid> target, bool byUser);
    // Writes the active Space's current profile into its snapshot now
    // (at quit, and before leaving it).
    void persist();
    // Takes what was written into the suites of Spaces not in use (a new
    // workflow goes to every Space) into their snapshots, so a switch there
    // does not bring back the old profile.
    void refreshSnapshots();
    // Gives the icons imported themes keep for apps not installed to those
    // apps once they are (called after each catalogue scan).
    void adoptPendingIcons(const QList<AppItem> &installed);

    // Takes in a list or active Space another process stored.
    void reload();

    Q_INVOKABLE void switchToSpace(const QString &id); // "" = standard
    Q_INVOKABLE QString createSpaceFromOverlay(const QString &name, const QString &emoji, const QString &color,
                                               bool withCurrentSettings);

Q_SIGNALS:
    void spacesChanged();
    void activeSpaceChanged();
    void isTransitioningChanged();
    // A switch to another profile begins (for timing it to the screen).
    void switchStarted();
    // After a switch, once the provider points at the new profile.
    void spaceDidSwitch();
    // A theme package became a new Space; message says what came with it.
    void themeImported(const QString &message);
    // A theme package was opened (from the file manager): the overlay asks
    // what to do with it.
    void themeFileOpened(const QString &file);

private:
    void saveList();
    void scheduleAutoSave();
    void saveSnapshotIfChanged(const QUuid &space, bool force);
    void setTransitioning(bool transitioning);

    std::shared_ptr<SpacesRepository> m_repository;
    std::shared_ptr<SpacesSnapshotService> m_snapshots;
    std::shared_ptr<SpaceStorageProvider> m_provider;
    QPointer<LaunchpadViewModel> m_layout;
    QPointer<SpacesAutoSwitchService> m_autoSwitch;
    QList<SpaceItem> m_spaces;
    bool m_isTransitioning = false;
    bool m_isApplyingSnapshot = false;
    QTimer m_autoSave;
    QByteArray m_lastSavedSnapshotData;
    QUuid m_lastSavedForSpaceId;
    QList<QMetaObject::Connection> m_layoutConnections;
};
