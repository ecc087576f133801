#include "ui/GridPresenter.h"

#include "foundation/Logging.h"
#include "catalogue/AppLauncher.h"
#include "layout/FolderSlotManager.h"
#include "layout/LaunchpadViewModel.h"
#include "layout/SlotEdit.h"
#include "foundation/SlotKey.h"
#include "layout/SlotMove.h"
#include "foundation/Uuids.h"
#include "storage/AppNameRepository.h"
#include "ui/SearchMatcher.h"

#include <QCollator>
#include <QFileInfo>
#include <QScreen>
#include <QTimer>
#include <QUrl>

namespace {
constexpr double kMinIconSize = 48;
constexpr double kMaxIconSize = 256;
}

GridPresenter::GridPresenter(LaunchpadViewModel &layout, AppNameRepositoryImpl &names,
                             AppearanceRepositoryImpl &appearance, std::shared_ptr<AppLauncher> launcher,
                             QObject *parent)
    : QObject(parent)
    , m_layout(layout)
    , m_names(names)
    , m_appearance(appearance)
    , m_launcher(std::move(launcher))
    , m_display{QStringLiteral("default"), kMinIconSize, kMaxIconSize}
{
    const auto contentChanged = [this] {
        ++m_contentRevision;
        scheduleRebuild();
    };
    connect(&m_layout, &LaunchpadViewModel::layoutRevisionChanged, this, &GridPresenter::scheduleRebuild);
    connect(&m_layout, &LaunchpadViewModel::slotsChanged, this, &GridPresenter::scheduleRebuild);
    connect(&m_layout, &LaunchpadViewModel::appsChanged, this, contentChanged);
    connect(&m_layout, &LaunchpadViewModel::foldersChanged, this, contentChanged);
    connect(&m_layout, &LaunchpadViewModel::widgetsChanged, this, contentChanged);
    connect(&m_layout, &LaunchpadViewModel::workflowsChanged, this, contentChanged);
    connect(&m_layout, &LaunchpadViewModel::gridGeometryChanged, this, [this] {
        Q_EMIT geometryChanged();
        scheduleRebuild();
    });
    rebuildPages();
    rebuildHidden();
}

GridPresenter::~GridPresenter() = default;

int GridPresenter::columns() const { return m_layout.gridColumns(); }
int GridPresenter::rows() const { return m_layout.gridRows(); }
qreal GridPresenter::iconSize() const { return m_appearance.iconSize(m_display); }
bool GridPresenter::showLabels() const { return m_appearance.showLabels(m_display); }

void GridPresenter::setCurrentPage(int page)
{
    page = std::clamp(page, 0, std::max(0, pageCount() - 1));
    if (page == m_currentPage)
        return;
    m_currentPage = page;
    Q_EMIT currentPageChanged();
}

void GridPresenter::nextPage() { setCurrentPage(m_currentPage + 1); }
void GridPresenter::previousPage() { setCurrentPage(m_currentPage - 1); }
void GridPresenter::hide() { Q_EMIT hideRequested(); }

void GridPresenter::setSearchText(const QString &text)
{
    if (text == m_searchText)
        return;
    m_searchText = text;
    rebuildSearch();
    Q_EMIT searchTextChanged();
}

void GridPresenter::setBackdropAvailable(bool available)
{
    m_hasBackdrop = available;
    ++m_backdropRevision;
    Q_EMIT backdropChanged();
}

void GridPresenter::setDisplay(QScreen *screen)
{
    if (!screen)
        return;
    // Icons stay small enough that a page's rows and labels fit the screen.
    const double fit = screen->geometry().height() / (m_layout.gridRows() + 3.0);
    setDisplayProfile({screen->name().isEmpty() ? QStringLiteral("default") : screen->name(), kMinIconSize,
                       std::clamp(fit, kMinIconSize, kMaxIconSize)});
}

void GridPresenter::setDisplayProfile(const DisplayProfile &display)
{
    m_display = display;
    m_layout.setGridGeometry(m_appearance.columns(display), m_appearance.rows(display));
    Q_EMIT appearanceChanged();
    Q_EMIT geometryChanged();
    scheduleRebuild();
}

