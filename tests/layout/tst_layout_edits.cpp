#include "LayoutTestSupport.h"
#include "common/TempEnvironment.h"
#include "storage/UserDefaultsStore.h"

#include <QMetaEnum>

using namespace LayoutTest;

// Placement, removal, hiding, folders and the grid view's side of a drag.
class LayoutEditsTest : public QObject {
    Q_OBJECT

    static LaunchpadViewModel &loaded(Fixture &fx, const QStringList &slots, const QStringList &appNames)
    {
        return fx.load(slots, appNames);
    }

    // A fixture whose grid is A, B, C, D with B in folder "Box" (cell 1)
    // and C hidden (cell 2 empty); a widget stands on cells 4, 5, 12, 13.
    struct RefusalScene {
        Fixture fx;
        FolderItem box;
        WidgetItem clock;
        RefusalScene()
        {
            auto &model = fx.load({appKey("A"), appKey("B"), appKey("C"), appKey("D")}, {"A", "B", "C", "D"});
            model.setGridGeometry(8, 2);
            box = *model.createFolder("Box", {path("B")}, {}, 1);
            model.hideApp(path("C"));
            clock = *model.addWidget("clock", WidgetSize::size2x2, 4);
        }
    };
    using Attempt = std::function<std::optional<LayoutRefusal>(LaunchpadViewModel &, const RefusalScene &)>;
    template <typename T>
    static std::optional<LayoutRefusal> reason(const LayoutResult<T> &result)
    {
        return result ? std::nullopt : std::optional(result.error());
    }
    static const QList<std::pair<const char *, Attempt>> &attempts()
    {
        static const QList<std::pair<const char *, Attempt>> all{
            {"insert: already on the grid", [](auto &m, auto &) { return reason(m.insertKey(appKey("A"))); }},
            {"insert: in a folder", [](auto &m, auto &) { return reason(m.insertKey(appKey("B"))); }},
            {"insert: hidden", [](auto &m, auto &) { return reason(m.insertKey(appKey("C"))); }},
            {"insert: the empty key", [](auto &m, auto &) { return reason(m.insertKey(QString())); }},
            {"insert: a widget key", [](auto &m, auto &s) { return reason(m.insertKey(SlotKey::widgetAnchor(s.clock.id))); }},
            {"insert: no path", [](auto &m, auto &) { return reason(m.insertKey(QStringLiteral("A:  "))); }},
            {"insert: unknown folder", [](auto &m, auto &) { return reason(m.insertKey(SlotKey::folder(QUuid::createUuid()))); }},
            {"insert: unknown workflow", [](auto &m, auto &) { return reason(m.insertKey(SlotKey::workflow(QUuid::createUuid()))); }},
            {"remove: not on the grid", [](auto &m, auto &) { return reason(m.removeKey(appKey("C"))); }},
            {"move: hidden app", [](auto &m, auto &) { return reason(m.moveKey(appKey("C"), 0)); }},
            {"move: onto a widget", [](auto &m, auto &) { return reason(m.moveKey(appKey("A"), 12)); }},
            {"unhide: not hidden", [](auto &m, auto &) { return reason(m.unhideApp(path("A"))); }},
            {"create folder: no members", [](auto &m, auto &) { return reason(m.createFolder("Empty", {})); }},
            {"rename folder: blank name", [](auto &m, auto &s) { return reason(m.renameFolder(s.box.id, "  ")); }},
            {"rename folder: unknown", [](auto &m, auto &) { return reason(m.renameFolder(QUuid::createUuid(), "X")); }},
            {"dissolve: unknown folder", [](auto &m, auto &) { return reason(m.dissolveFolder(QUuid::createUuid())); }},
            {"remove from folder: not a member", [](auto &m, auto &s) { return reason(m.removeAppFromFolder(s.box.id, path("A"))); }},
            {"add to folder: no path", [](auto &m, auto &s) { return reason(m.addAppToFolder(s.box.id, QString())); }},
            {"widget: unknown id", [](auto &m, auto &) { return reason(m.moveWidget(QUuid::createUuid(), 0)); }},
            {"widget: remove unknown", [](auto &m, auto &) { return reason(m.removeWidget(QUuid::createUuid())); }},
            {"widget: too tall for two rows", [](auto &m, auto &) { return reason(m.addWidget("clock", WidgetSize::size2x3)); }},
        };
        return all;
    }

private Q_SLOTS:
    void refusalsCarryTheirReasonAndChangeNothing_data()
    {
        QTest::addColumn<int>("attempt");
        QTest::addColumn<LayoutRefusal>("expected");
        const QList<LayoutRefusal> expected{
            LayoutRefusal::AlreadyOnGrid, LayoutRefusal::InFolder,      LayoutRefusal::Hidden,
            LayoutRefusal::EmptyKey,      LayoutRefusal::WidgetKey,     LayoutRefusal::MalformedKey,
            LayoutRefusal::UnknownFolder, LayoutRefusal::UnknownWorkflow, LayoutRefusal::NotOnGrid,
            LayoutRefusal::Hidden,        LayoutRefusal::WidgetArea,    LayoutRefusal::NotHidden,
            LayoutRefusal::NoMembers,     LayoutRefusal::InvalidName,   LayoutRefusal::UnknownFolder,
            LayoutRefusal::UnknownFolder, LayoutRefusal::NotInFolder,   LayoutRefusal::MalformedKey,
            LayoutRefusal::UnknownWidget, LayoutRefusal::UnknownWidget, LayoutRefusal::Full,
        };
        QCOMPARE(expected.size(), attempts().size());
        for (int i = 0; i < attempts().size(); ++i)
            QTest::newRow(attempts().at(i).first) << i << expected.at(i);
    }

