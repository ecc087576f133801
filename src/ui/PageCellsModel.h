#pragma once

#include "ui/GridCell.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

// The cells of one page for a QML Repeater. setCells() compares with what is
// shown and signals only the rows that changed, so delegates of unchanged
// cells (and their decoded icons) stay as they are.
class PageCellsModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Pages are made by their presenter")
    Q_PROPERTY(int pageIndex READ pageIndex CONSTANT)
public:
    enum Role {
        KeyRole = Qt::UserRole + 1,
        KindRole,
        TitleRole,
        IconPathRole,
        PreviewPathsRole,
        EntryIdRole,
        WidgetKindRole,
        SpanColumnsRole,
        SpanRowsRole,
        EmojiRole,
        TintRole,
        ImageRole,
    };

    explicit PageCellsModel(int pageIndex, QObject *parent = nullptr);

    int pageIndex() const { return m_pageIndex; }
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // Returns how many rows changed.
    int setCells(const QList<GridCell> &cells);
    const QList<GridCell> &cells() const { return m_cells; }

private:
    int m_pageIndex;
    QList<GridCell> m_cells;
};
