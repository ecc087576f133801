#pragma once

#include "storage/AppearanceRepository.h"
#include "ui/CellKind.h"
#include "ui/PagesModel.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointF>
#include <QSizeF>
#include <QtQml/qqmlregistration.h>
#include <optional>

class CellFactory;
class LaunchpadViewModel;
class QScreen;

// The main grid's pages: their shape and look, which page shows, and the
// cells of each page. While a drag is in progress the pages can show a
// preview (the slot list as the drop would leave it) instead of the grid as
// it is.
class PagesPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Owned by the grid presenter")
    Q_PROPERTY(int columns READ columns NOTIFY geometryChanged)
    Q_PROPERTY(int rows READ rows NOTIFY geometryChanged)
    Q_PROPERTY(qreal iconSize READ iconSize NOTIFY appearanceChanged)
    Q_PROPERTY(bool showLabels READ showLabels NOTIFY appearanceChanged)
    Q_PROPERTY(PagesModel *model READ model CONSTANT)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int currentPage READ currentPage WRITE setCurrentPage NOTIFY currentPageChanged)
public:
    PagesPresenter(LaunchpadViewModel &layout, const CellFactory &cells, AppearanceRepositoryImpl &appearance,
                   QObject *parent = nullptr);

    int columns() const;
    int rows() const;
    qreal iconSize() const;
    bool showLabels() const;
    PagesModel *model() { return &m_pages; }
    int count() const { return m_pages.count(); }
    int currentPage() const { return m_currentPage; }
    void setCurrentPage(int page);
    Q_INVOKABLE void nextPage() { setCurrentPage(m_currentPage + 1); }
    Q_INVOKABLE void previousPage() { setCurrentPage(m_currentPage - 1); }

    // A wheel or touchpad scroll. One page per notch of a wheel; one page
    // per swipe of a touchpad, however long its momentum runs on.
    Q_INVOKABLE void scroll(QPointF angleDelta, QPointF pixelDelta);

    // The cells as they really are (not as a preview shows them).
    Q_INVOKABLE QString keyAt(int page, int localIndex) const;
    Q_INVOKABLE CellKind::Kind kindAt(int page, int localIndex) const;
    qsizetype absoluteSlot(int page, int localIndex) const;
    // The cells as they are shown now (the preview while there is one).
    QString shownKeyAt(int page, int localIndex) const;

    void setPreview(std::optional<QStringList> slots);
    bool hasPreview() const { return m_preview.has_value(); }

    void setDisplay(QScreen *screen);
    void setDisplayProfile(const DisplayProfile &display);
    const DisplayProfile &display() const { return m_display; }
    // Reads the display's stored look again (another process changed it).
    void reloadAppearance();
    // Rebuilds the cells whose content (names, records) changed.
    void contentChanged();
    void scheduleRebuild();

Q_SIGNALS:
    void geometryChanged();
    void appearanceChanged();
    void countChanged();
    void currentPageChanged();

private:
    QString keyIn(const QStringList &slots, int page, int localIndex) const;
    DisplayProfile fittedProfile(const QString &key) const;
    void rebuild();

    LaunchpadViewModel &m_layout;
    const CellFactory &m_cells;
    AppearanceRepositoryImpl &m_appearance;
    DisplayProfile m_display;
    // The logical size of the screen the overlay is on; the allowed icon
    // sizes follow it and the grid's rows and columns.
    std::optional<QSizeF> m_screenSize;
    PagesModel m_pages;
    std::optional<QStringList> m_preview;
    int m_currentPage = 0;

    // The page cells are built for this key; a change of any part rebuilds.
    struct BuiltFor {
        qint64 revision = -1;
        int columns = 0;
        int rows = 0;
        quint64 content = 0;
        bool operator==(const BuiltFor &) const = default;
    } m_builtFor;
    quint64 m_contentRevision = 0;
    bool m_rebuildPending = false;

    // Scrolling: what has built up towards the next turn, and when the
    // current gesture last moved.
    qreal m_scrollBuildUp = 0;
    bool m_turnedThisGesture = false;
    QElapsedTimer m_lastScroll;
};
