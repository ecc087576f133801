#include "ui/DragController.h"

#include "layout/LaunchpadViewModel.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"
#include "ui/ActivationPresenter.h"
#include "ui/FolderPresenter.h"
#include "ui/PagesPresenter.h"

#include <QLineF>

DragController::DragController(LaunchpadViewModel &layout, PagesPresenter &pages, FolderPresenter &folder,
                               ActivationPresenter &activation, QObject *parent)
    : QObject(parent)
    , m_layout(layout)
    , m_pages(pages)
    , m_folder(folder)
    , m_activation(activation)
{
    for (QTimer *timer : {&m_previewTimer, &m_mergeTimer, &m_edgeTimer})
        timer->setSingleShot(true);
    m_previewTimer.setInterval(kPreviewDelayMs);
    m_mergeTimer.setInterval(kMergeDelayMs);
    m_edgeTimer.setInterval(kEdgeDwellMs);
    connect(&m_previewTimer, &QTimer::timeout, this, &DragController::showPreview);
    connect(&m_mergeTimer, &QTimer::timeout, this, &DragController::armMerge);
    connect(&m_edgeTimer, &QTimer::timeout, this, &DragController::turnPage);
}

void DragController::setGridArea(const QRectF &area)
{
    if (area == m_gridArea)
        return;
    m_gridArea = area;
    Q_EMIT areasChanged();
}

void DragController::setFolderArea(const QRectF &area)
{
    if (area == m_folderArea)
        return;
    m_folderArea = area;
    Q_EMIT areasChanged();
}

void DragController::setFolderBox(const QRectF &box)
{
    if (box == m_folderBox)
        return;
    m_folderBox = box;
    Q_EMIT areasChanged();
}

QString DragController::iconPath() const
{
    return m_kind == CellKind::App || m_kind == CellKind::Unavailable ? SlotKey::appPath(m_key) : QString();
}

QString DragController::gridKey() const
{
    if (!isActive())
        return {};
    return m_kind == CellKind::App || m_kind == CellKind::Unavailable ? SlotKey::app(SlotKey::appPath(m_key)) : m_key;
}

// --- hit testing ------------------------------------------------------------

namespace {

// The cell of a columns x rows grid drawn over area that holds point, or -1.
int cellIn(const QRectF &area, int columns, int rows, QPointF point)
{
    if (area.isEmpty() || !area.contains(point))
        return -1;
    columns = std::max(1, columns);
    rows = std::max(1, rows);
    const int column = std::clamp(int((point.x() - area.left()) * columns / area.width()), 0, columns - 1);
    const int row = std::clamp(int((point.y() - area.top()) * rows / area.height()), 0, rows - 1);
    return row * columns + column;
}

}

int DragController::gridCellAt(QPointF point) const
{
    return cellIn(m_gridArea, m_pages.columns(), m_pages.rows(), point);
}

int DragController::folderCellAt(QPointF point) const
{
    return m_folder.isOpen() ? cellIn(m_folderArea, m_folder.columns(), m_folder.shownRows(), point) : -1;
}

QPointF DragController::gridCellCenter(int localIndex) const
{
    const int columns = std::max(1, m_pages.columns());
    const qreal width = m_gridArea.width() / columns;
    const qreal height = m_gridArea.height() / std::max(1, m_pages.rows());
    return {m_gridArea.left() + (localIndex % columns + 0.5) * width,
            m_gridArea.top() + (localIndex / columns + 0.5) * height};
}

// Only the middle of the icon itself takes a drop into a folder; the rest of
// the cell makes room, so passing over icons never gathers them by accident.
bool DragController::onIconCentre(QPointF point, int cell) const
{
    const QPointF centre = gridCellCenter(cell);
    const qreal icon = m_pages.iconSize();
    const qreal cellHeight = m_gridArea.height() / std::max(1, m_pages.rows());
    // The icon sits above its label, the two centred in the cell together.
    const qreal label = m_pages.showLabels() ? std::max(11.0, std::round(icon * 0.14)) * 1.3 + 8 : 0;
    const qreal iconTop = centre.y() - cellHeight / 2 + std::max(0.0, (cellHeight - icon - label) / 2);
    const QPointF iconCentre(centre.x(), iconTop + icon / 2);
    const qreal reach = icon * 0.3;
    return std::abs(point.x() - iconCentre.x()) < reach && std::abs(point.y() - iconCentre.y()) < reach;
}

