#pragma once

#include "layout/FolderAppsGrid.h"
#include "layout/GridEntry.h"
#include "layout/LayoutRefusal.h"
#include "layout/LayoutServices.h"
#include "layout/PageGeometry.h"
#include "layout/SlotMove.h"

#include <QObject>
#include <QSet>
#include <QStringList>
#include <QVariantList>
#include <optional>

class AppScan;
class FolderSlotManager;
class SlotEdit;

// The main grid's layout: what occupies which cell, and every operation that
// changes it. Lives on the main thread; only the application scan runs on a
// worker. Each edit writes the changed lists through the repositories at
// once, so nothing needs flushing later.
class LaunchpadViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariantList apps READ appsForView NOTIFY appsChanged)
    Q_PROPERTY(QVariantList folders READ foldersForView NOTIFY foldersChanged)
    Q_PROPERTY(QStringList slots READ slots NOTIFY slotsChanged)
    Q_PROPERTY(QVariantList widgets READ widgetsForView NOTIFY widgetsChanged)
    Q_PROPERTY(QVariantList workflows READ workflowsForView NOTIFY workflowsChanged)
    Q_PROPERTY(qint64 layoutRevision READ layoutRevision NOTIFY layoutRevisionChanged)
    Q_PROPERTY(int gridColumns READ gridColumns WRITE setGridColumns NOTIFY gridGeometryChanged)
    Q_PROPERTY(int gridRows READ gridRows WRITE setGridRows NOTIFY gridGeometryChanged)
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)
    Q_PROPERTY(QString folderAppsGrid READ folderAppsGridRawValue WRITE setFolderAppsGridRawValue NOTIFY
                   folderAppsGridChanged)
