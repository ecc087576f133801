#pragma once

#include "ui/PageCellsModel.h"

#include <QAbstractListModel>
#include <QList>

// The pages of a grid, each with its own cells model. Pages are kept across
// updates: a change rebuilds the cell lists, and each page model signals only
// the cells that differ, so the views redraw just those.
class PagesModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Pages are made by their presenter")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    enum Role { CellsRole = Qt::UserRole + 1, PageIndexRole };

    explicit PagesModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return int(m_pages.size()); }
    PageCellsModel *page(int index) const { return m_pages.value(index); }
    // Returns how many cells changed over all pages.
    int setPages(const QList<QList<GridCell>> &pages);

Q_SIGNALS:
    void countChanged();

private:
    QList<PageCellsModel *> m_pages;
};

// A flat list of apps (search results, hidden apps).
class AppListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Lists are made by their presenter")
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)
public:
    struct Entry {
        QString key;
        QString title;
        QString iconPath;
        bool operator==(const Entry &) const = default;
    };
    enum Role { KeyRole = Qt::UserRole + 1, TitleRole, IconPathRole };

    using QAbstractListModel::QAbstractListModel;
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setEntries(const QList<Entry> &entries);
    const QList<Entry> &entries() const { return m_entries; }

Q_SIGNALS:
    void countChanged();

private:
    QList<Entry> m_entries;
};
