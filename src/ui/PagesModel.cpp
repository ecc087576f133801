#include "ui/PagesModel.h"

PagesModel::PagesModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int PagesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_pages.size());
}

QVariant PagesModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_pages.size())
        return {};
    if (role == CellsRole)
        return QVariant::fromValue<QObject *>(m_pages.at(index.row()));
    if (role == PageIndexRole)
        return index.row();
    return {};
}

QHash<int, QByteArray> PagesModel::roleNames() const
{
    return {{CellsRole, "cells"}, {PageIndexRole, "pageIndex"}};
}

int PagesModel::setPages(const QList<QList<GridCell>> &pages)
{
    const int before = int(m_pages.size());
    const int after = int(pages.size());
    if (after < before) {
        beginRemoveRows({}, after, before - 1);
        for (int i = after; i < before; ++i)
            m_pages.takeLast()->deleteLater();
        endRemoveRows();
    }
    int changed = 0;
    for (int i = 0; i < std::min(before, after); ++i)
        changed += m_pages[i]->setCells(pages.at(i));
    if (after > before) {
        beginInsertRows({}, before, after - 1);
        for (int i = before; i < after; ++i) {
            auto *page = new PageCellsModel(i, this);
            changed += page->setCells(pages.at(i));
            m_pages.append(page);
        }
        endInsertRows();
    }
    if (after != before)
        Q_EMIT countChanged();
    return changed;
}

int AppListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

QVariant AppListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_entries.size())
        return {};
    const Entry &e = m_entries.at(index.row());
    switch (role) {
    case KeyRole: return e.key;
    case Qt::DisplayRole:
    case TitleRole: return e.title;
    case IconPathRole: return e.iconPath;
    default: return {};
    }
}

QHash<int, QByteArray> AppListModel::roleNames() const
{
    return {{KeyRole, "key"}, {TitleRole, "title"}, {IconPathRole, "iconPath"}};
}

void AppListModel::setEntries(const QList<Entry> &entries)
{
    if (entries == m_entries)
        return;
    const bool countChanges = entries.size() != m_entries.size();
    beginResetModel();
    m_entries = entries;
    endResetModel();
    if (countChanges)
        Q_EMIT countChanged();
}
