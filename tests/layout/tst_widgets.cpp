#include "LayoutTestSupport.h"
#include "foundation/Uuids.h"
#include "layout/WidgetLayout.h"

using namespace LayoutTest;

// Widgets on the grid: rectangles 8 cells wide, placement, moves with
// displacement, and re-laying when the grid's shape changes.
class WidgetsTest : public QObject {
    Q_OBJECT

    // n icons in cells 0..n-1 on 8 x 5 pages.
    static LaunchpadViewModel &withIcons(Fixture &fx, int n)
    {
        auto &model = fx.load(numberedKeys(n), numberedNames(n));
        model.setGridGeometry(8, 5);
        return model;
    }
    static QSet<QString> appKeysIn(const QStringList &slots)
    {
        QSet<QString> out;
        for (const QString &k : slots)
            if (SlotKey::kindOf(k) == SlotKey::Kind::App)
                out.insert(k);
        return out;
    }

private Q_SLOTS:
    void rectangleRowsAreEightCellsApart()
    {
        QCOMPARE(WidgetLayout::rectCells(5, WidgetSize::size3x2), QList<qsizetype>({5, 6, 7, 13, 14, 15}));
        const PageGeometry sevenByFive{7, 5};
        QVERIFY(WidgetLayout::fitsPage(5, WidgetSize::size3x2, sevenByFive));
        QVERIFY(!WidgetLayout::fitsPage(6, WidgetSize::size3x2, sevenByFive));  // wraps past the 8-wide row
        QVERIFY(!WidgetLayout::fitsPage(26, WidgetSize::size2x2, sevenByFive)); // 35 is on page 1
        QVERIFY(WidgetLayout::fitsPage(35, WidgetSize::size3x3, sevenByFive));
        QVERIFY(!WidgetLayout::fitsAnyPage(WidgetSize::size2x3, PageGeometry{8, 2}));
    }

    void movingOntoIconsDisplacesThemAndKeepsThemAll()
    {
        Fixture fx;
        auto &model = withIcons(fx, 30);
        const QSet<QString> before = appKeysIn(model.slots());
        const auto w = model.addWidget("clock", WidgetSize::size3x2, 5);
        QVERIFY(w);
        const QString id = Uuids::toText(w->id);
        QCOMPARE(model.findWidgetTopLeftIndex(w->id), 5);
        QCOMPARE(model.slots().at(5), "W:" + id);
        for (qsizetype c : {6, 7, 13, 14, 15})
            QCOMPARE(model.slots().at(c), "WB:" + id);
        QCOMPARE(appKeysIn(model.slots()), before);
        // The six icons went to the page's first empty cells (30..35).
        for (int c = 30; c < 36; ++c)
            QVERIFY(SlotKey::kindOf(model.slots().at(c)) == SlotKey::Kind::App);
        QCOMPARE(fx.fakes.widgets->stored, QList<WidgetItem>({*w}));

        QVERIFY(model.moveWidget(w->id, 18));
        QCOMPARE(model.findWidgetTopLeftIndex(w->id), 18);
        QCOMPARE(model.slots().count("WB:" + id), 5);
        QCOMPARE(appKeysIn(model.slots()), before);
        // Icons displaced by the move took the widget's freed cells first.
        for (qsizetype c : {5, 6, 7, 13, 14, 15})
            QVERIFY(!model.slots().at(c).isEmpty());
    }

    void requestedCellNearTheEdgeIsPulledInsideThePage()
    {
        Fixture fx;
        auto &model = fx.load();
        model.setGridGeometry(8, 5);
        const auto w = model.addWidget("weather", WidgetSize::size3x3, 39); // bottom-right corner
        QCOMPARE(model.findWidgetTopLeftIndex(w->id), 21);                 // row 2, column 5
    }

