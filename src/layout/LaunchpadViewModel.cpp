#include "layout/LaunchpadViewModel.h"

#include "foundation/Logging.h"
#include "catalogue/AppSource.h"
#include "catalogue/AppsRepository.h"
#include "foundation/LogTexts.h"
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
#include "storage/AppNameRepository.h"
#include "storage/AppsCustomizationRepository.h"
#include "storage/FoldersRepository.h"
#include "storage/HiddenAppsService.h"
#include "storage/RecentAppsService.h"
#include "storage/OrderRepository.h"
#include "storage/UserDefaultsStoreType.h"
#include "storage/WidgetsRepository.h"

#include <QCoreApplication>
#include <QFileInfo>
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
        m_lookup = GridLookup::build(m_apps, m_folders, m_widgets, m_workflows, m_unavailableApps);
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
    LAYOUT_LOG(LogTexts::kLoadInitialCalled);
    if (m_isLoadingInitialData) {
        m_hasPendingLoadInitial = true;
        LAYOUT_LOG(LogTexts::kLoadQueued);
        return;
    }
    setLoading(true);
    loadStoredLayout();
    startScan();
}

void LaunchpadViewModel::loadStoredLayout()
{
    m_folders = m_services.foldersRepo->loadAll();
    LAYOUT_LOG(LogTexts::kLoadedFolders, long(m_folders.size()));
    for (qsizetype i = 0; i < m_folders.size(); ++i) {
        const FolderItem &f = m_folders.at(i);
        LAYOUT_LOG(LogTexts::kLoadedFolder, long(i), qUtf8Printable(f.name),
                   long(f.appPaths.size()), long(f.systemFolderPaths.size()));
    }

    const QStringList loaded = m_services.orderRepo->slots();
    LAYOUT_LOG(LogTexts::kLoadedSlots, long(loaded.size()));
    // A layout swapped in underneath is a change of every cell for the views.
    const bool replaced = loaded != m_slots;
    m_slots = loaded;
    SlotEdit edit(m_slots);
    LayoutSanitizer::clearMalformedAndDuplicates(edit);
    LayoutSanitizer::clearFolderMembers(edit, m_folders);
    int save = 0;
    if (m_slots != loaded) {
        LAYOUT_LOG(LogTexts::kSanitizeSaving);
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
        LAYOUT_LOG(LogTexts::kNoCatalogue);
        QMetaObject::invokeMethod(this, &LaunchpadViewModel::finishLoading, Qt::QueuedConnection);
        return;
    }
    // The scan reads the disk off the main thread; its result comes back to
    // the main thread and finds the model only if it still exists.
    QPointer<LaunchpadViewModel> self(this);
    std::shared_ptr<AppsRepository> repo = m_services.appsRepo;
    QThreadPool::globalInstance()->start([self, repo] {
        AppScan scan = repo->scan();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, scan = std::move(scan)] {
                if (self)
                    self->applyScan(scan);
            },
            Qt::QueuedConnection);
    });
}

namespace {

// The apps the arrangement names that are neither installed nor known to be
// gone, each with the record it was last seen with (else one named after its
// file).
QList<AppItem> appsNotVouchedFor(const AppScan &scan, const QStringList &slots, const QList<FolderItem> &folders,
                                 const QHash<QString, AppItem> &lastSeen)
{
    QList<AppItem> out;
    QSet<QString> noted;
    const auto note = [&](const QString &path) {
        if (path.isEmpty() || noted.contains(path) || scan.contains(path) || scan.isKnownGone(path))
            return;
        noted.insert(path);
        const auto seen = lastSeen.constFind(path);
        out.append(seen != lastSeen.cend() ? *seen : AppItems::make(path, QFileInfo(path).completeBaseName()));
    };
    for (const QString &key : slots)
        note(SlotKey::appPath(key));
    for (const FolderItem &folder : folders)
        for (const QString &path : folder.appPaths)
            note(path);
    return out;
}

}