bool DragController::canMergeOnto(const QString &target) const
{
    if (target.isEmpty() || target == m_key || (m_kind != CellKind::App && m_kind != CellKind::Workflow))
        return false;
    const SlotKey::Kind kind = SlotKey::kindOf(target);
    // A workflow goes into folders only.
    if (m_kind == CellKind::Workflow && kind != SlotKey::Kind::Folder)
        return false;
    if (kind == SlotKey::Kind::Folder)
        return !(fromFolder() && SlotKey::idText(target) == m_folderId) && m_layout.resolve(target).has_value();
    return kind == SlotKey::Kind::App && m_layout.resolve(target).has_value();
}

int DragController::edgeAt(QPointF point) const
{
    if (m_gridArea.isEmpty())
        return 0;
    // The margins beside the cells are the edges.
    if (point.x() < m_gridArea.left())
        return -1;
    if (point.x() >= m_gridArea.right())
        return 1;
    return 0;
}

qsizetype DragController::currentSlot() const
{
    return m_pages.absoluteSlot(m_pages.currentPage(), m_fromPageSlot);
}

bool DragController::mayTurn(int direction) const
{
    const int page = m_pages.currentPage();
    if (direction < 0)
        return page > 0;
    if (page + 1 < m_layout.pageCount())
        return true;
    // Past the last page only an icon that leaves company behind may go: a
    // new page must not leave an empty one before it.
    if (fromFolder() || m_kind == CellKind::Widget)
        return false;
    const QStringList keys = m_layout.pageKeys(page);
    return std::any_of(keys.cbegin(), keys.cend(), [this](const QString &k) { return !k.isEmpty() && k != m_key; });
}

// --- the gesture ------------------------------------------------------------

void DragController::press(Surface surface, QPointF point, int button)
{
    if (m_phase != Phase::Idle)
        cancel();
    m_surface = surface;
    m_button = button;
    m_pressPoint = m_point = point;
    m_phase = Phase::Pressed;
    m_key.clear();
    m_kind = CellKind::Empty;
    m_widgetId = QUuid();
    m_widgetGrabOffset = 0;
    m_pressPage = -1;
    m_pressCell = -1;
    if (surface == Grid) {
        m_pressPage = m_pages.currentPage();
        m_pressCell = gridCellAt(point);
        if (m_pressCell < 0)
            return;
        m_key = m_pages.keyAt(m_pressPage, m_pressCell);
        m_kind = m_pages.kindAt(m_pressPage, m_pressCell);
        if (m_kind == CellKind::Blocked) {
            // A widget is picked up by any of its cells.
            const auto id = Uuids::fromText(SlotKey::idText(m_key));
            const qsizetype anchor = id ? m_layout.findWidgetTopLeftIndex(*id) : -1;
            if (anchor < 0)
                return;
            m_key = SlotList::at(m_layout.slots(), anchor);
            m_kind = CellKind::Widget;
            m_widgetGrabOffset = int(m_pages.absoluteSlot(m_pressPage, m_pressCell) - anchor);
        }
        if (m_kind == CellKind::Widget)
            m_widgetId = Uuids::fromText(SlotKey::idText(m_key)).value_or(QUuid());
    } else if (m_folderBox.contains(point)) {
        m_pressPage = m_folder.currentPage();
        m_pressCell = folderCellAt(point);
        m_key = m_folder.memberAt(m_pressPage, m_pressCell);
        if (!m_key.isEmpty())
            m_kind = SlotKey::kindOf(m_key) == SlotKey::Kind::Workflow ? CellKind::Workflow : CellKind::App;
    }
}

void DragController::move(QPointF point)
{
    if (m_phase == Phase::Pressed) {
        const bool draggable = CellKind::isOccupied(m_kind) && m_button == Qt::LeftButton
                               && !(fromFolder() && m_kind != CellKind::App && m_kind != CellKind::Workflow);
        if (!draggable || QLineF(m_pressPoint, point).length() <= kThreshold)
            return;
        startDrag();
    }
    if (m_phase == Phase::Dragging)
        dragTo(point);
}

void DragController::startDrag()
{
    m_phase = Phase::Dragging;
    m_fromPageSlot = m_pressCell;
    m_movedToOtherPage = false;
    m_hoverCell = m_previewCell = -1;
    m_edge = 0;
    m_turnedAtThisEdge = false;
    if (m_surface == Folder)
        m_folderId = m_folder.folderId();
    else if (m_kind != CellKind::Widget)
        m_layout.beginDrag(m_key, m_pressCell);
    Q_EMIT activeChanged();
}

