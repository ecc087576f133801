// The grid's gestures without a window: the drag controller fed pointer
// events over a known cell area, checked against the layout model. Each case
// is a fault users met: page turns that would not stop, drops that landed
// elsewhere than shown, folders made by passing over icons, apps stuck in
// folders, a pager frozen after a drag.
#include "common/TempEnvironment.h"
#include "layout/LaunchpadViewModel.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"
#include "fakes/FakeAppLauncher.h"
#include "fakes/FakeLayoutServices.h"
#include "storage/AppNameRepository.h"
#include "storage/AppearanceRepository.h"
#include "storage/UserDefaultsStore.h"
#include "ui/GridPresenter.h"
#include "ui/SearchMatcher.h"

#include <QSignalSpy>
#include <QTest>

namespace {
// 8 x 5 cells of 100 x 100 starting at (100, 100); icons of 48 with labels.
constexpr QPointF kOrigin(100, 100);
constexpr qreal kCell = 100;

QString appKey(int i) { return QStringLiteral("A:/apps/A%1.app").arg(i); }

struct Fixture {
    TempEnvironment env;
    FakeLayoutServices fakes;
    std::shared_ptr<FakeAppLauncher> launcher = std::make_shared<FakeAppLauncher>();
    std::shared_ptr<UserDefaultsStore> store = UserDefaultsStore::standard(env.configDir());
    AppNameRepositoryImpl names{store};
    AppearanceRepositoryImpl appearance{store};
    std::unique_ptr<LaunchpadViewModel> model;
    std::unique_ptr<GridPresenter> presenter;

    explicit Fixture(int appCount)
    {
        QList<AppItem> apps;
        for (int i = 0; i < appCount; ++i)
            apps.append({QUuid::createUuid(), QStringLiteral("/apps/A%1.app").arg(i), QStringLiteral("A%1").arg(i)});
        fakes.apps->setApps(apps);
        model = std::make_unique<LaunchpadViewModel>(fakes.services());
        model->loadInitial();
        presenter = std::make_unique<GridPresenter>(*model, names, appearance, launcher);
        presenter->pages()->setDisplayProfile({QStringLiteral("test"), 48, 48});
        model->setGridGeometry(8, 5);
        drag().setGridArea(QRectF(kOrigin, QSizeF(8 * kCell, 5 * kCell)));
    }
    DragController &drag() { return *presenter->drag(); }
    PagesPresenter &pages() { return *presenter->pages(); }

    // The centre of a cell's icon, and a point of the cell away from it.
    static QPointF iconCentre(int cell)
    {
        const QPointF c = cellCentre(cell);
        return {c.x(), c.y() - 12};
    }
    static QPointF cellCentre(int cell) { return kOrigin + QPointF((cell % 8 + 0.5) * kCell, (cell / 8 + 0.5) * kCell); }
    static QPointF gap(int cell) { return cellCentre(cell) + QPointF(-40, 30); }

    void pressAndMove(QPointF from, QPointF to, DragController::Surface surface = DragController::Grid)
    {
        drag().press(surface, from, Qt::LeftButton);
        for (int step = 1; step <= 4; ++step)
            drag().move(from + (to - from) * step / 4.0);
    }
    // The keys the pages show now, page by page.
    QStringList shown() const
    {
        QStringList keys;
        for (int p = 0; p < presenter->pages()->model()->count(); ++p)
            for (const GridCell &cell : presenter->pages()->model()->page(p)->cells())
                keys.append(cell.key);
        while (!keys.isEmpty() && keys.last().isEmpty())
            keys.removeLast();
        return keys;
    }
    QStringList stored() const
    {
        QStringList keys = model->slots();
        while (!keys.isEmpty() && keys.last().isEmpty())
            keys.removeLast();
        return keys;
    }
};
}

class DragControllerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void theDropLandsWhereThePreviewShowed_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::newRow("into a full row, shifting left") << 0 << 5;
        QTest::newRow("backwards in its row") << 6 << 1;
        QTest::newRow("into an empty cell") << 2 << 30;
        QTest::newRow("onto the last icon") << 3 << 19;
    }
    void theDropLandsWhereThePreviewShowed()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        Fixture f(20);
        QTRY_VERIFY(!f.model->isLoading());
        f.pressAndMove(Fixture::cellCentre(from), Fixture::gap(to));
        QVERIFY(f.drag().isActive());
        QTRY_VERIFY(f.pages().hasPreview());
        const QStringList preview = f.shown();
        QVERIFY(preview != f.stored()); // the icons made room before the drop
        f.drag().release(Fixture::gap(to));
        QCOMPARE(f.stored(), preview);
        QCOMPARE(f.model->slots().indexOf(appKey(from)), to);
        QCOMPARE(f.model->apps().size(), 20);
        QVERIFY(!f.drag().isActive());
    }

    void anEdgeTurnsOnePageAndNothingAfterTheDrop()
    {
        Fixture f(45); // 40 on page one, 5 on page two
        QTRY_VERIFY(!f.model->isLoading());
        QCOMPARE(f.model->pageCount(), 2);
        f.pressAndMove(Fixture::cellCentre(9), QPointF(950, 300)); // right margin
        // Held three times as long as one turn needs: still one turn.
        QTest::qWait(DragController::kEdgeDwellMs * 3);
        QCOMPARE(f.pages().currentPage(), 1);
        QCOMPARE(f.model->slots().indexOf(appKey(9)), 40 + 9);
        // Back into the page and dropped on its cell 2.
        f.drag().move(Fixture::gap(2));
        QTest::qWait(DragController::kPreviewDelayMs * 2);
        f.drag().release(Fixture::gap(2));
        QCOMPARE(f.model->slots().indexOf(appKey(9)), 42);
        QCOMPARE(f.model->pageCount(), 2);
        // Nothing keeps turning or adding pages once the drag is over.
        QTest::qWait(DragController::kEdgeDwellMs * 2);
        QCOMPARE(f.model->pageCount(), 2);
        QCOMPARE(f.pages().currentPage(), 1);
        QCOMPARE(f.stored().size() - f.stored().count(QString()), 45); // every icon still there
    }

    void leavingAndComingBackTurnsAgainButEmptyPagesDoNotStay()
    {
        Fixture f(12);
        QTRY_VERIFY(!f.model->isLoading());
        f.pressAndMove(Fixture::cellCentre(3), QPointF(950, 300));
        QTRY_COMPARE(f.pages().currentPage(), 1); // a new page for the icon, the others stay
        QCOMPARE(f.model->pageCount(), 2);
        f.drag().move(QPointF(40, 300)); // straight to the left margin
        QTRY_COMPARE(f.pages().currentPage(), 0);
        f.drag().release(QPointF(40, 300));
        QCOMPARE(f.model->pageCount(), 1); // the page the drag made is gone again
        QCOMPARE(f.model->slots().count(appKey(3)), 1);

        // The last page's only icon cannot turn to a page of its own.
        f.model->moveKeyInSlots(appKey(0), 40);
        QTRY_COMPARE(f.pages().count(), 2);
        f.pages().setCurrentPage(1);
        f.pressAndMove(Fixture::cellCentre(0), QPointF(950, 300));
        QTest::qWait(DragController::kEdgeDwellMs * 2);
        QCOMPARE(f.pages().currentPage(), 1);
        QCOMPARE(f.model->pageCount(), 2);
        f.drag().cancel();
    }

    void passingOverAnIconNeverMakesAFolder()
    {
        Fixture f(10);
        QTRY_VERIFY(!f.model->isLoading());
        // Slowly across the middle of three icons, never resting long enough.
        f.pressAndMove(Fixture::cellCentre(0), Fixture::iconCentre(2));
        for (int cell : {2, 3, 4}) {
            f.drag().move(Fixture::iconCentre(cell));
            QTest::qWait(DragController::kMergeDelayMs / 2);
            f.drag().move(Fixture::iconCentre(cell) + QPointF(2, 0));
            QTest::qWait(DragController::kMergeDelayMs / 3);
        }
        QVERIFY(f.drag().mergeTarget().isEmpty());
        f.drag().release(Fixture::iconCentre(4));
        QVERIFY(f.model->folders().isEmpty());
        QCOMPARE(f.model->slots().count(appKey(0)), 1);
    }

    void restingOnAnIconsCentreThenDroppingMakesAFolder()
    {
        Fixture f(10);
        QTRY_VERIFY(!f.model->isLoading());
        f.pressAndMove(Fixture::cellCentre(1), Fixture::iconCentre(6));
        QTRY_COMPARE(f.drag().mergeTarget(), appKey(6));
        QVERIFY(f.model->folders().isEmpty()); // only the drop makes it
        f.drag().release(Fixture::iconCentre(6));
        QCOMPARE(f.model->folders().size(), 1);
        const FolderItem folder = f.model->folders().first();
        QCOMPARE(f.model->slots().at(6), folder.key());
        QVERIFY(f.model->slots().at(1).isEmpty());

        // An app held over the folder joins it.
        f.pressAndMove(Fixture::cellCentre(2), Fixture::iconCentre(6));
        QTRY_COMPARE(f.drag().mergeTarget(), folder.key());
        f.drag().release(Fixture::iconCentre(6));
        QCOMPARE(f.model->folder(folder.id)->appPaths.size(), 3);
    }

    void anAppLeavesItsFolderInEveryDirection_data()
    {
        QTest::addColumn<QPointF>("outside");
        QTest::newRow("left") << QPointF(120, 380);
        QTest::newRow("right") << QPointF(880, 380);
        QTest::newRow("up") << QPointF(500, 120);
        QTest::newRow("down") << QPointF(500, 590);
    }
    void anAppLeavesItsFolderInEveryDirection()
    {
        QFETCH(QPointF, outside);
        Fixture f(10);
        QTRY_VERIFY(!f.model->isLoading());
        const auto folder = f.model->createFolder(QStringLiteral("Box"), {QStringLiteral("/apps/A7.app"),
                                                                         QStringLiteral("/apps/A8.app")}, {}, 7);
        QVERIFY(folder);
        f.presenter->folder()->open(Uuids::toText(folder->id));
        // The panel's box in the middle; its 5 x 4 cells 72 x 70 px from (320, 200).
        QCOMPARE(f.presenter->folder()->columns(), 5);
        f.drag().setFolderBox(QRectF(300, 150, 400, 350));
        f.drag().setFolderArea(QRectF(320, 200, 360, 280));
        const QPointF member(356, 235); // the first member's cell
        const QString key = f.presenter->folder()->memberAt(0, 0);
        QVERIFY(!key.isEmpty());

        f.pressAndMove(member, outside, DragController::Folder);
        QVERIFY(f.drag().outsideFolder());
        QTest::qWait(DragController::kPreviewDelayMs * 2);
        const int cell = f.drag().gridCellAt(outside);
        QVERIFY(cell >= 0);
        f.drag().release(outside);

        const QString path = SlotKey::appPath(key);
        QVERIFY(!f.model->folder(folder->id)->appPaths.contains(path));
        QCOMPARE(f.model->slots().indexOf(SlotKey::app(path)), cell);
        QVERIFY(!f.presenter->folder()->isOpen());
        QVERIFY(!f.drag().isActive());
    }

    void aWorkflowLeavesItsFolderLikeAnApp()
    {
        Fixture f(10);
        QTRY_VERIFY(!f.model->isLoading());
        const auto folder = f.model->createFolder(QStringLiteral("Box"), {QStringLiteral("/apps/A7.app")}, {}, 7);
        WorkflowItem workflow;
        workflow.id = QUuid::createUuid();
        workflow.name = QStringLiteral("Morning");
        QVERIFY(folder && f.model->addWorkflow(workflow));
        QVERIFY(f.model->addWorkflowToFolder(folder->id, workflow.id));
        f.presenter->folder()->open(Uuids::toText(folder->id));
        f.drag().setFolderBox(QRectF(300, 150, 400, 350));
        f.drag().setFolderArea(QRectF(320, 200, 360, 280));
        QCOMPARE(f.presenter->folder()->memberAt(0, 1), workflow.key());

        const QPointF outside(120, 380);
        f.pressAndMove(QPointF(356 + 72, 235), outside, DragController::Folder);
        QVERIFY(f.drag().outsideFolder());
        QTest::qWait(DragController::kPreviewDelayMs * 2);
        f.drag().release(outside);
        QVERIFY(!f.model->folder(folder->id)->slots.contains(workflow.key()));
        QCOMPARE(f.model->slots().indexOf(workflow.key()), f.drag().gridCellAt(outside));
    }

    void escapeHideAndFocusLossEndTheGestureWithoutADrop()
    {
        Fixture f(10);
        QTRY_VERIFY(!f.model->isLoading());
        const QStringList before = f.stored();
        f.pressAndMove(Fixture::cellCentre(0), QPointF(950, 300));
        f.presenter->notifyHidden();
        QVERIFY(!f.drag().isActive());
        QTest::qWait(DragController::kEdgeDwellMs * 2);
        QCOMPARE(f.stored(), before); // no turn, no new page, while hidden
        QCOMPARE(f.model->pageCount(), 1);

        f.pressAndMove(Fixture::cellCentre(0), Fixture::gap(5));
        QTRY_VERIFY(f.pages().hasPreview());
        f.drag().cancel();
        QVERIFY(!f.pages().hasPreview());
        QCOMPARE(f.stored(), before);

        // Cancelled after a page turn: the icon goes back, the new page goes.
        f.pressAndMove(Fixture::cellCentre(0), QPointF(950, 300));
        QTRY_COMPARE_WITH_TIMEOUT(f.pages().currentPage(), 1, DragController::kEdgeDwellMs * 3);
        f.drag().cancel();
        QCOMPARE(f.stored(), before);
        QCOMPARE(f.model->pageCount(), 1);
        QCOMPARE(f.pages().currentPage(), 0);
    }

    void clicksOpenRightClicksAskForAMenu()
    {
        Fixture f(10);
        QTRY_VERIFY(!f.model->isLoading());
        QSignalSpy menu(&f.drag(), &DragController::contextMenuRequested);
        QSignalSpy background(&f.drag(), &DragController::backgroundClicked);
        f.drag().press(DragController::Grid, Fixture::cellCentre(4), Qt::RightButton);
        f.drag().release(Fixture::cellCentre(4));
        QCOMPARE(menu.size(), 1);
        QCOMPARE(menu.first().first().toString(), appKey(4));
        f.drag().press(DragController::Grid, Fixture::cellCentre(4), Qt::LeftButton);
        f.drag().move(Fixture::cellCentre(4) + QPointF(3, 3)); // a wobble is not a drag
        f.drag().release(Fixture::cellCentre(4) + QPointF(3, 3));
        QCOMPARE(f.launcher->openedApps.size(), 1);
        f.drag().press(DragController::Grid, Fixture::cellCentre(30), Qt::LeftButton);
        f.drag().release(Fixture::cellCentre(30));
        QCOMPARE(background.size(), 1);
    }

    void aSwipeTurnsOnePageAndTheNextSwipeTurnsAtOnce()
    {
        Fixture f(100); // three pages
        QTRY_VERIFY(!f.model->isLoading());
        QTRY_COMPARE(f.pages().count(), 3);
        for (int i = 0; i < 30; ++i) // one swipe with its momentum
            f.pages().scroll({}, QPointF(-20, 0));
        QCOMPARE(f.pages().currentPage(), 1);
        QTest::qWait(250);
        f.pages().scroll({}, QPointF(-80, 0));
        QCOMPARE(f.pages().currentPage(), 2);
        f.pages().scroll(QPointF(0, 120), {}); // a wheel notch back
        QCOMPARE(f.pages().currentPage(), 1);
    }

    // An app whose folder could not be read keeps its cell: dimmed under its
    // custom name, movable, not opened.
    void anAppTheScanCannotFindIsDimmedNotLost()
    {
        Fixture f(6);
        QTRY_VERIFY(!f.model->isLoading());
        f.names.setCustomName(QStringLiteral("/apps/A2.app"), QStringLiteral("Two"));
        QList<AppItem> apps = f.fakes.apps->apps();
        apps.removeAt(2);
        f.fakes.apps->setApps(apps);
        f.fakes.apps->setListedFolders({QStringLiteral("/usr/share/applications")}); // /apps unread
        f.model->loadInitial();
        QTRY_VERIFY(!f.model->isLoading());
        QTRY_COMPARE(f.pages().model()->page(0)->cells().at(2).kind, CellKind::Unavailable);
        const GridCell cell = f.pages().model()->page(0)->cells().at(2);
        QCOMPARE(cell.title, QStringLiteral("Two"));
        QCOMPARE(cell.iconPath, QStringLiteral("/apps/A2.app"));

        f.drag().press(DragController::Grid, Fixture::iconCentre(2), Qt::LeftButton);
        f.drag().release(Fixture::iconCentre(2));
        QVERIFY(f.launcher->openedApps.isEmpty());
        f.pressAndMove(Fixture::cellCentre(2), Fixture::cellCentre(20));
        f.drag().release(Fixture::cellCentre(20));
        QCOMPARE(f.model->slots().indexOf(appKey(2)), 20);
    }

    void aMoveRedrawsOnlyTheCellsThatChanged()
    {
        Fixture f(20);
        QTRY_VERIFY(!f.model->isLoading());
        PageCellsModel *page = f.pages().model()->page(0);
        QTRY_COMPARE(page->cells().at(19).iconPath, QStringLiteral("/apps/A19.app"));
        QSignalSpy changed(page, &QAbstractItemModel::dataChanged);
        QSignalSpy reset(page, &QAbstractItemModel::modelReset);
        f.model->moveKeyInSlots(appKey(0), 30); // into an empty cell
        QTRY_COMPARE(changed.size(), 2);        // the cell it left and the cell it entered
        QCOMPARE(reset.size(), 0);
        QCOMPARE(page->cells().at(30).iconPath, QStringLiteral("/apps/A0.app"));
        QCOMPARE(page->cells().at(0).kind, CellKind::Empty);
    }

    void aClearedFolderNameKeepsTheStoredOne()
    {
        Fixture f(4);
        QTRY_VERIFY(!f.model->isLoading());
        const auto folder = f.model->createFolder(QStringLiteral("Tools"), {QStringLiteral("/apps/A1.app")});
        f.presenter->folder()->open(Uuids::toText(folder->id));
        QSignalSpy name(f.presenter->folder(), &FolderPresenter::nameChanged);
        QVERIFY(!f.presenter->folder()->rename(QStringLiteral("   ")));
        QCOMPARE(name.size(), 1); // the view is told to show the stored name again
        QCOMPARE(f.presenter->folder()->name(), QStringLiteral("Tools"));
        QVERIFY(f.presenter->folder()->rename(QStringLiteral(" Daily ")));
        QCOMPARE(f.model->folder(folder->id)->name, QStringLiteral("Daily"));
    }

    void searchForgivesCaseAccentsAndWordStarts_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("matches");
        QTest::newRow("case") << "FIRE" << "Firefox" << true;
        QTest::newRow("accent in name") << "cafe" << "Café" << true;
        QTest::newRow("accent in query") << "résumé" << "Resume Builder" << true;
        QTest::newRow("later word") << "term" << "GNOME Terminal" << true;
        QTest::newRow("two word starts") << "stu co" << "Visual Studio Code" << true;
        QTest::newRow("initials") << "vsc" << "Visual Studio Code" << true;
        QTest::newRow("inside a word") << "efo" << "Firefox" << true;
        QTest::newRow("no match") << "xyz" << "Firefox" << false;
        QTest::newRow("blank query") << "  " << "Firefox" << false;
    }
    void searchForgivesCaseAccentsAndWordStarts()
    {
        QFETCH(QString, query);
        QFETCH(QString, name);
        QFETCH(bool, matches);
        QCOMPARE(SearchMatcher::score(query, name).has_value(), matches);
    }
};

QTEST_MAIN(DragControllerTest)
#include "test_drag_controller.moc"