void LaunchpadViewModel::applyScan(const AppScan &scan)
{
    const QList<AppItem> &apps = scan.apps();
    LAYOUT_LOG(LogTexts::kFetchedApps, long(apps.size()));
    QHash<QString, AppItem> lastSeen;
    for (const QList<AppItem> *list : {&m_unavailableApps, &m_apps})
        for (const AppItem &app : *list)
            lastSeen.insert(app.path, app);
    m_apps = apps;
    // Reconciliation below removes exactly the apps known to be gone, so the
    // rest can be told now, while the last names are at hand.
    m_unavailableApps = appsNotVouchedFor(scan, m_slots, m_folders, lastSeen);
    m_lookup.reset();
    Q_EMIT appsChanged();

    SlotEdit edit(m_slots);
    int save = followMovedApps(scan, lastSeen, edit);
    const QSet<QString> hidden = hiddenApps();
    if (m_slots.isEmpty()) {
        LAYOUT_LOG(LogTexts::kSlotsEmpty);
        for (const QString &key :
             AppReconciler::initialLayout(apps, hidden, LayoutSanitizer::folderMemberPaths(m_folders)))
            edit.append(key);
        save |= SlotsPart;
    } else {
        LAYOUT_LOG(LogTexts::kSlotsNotEmpty);
        const AppReconciler::IsGone isGone = [&scan](const QString &path) { return scan.isKnownGone(path); };
        const auto kept = [&scan](const QString &path) { return !scan.isKnownGone(path); };
        AppReconciler::clearDeletedApps(edit, isGone);
        m_services.hiddenAppsService->removeDeleted(kept);
        if (m_services.recentAppsService)
            m_services.recentAppsService->removeDeleted(kept);
        if (AppReconciler::removeDeletedAppsFromFolders(m_folders, edit, isGone))
            save |= FoldersPart;
        AppReconciler::placeNewApps(edit, apps, m_folders, hidden);
        save |= SlotsPart;
    }
    if (AppReconciler::clearHiddenApps(edit, hidden) > 0)
        save |= SlotsPart;
    // After every clean-up: nothing the user made may be left without a cell.
    if (LayoutSanitizer::placeUnreachable(edit, m_folders, m_widgets, m_geometry) > 0)
        save |= SlotsPart;
    commit(edit, save);
    finishLoading();
}