    void refusalsCarryTheirReasonAndChangeNothing()
    {
        QFETCH(int, attempt);
        QFETCH(LayoutRefusal, expected);
        RefusalScene scene;
        auto &model = *scene.fx.model;
        const QStringList slots = model.slots();
        const QList<FolderItem> folders = model.folders();
        const qint64 revision = model.layoutRevision();
        QCOMPARE(attempts().at(attempt).second(model, scene), std::optional(expected));
        QCOMPARE(model.slots(), slots);
        QCOMPARE(model.folders(), folders);
        QCOMPARE(model.layoutRevision(), revision);
    }

    // Every reason has its own wording: the command line and the overlay
    // show it to people, who must be able to tell two refusals apart.
    void everyRefusalHasItsOwnText()
    {
        const QMetaEnum reasons = QMetaEnum::fromType<LayoutRefusal>();
        QSet<QString> texts;
        for (int i = 0; i < reasons.keyCount(); ++i) {
            const QString text = describe(LayoutRefusal(reasons.value(i)));
            QVERIFY2(!texts.contains(text), reasons.key(i));
            texts.insert(text);
        }
        QVERIFY(!texts.contains(QStringLiteral("refused"))); // the fallback of a forgotten case
    }

    void insertFillsAHoleOnAnEarlierPageFirst()
    {
        Fixture fx;
        auto &model = loaded(fx, numberedKeys(70), numberedNames(70)); // two full 35-cell pages
        QCOMPARE(*model.removeKey(appKey("3")), 3);
        QCOMPARE(model.slots().at(3), QString());
        QCOMPARE(*model.insertKey(appKey("3")), 3);
        QCOMPARE(*model.insertKey(appKey("70")), 70); // no hole: appended
        QCOMPARE(fx.fakes.order->storedSlots, model.slots());
    }