void GridPresenter::notifyShown()
{
    if (!m_searchText.isEmpty())
        setSearchText(QString());
    closeFolder();
    rebuildHidden();
    Q_EMIT shown();
}

// --- building the cells ---------------------------------------------------

QString GridPresenter::appTitle(const AppItem &app) const
{
    return m_names.displayName(app.path, app.displayName);
}

GridCellBuilder GridPresenter::cellBuilder() const
{
    return GridCellBuilder{&m_layout.lookup(), [this](const AppItem &app) { return appTitle(app); }};
}

void GridPresenter::scheduleRebuild()
{
    if (m_rebuildPending)
        return;
    m_rebuildPending = true;
    // Coalesced: one edit emits several change signals.
    QTimer::singleShot(0, this, [this] {
        m_rebuildPending = false;
        rebuildPages();
        rebuildFolder();
        rebuildSearch();
        rebuildHidden();
    });
}

void GridPresenter::rebuildPages()
{
    const PageGeometry geometry = m_layout.geometry();
    const BuiltFor key{m_layout.layoutRevision(), geometry.columns, geometry.rows, m_contentRevision};
    if (!m_preview && key == m_builtFor)
        return;
    m_builtFor = m_preview ? BuiltFor{} : key;

    const QStringList &slots = m_preview ? *m_preview : m_layout.slots();
    const GridCellBuilder builder = cellBuilder();
    const int count = std::max(m_layout.pageCount(), geometry.pageCount(int(slots.size())));
    QList<QList<GridCell>> pages;
    pages.reserve(count);
    for (int p = 0; p < count; ++p)
        pages.append(builder.page(slots, geometry, p));
    const int before = m_pages.count();
    m_pages.setPages(pages);
    if (before != m_pages.count())
        Q_EMIT pageCountChanged();
    if (m_currentPage >= m_pages.count())
        setCurrentPage(m_pages.count() - 1);
}

void GridPresenter::rebuildSearch()
{
    QList<AppListModel::Entry> entries;
    if (!m_searchText.trimmed().isEmpty()) {
        const QSet<QString> hidden = m_layout.hiddenApps();
        QList<SearchMatcher::Candidate> candidates;
        for (const AppItem &app : m_layout.apps())
            if (!hidden.contains(app.path))
                candidates.append({SlotKey::app(app.path), appTitle(app)});
        for (const auto &hit : SearchMatcher::rank(m_searchText, candidates))
            entries.append({hit.key, hit.name, SlotKey::appPath(hit.key)});
    }
    m_searchResults.setEntries(entries);
}

void GridPresenter::rebuildHidden()
{
    QList<AppListModel::Entry> entries;
    for (const QString &path : m_layout.hiddenApps()) {
        QString title = QFileInfo(path).completeBaseName();
        if (const auto entry = m_layout.resolve(SlotKey::app(path)))
            title = appTitle(std::get<AppItem>(*entry));
        entries.append({SlotKey::app(path), title, path});
    }
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(entries.begin(), entries.end(),
              [&](const auto &a, const auto &b) { return collator.compare(a.title, b.title) < 0; });
    m_hiddenApps.setEntries(entries);
}

void GridPresenter::rebuildFolder()
{
    if (!m_folder) {
        m_folderPages.setPages({});
        return;
    }
    const GridCellBuilder builder = cellBuilder();
    const PageGeometry geometry{m_folder->columnsPerRow(), m_folder->maxSlotsPerPage() / std::max(1, m_folder->columnsPerRow())};
    const QStringList slots = m_folder->slots();
    QList<QList<GridCell>> pages;
    for (int p = 0; p < geometry.pageCount(int(slots.size())); ++p)
        pages.append(builder.page(slots, geometry, p));
    m_folderPages.setPages(pages);
    Q_EMIT openFolderChanged();
}

// --- cells for the view ---------------------------------------------------

QString GridPresenter::keyAt(int page, int localIndex) const
{
    if (page < 0 || localIndex < 0 || localIndex >= m_layout.geometry().capacity())
        return {};
    return SlotList::at(m_layout.slots(), m_layout.absoluteSlot(page, localIndex));
}