int LaunchpadViewModel::followMovedApps(const AppScan &scan, const QHash<QString, AppItem> &lastSeen, SlotEdit &edit)
{
    // What the user arranged, in the order it claims a moved app: the grid,
    // the folders, the hidden list.
    QStringList arranged;
    for (const QString &key : m_slots)
        if (const QString path = SlotKey::appPath(key); !path.isEmpty())
            arranged.append(path);
    for (const FolderItem &folder : m_folders)
        arranged += folder.appPaths;
    arranged += m_services.hiddenAppsService->hiddenApps();
    const auto identityOf = [&](const QString &path) {
        const QString byPath = scan.identityByPath(path);
        return byPath.isEmpty() ? lastSeen.value(path).identity : byPath;
    };
    const QHash<QString, QString> moves = AppReconciler::movedApps(
        arranged, scan.apps(), [&scan](const QString &path) { return scan.isKnownGone(path); }, identityOf);
    if (moves.isEmpty())
        return 0;

    int save = SlotsPart;
    if (AppReconciler::renameApps(edit, m_folders, moves))
        save |= FoldersPart;
    bool inWorkflows = false;
    for (WorkflowItem &workflow : m_workflows) {
        for (QString &path : workflow.appPaths) {
            if (const auto to = moves.constFind(path); to != moves.cend()) {
                path = *to;
                inWorkflows = true;
            }
        }
    }
    if (inWorkflows) {
        m_services.workflowsRepo->save(m_workflows);
        Q_EMIT workflowsChanged();
    }
    for (auto it = moves.cbegin(); it != moves.cend(); ++it) {
        LAYOUT_LOG(LogTexts::kAppMoved, qUtf8Printable(identityOf(it.key())), qUtf8Printable(it.key()),
                   qUtf8Printable(it.value()));
        m_services.hiddenAppsService->moveAppPath(it.key(), it.value());
        if (m_services.recentAppsService)
            m_services.recentAppsService->moveAppPath(it.key(), it.value());
        if (m_services.appNames)
            m_services.appNames->moveAppPath(it.key(), it.value());
        if (m_services.appIcons)
            m_services.appIcons->moveAppPath(it.key(), it.value());
    }
    return save;
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

std::optional<LayoutRefusal> LaunchpadViewModel::refusalToPlace(const QString &key) const
{
    switch (SlotKey::kindOf(key)) {
    case SlotKey::Kind::Empty: return LayoutRefusal::EmptyKey;
    case SlotKey::Kind::WidgetAnchor:
    case SlotKey::Kind::WidgetBlock: return LayoutRefusal::WidgetKey;
    case SlotKey::Kind::App: {
        const QString path = SlotKey::appPath(key);
        if (path.isEmpty())
            return LayoutRefusal::MalformedKey;
        for (const FolderItem &f : m_folders)
            if (f.appPaths.contains(path))
                return LayoutRefusal::InFolder;
        if (m_services.hiddenAppsService->isHidden(path))
            return LayoutRefusal::Hidden;
        return std::nullopt;
    }
    case SlotKey::Kind::Folder:
        return resolve(key) ? std::nullopt : std::optional(LayoutRefusal::UnknownFolder);
    case SlotKey::Kind::Workflow:
        return resolve(key) ? std::nullopt : std::optional(LayoutRefusal::UnknownWorkflow);
    }
    return std::nullopt;
}

LayoutResult<qsizetype> LaunchpadViewModel::insertKey(const QString &key)
{
    // Refusals first: the empty key and widget keys do stand in cells, yet
    // are never "already placed".
    if (const auto refusal = refusalToPlace(key)) {
        LAYOUT_LOG(LogTexts::kInsertRefused, qUtf8Printable(key), qUtf8Printable(describe(*refusal)));
        return *refusal;
    }
    const qsizetype existing = m_slots.indexOf(key);
    if (existing >= 0) {
        LAYOUT_LOG(LogTexts::kInsertAlreadyOnGrid, qUtf8Printable(key), long(existing));
        return LayoutRefusal::AlreadyOnGrid;
    }
    SlotEdit edit(m_slots);
    const qsizetype index = SlotEdits::insertKey(edit, key);
    commit(edit, SlotsPart);
    return index;
}

LayoutResult<qsizetype> LaunchpadViewModel::removeKey(const QString &key)
{
    SlotEdit edit(m_slots);
    const qsizetype index = SlotEdits::removeKey(edit, key);
    if (index < 0)
        return LayoutRefusal::NotOnGrid;
    commit(edit, SlotsPart);
    return index;
}

void LaunchpadViewModel::hideApp(const QString &path)
{
    LAYOUT_LOG(LogTexts::kHiding, qUtf8Printable(path));
    m_services.hiddenAppsService->hide(path);
    const QString key = SlotKey::app(path);
    qsizetype index = m_slots.indexOf(key);
    if (index < 0)
        index = m_slots.indexOf(path); // the older bare form
    if (index < 0) {
        LAYOUT_LOG(LogTexts::kHideNotOnGrid,
                   qUtf8Printable(path));
        return;
    }
    LAYOUT_LOG(LogTexts::kHideFreeing, qUtf8Printable(path), long(index));
    removeKey(m_slots.at(index));
}

LayoutResult<void> LaunchpadViewModel::unhideApp(const QString &path)
{
    if (!m_services.hiddenAppsService->isHidden(path)) {
        LAYOUT_LOG(LogTexts::kUnhideNotHidden, qUtf8Printable(path));
        return LayoutRefusal::NotHidden;
    }
    LAYOUT_LOG(LogTexts::kUnhiding, qUtf8Printable(path));
    m_services.hiddenAppsService->show(path);
    // An app hidden from inside a folder is shown there again, not on the grid.
    insertKey(SlotKey::app(path));
    return {};
}

// ---------------------------------------------------------------- folders

LayoutResult<FolderItem> LaunchpadViewModel::createFolder(const QString &name, const QStringList &appPaths,
                                                          const QStringList &systemFolderPaths,
                                                          std::optional<qsizetype> preferredSlot)
{
    SlotEdit edit(m_slots);
    auto created = FolderEdits::createFolder(edit, m_folders, name, appPaths, systemFolderPaths, preferredSlot);
    if (created)
        commit(edit, SlotsPart | FoldersPart);
    return created;
}

LayoutResult<void> LaunchpadViewModel::updateFolder(const FolderItem &updated)
{
    SlotEdit edit(m_slots);
    const auto result = FolderEdits::updateFolder(edit, m_folders, updated, hiddenApps());
    if (result)
        commit(edit, SlotsPart | FoldersPart);
    return result;
}

LayoutResult<void> LaunchpadViewModel::renameFolder(const QUuid &id, const QString &name)
{
    auto f = folder(id);
    if (!f)
        return LayoutRefusal::UnknownFolder;
    if (name.trimmed().isEmpty())
        return LayoutRefusal::InvalidName;
    f->name = name;
    return updateFolder(*f);
}

LayoutResult<void> LaunchpadViewModel::dissolveFolder(const QUuid &id)
{
    SlotEdit edit(m_slots);
    const auto result = FolderEdits::dissolveFolder(edit, m_folders, id, hiddenApps());
    if (result)
        commit(edit, SlotsPart | FoldersPart);
    return result;
}

LayoutResult<void> LaunchpadViewModel::addAppToFolder(const QUuid &folderId, const QString &appPath)
{
    auto f = folder(folderId);
    if (!f)
        return LayoutRefusal::UnknownFolder;
    if (appPath.isEmpty())
        return LayoutRefusal::MalformedKey;
    if (!f->appPaths.contains(appPath))
        f->appPaths.append(appPath);
    return updateFolder(*f);
}

LayoutResult<void> LaunchpadViewModel::removeAppFromFolder(const QUuid &folderId, const QString &appPath)
{
    auto f = folder(folderId);
    if (!f)
        return LayoutRefusal::UnknownFolder;
    if (!f->appPaths.contains(appPath))
        return LayoutRefusal::NotInFolder;
    f->appPaths.removeAll(appPath);
    return updateFolder(*f);
}

LayoutResult<void> LaunchpadViewModel::setFolderSlots(const QUuid &folderId, const QStringList &slots)
{
    const qsizetype i = indexById(m_folders, folderId);
    if (i < 0)
        return LayoutRefusal::UnknownFolder;
    FolderItem &f = m_folders[i];
    f.slots = slots;
    f.slots = FolderSlots::completed(f);
    m_lookup.reset();
    m_services.foldersRepo->saveAll(m_folders);
    Q_EMIT foldersChanged();
    return {};
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

LayoutResult<SlotMove::Outcome> LaunchpadViewModel::moveKey(const QString &key, qsizetype toIndex)
{
    const qsizetype from = m_slots.indexOf(key);
    if (from < 0) {
        if (const auto refusal = refusalToPlace(key)) {
            LAYOUT_LOG(LogTexts::kDragRefused, qUtf8Printable(key), qUtf8Printable(describe(*refusal)));
            return *refusal;
        }
    }
    SlotEdit edit(m_slots);
    const auto outcome = SlotMove::moveKeyInSlots(edit, key, toIndex, m_geometry.rows, from);
    if (outcome && *outcome == SlotMove::Outcome::Moved)
        commit(edit, SlotsPart);
    return outcome;
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
        LAYOUT_LOG(LogTexts::kGridDragStartedFolder,
                   qUtf8Printable(dragName(key)), long(pageSlot));
    else
        LAYOUT_LOG(LogTexts::kGridDragStartedApp, qUtf8Printable(dragName(key)),
                   long(pageSlot));
}

bool LaunchpadViewModel::endDrag(const QString &key, int fromPageSlot, int page, int localSlot,
                                 bool movedToOtherPage)
{
    const bool isFolder = SlotKey::kindOf(key) == SlotKey::Kind::Folder;
    if (movedToOtherPage) {
        if (isFolder)
            LAYOUT_LOG(LogTexts::kGridDragSkippedFolder);
        else
            LAYOUT_LOG(LogTexts::kGridDragSkipped);
        return false;
    }
    const qsizetype target = absoluteSlot(page, localSlot);
    const QByteArray name = dragName(key).toUtf8();
    if (isFolder)
        LAYOUT_LOG(LogTexts::kGridDragEndedFolder,
                   name.constData(), long(fromPageSlot), long(localSlot), long(target));
    else
        LAYOUT_LOG(LogTexts::kGridDragEnded,
                   name.constData(), long(fromPageSlot), long(localSlot), long(target));
    if (SlotKey::isWidgetMarker(SlotList::at(m_slots, target))) {
        if (isFolder)
            LAYOUT_LOG(LogTexts::kGridDropBlockedFolder,
                       long(target));
        else
            LAYOUT_LOG(LogTexts::kGridDropBlocked,
                       long(target));
        return false;
    }
    if (isFolder)
        LAYOUT_LOG(LogTexts::kGridCallingMoveFolder, name.constData(),
                   long(target));
    else
        LAYOUT_LOG(LogTexts::kGridCallingMove, name.constData(),
                   long(target));
    const auto outcome = moveKey(key, target);
    return outcome && *outcome == SlotMove::Outcome::Moved;
}

qsizetype LaunchpadViewModel::moveEntryToNeighbourPage(const GridEntry &entry, int currentPage, int localSlot,
                                                       NeighbourPage direction)
{
    const int page = currentPage + (direction == NeighbourPage::Next ? 1 : -1);
    if (page < 0)
        return -1;
    const qsizetype target =
        m_geometry.absoluteSlot(page, std::clamp(localSlot, 0, m_geometry.capacity() - 1));
    LAYOUT_LOG(LogTexts::kGridToNeighbourPage,
               direction == NeighbourPage::Next ? "next" : "previous", long(target));

    QString key;
    if (const auto *app = std::get_if<AppItem>(&entry)) {
        LAYOUT_LOG(LogTexts::kGridAppToNeighbourPage, qUtf8Printable(app->path),
                   long(target));
        key = SlotKey::app(app->path);
        if (!m_slots.contains(key) && m_slots.contains(app->path))
            key = app->path; // the older bare form stands on the grid
    } else if (const auto *f = std::get_if<FolderItem>(&entry)) {
        LAYOUT_LOG(LogTexts::kGridFolderToNeighbourPage, qUtf8Printable(f->name),
                   long(target));
        key = f->key();
    } else if (const auto *w = std::get_if<WorkflowItem>(&entry)) {
        LAYOUT_LOG(LogTexts::kGridWorkflowToNeighbourPage, qUtf8Printable(w->name),
                   long(target));
        key = w->key();
    } else if (std::holds_alternative<WidgetItem>(entry)) {
        LAYOUT_LOG(LogTexts::kGridWidgetToNeighbourPage);
        return -1;
    } else {
        LAYOUT_LOG(LogTexts::kGridSystemFolderToNeighbourPage);
        return -1;
    }
    if (!moveKey(key, target))
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
    if (!SlotMove::moveKeyInSlots(edit, key, target, m_geometry.rows))
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
    // Up to the end of the last occupied page, and never less than one page.
    const qsizetype keep = last < 0 ? m_geometry.capacity()
                                    : std::max<qsizetype>(m_geometry.capacity(),
                                                          m_geometry.pageStart(m_geometry.pageOf(int(last)) + 1));
    if (keep >= m_slots.size())
        return;
    m_slots.resize(keep);
    m_lookup.reset();
    ++m_layoutRevision;
    m_services.orderRepo->setSlots(m_slots);
    Q_EMIT slotsChanged();
    Q_EMIT layoutRevisionChanged();
}

// ---------------------------------------------------------------- widgets

LayoutResult<WidgetItem> LaunchpadViewModel::addWidget(const QString &kind, WidgetSize size,
                                                       std::optional<qsizetype> requestedSlot,
                                                       const QJsonObject &settings)
{
    const WidgetItem item{QUuid::createUuid(), kind, size, settings};
    LAYOUT_LOG(LogTexts::kWidgetAdd, qUtf8Printable(Uuids::toText(item.id)),
               long(WidgetSizes::columns(size)), long(WidgetSizes::rows(size)), long(requestedSlot.value_or(-1)));
    const qsizetype requested = requestedSlot ? *requestedSlot : WidgetLayout::firstFreeAnchor(m_slots, size, m_geometry);
    SlotEdit edit(m_slots);
    if (const auto placed = WidgetLayout::place(edit, item, requested, m_geometry); !placed)
        return placed.error();
    m_widgets.append(item);
    commit(edit, SlotsPart | WidgetsPart);
    return item;
}

LayoutResult<void> LaunchpadViewModel::moveWidget(const QUuid &id, qsizetype requestedSlot)
{
    const auto item = widget(id);
    if (!item) {
        LAYOUT_LOG(LogTexts::kWidgetNotFound, qUtf8Printable(Uuids::toText(id)));
        return LayoutRefusal::UnknownWidget;
    }
    LAYOUT_LOG(LogTexts::kWidgetMove, qUtf8Printable(Uuids::toText(id)),
               long(WidgetSizes::columns(item->size)), long(WidgetSizes::rows(item->size)), long(requestedSlot));
    SlotEdit edit(m_slots);
    if (const auto placed = WidgetLayout::place(edit, *item, requestedSlot, m_geometry); !placed)
        return placed.error();
    commit(edit, SlotsPart | WidgetsPart);
    return {};
}

LayoutResult<void> LaunchpadViewModel::removeWidget(const QUuid &id)
{
    const qsizetype i = indexById(m_widgets, id);
    if (i < 0)
        return LayoutRefusal::UnknownWidget;
    SlotEdit edit(m_slots);
    WidgetLayout::clearMarkers(edit, id);
    m_widgets.removeAt(i);
    commit(edit, SlotsPart | WidgetsPart);
    return {};
}

qsizetype LaunchpadViewModel::findWidgetTopLeftIndex(const QUuid &id) const
{
    return WidgetLayout::findWidgetTopLeftIndex(m_slots, id);
}

void LaunchpadViewModel::noteLaunched(const QString &path)
{
    if (m_services.recentAppsService)
        m_services.recentAppsService->noteLaunched(path);
}

// ---------------------------------------------------------------- workflows

std::optional<WorkflowItem> LaunchpadViewModel::workflow(const QUuid &id) const
{
    const qsizetype i = indexById(m_workflows, id);
    return i < 0 ? std::nullopt : std::optional<WorkflowItem>(m_workflows.at(i));
}

LayoutResult<qsizetype> LaunchpadViewModel::addWorkflow(const WorkflowItem &workflow)
{
    if (workflow.id.isNull() || indexById(m_workflows, workflow.id) >= 0)
        return LayoutRefusal::AlreadyOnGrid;
    m_workflows.append(workflow);
    m_lookup.reset();
    m_services.workflowsRepo->save(m_workflows);
    Q_EMIT workflowsChanged();
    return insertKey(workflow.key());
}

LayoutResult<void> LaunchpadViewModel::updateWorkflow(const WorkflowItem &workflow)
{
    const qsizetype i = indexById(m_workflows, workflow.id);
    if (i < 0)
        return LayoutRefusal::UnknownWorkflow;
    m_workflows[i] = workflow;
    m_lookup.reset();
    m_services.workflowsRepo->save(m_workflows);
    Q_EMIT workflowsChanged();
    return {};
}

LayoutResult<void> LaunchpadViewModel::deleteWorkflow(const QUuid &id)
{
    const qsizetype i = indexById(m_workflows, id);
    if (i < 0)
        return LayoutRefusal::UnknownWorkflow;
    m_workflows.removeAt(i);
    m_lookup.reset();
    m_services.workflowsRepo->save(m_workflows);
    SlotEdit edit(m_slots);
    LayoutSanitizer::clearOrphanWorkflowKeys(edit, m_workflows);
    const bool inFolders = LayoutSanitizer::clearOrphanWorkflowKeysInFolders(m_folders, m_workflows) > 0;
    commit(edit, (edit.writes() > 0 ? SlotsPart : 0) | (inFolders ? FoldersPart : 0));
    Q_EMIT workflowsChanged();
    return {};
}

LayoutResult<LaunchpadViewModel::FolderAndWorkflow> LaunchpadViewModel::folderAndWorkflow(const QUuid &folderId,
                                                                                           const QUuid &workflowId) const
{
    const qsizetype i = indexById(m_folders, folderId);
    if (i < 0)
        return LayoutRefusal::UnknownFolder;
    const auto found = workflow(workflowId);
    if (!found)
        return LayoutRefusal::UnknownWorkflow;
    return FolderAndWorkflow{i, found->key()};
}

LayoutResult<void> LaunchpadViewModel::addWorkflowToFolder(const QUuid &folderId, const QUuid &workflowId)
{
    const auto found = folderAndWorkflow(folderId, workflowId);
    if (!found)
        return found.error();
    const QString key = found->key;
    FolderItem &folder = m_folders[found->folder];
    folder.slots = FolderSlots::completed(folder);
    if (!folder.slots.contains(key)) {
        const qsizetype empty = folder.slots.indexOf(QString());
        if (empty >= 0)
            folder.slots[empty] = key;
        else
            folder.slots.append(key);
    }
    // Only one place at a time: out of every other folder and off the grid.
    for (FolderItem &other : m_folders)
        if (other.id != folderId)
            for (QString &cell : other.slots)
                if (cell == key)
                    cell.clear();
    SlotEdit edit(m_slots);
    SlotEdits::removeKey(edit, key);
    commit(edit, SlotsPart | FoldersPart);
    return {};
}

LayoutResult<qsizetype> LaunchpadViewModel::removeWorkflowFromFolder(const QUuid &folderId, const QUuid &workflowId)
{
    const auto found = folderAndWorkflow(folderId, workflowId);
    if (!found)
        return found.error();
    const QString key = found->key;
    FolderItem &folder = m_folders[found->folder];
    const qsizetype at = folder.slots.indexOf(key);
    if (at < 0)
        return LayoutRefusal::NotInFolder;
    folder.slots[at].clear();
    SlotEdit edit(m_slots);
    const qsizetype placed = m_slots.contains(key) ? m_slots.indexOf(key) : SlotEdits::insertKey(edit, key);
    commit(edit, SlotsPart | FoldersPart);
    return placed;
}