    void anotherWidgetRefusesTheCandidateAndAFullPageSendsItOn()
    {
        Fixture fx;
        auto &model = fx.load();
        model.setGridGeometry(8, 2); // 16 cells: room for four 2x2 widgets
        QList<WidgetItem> placed;
        for (int i = 0; i < 4; ++i)
            placed.append(*model.addWidget("clock", WidgetSize::size2x2, 2 * i));
        const QString first = Uuids::toText(placed.first().id);
        const auto extra = model.addWidget("clock", WidgetSize::size2x2, 0);
        QVERIFY(extra);
        QCOMPARE(model.findWidgetTopLeftIndex(extra->id), 16);

        QVERIFY(!model.moveWidget(QUuid::createUuid(), 3));
    }

    void newWidgetWithoutASlotTakesTheFirstFreeRectangle()
    {
        Fixture fx;
        auto &model = withIcons(fx, 10);
        const auto w = model.addWidget("notes", WidgetSize::size2x2);
        QCOMPARE(model.findWidgetTopLeftIndex(w->id), 10); // cells 10, 11, 18, 19 are the first free square
        QCOMPARE(appKeysIn(model.slots()).size(), 10);
    }

    void shrinkingTheGridReLaysWidgetsThatNoLongerFit()
    {
        Fixture fx;
        auto &model = withIcons(fx, 40);
        const auto low = model.addWidget("clock", WidgetSize::size2x2, 30);  // cells 30,31,38,39
        const auto high = model.addWidget("clock", WidgetSize::size2x2, 0); // stays whole
        const QSet<QString> before = appKeysIn(model.slots());
        model.setGridColumns(7); // 35-cell pages: 38 and 39 fall on page 1
        for (const auto &w : {*low, *high})
            QVERIFY2(WidgetLayout::isWhole(model.slots(), w, model.geometry()), qPrintable(w.id.toString()));
        QCOMPARE(model.findWidgetTopLeftIndex(high->id), 0);
        QCOMPARE(appKeysIn(model.slots()), before);
        QCOMPARE(fx.fakes.order->storedSlots, model.slots());

        // A grid too small for a widget takes it off the grid; its record stays.
        model.setGridGeometry(3, 2);
        QCOMPARE(model.findWidgetTopLeftIndex(low->id), -1);
        QCOMPARE(model.widgets().size(), 2);
        QCOMPARE(appKeysIn(model.slots()), before);
    }

    void storedWidgetsWaitForTheViewsGridShape()
    {
        // Laid out on 8 x 5 pages: cells 30, 31, 38, 39 would straddle 7 x 5 pages.
        Fixture fx;
        WidgetItem w{QUuid::createUuid(), "clock", WidgetSize::size2x2, {}};
        fx.fakes.widgets->stored = {w};
        const QString id = Uuids::toText(w.id);
        QStringList slots(40);
        slots[30] = "W:" + id;
        for (int c : {31, 38, 39})
            slots[c] = "WB:" + id;
        fx.fakes.order->storedSlots = slots;
        auto &model = fx.load();
        QCOMPARE(model.slots(), slots); // the default shape moves nothing
        model.setGridGeometry(8, 5);
        QCOMPARE(model.slots(), slots);

        Fixture other;
        other.fakes.widgets->stored = {w};
        other.fakes.order->storedSlots = slots;
        auto &seven = other.load();
        seven.setGridGeometry(7, 5); // the default, but now confirmed by the view
        QVERIFY(seven.findWidgetTopLeftIndex(w.id) != 30);
        QVERIFY(WidgetLayout::isWhole(seven.slots(), w, seven.geometry()));
    }

    void damagedStoredRectanglesAreRepairedOnLoad()
    {
        Fixture fx;
        WidgetItem w{QUuid::createUuid(), "clock", WidgetSize::size2x2, {}};
        fx.fakes.widgets->stored = {w};
        const QString id = Uuids::toText(w.id);
        fx.fakes.apps->setApps(apps({"A"}));
        fx.fakes.order->storedSlots = {"W:" + id, "WB:" + id, appKey("A"), "", "", "", "", "", "WB:" + id};
        auto &model = fx.load();
        QVERIFY(WidgetLayout::isWhole(model.slots(), w, model.geometry()));
        QCOMPARE(model.slots().count(appKey("A")), 1);
    }
};

QTEST_GUILESS_MAIN(WidgetsTest)
#include "tst_widgets.moc"
