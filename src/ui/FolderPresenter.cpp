#include "ui/FolderPresenter.h"

#include "layout/FolderNames.h"

#include "layout/FolderSlotManager.h"
#include "layout/LaunchpadViewModel.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"
#include "ui/CellFactory.h"

FolderPresenter::FolderPresenter(LaunchpadViewModel &layout, const CellFactory &cells, QObject *parent)
    : QObject(parent)
    , m_layout(layout)
    , m_cells(cells)
{
    // A rename, a member added elsewhere or an app that went away.
    connect(&m_layout, &LaunchpadViewModel::foldersChanged, this, [this] {
        if (m_folder && !m_layout.folder(m_folder->folderId()))
            close();
        else
            rebuild();
        Q_EMIT nameChanged();
    });
    connect(&m_layout, &LaunchpadViewModel::appsChanged, this, &FolderPresenter::rebuild);
}

FolderPresenter::~FolderPresenter() = default;

QString FolderPresenter::folderId() const
{
    return m_folder ? Uuids::toText(m_folder->folderId()) : QString();
}

QString FolderPresenter::name() const
{
    const auto folder = m_folder ? m_layout.folder(m_folder->folderId()) : std::nullopt;
    return folder ? folder->name : QString();
}

int FolderPresenter::columns() const { return m_folder ? std::max(1, m_folder->columnsPerRow()) : 1; }

int FolderPresenter::rows() const
{
    return m_folder ? std::max(1, m_folder->maxSlotsPerPage() / columns()) : 1;
}

void FolderPresenter::setCurrentPage(int page)
{
    page = std::clamp(page, 0, std::max(0, pageCount() - 1));
    if (page == m_currentPage)
        return;
    m_currentPage = page;
    Q_EMIT currentPageChanged();
}

void FolderPresenter::open(const QString &folderId)
{
    const auto id = Uuids::fromText(folderId);
    if (!id || !m_layout.folder(*id))
        return;
    if (m_folder)
        m_folder->deleteLater();
    m_folder = m_layout.makeFolderSlotManager(*id, this);
    connect(m_folder, &FolderSlotManager::slotsChanged, this, &FolderPresenter::rebuild);
    connect(m_folder, &FolderSlotManager::gridChanged, this, &FolderPresenter::shapeChanged);
    m_currentPage = 0;
    rebuild();
    Q_EMIT shapeChanged();
    Q_EMIT nameChanged();
    Q_EMIT currentPageChanged();
    Q_EMIT openChanged();
}

void FolderPresenter::close()
{
    if (!m_folder)
        return;
    m_folder->deleteLater();
    m_folder = nullptr;
    rebuild();
    Q_EMIT openChanged();
}

bool FolderPresenter::renameFolder(const QString &folderId, const QString &name)
{
    const auto id = Uuids::fromText(folderId);
    const auto folder = id ? m_layout.folder(*id) : std::nullopt;
    const QString trimmed = name.trimmed();
    const bool renamed = folder && !trimmed.isEmpty() && trimmed != folder->name
                         && m_layout.renameFolder(*id, trimmed);
    // Also when refused: the view goes back to showing the stored name.
    Q_EMIT nameChanged();
    return renamed;
}

bool FolderPresenter::dissolve(const QString &folderId)
{
    const auto id = Uuids::fromText(folderId);
    if (!id)
        return false;
    if (this->folderId() == folderId)
        close();
    return m_layout.dissolveFolder(*id);
}

bool FolderPresenter::removeMember(const QString &folderId, const QString &key)
{
    const auto id = Uuids::fromText(folderId);
    const QString path = SlotKey::appPath(key);
    return id && !path.isEmpty() && m_layout.removeAppFromFolder(*id, path);
}

QString FolderPresenter::memberAt(int page, int localIndex) const
{
    if (!m_folder || localIndex < 0 || localIndex >= capacity())
        return {};
    return SlotList::at(m_folder->slots(), qsizetype(page) * capacity() + localIndex);
}

