#pragma once

#include "ui/PagesModel.h"

#include <QObject>
#include <functional>
#include <QPointer>
#include <QUuid>
#include <QtQml/qqmlregistration.h>
#include <optional>

class CellFactory;
class FolderSlotManager;
class LaunchpadViewModel;

// The open folder (at most one): its name, its members on pages of the
// folder's own grid shape, and the edits made from it. Also gathering icons
// into folders, which starts from the grid.
class FolderPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Owned by the grid presenter")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY openChanged)
    Q_PROPERTY(QString folderId READ folderId NOTIFY openChanged)
    Q_PROPERTY(QString name READ name NOTIFY nameChanged)
    Q_PROPERTY(int columns READ columns NOTIFY shapeChanged)
    Q_PROPERTY(int rows READ rows NOTIFY shapeChanged)
    // The rows the open panel shows: all of them when the folder has pages
    // to turn, else only down to its last app, so a small folder is a small box.
    Q_PROPERTY(int shownRows READ shownRows NOTIFY shapeChanged)
    Q_PROPERTY(PagesModel *pages READ pages CONSTANT)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY pageCountChanged)
    Q_PROPERTY(int currentPage READ currentPage WRITE setCurrentPage NOTIFY currentPageChanged)
public:
    FolderPresenter(LaunchpadViewModel &layout, const CellFactory &cells, QObject *parent = nullptr);
    ~FolderPresenter() override;
    // A new folder is named by what its first two apps share.
    void setCategoriesSource(std::function<QStringList(const QString &appPath)> categoriesOf)
    {
        m_categoriesOf = std::move(categoriesOf);
    }

    bool isOpen() const { return !m_folder.isNull(); }
    QString folderId() const;
    QString name() const;
    int columns() const;
    int rows() const;
    int shownRows() const { return m_shownRows; }
    int capacity() const { return columns() * rows(); }
    PagesModel *pages() { return &m_pages; }
    int pageCount() const { return m_pages.count(); }
    int currentPage() const { return m_currentPage; }
    void setCurrentPage(int page);

    Q_INVOKABLE void open(const QString &folderId);
    Q_INVOKABLE void close();
    // An empty or blank name is refused and the shown name stays the stored one.
    Q_INVOKABLE bool rename(const QString &name) { return renameFolder(folderId(), name); }
    Q_INVOKABLE bool renameFolder(const QString &folderId, const QString &name);
    Q_INVOKABLE bool dissolve(const QString &folderId);
    Q_INVOKABLE bool removeMember(const QString &folderId, const QString &key);
    Q_INVOKABLE QString memberAt(int page, int localIndex) const;
    // Names or icons changed outside the layout model.
    void refresh() { rebuild(); }

    // Moves a member inside the open folder.
    bool moveMember(const QString &key, int page, int localIndex);
    // An app dragged out of the open folder and dropped on a cell of the main
    // grid (target < 0: wherever leaving the folder puts it).
    bool dropOnGrid(const QString &key, qsizetype target);
    // An app (from the grid, or from the open folder) held over another app
    // or a folder: the two become a folder, or the app joins it.
    bool merge(const QString &draggedKey, const QString &targetKey, bool fromOpenFolder);

Q_SIGNALS:
    void openChanged();
    void nameChanged();
    void shapeChanged();
    void pageCountChanged();
    void currentPageChanged();

private:
    void rebuild();
    std::optional<QString> takeOut(const QString &key);

    LaunchpadViewModel &m_layout;
    const CellFactory &m_cells;
    QPointer<FolderSlotManager> m_folder;
    PagesModel m_pages;
    int m_currentPage = 0;
    int m_shownRows = 1;
    std::function<QStringList(const QString &appPath)> m_categoriesOf;
};