public:
    enum class NeighbourPage { Previous, Next };

    explicit LaunchpadViewModel(LayoutServices services, QObject *parent = nullptr);
    ~LaunchpadViewModel() override;

    // --- Published state -------------------------------------------------
    const QList<AppItem> &apps() const { return m_apps; }
    // Apps the grid or a folder holds that the last scan could not find but
    // cannot call uninstalled either (their folder missing or unreadable this
    // time), as last seen. They keep their places; views show them dimmed.
    const QList<AppItem> &unavailableApps() const { return m_unavailableApps; }
    const QList<FolderItem> &folders() const { return m_folders; }
    const QStringList &slots() const { return m_slots; }
    const QList<WidgetItem> &widgets() const { return m_widgets; }
    const QList<WorkflowItem> &workflows() const { return m_workflows; }
    // Advances by one at every write of a cell.
    qint64 layoutRevision() const { return m_layoutRevision; }
    bool isLoading() const { return m_isLoadingInitialData; }

    std::optional<FolderItem> folder(const QUuid &id) const;
    std::optional<WidgetItem> widget(const QUuid &id) const;
    GridEntryOrEmpty resolve(const QString &key) const;
    // The records by key, built once per change of apps, folders, widgets or workflows.
    const GridLookup &lookup() const;
    GridEntryOrEmpty entryAt(qsizetype slot) const;

    // --- Pages (columns x rows from the appearance settings; the view sets them)
    int gridColumns() const { return m_geometry.columns; }
    int gridRows() const { return m_geometry.rows; }
    PageGeometry geometry() const { return m_geometry; }
    // Widgets whose rectangle does not fit these pages are re-laid (and
    // saved). Until the view first sets the shape, loads leave widgets that
    // fit some other shape alone, so a default shape never moves them.
    void setGridColumns(int columns);
    void setGridRows(int rows);
    void setGridGeometry(int columns, int rows);
    Q_INVOKABLE int pageCount() const;
    // The keys of one page, padded with empty keys to a whole page.
    Q_INVOKABLE QStringList pageKeys(int page) const;
    Q_INVOKABLE qsizetype absoluteSlot(int page, int localIndex) const;

    // --- Loading ---------------------------------------------------------
    // Loads the stored layout, repairs it, scans the applications on a worker
    // and reconciles; returns before the scan ends (loadFinished follows).
    // A call during a load queues exactly one more load.
    Q_INVOKABLE void loadInitial();
    // The catalogue as the last run saw it, so the first frame can show the
    // stored grid before this run's scan ends. The scan replaces it; nothing
    // is reconciled against it.
    void preloadApps(const QList<AppItem> &apps);

    // --- Placement, removal and hiding -----------------------------------
    // Operations that can be turned down answer with the reason
    // (LayoutRefusal); describe() words it.
    //
    // First empty cell, else the end. A key already on the grid, an app that
    // is in a folder or hidden, or the key of an unknown folder or workflow is
    // not inserted. Returns the cell.
    LayoutResult<qsizetype> insertKey(const QString &key);
    // Returns the emptied cell, or NotOnGrid.
    LayoutResult<qsizetype> removeKey(const QString &key);
    Q_INVOKABLE void hideApp(const QString &path);
    // NotHidden when the app is not hidden.
    LayoutResult<void> unhideApp(const QString &path);
    QSet<QString> hiddenApps() const;
    // Remembers an app the user just opened (the recently opened list).
    void noteLaunched(const QString &path);

    // --- Folders ---------------------------------------------------------
    LayoutResult<FolderItem> createFolder(const QString &name, const QStringList &appPaths,
                                          const QStringList &systemFolderPaths = {},
                                          std::optional<qsizetype> preferredSlot = std::nullopt);
    // Rename or change members; a folder left without members is deleted.
    LayoutResult<void> updateFolder(const FolderItem &folder);
    // A blank name is refused (InvalidName).
    LayoutResult<void> renameFolder(const QUuid &id, const QString &name);
    // Deletes the folder; its apps return to their original cells where those are empty.
    LayoutResult<void> dissolveFolder(const QUuid &id);
    LayoutResult<void> addAppToFolder(const QUuid &folderId, const QString &appPath);
    // The app returns to its original cell when that is empty, else to the first empty cell.
    LayoutResult<void> removeAppFromFolder(const QUuid &folderId, const QString &appPath);
    // Stores an open folder's cell list (completed with missing members).
    LayoutResult<void> setFolderSlots(const QUuid &folderId, const QStringList &slots);
    // The folder's cells as shown: stored cells completed with missing members.
    QStringList shownFolderSlots(const QUuid &folderId) const;
    // A manager for one open folder, kept in step with the folder and the
    // chosen grid shape; its edits are stored into the folder. nullptr for an
    // unknown id.
    FolderSlotManager *makeFolderSlotManager(const QUuid &folderId, QObject *parent = nullptr);
    FolderAppsGrid folderAppsGrid() const { return m_folderAppsGrid; }
    void setFolderAppsGrid(FolderAppsGrid grid);
    QString folderAppsGridRawValue() const;
    void setFolderAppsGridRawValue(const QString &raw);

    // --- Moves -----------------------------------------------------------
    // The drag-and-drop move of the main grid (rows and pages 8 cells wide).
    Q_INVOKABLE void moveKeyInSlots(const QString &key, int toIndex);
    // The same move, answering whether anything moved or why it was refused
    // (a widget cell or key, or a key that may not stand on the grid).
    LayoutResult<SlotMove::Outcome> moveKey(const QString &key, qsizetype toIndex);
    // The grid view's side of a drag: start, drop on a page-local cell, and a
    // move to the neighbouring page while dragging over a page edge.
    void beginDrag(const QString &key, int pageSlot);
    // Returns true when the key was moved. movedToOtherPage: the drag already
    // put the key on another page and the drop leaves it there.
    bool endDrag(const QString &key, int fromPageSlot, int page, int localSlot, bool movedToOtherPage = false);
    // Returns the absolute target slot, or -1 when the entry was not moved.
    qsizetype moveEntryToNeighbourPage(const GridEntry &entry, int currentPage, int localSlot,
                                       NeighbourPage direction);
    // Whether an icon may be dropped on this cell (widget cells refuse).
    bool acceptsDropAt(qsizetype slot) const;
    // The slot list as a drop of key on target would leave it, worked out
    // by the move itself on a copy: nothing is written, saved or logged.
    // Nothing when the drop would be refused.
    std::optional<QStringList> previewDrop(const QString &key, qsizetype target) const;
    // The same for an app dragged out of a folder onto target.
    std::optional<QStringList> previewDropFromFolder(const QUuid &folderId, const QString &appPath,
                                                     qsizetype target) const;
    // Pages at the end with nothing on them are removed (a drag can leave
    // one behind); the first page always stays.
    void dropTrailingEmptyPages();

    // --- Widgets ---------------------------------------------------------
    // A new widget at requestedSlot (or the first free rectangle). Nothing is
    // added when the size fits no page of the current grid.
    LayoutResult<WidgetItem> addWidget(const QString &kind, WidgetSize size,
                                       std::optional<qsizetype> requestedSlot = std::nullopt,
                                       const QJsonObject &settings = {});
    LayoutResult<void> moveWidget(const QUuid &id, qsizetype requestedSlot);
    LayoutResult<void> removeWidget(const QUuid &id);
    qsizetype findWidgetTopLeftIndex(const QUuid &id) const;

    // --- Workflows -------------------------------------------------------
    std::optional<WorkflowItem> workflow(const QUuid &id) const;
    // Stores a new workflow and puts its key in the first empty cell, else at
    // the end. Returns the cell; an id already stored is AlreadyOnGrid.
    LayoutResult<qsizetype> addWorkflow(const WorkflowItem &workflow);
    // Replaces the stored record of the same id; its cells stay where they are.
    LayoutResult<void> updateWorkflow(const WorkflowItem &workflow);
    // Removes the workflow and its keys from the grid and from every folder.
    LayoutResult<void> deleteWorkflow(const QUuid &id);
    // A workflow icon moved into a folder: its grid cell empties and it takes
    // the folder's first empty cell (else the end).
    LayoutResult<void> addWorkflowToFolder(const QUuid &folderId, const QUuid &workflowId);
    // Out of the folder and back on the grid, in the first empty cell; returns it.
    LayoutResult<qsizetype> removeWorkflowFromFolder(const QUuid &folderId, const QUuid &workflowId);

