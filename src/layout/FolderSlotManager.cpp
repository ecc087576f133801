#include "layout/FolderSlotManager.h"

#include "layout/FolderSlots.h"

FolderSlotManager::FolderSlotManager(const QUuid &folderId, const QStringList &slots, FolderAppsGrid grid,
                                     QObject *parent)
    : QObject(parent)
    , m_slots(slots)
    , m_folderId(folderId)
    , m_maxSlotsPerPage(FolderAppsGrids::cellsPerPage(grid))
    , m_columnsPerRow(FolderAppsGrids::columns(grid))
{
}

int FolderSlotManager::pageCount() const
{
    return std::max<int>(1, int((m_slots.size() + m_maxSlotsPerPage - 1) / m_maxSlotsPerPage));
}

void FolderSlotManager::setGrid(FolderAppsGrid grid)
{
    const int perPage = FolderAppsGrids::cellsPerPage(grid);
    const int perRow = FolderAppsGrids::columns(grid);
    if (perPage == m_maxSlotsPerPage && perRow == m_columnsPerRow)
        return;
    m_maxSlotsPerPage = perPage;
    m_columnsPerRow = perRow;
    Q_EMIT gridChanged();
    Q_EMIT slotsChanged(); // the page count follows the page size
}

void FolderSlotManager::resetSlots(const QStringList &slots)
{
    if (slots == m_slots)
        return;
    m_slots = slots;
    Q_EMIT slotsChanged();
}

QStringList FolderSlotManager::moveKey(const QString &key, int targetIndex)
{
    QStringList moved = FolderSlots::moveKey(m_slots, key, targetIndex, m_maxSlotsPerPage, m_columnsPerRow);
    if (moved == m_slots)
        return m_slots;
    m_slots = std::move(moved);
    Q_EMIT slotsChanged();
    if (m_onSlotsChanged)
        m_onSlotsChanged(m_slots);
    return m_slots;
}