void DragController::dragTo(QPointF point)
{
    m_point = point;
    Q_EMIT pointChanged();
    if (fromFolder() && !m_outsideFolder) {
        if (m_folderBox.contains(point))
            return; // inside the folder the drop decides where it goes
        setOutsideFolder(true);
    }

    const int edge = edgeAt(point);
    if (edge != m_edge) {
        m_edge = edge;
        m_turnedAtThisEdge = false;
        edge != 0 ? m_edgeTimer.start() : m_edgeTimer.stop();
    }

    const int cell = gridCellAt(point);
    const bool newCell = cell != m_hoverCell;
    m_hoverCell = cell;
    if (cell < 0 || m_kind == CellKind::Widget) {
        m_previewTimer.stop();
        m_mergeTimer.stop();
        m_pendingMerge.clear();
        setMergeTarget(QString());
        if (cell < 0) {
            m_pages.setPreview(std::nullopt);
            m_previewCell = -1;
        }
        return;
    }

    const QString shown = m_pages.shownKeyAt(m_pages.currentPage(), cell);
    if (canMergeOnto(shown) && onIconCentre(point, cell)) {
        m_previewTimer.stop();
        if (shown != m_pendingMerge) {
            m_pendingMerge = shown;
            setMergeTarget(QString());
            m_mergeTimer.start();
        }
        return;
    }
    m_pendingMerge.clear();
    m_mergeTimer.stop();
    setMergeTarget(QString());
    if (cell == m_previewCell)
        m_previewTimer.stop();
    else if (newCell || !m_previewTimer.isActive())
        m_previewTimer.start();
}

void DragController::showPreview()
{
    if (m_phase != Phase::Dragging || m_hoverCell < 0 || m_kind == CellKind::Widget)
        return;
    const qsizetype target = m_pages.absoluteSlot(m_pages.currentPage(), m_hoverCell);
    std::optional<QStringList> preview;
    if (fromFolder()) {
        if (const auto id = Uuids::fromText(m_folderId))
            preview = m_layout.previewDropFromFolder(*id, SlotKey::appPath(m_key), target);
    } else {
        preview = m_layout.previewDrop(m_key, target);
    }
    m_previewCell = preview ? m_hoverCell : -1;
    m_pages.setPreview(std::move(preview));
}

void DragController::armMerge()
{
    if (m_phase == Phase::Dragging && !m_pendingMerge.isEmpty())
        setMergeTarget(m_pendingMerge);
}

void DragController::turnPage()
{
    if (m_phase != Phase::Dragging || m_edge == 0 || m_turnedAtThisEdge)
        return;
    // One turn per stay at an edge: the pointer leaves and comes back for the next.
    m_turnedAtThisEdge = true;
    if (!mayTurn(m_edge))
        return;
    m_pages.setPreview(std::nullopt);
    m_previewCell = -1;
    const int page = m_pages.currentPage();
    if (fromFolder()) {
        m_pages.setCurrentPage(page + m_edge);
        return;
    }
    const GridEntryOrEmpty entry = m_layout.resolve(m_key);
    if (!entry)
        return;
    const qsizetype target = m_layout.moveEntryToNeighbourPage(
        *entry, page, m_fromPageSlot,
        m_edge < 0 ? LaunchpadViewModel::NeighbourPage::Previous : LaunchpadViewModel::NeighbourPage::Next);
    if (target < 0)
        return;
    const PageGeometry geometry = m_layout.geometry();
    m_movedToOtherPage = true;
    m_fromPageSlot = geometry.localIndex(int(target));
    m_pages.setCurrentPage(geometry.pageOf(int(target)));
}

void DragController::release(QPointF point)
{
    if (m_phase == Phase::Pressed) {
        m_phase = Phase::Idle;
        click(point);
        return;
    }
    if (m_phase != Phase::Dragging)
        return;
    m_point = point;
    drop(point);
    finish();
}