QString GridPresenter::kindOf(const QString &key) const
{
    if (SlotKey::kindOf(key) == SlotKey::Kind::WidgetBlock)
        return QStringLiteral("blocked");
    const GridEntryOrEmpty entry = m_layout.resolve(key);
    if (!entry)
        return QStringLiteral("empty");
    switch (entry->index()) {
    case 0: return QStringLiteral("app");
    case 1: return QStringLiteral("folder");
    case 3: return QStringLiteral("widget");
    case 4: return QStringLiteral("workflow");
    default: return QStringLiteral("empty");
    }
}

QString GridPresenter::entryIdOf(const QString &key) const
{
    const GridEntryOrEmpty entry = m_layout.resolve(key);
    if (!entry || std::holds_alternative<AppItem>(*entry))
        return {};
    return Uuids::toText(entryId(*entry));
}

QString GridPresenter::titleOf(const QString &key) const
{
    const GridEntryOrEmpty entry = m_layout.resolve(key);
    if (!entry)
        return {};
    if (const auto *app = std::get_if<AppItem>(&*entry))
        return appTitle(*app);
    if (const auto *folder = std::get_if<FolderItem>(&*entry))
        return folder->name;
    if (const auto *workflow = std::get_if<WorkflowItem>(&*entry))
        return workflow->name;
    return {};
}

QString GridPresenter::folderKeyAt(int page, int localIndex) const
{
    if (!m_folder)
        return {};
    return SlotList::at(m_folder->slots(), qsizetype(page) * m_folder->maxSlotsPerPage() + localIndex);
}

// --- launching ------------------------------------------------------------

void GridPresenter::activate(const QString &key)
{
    const GridEntryOrEmpty entry = m_layout.resolve(key);
    if (!entry)
        return;
    if (const auto *folder = std::get_if<FolderItem>(&*entry)) {
        openFolder(Uuids::toText(folder->id));
        return;
    }
    if (const auto *workflow = std::get_if<WorkflowItem>(&*entry)) {
        launchWorkflow(*workflow);
        hide();
        return;
    }
    const auto *app = std::get_if<AppItem>(&*entry);
    if (!app)
        return;
    AppLauncher::Result result = m_launcher ? m_launcher->openApp(*app)
                                            : AppLauncher::Result::failure(QStringLiteral("no launcher available"));
    if (!result)
        qCWarning(lcApp, "Could not open %s: %s", qUtf8Printable(app->path), qUtf8Printable(result.error));
    Q_EMIT launched(app->path, result.ok, result.error);
    if (result)
        hide();
}

void GridPresenter::activateSearchResult(int index)
{
    const auto &entries = m_searchResults.entries();
    if (index >= 0 && index < entries.size())
        activate(entries.at(index).key);
}

void GridPresenter::launchWorkflow(const WorkflowItem &workflow)
{
    if (!m_launcher)
        return;
    // Each step waits the workflow's pause after the previous one.
    const int pauseMs = int(workflow.effectiveLaunchInterval() * 1000);
    int step = 0;
    std::shared_ptr<AppLauncher> launcher = m_launcher;
    for (const QString &path : workflow.appPaths) {
        const GridEntryOrEmpty entry = m_layout.resolve(SlotKey::app(path));
        const AppItem app = entry ? std::get<AppItem>(*entry) : AppItem{QUuid(), path, QFileInfo(path).baseName()};
        QTimer::singleShot(step++ * pauseMs, this, [launcher, app] { launcher->openApp(app); });
    }
    for (const QString &folder : workflow.folderPaths)
        QTimer::singleShot(step++ * pauseMs, this,
                           [launcher, folder] { launcher->openLocation(QUrl::fromLocalFile(folder)); });
}

// --- dragging -------------------------------------------------------------

void GridPresenter::beginDrag(const QString &key, int page, int localIndex)
{
    m_dragKey = key;
    m_dragFromPageSlot = localIndex;
    setCurrentPage(page);
    m_layout.beginDrag(key, localIndex);
}