Q_SIGNALS:
    void appsChanged();
    void foldersChanged();
    void slotsChanged();
    void widgetsChanged();
    void workflowsChanged();
    void layoutRevisionChanged();
    void gridGeometryChanged();
    void loadingChanged();
    void folderAppsGridChanged();
    // A load (with its scan) has finished; a queued reload may start next.
    void loadFinished();

private:
    enum Part { SlotsPart = 1, FoldersPart = 2, WidgetsPart = 4 };

    QVariantList appsForView() const;
    QVariantList foldersForView() const;
    QVariantList widgetsForView() const;
    QVariantList workflowsForView() const;

    // The folder's index and the workflow's key, or why either is unknown.
    struct FolderAndWorkflow {
        qsizetype folder;
        QString key;
    };
    LayoutResult<FolderAndWorkflow> folderAndWorkflow(const QUuid &folderId, const QUuid &workflowId) const;

    void loadStoredLayout();
    void startScan();
    void applyScan(const AppScan &scan);
    // Points what the user arranged at apps that moved to another path (the
    // same identity, see AppReconciler::movedApps): cells, folders, hidden
    // and recent lists, workflows, custom names and icons. Returns the parts
    // to save.
    int followMovedApps(const AppScan &scan, const QHash<QString, AppItem> &lastSeen, SlotEdit &edit);
    void finishLoading();
    void setLoading(bool loading);

    // Publishes an edit: advances the revision by its writes, saves and
    // announces the parts named in `save`.
    void commit(const SlotEdit &edit, int save);
    void relayWidgets();
    // Why key may not be put on the grid, or nothing when it may.
    std::optional<LayoutRefusal> refusalToPlace(const QString &key) const;
    QString dragName(const QString &key) const;

    LayoutServices m_services;
    QList<AppItem> m_apps;
    QList<AppItem> m_unavailableApps;
    QList<FolderItem> m_folders;
    QStringList m_slots;
    QList<WidgetItem> m_widgets;
    QList<WorkflowItem> m_workflows;
    qint64 m_layoutRevision = 0;
    PageGeometry m_geometry;
    bool m_geometryKnown = false; // set by the view; until then only damaged widgets are re-laid
    FolderAppsGrid m_folderAppsGrid;
    bool m_isLoadingInitialData = false;
    bool m_hasPendingLoadInitial = false;
    mutable std::optional<GridLookup> m_lookup;
};