    void hideAndUnhide()
    {
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), "", appKey("B"), appKey("C")}, {"A", "B", "C"});
        model.hideApp(path("B"));
        QCOMPARE(model.slots(), QStringList({appKey("A"), "", "", appKey("C")}));
        QVERIFY(fx.fakes.hidden->isHidden(path("B")));
        // Unhiding takes the first empty cell, not the old one.
        QVERIFY(model.unhideApp(path("B")));
        QCOMPARE(model.slots(), QStringList({appKey("A"), appKey("B"), "", appKey("C")}));
        QVERIFY(!fx.fakes.hidden->isHidden(path("B")));
    }

    void hidingAnAppInAFolderLeavesTheGridAlone()
    {
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B")}, {"A", "B"});
        const auto folder = model.createFolder("F", {path("A")});
        const QStringList before = model.slots();
        model.hideApp(path("A"));
        QCOMPARE(model.slots(), before);
        // Shown again, it stays in its folder rather than appearing twice.
        model.unhideApp(path("A"));
        QCOMPARE(model.slots(), before);
        QVERIFY(model.folder(folder->id)->appPaths.contains(path("A")));
    }

    void createFolderRecordsOriginalCellsAndUsesThePreferredSlot()
    {
        Fixture fx;
        auto &model = loaded(fx, numberedKeys(12), numberedNames(12));
        const auto folder = model.createFolder("Games", {path("3"), path("9")}, {}, 3);
        QVERIFY(folder);
        QCOMPARE(model.slots().at(3), folder->key());
        QCOMPARE(model.slots().at(9), QString());
        QCOMPARE(folder->originalGridSlots, (QMap<QString, qint64>{{path("3"), 3}, {path("9"), 9}}));
        QCOMPARE(fx.fakes.folders->stored, QList<FolderItem>({*folder}));
        QCOMPARE(fx.fakes.order->storedSlots, model.slots());

        // No preferred slot: the first hole wins (9, the other member's).
        const auto second = model.createFolder("More", {path("0")});
        QCOMPARE(model.slots().at(0), second->key());
        const auto third = model.createFolder("Last", {path("5"), path("11")}, {}, 40); // beyond the list
        QCOMPARE(model.slots().at(5), third->key());
        QCOMPARE(model.slots().at(11), QString());
    }

    void createFolderAppendsWhenNoCellIsFree()
    {
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B")}, {"A", "B"});
        // The preferred cell is occupied by a non-member: the folder takes the member's freed cell.
        const auto folder = model.createFolder("F", {path("B")}, {}, 0);
        QCOMPARE(model.slots(), QStringList({appKey("A"), folder->key()}));
        // Only system folders: nothing freed, so appended.
        const auto sys = model.createFolder("S", {}, {"/home/u/Documents"});
        QCOMPARE(model.slots(), QStringList({appKey("A"), folder->key(), sys->key()}));
    }

    // An app that leaves a folder goes back to the cell it had before it went
    // in when that cell is empty, else to the first empty cell.
    void appsLeavingAFolderReturnToTheirOriginalCells_data()
    {
        QTest::addColumn<QString>("leaving");
        QTest::addColumn<QStringList>("after");
        // Grid before: A, Box (took B's cell 1), "", "" (C's), D; Box = {B, C}.
        QTest::newRow("its cell is free") << "C" << keys({"A:A", "F:", "", "A:C", "A:D"});
        QTest::newRow("its cell holds the folder: the first empty cell")
            << "B" << keys({"A:A", "F:", "A:B", "", "A:D"});
    }
    void appsLeavingAFolderReturnToTheirOriginalCells()
    {
        QFETCH(QString, leaving);
        QFETCH(QStringList, after);
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B"), "", appKey("C"), appKey("D")}, {"A", "B", "C", "D"});
        const auto box = model.createFolder("Box", {path("B"), path("C")}, {}, 1);
        QVERIFY(model.removeAppFromFolder(box->id, path(leaving)));
        for (QString &k : after)
            k = k == "F:" ? box->key() : k.startsWith("A:") ? appKey(k.mid(2)) : k;
        QCOMPARE(model.slots(), after);
        QVERIFY(!model.folder(box->id)->originalGridSlots.contains(path(leaving)));
        QCOMPARE(fx.fakes.order->storedSlots, model.slots());
    }

    void lastAppOutDeletesTheFolderAndGetsItsCellBack()
    {
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B"), appKey("C"), appKey("D")}, {"A", "B", "C", "D"});
        const auto folder = model.createFolder("F", {path("B"), path("C")}, {}, 1);
        QVERIFY(model.renameFolder(folder->id, "Renamed"));
        QCOMPARE(model.folder(folder->id)->name, QStringLiteral("Renamed"));
        QVERIFY(model.removeAppFromFolder(folder->id, path("C")));
        // B's cell was the one the folder took; the folder goes, so B gets it back.
        QVERIFY(model.removeAppFromFolder(folder->id, path("B")));
        QVERIFY(!model.folder(folder->id));
        QCOMPARE(model.slots(), QStringList({appKey("A"), appKey("B"), appKey("C"), appKey("D")}));
        QVERIFY(fx.fakes.folders->stored.isEmpty());
    }

    void dissolvingPutsAppsBackWhereTheyWereIfFree()
    {
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B"), appKey("C"), appKey("D")}, {"A", "B", "C", "D"});
        const auto folder = model.createFolder("F", {path("A"), path("C")}, {}, 3); // 3 is D's: not free
        // The folder took the first hole (0, A's cell); C's cell 2 is still free.
        QCOMPARE(model.slots().at(0), folder->key());
        model.hideApp(path("D"));
        QVERIFY(model.dissolveFolder(folder->id));
        QVERIFY(!model.slots().contains(folder->key()));
        QCOMPARE(model.slots().at(2), appKey("C"));
        QCOMPARE(model.slots().count(appKey("A")), 1);
        QVERIFY(model.folders().isEmpty());
    }

    void dragEndConvertsPageLocalDropsAndRefusesWidgetCells()
    {
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B")}, {"A", "B"});
        model.setGridGeometry(8, 2); // 16 cells a page
        const auto widget = model.addWidget("clock", WidgetSize::size2x2, 2);
        QVERIFY(widget);
        model.beginDrag(appKey("A"), 0);
        QVERIFY(!model.endDrag(appKey("A"), 0, 0, 10)); // a widget cell (2+8)
        QCOMPARE(model.slots().at(0), appKey("A"));

        QVERIFY(model.endDrag(appKey("A"), 0, 1, 4));
        QCOMPARE(model.slots().at(20), appKey("A"));

        const auto folder = model.createFolder("Box", {path("B")});
        model.beginDrag(folder->key(), 1);
        QVERIFY(model.endDrag(folder->key(), 1, 0, 5));
        QCOMPARE(model.slots().at(5), folder->key());
        QVERIFY(!model.endDrag(folder->key(), 5, 0, 3));
    }

    void neighbourPageMoves()
    {
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B")}, {"A", "B"});
        model.setGridGeometry(8, 2); // 16 cells a page
        const AppItem a = model.apps().first();
        model.beginDrag(appKey("A"), 0);
        QCOMPARE(model.moveEntryToNeighbourPage(a, 0, 2, LaunchpadViewModel::NeighbourPage::Next), 18);
        QCOMPARE(model.slots().at(18), appKey("A"));
        QVERIFY(!model.endDrag(appKey("A"), 2, 0, 2, true));
        QCOMPARE(model.slots().at(18), appKey("A"));

        QCOMPARE(model.moveEntryToNeighbourPage(a, 0, 0, LaunchpadViewModel::NeighbourPage::Previous), -1);
        const auto widget = model.addWidget("clock", WidgetSize::size2x2, 0);
        QVERIFY(widget);
        QCOMPARE(model.moveEntryToNeighbourPage(*widget, 0, 0, LaunchpadViewModel::NeighbourPage::Next), -1);
        QCOMPARE(model.moveEntryToNeighbourPage(SystemFolderItem{}, 0, 0, LaunchpadViewModel::NeighbourPage::Next), -1);

        const auto folder = model.createFolder("Box", {path("B")});
        model.moveEntryToNeighbourPage(*folder, 1, 1, LaunchpadViewModel::NeighbourPage::Previous);
        QCOMPARE(model.slots().at(1), QStringLiteral("WB:") + widget->id.toString(QUuid::WithoutBraces).toUpper());
        QCOMPARE(model.slots().count(folder->key()), 1); // refused: cell 1 is the widget's
        QVERIFY(!model.endDrag(folder->key(), 1, 0, 1)); // the drag's normal end still runs
    }

    // The model hands its configured rows to the move; columns never matter.
    void movesCountRowsAndPagesEightWide_data()
    {
        QTest::addColumn<int>("columns");
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("occupantTo");
        // 24 icons, holes at 7 and 22, K at 30; K dropped on 9 (row 8-15 full).
        // 8 x 3 cells make page 0 (0-23): the occupant takes 22, the first
        // hole after the target. With 2 rows page 0 ends at 15: it takes 7.
        QTest::newRow("7 x 3: page is 24 cells") << 7 << 3 << 22;
        QTest::newRow("5 x 3: page is 24 cells") << 5 << 3 << 22;
        QTest::newRow("7 x 2: page is 16 cells") << 7 << 2 << 7;
    }
    void movesCountRowsAndPagesEightWide()
    {
        QFETCH(int, columns);
        QFETCH(int, rows);
        QFETCH(int, occupantTo);
        QStringList slots = numberedKeys(24);
        slots[7] = slots[22] = QString();
        QStringList names = numberedNames(24);
        names.removeAll("7"); // not installed, else the load would fill the holes
        names.removeAll("22");
        slots << "" << "" << "" << "" << "" << "" << appKey("K");
        names << "K";
        Fixture fx;
        auto &model = loaded(fx, slots, names);
        model.setGridGeometry(columns, rows);
        model.moveKeyInSlots(appKey("K"), 9);
        QCOMPARE(model.slots().at(9), appKey("K"));
        QCOMPARE(model.slots().at(occupantTo), appKey("9"));
        QCOMPARE(model.slots().at(30), QString());
        QCOMPARE(fx.fakes.order->storedSlots, model.slots());
    }

    void sevenColumnsStillShiftInRowsOfEight()
    {
        Fixture fx;
        // Cells 0-6 are the first 7-column row; cell 7 (empty) is in its 8-wide row.
        QStringList slots = numberedKeys(7);
        QStringList names = numberedNames(7);
        slots << "" << appKey("K");
        names << "K";
        auto &model = loaded(fx, slots, names);
        model.setGridColumns(7);
        model.moveKeyInSlots(appKey("K"), 3);
        QCOMPARE(model.slots().mid(3, 5), QStringList({appKey("K"), appKey("3"), appKey("4"), appKey("5"), appKey("6")}));
    }

    void folderGridShapeIsRememberedInTheStandardStore()
    {
        TempEnvironment env;
        auto store = UserDefaultsStore::standard(env.configDir());
        FakeLayoutServices fakes;
        LayoutServices services = fakes.services();
        services.preferences = store;
        {
            LaunchpadViewModel model(services);
            QCOMPARE(model.folderAppsGridRawValue(), QStringLiteral("4x5"));
            QVERIFY(!store->persistedObject("folderAppsGrid").isValid()); // nothing written by reading
            model.setFolderAppsGridRawValue("5x8");
            model.setFolderAppsGridRawValue("9x9"); // not a shape: ignored
        }
        QCOMPARE(store->string("folderAppsGrid"), std::optional<QString>("5x8"));
        LaunchpadViewModel again(services);
        QCOMPARE(again.folderAppsGrid(), FolderAppsGrid::rows5Columns8);
        store->set(QStringLiteral("bogus"), "folderAppsGrid");
        LaunchpadViewModel bogus(services);
        QCOMPARE(bogus.folderAppsGrid(), FolderAppsGrid::rows4Columns5);
    }
};

QTEST_GUILESS_MAIN(LayoutEditsTest)
#include "tst_layout_edits.moc"