void GridPresenter::previewDrop(const QString &key, int page, int localIndex)
{
    if (key.isEmpty() || localIndex < 0)
        return;
    QStringList copy = m_layout.slots();
    const qsizetype target = m_layout.absoluteSlot(page, localIndex);
    if (SlotKey::isWidgetMarker(SlotList::at(copy, target))) {
        m_preview.reset(); // the drop would be refused: show the grid as it is
    } else {
        SlotEdit edit(copy);
        SlotMove::moveKeyInSlots(edit, key, target, m_layout.gridRows());
        m_preview = copy;
    }
    rebuildPages();
}

void GridPresenter::cancelPreview()
{
    if (!m_preview)
        return;
    m_preview.reset();
    rebuildPages();
}

bool GridPresenter::drop(const QString &key, int page, int localIndex)
{
    m_preview.reset();
    const bool moved = localIndex >= 0 && m_layout.endDrag(key, m_dragFromPageSlot, page, localIndex);
    m_dragKey.clear();
    rebuildPages();
    return moved;
}

void GridPresenter::cancelDrag()
{
    m_preview.reset();
    m_dragKey.clear();
    rebuildPages();
}

bool GridPresenter::moveToNeighbourPage(const QString &key, int direction)
{
    const GridEntryOrEmpty entry = m_layout.resolve(key);
    if (!entry || direction == 0)
        return false;
    if (direction < 0 && m_currentPage == 0)
        return false;
    m_preview.reset();
    const qsizetype target = m_layout.moveEntryToNeighbourPage(
        *entry, m_currentPage, m_dragFromPageSlot,
        direction < 0 ? LaunchpadViewModel::NeighbourPage::Previous : LaunchpadViewModel::NeighbourPage::Next);
    if (target < 0) {
        rebuildPages();
        return false;
    }
    rebuildPages();
    const PageGeometry geometry = m_layout.geometry();
    m_dragFromPageSlot = geometry.localIndex(int(target));
    setCurrentPage(geometry.pageOf(int(target)));
    return true;
}

bool GridPresenter::mergeIntoFolder(const QString &draggedKey, const QString &targetKey)
{
    const QString dragged = SlotKey::appPath(draggedKey);
    if (dragged.isEmpty() || draggedKey == targetKey)
        return false;
    m_preview.reset();
    m_dragKey.clear();
    bool merged = false;
    if (SlotKey::kindOf(targetKey) == SlotKey::Kind::Folder) {
        if (const auto id = Uuids::fromText(SlotKey::idText(targetKey)))
            merged = m_layout.addAppToFolder(*id, dragged);
    } else if (const QString target = SlotKey::appPath(targetKey); !target.isEmpty()) {
        const qsizetype targetSlot = m_layout.slots().indexOf(targetKey);
        merged = m_layout
                     .createFolder(tr("New Folder"), {target, dragged}, {},
                                   targetSlot >= 0 ? std::optional<qsizetype>(targetSlot) : std::nullopt)
                     .has_value();
    }
    rebuildPages();
    return merged;
}

// --- folders --------------------------------------------------------------

std::optional<QUuid> GridPresenter::folderUuid(const QString &text) const
{
    return Uuids::fromText(text);
}

QString GridPresenter::openFolderId() const
{
    return m_folder ? Uuids::toText(m_folder->folderId()) : QString();
}

QString GridPresenter::openFolderName() const
{
    if (!m_folder)
        return {};
    const auto folder = m_layout.folder(m_folder->folderId());
    return folder ? folder->name : QString();
}

int GridPresenter::folderColumns() const { return m_folder ? m_folder->columnsPerRow() : 1; }

int GridPresenter::folderRows() const
{
    return m_folder ? m_folder->maxSlotsPerPage() / std::max(1, m_folder->columnsPerRow()) : 1;
}

