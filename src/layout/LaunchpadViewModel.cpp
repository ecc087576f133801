#include "layout/LaunchpadViewModel.h"

#include "foundation/Logging.h"
#include "catalogue/AppsRepository.h"
#include "layout/AppReconciler.h"
#include "layout/FolderEdits.h"
#include "layout/FolderSlotManager.h"
#include "layout/FolderSlots.h"
#include "layout/LayoutSanitizer.h"
#include "layout/SlotEdit.h"
#include "layout/SlotEdits.h"
#include "foundation/SlotKey.h"
#include "layout/SlotMove.h"
#include "foundation/Uuids.h"
#include "layout/WidgetLayout.h"
#include "organise/WorkflowsRepository.h"
#include "storage/FoldersRepository.h"
#include "storage/HiddenAppsService.h"
#include "storage/OrderRepository.h"
#include "storage/UserDefaultsStoreType.h"
#include "storage/WidgetsRepository.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

#define LAYOUT_LOG(...) qCDebug(lcLayout, __VA_ARGS__)

namespace {
template <typename Record>
QVariantList toVariantList(const QList<Record> &records)
{
    QVariantList out;
    out.reserve(records.size());
    for (const Record &r : records)
        out.append(r.toJson().toVariantMap());
    return out;
}

template <typename Record>
qsizetype indexById(const QList<Record> &records, const QUuid &id)
{
    for (qsizetype i = 0; i < records.size(); ++i)
        if (records.at(i).id == id)
            return i;
    return -1;
}
}

LaunchpadViewModel::LaunchpadViewModel(LayoutServices services, QObject *parent)
    : QObject(parent)
    , m_services(std::move(services))
    , m_folderAppsGrid(FolderAppsGrids::kDefault)
{
    Q_ASSERT(m_services.foldersRepo && m_services.orderRepo && m_services.widgetsRepo
             && m_services.workflowsRepo && m_services.hiddenAppsService);
    if (m_services.preferences) {
        const auto raw = m_services.preferences->string(QLatin1String(FolderAppsGrids::kSettingsKey));
        if (raw)
            m_folderAppsGrid = FolderAppsGrids::fromRawValue(*raw).value_or(FolderAppsGrids::kDefault);
    }
}

LaunchpadViewModel::~LaunchpadViewModel() = default;

// ---------------------------------------------------------------- state

QVariantList LaunchpadViewModel::appsForView() const { return toVariantList(m_apps); }
QVariantList LaunchpadViewModel::foldersForView() const { return toVariantList(m_folders); }
QVariantList LaunchpadViewModel::workflowsForView() const { return toVariantList(m_workflows); }

QVariantList LaunchpadViewModel::widgetsForView() const
{
    QVariantList out;
    for (const WidgetItem &w : m_widgets) {
        QVariantMap map = w.toJson().toVariantMap();
        map.insert(QStringLiteral("columns"), WidgetSizes::columns(w.size));
        map.insert(QStringLiteral("rows"), WidgetSizes::rows(w.size));
        map.insert(QStringLiteral("anchor"), findWidgetTopLeftIndex(w.id));
        out.append(map);
    }
    return out;
}

std::optional<FolderItem> LaunchpadViewModel::folder(const QUuid &id) const
{
    const qsizetype i = indexById(m_folders, id);
    return i < 0 ? std::nullopt : std::optional<FolderItem>(m_folders.at(i));
}

std::optional<WidgetItem> LaunchpadViewModel::widget(const QUuid &id) const
{
    const qsizetype i = indexById(m_widgets, id);
    return i < 0 ? std::nullopt : std::optional<WidgetItem>(m_widgets.at(i));
}

const GridLookup &LaunchpadViewModel::lookup() const
{
    if (!m_lookup)
        m_lookup = GridLookup::build(m_apps, m_folders, m_widgets, m_workflows);
    return *m_lookup;
}

GridEntryOrEmpty LaunchpadViewModel::resolve(const QString &key) const
{
    return lookup().resolve(key);
}

GridEntryOrEmpty LaunchpadViewModel::entryAt(qsizetype slot) const
{
    return resolve(SlotList::at(m_slots, slot));
}

QSet<QString> LaunchpadViewModel::hiddenApps() const
{
    const QStringList list = m_services.hiddenAppsService->hiddenApps();
    return QSet<QString>(list.cbegin(), list.cend());
}

