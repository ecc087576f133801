#pragma once

#include "ui/CellKind.h"

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QTimer>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

class ActivationPresenter;
class FolderPresenter;
class LaunchpadViewModel;
class PagesPresenter;

// Owns every pointer gesture on the grid and in the open folder, from press
// to release: click, right-click, and the whole drag (threshold, the preview
// of where things will go, page turns at the edges, holding over an icon to
// make a folder, the drop, and cancelling on Esc, hide or focus loss). The
// views only report pointer events in overlay coordinates and the areas they
// draw the cells in; which cell is hit and whether a drop is allowed is
// decided here and by the layout model, nowhere else.
class DragController : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Owned by the grid presenter")
    Q_PROPERTY(QRectF gridArea READ gridArea WRITE setGridArea NOTIFY areasChanged)
    Q_PROPERTY(QRectF folderArea READ folderArea WRITE setFolderArea NOTIFY areasChanged)
    Q_PROPERTY(QRectF folderBox READ folderBox WRITE setFolderBox NOTIFY areasChanged)
    Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)
    Q_PROPERTY(QString key READ key NOTIFY activeChanged)
    // The dragged key as the main grid writes it (an app from a folder may
    // be stored there as a bare path).
    Q_PROPERTY(QString gridKey READ gridKey NOTIFY activeChanged)
    Q_PROPERTY(CellKind::Kind kind READ kind NOTIFY activeChanged)
    Q_PROPERTY(QString iconPath READ iconPath NOTIFY activeChanged)
    Q_PROPERTY(bool fromFolder READ fromFolder NOTIFY activeChanged)
    Q_PROPERTY(bool outsideFolder READ outsideFolder NOTIFY outsideFolderChanged)
    Q_PROPERTY(QPointF point READ point NOTIFY pointChanged)
    Q_PROPERTY(QString mergeTarget READ mergeTarget NOTIFY mergeTargetChanged)
public:
    enum Surface { Grid, Folder };
    Q_ENUM(Surface)

    // Timings of the gesture, in milliseconds.
    static constexpr int kPreviewDelayMs = 120;  // resting on a cell before the icons make room
    static constexpr int kMergeDelayMs = 900;    // resting on an icon's centre before it takes the drop
    static constexpr int kEdgeDwellMs = 700;     // resting at an edge before the page turns
    static constexpr qreal kThreshold = 10;      // pixels before a press becomes a drag

    DragController(LaunchpadViewModel &layout, PagesPresenter &pages, FolderPresenter &folder,
                   ActivationPresenter &activation, QObject *parent = nullptr);

    QRectF gridArea() const { return m_gridArea; }
    void setGridArea(const QRectF &area);
    QRectF folderArea() const { return m_folderArea; }
    void setFolderArea(const QRectF &area);
    QRectF folderBox() const { return m_folderBox; }
    void setFolderBox(const QRectF &box);

    bool isActive() const { return m_phase == Phase::Dragging; }
    QString key() const { return isActive() ? m_key : QString(); }
    QString gridKey() const;
    CellKind::Kind kind() const { return m_kind; }
    QString iconPath() const;
    bool fromFolder() const { return m_surface == Folder; }
    bool outsideFolder() const { return m_outsideFolder; }
    QPointF point() const { return m_point; }
    QString mergeTarget() const { return m_mergeTarget; }

    // Pointer events, in overlay coordinates. button: Qt::MouseButton.
    Q_INVOKABLE void press(DragController::Surface surface, QPointF point, int button);
    Q_INVOKABLE void move(QPointF point);
    Q_INVOKABLE void release(QPointF point);
    // Ends any gesture without a drop: Esc, hiding, losing focus.
    Q_INVOKABLE void cancel();

    // The page-local cell of the current page under point, or -1.
    Q_INVOKABLE int gridCellAt(QPointF point) const;
    // The cell of the open folder's current page under point, or -1.
    Q_INVOKABLE int folderCellAt(QPointF point) const;
    // Where a cell of the current page is drawn (its centre), for menus
    // opened from the keyboard.
    Q_INVOKABLE QPointF gridCellCenter(int localIndex) const;

Q_SIGNALS:
    void areasChanged();
    void activeChanged();
    void outsideFolderChanged();
    void pointChanged();
    void mergeTargetChanged();
    // A right click on an occupied cell.
    void contextMenuRequested(const QString &key, DragController::Surface surface, QPointF point);
    // A right click where nothing stands.
    void backgroundMenuRequested(QPointF point);
    // A click on nothing: on the grid's background, or outside the open folder.
    void backgroundClicked(DragController::Surface surface);

private:
    enum class Phase { Idle, Pressed, Dragging };

    void startDrag();
    void dragTo(QPointF point);
    void drop(QPointF point);
    void finish();
    void showPreview();
    void armMerge();
    void turnPage();
    void click(QPointF point);
    void setOutsideFolder(bool outside);
    void setMergeTarget(const QString &key);
    // Where the dragged key stands now (it moves when a page turns).
    qsizetype currentSlot() const;
    bool onIconCentre(QPointF point, int cell) const;
    bool canMergeOnto(const QString &target) const;
    int edgeAt(QPointF point) const;
    bool mayTurn(int direction) const;

    LaunchpadViewModel &m_layout;
    PagesPresenter &m_pages;
    FolderPresenter &m_folder;
    ActivationPresenter &m_activation;

    QRectF m_gridArea;
    QRectF m_folderArea;
    QRectF m_folderBox;

    Phase m_phase = Phase::Idle;
    Surface m_surface = Grid;
    int m_button = 0;
    QPointF m_pressPoint;
    QPointF m_point;
    QString m_key;
    CellKind::Kind m_kind = CellKind::Empty;
    QString m_folderId;       // a drag out of the open folder
    QUuid m_widgetId;         // a widget drag
    int m_widgetGrabOffset = 0; // cells between the widget's anchor and where it was picked up
    int m_pressPage = -1;
    int m_pressCell = -1;
    int m_fromPageSlot = -1;  // the page-local cell the key stands in now
    bool m_movedToOtherPage = false;
    bool m_outsideFolder = false;

    int m_hoverCell = -1;     // the cell the pointer rests on
    int m_previewCell = -1;   // the cell the shown preview drops on
    QString m_pendingMerge;   // an icon whose centre the pointer rests on
    QString m_mergeTarget;    // ...held long enough: the drop makes a folder
    int m_edge = 0;           // -1 left edge, +1 right edge
    bool m_turnedAtThisEdge = false;

    QTimer m_previewTimer;
    QTimer m_mergeTimer;
    QTimer m_edgeTimer;
};
