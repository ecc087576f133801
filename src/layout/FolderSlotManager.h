#pragma once

#include "layout/FolderAppsGrid.h"

#include <QObject>
#include <QStringList>
#include <QUuid>
#include <functional>

// The order of one open folder's grid, edited on the main thread. The owner
// is told of every change through onSlotsChanged and stores the list into
// the folder (LaunchpadViewModel::makeFolderSlotManager wires that).
class FolderSlotManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(QStringList slots READ slots NOTIFY slotsChanged)
    Q_PROPERTY(QUuid folderId READ folderId CONSTANT)
    Q_PROPERTY(int maxSlotsPerPage READ maxSlotsPerPage NOTIFY gridChanged)
    Q_PROPERTY(int columnsPerRow READ columnsPerRow NOTIFY gridChanged)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY slotsChanged)
public:
    using SlotsChangedCallback = std::function<void(const QStringList &slots)>;

    FolderSlotManager(const QUuid &folderId, const QStringList &slots, FolderAppsGrid grid,
                      QObject *parent = nullptr);

    QStringList slots() const { return m_slots; }
    QUuid folderId() const { return m_folderId; }
    int maxSlotsPerPage() const { return m_maxSlotsPerPage; }
    int columnsPerRow() const { return m_columnsPerRow; }
    int pageCount() const;

    void setOnSlotsChanged(SlotsChangedCallback callback) { m_onSlotsChanged = std::move(callback); }
    void setGrid(FolderAppsGrid grid);
    // Takes a list changed elsewhere (the folder was edited); the owner is not called back.
    void resetSlots(const QStringList &slots);

    // Moves key to targetIndex with the folder's move rule and returns the
    // new list; the owner's callback runs when the list changed.
    Q_INVOKABLE QStringList moveKey(const QString &key, int targetIndex);

Q_SIGNALS:
    void slotsChanged();
    void gridChanged();

private:
    QStringList m_slots;
    QUuid m_folderId;
    int m_maxSlotsPerPage;
    int m_columnsPerRow;
    SlotsChangedCallback m_onSlotsChanged;
};