void LaunchpadViewModel::commit(const SlotEdit &edit, int save)
{
    m_lookup.reset();
    if (edit.writes() > 0) {
        m_layoutRevision += edit.writes();
        Q_EMIT slotsChanged();
        Q_EMIT layoutRevisionChanged();
    }
    if (save & SlotsPart)
        m_services.orderRepo->setSlots(m_slots);
    if (save & FoldersPart) {
        m_services.foldersRepo->saveAll(m_folders);
        Q_EMIT foldersChanged();
    }
    if (save & WidgetsPart) {
        m_services.widgetsRepo->save(m_widgets);
        Q_EMIT widgetsChanged();
    }
}

// ---------------------------------------------------------------- pages

void LaunchpadViewModel::setGridColumns(int columns) { setGridGeometry(columns, m_geometry.rows); }
void LaunchpadViewModel::setGridRows(int rows) { setGridGeometry(m_geometry.columns, rows); }

void LaunchpadViewModel::setGridGeometry(int columns, int rows)
{
    columns = std::max(1, columns);
    rows = std::max(1, rows);
    const bool changed = columns != m_geometry.columns || rows != m_geometry.rows;
    m_geometry.columns = columns;
    m_geometry.rows = rows;
    // The first shape the view reports may equal the default and still be
    // new to widgets laid out on another display: check them either way.
    if (changed || !m_geometryKnown)
        relayWidgets();
    m_geometryKnown = true;
    if (changed)
        Q_EMIT gridGeometryChanged();
}

void LaunchpadViewModel::relayWidgets()
{
    SlotEdit edit(m_slots);
    if (WidgetLayout::repair(edit, m_widgets, m_geometry) > 0)
        commit(edit, SlotsPart);
}

int LaunchpadViewModel::pageCount() const
{
    return m_geometry.pageCount(int(m_slots.size()));
}

QStringList LaunchpadViewModel::pageKeys(int page) const
{
    QStringList out;
    const qsizetype start = m_geometry.pageStart(page);
    for (qsizetype i = 0; i < m_geometry.capacity(); ++i)
        out.append(SlotList::at(m_slots, start + i));
    return out;
}

qsizetype LaunchpadViewModel::absoluteSlot(int page, int localIndex) const
{
    return m_geometry.absoluteSlot(std::max(0, page), std::max(0, localIndex));
}

// ---------------------------------------------------------------- loading

void LaunchpadViewModel::setLoading(bool loading)
{
    if (m_isLoadingInitialData == loading)
        return;
    m_isLoadingInitialData = loading;
    Q_EMIT loadingChanged();
}

void LaunchpadViewModel::loadInitial()
{
    LAYOUT_LOG("🎯 [LaunchpadViewModel] loadInitial() called");
    if (m_isLoadingInitialData) {
        m_hasPendingLoadInitial = true;
        LAYOUT_LOG("loadInitial already running; queued one pending reload");
        return;
    }
    setLoading(true);
    loadStoredLayout();
    startScan();
}

void LaunchpadViewModel::loadStoredLayout()
{
    m_folders = m_services.foldersRepo->loadAll();
    LAYOUT_LOG("Loaded %ld folders from repository", long(m_folders.size()));
    for (qsizetype i = 0; i < m_folders.size(); ++i) {
        const FolderItem &f = m_folders.at(i);
        LAYOUT_LOG("Folder %ld: %s with %ld apps and %ld system folders", long(i), qUtf8Printable(f.name),
                   long(f.appPaths.size()), long(f.systemFolderPaths.size()));
    }

    const QStringList loaded = m_services.orderRepo->slots();
    LAYOUT_LOG("Loaded %ld slots from repository", long(loaded.size()));
    // A layout swapped in underneath is a change of every cell for the views.
    const bool replaced = loaded != m_slots;
    m_slots = loaded;
    SlotEdit edit(m_slots);
    LayoutSanitizer::clearMalformedAndDuplicates(edit);
    LayoutSanitizer::clearFolderMembers(edit, m_folders);
    int save = 0;
    if (m_slots != loaded) {
        LAYOUT_LOG("🧹 [SANITIZE LOG] Cleaned malformed slot keys on load; saving sanitized slots");
        m_services.orderRepo->setSlots(m_slots);
    }

    m_widgets = m_services.widgetsRepo->load();
    m_workflows = m_services.workflowsRepo->load();
    const QStringList beforeOrphans = m_slots;
    LayoutSanitizer::clearOrphanWidgetMarkers(edit, m_widgets);
    LayoutSanitizer::clearOrphanWorkflowKeys(edit, m_workflows);
    if (LayoutSanitizer::clearOrphanWorkflowKeysInFolders(m_folders, m_workflows) > 0)
        save |= FoldersPart;
    WidgetLayout::repair(edit, m_widgets, m_geometry, m_geometryKnown);
    if (m_slots != beforeOrphans)
        save |= SlotsPart;

    if (replaced && edit.writes() == 0) {
        ++m_layoutRevision;
        Q_EMIT slotsChanged();
        Q_EMIT layoutRevisionChanged();
    }
    commit(edit, save);
    if (!(save & FoldersPart))
        Q_EMIT foldersChanged();
    Q_EMIT widgetsChanged();
    Q_EMIT workflowsChanged();
}

