#pragma once

#include "storage/AppearanceRepository.h"
#include "ui/ActivationPresenter.h"
#include "ui/BackdropPresenter.h"
#include "ui/BackgroundPresenter.h"
#include "ui/CellFactory.h"
#include "ui/DragController.h"
#include "ui/FolderPresenter.h"
#include "ui/HiddenAppsPresenter.h"
#include "ui/PagesPresenter.h"
#include "ui/SearchPresenter.h"
#include "ui/SpacesPresenter.h"
#include "ui/SystemFoldersPresenter.h"
#include "ui/ThemesPresenter.h"
#include "ui/WorkflowsPresenter.h"

#include <QObject>
#include <QTimer>
#include <QtQml/qqmlregistration.h>
#include <memory>

class AppLauncher;
class AppNameRepositoryImpl;
class AppsCustomizationRepository;
class FolderIconStyleRepository;
class FileChooser;
class LaunchpadViewModel;
class SystemFolderPanelAssetCache;
class SystemFoldersService;
class WorkflowLaunchService;
class WorkflowsViewModel;
class QScreen;
class SpacesViewModel;

// What the overlay's QML is given: one presenter per concern (the pages,
// search, hidden apps, the open folder, opening things, and the pointer
// gestures), and the overlay-wide state (the backdrop, showing and hiding).
// None of them holds layout rules: those are the layout model's.
class GridPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made once by the application")
    Q_PROPERTY(PagesPresenter *pages READ pages CONSTANT)
    Q_PROPERTY(SearchPresenter *search READ search CONSTANT)
    Q_PROPERTY(HiddenAppsPresenter *hiddenApps READ hiddenApps CONSTANT)
    Q_PROPERTY(FolderPresenter *folder READ folder CONSTANT)
    Q_PROPERTY(ActivationPresenter *activation READ activation CONSTANT)
    Q_PROPERTY(DragController *drag READ drag CONSTANT)
    Q_PROPERTY(SpacesPresenter *spaces READ spaces CONSTANT)
    Q_PROPERTY(ThemesPresenter *themes READ themes CONSTANT)
    Q_PROPERTY(WorkflowsPresenter *workflows READ workflows CONSTANT)
    Q_PROPERTY(SystemFoldersPresenter *systemFolders READ systemFolders CONSTANT)
    Q_PROPERTY(BackdropPresenter *backdrop READ backdrop CONSTANT)
    Q_PROPERTY(BackgroundPresenter *background READ background CONSTANT)
    // A short message for the user (a save that failed); empty when none.
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
public:
    GridPresenter(LaunchpadViewModel &layout, AppNameRepositoryImpl &names, AppearanceRepositoryImpl &appearance,
                  std::shared_ptr<AppLauncher> launcher, QObject *parent = nullptr);
    ~GridPresenter() override;

    PagesPresenter *pages() { return &m_pages; }
    SearchPresenter *search() { return &m_search; }
    HiddenAppsPresenter *hiddenApps() { return &m_hidden; }
    FolderPresenter *folder() { return &m_folder; }
    ActivationPresenter *activation() { return &m_activation; }
    DragController *drag() { return &m_drag; }
    SpacesPresenter *spaces() { return &m_spaces; }
    ThemesPresenter *themes() { return &m_themes; }
    // The Spaces the strip shows; a switch ends what was half done on the
    // old grid (a drag, an open folder, a search).
    void setSpaces(SpacesViewModel *spaces);
    // An app's name or icon changed: every view showing apps re-reads them.
    void refreshApps();
    WorkflowsPresenter *workflows() { return &m_workflows; }
    SystemFoldersPresenter *systemFolders() { return &m_systemFolders; }
    // What workflows and system folders need; until attached they do nothing.
    struct Services {
        WorkflowsViewModel *workflows = nullptr;
        std::shared_ptr<WorkflowLaunchService> workflowLauncher;
        std::shared_ptr<SystemFoldersService> systemFolders;
        std::shared_ptr<SystemFolderPanelAssetCache> folderAssets;
        std::shared_ptr<FileChooser> chooser;
        std::shared_ptr<AppsCustomizationRepository> appIcons;
        std::shared_ptr<FolderIconStyleRepository> folderStyles;
    };
    void attach(const Services &services);
    // What is drawn behind the grid, and the wallpaper choice for settings.
    BackdropPresenter *backdrop() { return &m_backdrop; }
    BackgroundPresenter *background() { return &m_background; }
    const CellFactory &cells() const { return m_cells; }
    QString notice() const { return m_notice; }
    // Shown for a while, or until the next one.
    void showNotice(const QString &text);

    Q_INVOKABLE void hide();
    // The overlay goes and the settings window comes.
    Q_INVOKABLE void openSettings();
    Q_INVOKABLE QString titleOf(const QString &key) const { return m_cells.titleOf(key); }
    Q_INVOKABLE CellKind::Kind kindOf(const QString &key) const { return m_cells.cellFor(key).kind; }
    Q_INVOKABLE QString entryIdOf(const QString &key) const { return m_cells.cellFor(key).entryId; }
    // An empty name gives the app its own name back.
    Q_INVOKABLE void renameApp(const QString &key, const QString &name);
    // Asks for an image and makes it the app's icon; a refusal is a notice.
    Q_INVOKABLE void chooseIcon(const QString &key);
    Q_INVOKABLE void setIcon(const QString &key, const QString &imageFile);
    Q_INVOKABLE void resetIcon(const QString &key);
    Q_INVOKABLE bool hasCustomIcon(const QString &key) const;
    Q_INVOKABLE bool hasCustomName(const QString &key) const;
    // The apps the user renamed or gave an icon of their own, by name:
    // {key, title, iconPath, renamed, customIcon} maps.
    Q_INVOKABLE QVariantList customizedApps() const;
    // The folders with their plate colours ({id, name, tint} maps), and
    // choosing one ("" gives the usual glass back).
    Q_INVOKABLE QVariantList folderTints() const;
    Q_INVOKABLE void setFolderTint(const QString &folderId, const QString &tint);
    Q_INVOKABLE bool removeWidget(const QString &widgetId);

    // Called by the window around showing and hiding.
    void setDisplay(QScreen *screen);
    void notifyShown();
    void notifyHidden();

Q_SIGNALS:
    void noticeChanged();
    void shown();
    void hideRequested();
    void settingsRequested();

private:
    LaunchpadViewModel &m_layout;
    AppNameRepositoryImpl &m_names;
    CellFactory m_cells;
    ActivationPresenter m_activation;
    PagesPresenter m_pages;
    SearchPresenter m_search;
    HiddenAppsPresenter m_hidden;
    FolderPresenter m_folder;
    DragController m_drag;
    SpacesPresenter m_spaces;
    ThemesPresenter m_themes;
    WorkflowsPresenter m_workflows;
    SystemFoldersPresenter m_systemFolders;
    BackdropPresenter m_backdrop;
    BackgroundPresenter m_background{m_backdrop};
    QString m_notice;
    QTimer m_noticeTimer;
    std::shared_ptr<AppsCustomizationRepository> m_icons;
    std::shared_ptr<FileChooser> m_chooser;
    std::shared_ptr<FolderIconStyleRepository> m_folderStyles;
};