void GridPresenter::openFolder(const QString &folderId)
{
    const auto id = folderUuid(folderId);
    if (!id)
        return;
    if (m_folder)
        m_folder->deleteLater();
    m_folder = m_layout.makeFolderSlotManager(*id, this);
    if (m_folder)
        connect(m_folder, &FolderSlotManager::slotsChanged, this, &GridPresenter::rebuildFolder);
    rebuildFolder();
    Q_EMIT openFolderChanged();
}

void GridPresenter::closeFolder()
{
    if (!m_folder)
        return;
    m_folder->deleteLater();
    m_folder = nullptr;
    rebuildFolder();
    Q_EMIT openFolderChanged();
}

bool GridPresenter::moveInFolder(const QString &folderId, const QString &key, int page, int localIndex)
{
    if (!m_folder || openFolderId() != folderId || localIndex < 0)
        return false;
    const QStringList before = m_folder->slots();
    return m_folder->moveKey(key, page * m_folder->maxSlotsPerPage() + localIndex) != before;
}

std::optional<QString> GridPresenter::takeOutOfFolder(const QString &folderId, const QString &key)
{
    const auto id = folderUuid(folderId);
    const QString path = SlotKey::appPath(key);
    if (!id || path.isEmpty() || !m_layout.removeAppFromFolder(*id, path))
        return std::nullopt;
    if (!m_layout.folder(*id)) // its last app left: the folder is gone
        closeFolder();
    return path;
}

bool GridPresenter::dropOutOfFolder(const QString &folderId, const QString &key, int page, int localIndex)
{
    const auto path = takeOutOfFolder(folderId, key);
    if (!path)
        return false;
    const qsizetype target = localIndex >= 0 ? m_layout.absoluteSlot(page, localIndex) : -1;
    if (target >= 0 && !SlotKey::isWidgetMarker(SlotList::at(m_layout.slots(), target)))
        m_layout.moveKeyInSlots(SlotKey::app(*path), int(target));
    m_dragKey.clear();
    rebuildPages();
    return true;
}

bool GridPresenter::moveOutOfFolderOnto(const QString &folderId, const QString &key, const QString &targetKey)
{
    const auto path = takeOutOfFolder(folderId, key);
    return path && mergeIntoFolder(SlotKey::app(*path), targetKey);
}

bool GridPresenter::renameFolder(const QString &folderId, const QString &name)
{
    const auto id = folderUuid(folderId);
    const bool renamed = id && !name.trimmed().isEmpty() && m_layout.renameFolder(*id, name.trimmed());
    if (renamed)
        Q_EMIT openFolderChanged();
    return renamed;
}

bool GridPresenter::dissolveFolder(const QString &folderId)
{
    const auto id = folderUuid(folderId);
    if (!id)
        return false;
    if (openFolderId() == folderId)
        closeFolder();
    return m_layout.dissolveFolder(*id);
}

bool GridPresenter::removeFromFolder(const QString &folderId, const QString &key)
{
    return takeOutOfFolder(folderId, key).has_value();
}

// --- apps and widgets -----------------------------------------------------

void GridPresenter::renameApp(const QString &key, const QString &name)
{
    const QString path = SlotKey::appPath(key);
    if (path.isEmpty())
        return;
    m_names.setCustomName(path, name);
    ++m_contentRevision;
    scheduleRebuild();
}

void GridPresenter::hideApp(const QString &key)
{
    const QString path = SlotKey::appPath(key);
    if (!path.isEmpty())
        m_layout.hideApp(path);
    rebuildHidden();
}

void GridPresenter::unhideApp(const QString &key)
{
    const QString path = SlotKey::appPath(key);
    if (!path.isEmpty())
        m_layout.unhideApp(path);
    rebuildHidden();
}

bool GridPresenter::removeWidget(const QString &widgetId)
{
    const auto id = Uuids::fromText(widgetId);
    return id && m_layout.removeWidget(*id);
}

bool GridPresenter::moveWidget(const QString &widgetId, int page, int localIndex)
{
    const auto id = Uuids::fromText(widgetId);
    m_preview.reset();
    m_dragKey.clear();
    const bool moved = id && localIndex >= 0 && m_layout.moveWidget(*id, m_layout.absoluteSlot(page, localIndex));
    rebuildPages();
    return moved;
}