void LaunchpadViewModel::preloadApps(const QList<AppItem> &apps)
{
    if (!m_apps.isEmpty() || apps.isEmpty())
        return;
    m_apps = apps;
    m_lookup.reset();
    Q_EMIT appsChanged();
}

void LaunchpadViewModel::startScan()
{
    if (!m_services.appsRepo) {
        LAYOUT_LOG("No application catalogue; the stored layout is kept without a scan");
        QMetaObject::invokeMethod(this, &LaunchpadViewModel::finishLoading, Qt::QueuedConnection);
        return;
    }
    // The scan reads the disk off the main thread; its result comes back to
    // the main thread and finds the model only if it still exists.
    QPointer<LaunchpadViewModel> self(this);
    std::shared_ptr<AppsRepository> repo = m_services.appsRepo;
    QThreadPool::globalInstance()->start([self, repo] {
        QList<AppItem> apps = repo->fetch();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, apps = std::move(apps)] {
                if (self)
                    self->applyScan(apps);
            },
            Qt::QueuedConnection);
    });
}

void LaunchpadViewModel::applyScan(const QList<AppItem> &apps)
{
    LAYOUT_LOG("Fetched %ld apps", long(apps.size()));
    m_apps = apps;
    m_lookup.reset();
    Q_EMIT appsChanged();

    const QSet<QString> hidden = hiddenApps();
    SlotEdit edit(m_slots);
    int save = 0;
    if (m_slots.isEmpty()) {
        LAYOUT_LOG("Slots empty, initializing from apps");
        for (const QString &key :
             AppReconciler::initialLayout(apps, hidden, LayoutSanitizer::folderMemberPaths(m_folders)))
            edit.append(key);
        save |= SlotsPart;
    } else {
        LAYOUT_LOG("Slots not empty, cleaning up and syncing with current apps");
        const QSet<QString> installed = AppReconciler::pathsOf(apps);
        AppReconciler::clearDeletedApps(edit, installed);
        m_services.hiddenAppsService->removeDeleted([&](const QString &p) { return installed.contains(p); });
        if (AppReconciler::removeDeletedAppsFromFolders(m_folders, edit, installed))
            save |= FoldersPart;
        AppReconciler::placeNewApps(edit, apps, m_folders, hidden);
        save |= SlotsPart;
    }
    if (AppReconciler::clearHiddenApps(edit, hidden) > 0)
        save |= SlotsPart;
    commit(edit, save);
    finishLoading();
}

void LaunchpadViewModel::finishLoading()
{
    setLoading(false);
    Q_EMIT loadFinished();
    if (m_hasPendingLoadInitial) {
        m_hasPendingLoadInitial = false;
        loadInitial();
    }
}

// ---------------------------------------------------------------- edits

QString LaunchpadViewModel::refusalToPlace(const QString &key) const
{
    switch (SlotKey::kindOf(key)) {
    case SlotKey::Kind::Empty: return QStringLiteral("it is the empty key");
    case SlotKey::Kind::WidgetAnchor:
    case SlotKey::Kind::WidgetBlock: return QStringLiteral("widgets are placed with moveWidget");
    case SlotKey::Kind::App: {
        const QString path = SlotKey::appPath(key);
        if (path.isEmpty())
            return QStringLiteral("it names no application");
        for (const FolderItem &f : m_folders)
            if (f.appPaths.contains(path))
                return QStringLiteral("it is in folder '%1'").arg(f.name);
        if (m_services.hiddenAppsService->isHidden(path))
            return QStringLiteral("it is hidden");
        return {};
    }
    case SlotKey::Kind::Folder:
    case SlotKey::Kind::Workflow:
        if (!resolve(key))
            return QStringLiteral("no such folder or workflow");
        return {};
    }
    return {};
}

