#include "ui/PageCellsModel.h"

PageCellsModel::PageCellsModel(int pageIndex, QObject *parent)
    : QAbstractListModel(parent)
    , m_pageIndex(pageIndex)
{
}

int PageCellsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_cells.size());
}

QVariant PageCellsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_cells.size())
        return {};
    const GridCell &cell = m_cells.at(index.row());
    switch (role) {
    case KeyRole: return cell.key;
    case KindRole: return int(cell.kind);
    case Qt::DisplayRole:
    case TitleRole: return cell.title;
    case IconPathRole: return cell.iconPath;
    case PreviewPathsRole: return cell.previewPaths;
    case EntryIdRole: return cell.entryId;
    case WidgetKindRole: return cell.widgetKind;
    case SpanColumnsRole: return cell.spanColumns;
    case SpanRowsRole: return cell.spanRows;
    case EmojiRole: return cell.emoji;
    case TintRole: return cell.tint;
    case ImageRole: return cell.image;
    default: return {};
    }
}

QHash<int, QByteArray> PageCellsModel::roleNames() const
{
    return {{KeyRole, "key"},
            {KindRole, "kind"},
            {TitleRole, "title"},
            {IconPathRole, "iconPath"},
            {PreviewPathsRole, "previewPaths"},
            {EntryIdRole, "entryId"},
            {WidgetKindRole, "widgetKind"},
            {SpanColumnsRole, "spanColumns"},
            {SpanRowsRole, "spanRows"},
            {EmojiRole, "emoji"},
            {TintRole, "tint"},
            {ImageRole, "image"}};
}

int PageCellsModel::setCells(const QList<GridCell> &cells)
{
    if (cells.size() != m_cells.size()) {
        beginResetModel();
        m_cells = cells;
        endResetModel();
        return int(cells.size());
    }
    int changed = 0;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (cells.at(i) == m_cells.at(i))
            continue;
        m_cells[i] = cells.at(i);
        const QModelIndex at = index(int(i));
        Q_EMIT dataChanged(at, at);
        ++changed;
    }
    return changed;
}