void DragController::drop(QPointF point)
{
    const int page = m_pages.currentPage();

    if (fromFolder() && !m_outsideFolder) {
        const int cell = folderCellAt(point);
        if (cell >= 0)
            m_folder.moveMember(m_key, m_folder.currentPage(), cell);
        return;
    }

    int cell = gridCellAt(point);
    // Resting on an icon's centre the grid shows no new preview: the drop
    // does what was shown last.
    if (!m_pendingMerge.isEmpty() && m_mergeTarget.isEmpty())
        cell = m_previewCell;

    if (fromFolder()) {
        if (!m_mergeTarget.isEmpty())
            m_folder.merge(m_key, m_mergeTarget, true);
        else
            m_folder.dropOnGrid(m_key, cell >= 0 ? m_pages.absoluteSlot(page, cell) : -1);
        m_folder.close();
        return;
    }
    if (m_kind == CellKind::Widget) {
        if (cell >= 0 && !m_widgetId.isNull()) {
            const qsizetype requested = m_pages.absoluteSlot(page, cell) - m_widgetGrabOffset;
            m_layout.moveWidget(m_widgetId, std::max<qsizetype>(m_pages.absoluteSlot(page, 0), requested));
        }
        return;
    }
    if (!m_mergeTarget.isEmpty()) {
        m_folder.merge(m_key, m_mergeTarget, false);
        return;
    }
    if (cell < 0) {
        // Released off the cells: the icon stays where the drag left it.
        if (m_movedToOtherPage)
            m_layout.endDrag(m_key, m_fromPageSlot, page, m_fromPageSlot, true);
        return;
    }
    const bool staysWherePageTurnPutIt = m_movedToOtherPage && m_pages.absoluteSlot(page, cell) == currentSlot();
    m_layout.endDrag(m_key, m_fromPageSlot, page, cell, staysWherePageTurnPutIt);
}

void DragController::click(QPointF point)
{
    if (m_surface == Folder) {
        if (!m_folderBox.contains(point)) {
            if (m_button == Qt::LeftButton)
                Q_EMIT backgroundClicked(Folder);
            return;
        }
        const QString member = m_folder.memberAt(m_folder.currentPage(), folderCellAt(point));
        if (member.isEmpty())
            return;
        if (m_button == Qt::RightButton)
            Q_EMIT contextMenuRequested(member, Folder, point);
        else if (m_button == Qt::LeftButton)
            m_activation.activate(member);
        return;
    }
    const int cell = gridCellAt(point);
    if (cell != m_pressCell || !CellKind::isOccupied(m_kind)) {
        if (m_button == Qt::RightButton)
            Q_EMIT backgroundMenuRequested(point);
        else if (m_button == Qt::LeftButton && m_kind == CellKind::Empty)
            Q_EMIT backgroundClicked(Grid);
        return;
    }
    if (m_button == Qt::RightButton)
        Q_EMIT contextMenuRequested(m_key, Grid, point);
    else if (m_button == Qt::LeftButton && m_kind != CellKind::Widget)
        m_activation.activate(m_key);
}

void DragController::cancel()
{
    if (m_phase == Phase::Idle)
        return;
    const bool wasDragging = m_phase == Phase::Dragging;
    if (wasDragging && fromFolder() && m_outsideFolder)
        m_folder.close(); // the app stays in its folder, which was already out of sight
    // A page turn already moved the icon; cancelling puts it back where the
    // gesture began (that cell was left empty by the turn).
    if (wasDragging && m_movedToOtherPage) {
        m_layout.moveKeyInSlots(m_key, int(m_pages.absoluteSlot(m_pressPage, m_pressCell)));
        m_pages.setCurrentPage(m_pressPage);
    }
    finish();
}

void DragController::finish()
{
    const bool wasDragging = m_phase == Phase::Dragging;
    const bool mayHaveLeftEmptyPage = m_movedToOtherPage || fromFolder();
    m_phase = Phase::Idle;
    m_previewTimer.stop();
    m_mergeTimer.stop();
    m_edgeTimer.stop();
    m_pages.setPreview(std::nullopt);
    m_previewCell = m_hoverCell = -1;
    m_pendingMerge.clear();
    m_edge = 0;
    setMergeTarget(QString());
    setOutsideFolder(false);
    m_folderId.clear();
    m_surface = Grid;
    if (wasDragging) {
        if (mayHaveLeftEmptyPage)
            m_layout.dropTrailingEmptyPages();
        m_movedToOtherPage = false;
        Q_EMIT activeChanged();
    }
}

void DragController::setOutsideFolder(bool outside)
{
    if (outside == m_outsideFolder)
        return;
    m_outsideFolder = outside;
    Q_EMIT outsideFolderChanged();
}

void DragController::setMergeTarget(const QString &key)
{
    if (key == m_mergeTarget)
        return;
    m_mergeTarget = key;
    Q_EMIT mergeTargetChanged();
}