qsizetype LaunchpadViewModel::insertKey(const QString &key)
{
    const qsizetype existing = m_slots.indexOf(key);
    if (existing >= 0) {
        LAYOUT_LOG("📝 [INSERT LOG] %s already in slot %ld, not inserted again", qUtf8Printable(key), long(existing));
        return existing;
    }
    const QString refusal = refusalToPlace(key);
    if (!refusal.isEmpty()) {
        LAYOUT_LOG("📝 [INSERT LOG] %s not inserted: %s", qUtf8Printable(key), qUtf8Printable(refusal));
        return -1;
    }
    SlotEdit edit(m_slots);
    const qsizetype index = SlotEdits::insertKey(edit, key);
    commit(edit, SlotsPart);
    return index;
}

qsizetype LaunchpadViewModel::removeKey(const QString &key)
{
    SlotEdit edit(m_slots);
    const qsizetype index = SlotEdits::removeKey(edit, key);
    if (index >= 0)
        commit(edit, SlotsPart);
    return index;
}

void LaunchpadViewModel::hideApp(const QString &path)
{
    LAYOUT_LOG("👁️ [HIDE LOG] Hiding app: %s", qUtf8Printable(path));
    m_services.hiddenAppsService->hide(path);
    const QString key = SlotKey::app(path);
    qsizetype index = m_slots.indexOf(key);
    if (index < 0)
        index = m_slots.indexOf(path); // the older bare form
    if (index < 0) {
        LAYOUT_LOG("👁️ [HIDE LOG] App %s not found in slots (may already be hidden or in folder)",
                   qUtf8Printable(path));
        return;
    }
    LAYOUT_LOG("👁️ [HIDE LOG] App %s found at slot %ld, freeing this slot", qUtf8Printable(path), long(index));
    removeKey(m_slots.at(index));
}

void LaunchpadViewModel::unhideApp(const QString &path)
{
    if (!m_services.hiddenAppsService->isHidden(path)) {
        LAYOUT_LOG("👁️ [UNHIDE LOG] App %s is not in hidden list, skipping", qUtf8Printable(path));
        return;
    }
    LAYOUT_LOG("👁️ [UNHIDE LOG] Unhiding app: %s", qUtf8Printable(path));
    m_services.hiddenAppsService->show(path);
    // An app hidden from inside a folder is shown there again, not on the grid.
    insertKey(SlotKey::app(path));
}

// ---------------------------------------------------------------- folders

std::optional<FolderItem> LaunchpadViewModel::createFolder(const QString &name, const QStringList &appPaths,
                                                           const QStringList &systemFolderPaths,
                                                           std::optional<qsizetype> preferredSlot)
{
    SlotEdit edit(m_slots);
    const auto created =
        FolderEdits::createFolder(edit, m_folders, name, appPaths, systemFolderPaths, preferredSlot);
    if (created)
        commit(edit, SlotsPart | FoldersPart);
    return created;
}

bool LaunchpadViewModel::updateFolder(const FolderItem &updated)
{
    SlotEdit edit(m_slots);
    if (!FolderEdits::updateFolder(edit, m_folders, updated, hiddenApps()))
        return false;
    commit(edit, SlotsPart | FoldersPart);
    return true;
}

bool LaunchpadViewModel::renameFolder(const QUuid &id, const QString &name)
{
    auto f = folder(id);
    if (!f)
        return false;
    f->name = name;
    return updateFolder(*f);
}

bool LaunchpadViewModel::dissolveFolder(const QUuid &id)
{
    SlotEdit edit(m_slots);
    if (!FolderEdits::dissolveFolder(edit, m_folders, id, hiddenApps()))
        return false;
    commit(edit, SlotsPart | FoldersPart);
    return true;
}

bool LaunchpadViewModel::addAppToFolder(const QUuid &folderId, const QString &appPath)
{
    auto f = folder(folderId);
    if (!f || appPath.isEmpty())
        return false;
    if (!f->appPaths.contains(appPath))
        f->appPaths.append(appPath);
    return updateFolder(*f);
}

bool LaunchpadViewModel::removeAppFromFolder(const QUuid &folderId, const QString &appPath)
{
    auto f = folder(folderId);
    if (!f || !f->appPaths.contains(appPath))
        return false;
    f->appPaths.removeAll(appPath);
    return updateFolder(*f);
}

