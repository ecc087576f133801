#pragma once

#include "organise/WorkflowItem.h"
#include "storage/AppearanceRepository.h"
#include "ui/PagesModel.h"

#include <QObject>
#include <QPointer>
#include <QUuid>
#include <memory>

class AppLauncher;
class AppNameRepositoryImpl;
class FolderSlotManager;
class LaunchpadViewModel;
class QScreen;

// What the overlay's QML sees: the pages of the grid as cell models, search,
// the open folder, and the operations a gesture triggers. It turns view
// coordinates (page, cell) into model calls and holds no layout rules of its
// own; while a drag is in progress the pages show where the drop would put
// things, computed by the model's own move on a copy.
class GridPresenter : public QObject {
    Q_OBJECT
    Q_PROPERTY(int columns READ columns NOTIFY geometryChanged)
    Q_PROPERTY(int rows READ rows NOTIFY geometryChanged)
    Q_PROPERTY(qreal iconSize READ iconSize NOTIFY appearanceChanged)
    Q_PROPERTY(bool showLabels READ showLabels NOTIFY appearanceChanged)
    Q_PROPERTY(QObject *pages READ pages CONSTANT)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY pageCountChanged)
    Q_PROPERTY(int currentPage READ currentPage WRITE setCurrentPage NOTIFY currentPageChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(QObject *searchResults READ searchResults CONSTANT)
    Q_PROPERTY(QObject *hiddenApps READ hiddenApps CONSTANT)
    Q_PROPERTY(bool hasBackdrop READ hasBackdrop NOTIFY backdropChanged)
    Q_PROPERTY(int backdropRevision READ backdropRevision NOTIFY backdropChanged)
    Q_PROPERTY(QString openFolderId READ openFolderId NOTIFY openFolderChanged)
    Q_PROPERTY(QString openFolderName READ openFolderName NOTIFY openFolderChanged)
    Q_PROPERTY(int folderColumns READ folderColumns NOTIFY openFolderChanged)
    Q_PROPERTY(int folderRows READ folderRows NOTIFY openFolderChanged)
    Q_PROPERTY(QObject *folderPages READ folderPages CONSTANT)
    Q_PROPERTY(int folderPageCount READ folderPageCount NOTIFY openFolderChanged)
public:
    GridPresenter(LaunchpadViewModel &layout, AppNameRepositoryImpl &names, AppearanceRepositoryImpl &appearance,
                  std::shared_ptr<AppLauncher> launcher, QObject *parent = nullptr);
    ~GridPresenter() override;

    int columns() const;
    int rows() const;
    qreal iconSize() const;
    bool showLabels() const;
    QObject *pages() { return &m_pages; }
    PagesModel &pagesModel() { return m_pages; }
    int pageCount() const { return m_pages.count(); }
    int currentPage() const { return m_currentPage; }
    void setCurrentPage(int page);
    QString searchText() const { return m_searchText; }
    void setSearchText(const QString &text);
    QObject *searchResults() { return &m_searchResults; }
    AppListModel &searchResultsModel() { return m_searchResults; }
    QObject *hiddenApps() { return &m_hiddenApps; }
    bool hasBackdrop() const { return m_hasBackdrop; }
    int backdropRevision() const { return m_backdropRevision; }
    QString openFolderId() const;
    QString openFolderName() const;
    int folderColumns() const;
    int folderRows() const;
    QObject *folderPages() { return &m_folderPages; }
    PagesModel &folderPagesModel() { return m_folderPages; }
    int folderPageCount() const { return m_folderPages.count(); }

    // Called by the window when it is about to show.
    void setBackdropAvailable(bool available);
    void setDisplay(QScreen *screen);
    void setDisplayProfile(const DisplayProfile &display);
    void notifyShown();

    // Cells as they really are (not as a drag preview shows them), for
    // keyboard navigation and hover decisions.
    Q_INVOKABLE QString keyAt(int page, int localIndex) const;
    Q_INVOKABLE QString kindOf(const QString &key) const;
    Q_INVOKABLE QString entryIdOf(const QString &key) const;
    Q_INVOKABLE QString titleOf(const QString &key) const;
    Q_INVOKABLE QString folderKeyAt(int page, int localIndex) const;

    // Launching and navigation.
    Q_INVOKABLE void activate(const QString &key);
    Q_INVOKABLE void activateSearchResult(int index);
    Q_INVOKABLE void nextPage();
    Q_INVOKABLE void previousPage();
    Q_INVOKABLE void hide();

    // Dragging on the main grid.
    Q_INVOKABLE void beginDrag(const QString &key, int page, int localIndex);
    // Shows where the dragged key would go if dropped on this cell.
    Q_INVOKABLE void previewDrop(const QString &key, int page, int localIndex);
    // Shows the grid as it really is again.
    Q_INVOKABLE void cancelPreview();
    Q_INVOKABLE bool drop(const QString &key, int page, int localIndex);
    Q_INVOKABLE void cancelDrag();
    // direction -1 = previous page, +1 = next page.
    Q_INVOKABLE bool moveToNeighbourPage(const QString &key, int direction);
    // Held over another app or a folder: the two become (or join) a folder.
    Q_INVOKABLE bool mergeIntoFolder(const QString &draggedKey, const QString &targetKey);

    // Folders.
    Q_INVOKABLE void openFolder(const QString &folderId);
    Q_INVOKABLE void closeFolder();
    Q_INVOKABLE bool moveInFolder(const QString &folderId, const QString &key, int page, int localIndex);
    Q_INVOKABLE bool dropOutOfFolder(const QString &folderId, const QString &key, int page, int localIndex);
    Q_INVOKABLE bool moveOutOfFolderOnto(const QString &folderId, const QString &key, const QString &targetKey);
    Q_INVOKABLE bool renameFolder(const QString &folderId, const QString &name);
    Q_INVOKABLE bool dissolveFolder(const QString &folderId);
    Q_INVOKABLE bool removeFromFolder(const QString &folderId, const QString &key);

    // Apps and widgets.
    Q_INVOKABLE void renameApp(const QString &key, const QString &name);
    Q_INVOKABLE void hideApp(const QString &key);
    Q_INVOKABLE void unhideApp(const QString &key);
    Q_INVOKABLE bool removeWidget(const QString &widgetId);
    Q_INVOKABLE bool moveWidget(const QString &widgetId, int page, int localIndex);

Q_SIGNALS:
    void geometryChanged();
    void appearanceChanged();
    void pageCountChanged();
    void currentPageChanged();
    void searchTextChanged();
    void backdropChanged();
    void openFolderChanged();
    void shown();
    void hideRequested();
    // An app was opened (or failed to open, with the error text).
    void launched(const QString &appPath, bool ok, const QString &error);

private:
    void scheduleRebuild();
    void rebuildPages();
    void launchWorkflow(const WorkflowItem &workflow);
    void rebuildSearch();
    void rebuildHidden();
    void rebuildFolder();
    QString appTitle(const AppItem &app) const;
    std::optional<QUuid> folderUuid(const QString &text) const;
    // Moves an app out of a folder back to the grid; its path, or nothing.
    std::optional<QString> takeOutOfFolder(const QString &folderId, const QString &key);
    GridCellBuilder cellBuilder() const;

    LaunchpadViewModel &m_layout;
    AppNameRepositoryImpl &m_names;
    AppearanceRepositoryImpl &m_appearance;
    std::shared_ptr<AppLauncher> m_launcher;
    DisplayProfile m_display;

    PagesModel m_pages;
    AppListModel m_searchResults;
    AppListModel m_hiddenApps;
    PagesModel m_folderPages;
    QPointer<FolderSlotManager> m_folder;

    // The page cells are built for this key; a change of any part rebuilds.
    struct BuiltFor {
        qint64 revision = -1;
        int columns = 0;
        int rows = 0;
        quint64 content = 0; // apps, folders, widgets, workflows or names changed
        bool operator==(const BuiltFor &) const = default;
    } m_builtFor;
    quint64 m_contentRevision = 0;
    bool m_rebuildPending = false;
    std::optional<QStringList> m_preview; // the slot list shown during a drag
    QString m_dragKey;
    int m_dragFromPageSlot = -1;

    int m_currentPage = 0;
    QString m_searchText;
    bool m_hasBackdrop = false;
    int m_backdropRevision = 0;
};