bool FolderPresenter::moveMember(const QString &key, int page, int localIndex)
{
    if (!m_folder || localIndex < 0 || localIndex >= capacity())
        return false;
    const QStringList before = m_folder->slots();
    return m_folder->moveKey(key, page * capacity() + localIndex) != before;
}

std::optional<QString> FolderPresenter::takeOut(const QString &key)
{
    if (SlotKey::kindOf(key) == SlotKey::Kind::Workflow) {
        const auto id = Uuids::fromText(SlotKey::idText(key));
        if (!m_folder || !id || !m_layout.removeWorkflowFromFolder(m_folder->folderId(), *id))
            return std::nullopt;
        return key;
    }
    const QString path = SlotKey::appPath(key);
    if (!m_folder || path.isEmpty() || !m_layout.removeAppFromFolder(m_folder->folderId(), path))
        return std::nullopt;
    return path;
}

bool FolderPresenter::dropOnGrid(const QString &key, qsizetype target)
{
    const auto taken = takeOut(key);
    if (!taken)
        return false;
    const QString gridKey = SlotKey::kindOf(*taken) == SlotKey::Kind::Workflow ? *taken : SlotKey::app(*taken);
    if (target >= 0 && m_layout.acceptsDropAt(target))
        m_layout.moveKeyInSlots(gridKey, int(target));
    return true;
}

bool FolderPresenter::merge(const QString &draggedKey, const QString &targetKey, bool fromOpenFolder)
{
    // A workflow joins a folder; it never makes one with another icon.
    if (SlotKey::kindOf(draggedKey) == SlotKey::Kind::Workflow) {
        const auto workflowId = Uuids::fromText(SlotKey::idText(draggedKey));
        const auto folderId = SlotKey::kindOf(targetKey) == SlotKey::Kind::Folder
                                  ? Uuids::fromText(SlotKey::idText(targetKey))
                                  : std::nullopt;
        if (!workflowId || !folderId)
            return false;
        return m_layout.addWorkflowToFolder(*folderId, *workflowId).has_value();
    }
    QString dragged = SlotKey::appPath(draggedKey);
    if (dragged.isEmpty() || draggedKey == targetKey)
        return false;
    if (fromOpenFolder) {
        const auto path = takeOut(draggedKey);
        if (!path)
            return false;
        dragged = *path;
    }
    if (SlotKey::kindOf(targetKey) == SlotKey::Kind::Folder) {
        const auto id = Uuids::fromText(SlotKey::idText(targetKey));
        return id && m_layout.addAppToFolder(*id, dragged);
    }
    const QString target = SlotKey::appPath(targetKey);
    if (target.isEmpty())
        return false;
    const qsizetype targetSlot = m_layout.slots().indexOf(targetKey);
    return m_layout
        .createFolder(FolderNames::fromCategories({m_categoriesOf ? m_categoriesOf(target) : QStringList(),
                                                   m_categoriesOf ? m_categoriesOf(dragged) : QStringList()}),
                      {target, dragged}, {},
                      targetSlot >= 0 ? std::optional<qsizetype>(targetSlot) : std::nullopt)
        .has_value();
}

void FolderPresenter::rebuild()
{
    const int before = m_pages.count();
    if (!m_folder) {
        m_pages.setPages({});
    } else {
        const QStringList slots = m_folder->slots();
        m_pages.setPages(m_cells.pages(slots, PageGeometry{columns(), rows()}));
    }
    int shown = rows();
    if (m_folder && m_pages.count() <= 1) {
        const QStringList slots = m_folder->slots();
        qsizetype last = slots.size() - 1;
        while (last >= 0 && slots.at(last).isEmpty())
            --last;
        shown = std::clamp(int(last / columns()) + 1, 1, rows());
    }
    if (shown != m_shownRows) {
        m_shownRows = shown;
        Q_EMIT shapeChanged();
    }
    if (before != m_pages.count())
        Q_EMIT pageCountChanged();
    if (m_currentPage >= std::max(1, m_pages.count()))
        setCurrentPage(m_pages.count() - 1);
}