bool LaunchpadViewModel::setFolderSlots(const QUuid &folderId, const QStringList &slots)
{
    const qsizetype i = indexById(m_folders, folderId);
    if (i < 0)
        return false;
    FolderItem &f = m_folders[i];
    f.slots = slots;
    f.slots = FolderSlots::completed(f);
    m_lookup.reset();
    m_services.foldersRepo->saveAll(m_folders);
    Q_EMIT foldersChanged();
    return true;
}

QStringList LaunchpadViewModel::shownFolderSlots(const QUuid &folderId) const
{
    const auto f = folder(folderId);
    return f ? FolderSlots::completed(*f) : QStringList();
}

FolderSlotManager *LaunchpadViewModel::makeFolderSlotManager(const QUuid &folderId, QObject *parent)
{
    if (!folder(folderId))
        return nullptr;
    auto *manager = new FolderSlotManager(folderId, shownFolderSlots(folderId), m_folderAppsGrid, parent);
    QPointer<LaunchpadViewModel> self(this);
    manager->setOnSlotsChanged([self, folderId](const QStringList &slots) {
        if (self)
            self->setFolderSlots(folderId, slots);
    });
    connect(this, &LaunchpadViewModel::foldersChanged, manager,
            [this, manager, folderId] { manager->resetSlots(shownFolderSlots(folderId)); });
    connect(this, &LaunchpadViewModel::folderAppsGridChanged, manager,
            [this, manager] { manager->setGrid(m_folderAppsGrid); });
    return manager;
}

void LaunchpadViewModel::setFolderAppsGrid(FolderAppsGrid grid)
{
    if (grid == m_folderAppsGrid)
        return;
    m_folderAppsGrid = grid;
    if (m_services.preferences)
        m_services.preferences->set(FolderAppsGrids::rawValue(grid), QLatin1String(FolderAppsGrids::kSettingsKey));
    Q_EMIT folderAppsGridChanged();
}

QString LaunchpadViewModel::folderAppsGridRawValue() const
{
    return FolderAppsGrids::rawValue(m_folderAppsGrid);
}

void LaunchpadViewModel::setFolderAppsGridRawValue(const QString &raw)
{
    if (const auto grid = FolderAppsGrids::fromRawValue(raw))
        setFolderAppsGrid(*grid);
}

// ---------------------------------------------------------------- moves

LaunchpadViewModel::MoveResult LaunchpadViewModel::moveKey(const QString &key, qsizetype toIndex)
{
    const qsizetype from = m_slots.indexOf(key);
    if (from < 0) {
        const QString refusal = refusalToPlace(key);
        if (!refusal.isEmpty()) {
            LAYOUT_LOG("🔄 [DRAG LOG] %s not moved: %s", qUtf8Printable(key), qUtf8Printable(refusal));
            return MoveResult::Refused;
        }
    }
    SlotEdit edit(m_slots);
    switch (SlotMove::moveKeyInSlots(edit, key, toIndex, m_geometry.rows, from)) {
    case SlotMove::Outcome::Unchanged: return MoveResult::Unchanged;
    case SlotMove::Outcome::Refused: return MoveResult::Refused;
    case SlotMove::Outcome::Moved: break;
    }
    commit(edit, SlotsPart);
    return MoveResult::Moved;
}

void LaunchpadViewModel::moveKeyInSlots(const QString &key, int toIndex)
{
    moveKey(key, toIndex);
}

QString LaunchpadViewModel::dragName(const QString &key) const
{
    const GridEntryOrEmpty entry = resolve(key);
    if (entry && std::holds_alternative<FolderItem>(*entry))
        return std::get<FolderItem>(*entry).name;
    return SlotKey::kindOf(key) == SlotKey::Kind::App ? SlotKey::appPath(key) : key;
}

void LaunchpadViewModel::beginDrag(const QString &key, int pageSlot)
{
    if (SlotKey::kindOf(key) == SlotKey::Kind::Folder)
        LAYOUT_LOG("🎯 [GRID DRAG LOG] Started dragging folder: '%s' from page slot %ld",
                   qUtf8Printable(dragName(key)), long(pageSlot));
    else
        LAYOUT_LOG("🎯 [GRID DRAG LOG] Started dragging app: %s from page slot %ld", qUtf8Printable(dragName(key)),
                   long(pageSlot));
}

bool LaunchpadViewModel::endDrag(const QString &key, int fromPageSlot, int page, int localSlot,
                                 bool movedToOtherPage)
{
    const bool isFolder = SlotKey::kindOf(key) == SlotKey::Kind::Folder;
    if (movedToOtherPage) {
        if (isFolder)
            LAYOUT_LOG("🎯 [GRID DRAG LOG] Folder moved to other page, skip handleDragEndFolder");
        else
            LAYOUT_LOG("🎯 [GRID DRAG LOG] Item moved to other page, skip handleDragEnd");
        return false;
    }
    const qsizetype target = absoluteSlot(page, localSlot);
    const QByteArray name = dragName(key).toUtf8();
    if (isFolder)
        LAYOUT_LOG("🎯 [GRID DRAG LOG] Folder drag ended: '%s' from page slot %ld to local slot %ld (absolute slot %ld)",
                   name.constData(), long(fromPageSlot), long(localSlot), long(target));
    else
        LAYOUT_LOG("🎯 [GRID DRAG LOG] Drag ended: %s from page slot %ld to local slot %ld (absolute slot %ld)",
                   name.constData(), long(fromPageSlot), long(localSlot), long(target));
    if (SlotKey::isWidgetMarker(SlotList::at(m_slots, target))) {
        if (isFolder)
            LAYOUT_LOG("🎯 [GRID DRAG LOG] Drop blocked: folder target absolute slot %ld belongs to widget area",
                       long(target));
        else
            LAYOUT_LOG("🎯 [GRID DRAG LOG] Drop blocked: target absolute slot %ld belongs to widget area",
                       long(target));
        return false;
    }
    if (isFolder)
        LAYOUT_LOG("🎯 [GRID DRAG LOG] Calling moveKeyInSlots for folder %s to absolute slot %ld", name.constData(),
                   long(target));
    else
        LAYOUT_LOG("🎯 [GRID DRAG LOG] Calling moveKeyInSlots for %s to absolute slot %ld", name.constData(),
                   long(target));
    return moveKey(key, target) == MoveResult::Moved;
}

qsizetype LaunchpadViewModel::moveEntryToNeighbourPage(const GridEntry &entry, int currentPage, int localSlot,
                                                       NeighbourPage direction)
{
    const int page = currentPage + (direction == NeighbourPage::Next ? 1 : -1);
    if (page < 0)
        return -1;
    const qsizetype target =
        m_geometry.absoluteSlot(page, std::clamp(localSlot, 0, m_geometry.capacity() - 1));
    LAYOUT_LOG("🎯 [GRID DRAG LOG] Moving entry to %s page, target slot: %ld",
               direction == NeighbourPage::Next ? "next" : "previous", long(target));

    QString key;
    if (const auto *app = std::get_if<AppItem>(&entry)) {
        LAYOUT_LOG("🎯 [GRAG LOG] Moving app %s to neighbor page at slot %ld", qUtf8Printable(app->path),
                   long(target));
        key = SlotKey::app(app->path);
        if (!m_slots.contains(key) && m_slots.contains(app->path))
            key = app->path; // the older bare form stands on the grid
    } else if (const auto *f = std::get_if<FolderItem>(&entry)) {
        LAYOUT_LOG("🎯 [GRID DRAG LOG] Moving folder '%s' to neighbor page at slot %ld", qUtf8Printable(f->name),
                   long(target));
        key = f->key();
    } else if (const auto *w = std::get_if<WorkflowItem>(&entry)) {
        LAYOUT_LOG("🎯 [GRID DRAG LOG] Moving workflow '%s' to neighbor page at slot %ld", qUtf8Printable(w->name),
                   long(target));
        key = w->key();
    } else if (std::holds_alternative<WidgetItem>(entry)) {
        LAYOUT_LOG("🎯 [GRID DRAG LOG] Widget drag to neighbor page not implemented");
        return -1;
    } else {
        LAYOUT_LOG("🎯 [GRID DRAG LOG] System folder drag to neighbor page not supported");
        return -1;
    }
    if (moveKey(key, target) == MoveResult::Refused)
        return -1;
    return target;
}

bool LaunchpadViewModel::acceptsDropAt(qsizetype slot) const
{
    return slot >= 0 && !SlotKey::isWidgetMarker(SlotList::at(m_slots, slot));
}

std::optional<QStringList> LaunchpadViewModel::previewDrop(const QString &key, qsizetype target) const
{
    if (!acceptsDropAt(target))
        return std::nullopt;
    const ScopedDebugSilence quiet(lcLayout());
    QStringList copy = m_slots;
    SlotEdit edit(copy);
    if (SlotMove::moveKeyInSlots(edit, key, target, m_geometry.rows) == SlotMove::Outcome::Refused)
        return std::nullopt;
    return copy;
}

std::optional<QStringList> LaunchpadViewModel::previewDropFromFolder(const QUuid &folderId, const QString &appPath,
                                                                     qsizetype target) const
{
    auto f = folder(folderId);
    if (!f || !f->appPaths.contains(appPath) || !acceptsDropAt(target))
        return std::nullopt;
    const ScopedDebugSilence quiet(lcLayout());
    QStringList copy = m_slots;
    QList<FolderItem> folders = m_folders;
    SlotEdit edit(copy);
    f->appPaths.removeAll(appPath);
    if (!FolderEdits::updateFolder(edit, folders, *f, hiddenApps()))
        return std::nullopt;
    SlotMove::moveKeyInSlots(edit, SlotKey::app(appPath), target, m_geometry.rows);
    return copy;
}

void LaunchpadViewModel::dropTrailingEmptyPages()
{
    qsizetype last = m_slots.size() - 1;
    while (last >= 0 && m_slots.at(last).isEmpty())
        --last;
    const qsizetype keep = std::max<qsizetype>(m_geometry.capacity(),
                                               qsizetype(m_geometry.pageStart(m_geometry.pageOf(int(last)) + 1)));
    if (last < 0 ? m_slots.size() <= m_geometry.capacity() : keep >= m_slots.size())
        return;
    m_slots.resize(last < 0 ? m_geometry.capacity() : keep);
    m_lookup.reset();
    ++m_layoutRevision;
    m_services.orderRepo->setSlots(m_slots);
    Q_EMIT slotsChanged();
    Q_EMIT layoutRevisionChanged();
}

// ---------------------------------------------------------------- widgets

std::optional<WidgetItem> LaunchpadViewModel::addWidget(const QString &kind, WidgetSize size,
                                                        std::optional<qsizetype> requestedSlot,
                                                        const QJsonObject &settings)
{
    const WidgetItem item{QUuid::createUuid(), kind, size, settings};
    LAYOUT_LOG("[Widgets] addWidget id=%s size=%ldx%ld requested=%ld", qUtf8Printable(Uuids::toText(item.id)),
               long(WidgetSizes::columns(size)), long(WidgetSizes::rows(size)), long(requestedSlot.value_or(-1)));
    const qsizetype requested = requestedSlot ? *requestedSlot : WidgetLayout::firstFreeAnchor(m_slots, size, m_geometry);
    SlotEdit edit(m_slots);
    if (!WidgetLayout::place(edit, item, requested, m_geometry))
        return std::nullopt;
    m_widgets.append(item);
    commit(edit, SlotsPart | WidgetsPart);
    return item;
}

bool LaunchpadViewModel::moveWidget(const QUuid &id, qsizetype requestedSlot)
{
    const auto item = widget(id);
    if (!item) {
        LAYOUT_LOG("[Widgets] moveWidget: widget not found %s", qUtf8Printable(Uuids::toText(id)));
        return false;
    }
    LAYOUT_LOG("[Widgets] moveWidget id=%s size=%ldx%ld requested=%ld", qUtf8Printable(Uuids::toText(id)),
               long(WidgetSizes::columns(item->size)), long(WidgetSizes::rows(item->size)), long(requestedSlot));
    SlotEdit edit(m_slots);
    if (!WidgetLayout::place(edit, *item, requestedSlot, m_geometry))
        return false;
    commit(edit, SlotsPart | WidgetsPart);
    return true;
}

bool LaunchpadViewModel::removeWidget(const QUuid &id)
{
    const qsizetype i = indexById(m_widgets, id);
    if (i < 0)
        return false;
    SlotEdit edit(m_slots);
    WidgetLayout::clearMarkers(edit, id);
    m_widgets.removeAt(i);
    commit(edit, SlotsPart | WidgetsPart);
    return true;
}

qsizetype LaunchpadViewModel::findWidgetTopLeftIndex(const QUuid &id) const
{
    return WidgetLayout::findWidgetTopLeftIndex(m_slots, id);
}
