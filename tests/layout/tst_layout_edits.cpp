#include "LayoutTestSupport.h"
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "storage/UserDefaultsStore.h"

using namespace LayoutTest;

// Placement, removal, hiding, folders and the grid view's side of a drag.
class LayoutEditsTest : public QObject {
    Q_OBJECT

    static LaunchpadViewModel &loaded(Fixture &fx, const QStringList &slots, const QStringList &appNames)
    {
        return fx.load(slots, appNames);
    }

private Q_SLOTS:
    void insertFillsAHoleOnAnEarlierPageFirst()
    {
        LogCapture log;
        Fixture fx;
        auto &model = loaded(fx, numberedKeys(70), numberedNames(70)); // two full 35-cell pages
        model.removeKey(appKey("3"));
        QCOMPARE(model.insertKey(appKey("3")), 3);
        QVERIFY(log.contains(QStringLiteral("📝 [INSERT LOG] Placed %1 in empty slot 3").arg(appKey("3"))));
        QCOMPARE(model.insertKey(appKey("70")), 70);
        QVERIFY(log.contains(QStringLiteral("📝 [INSERT LOG] Appended %1 to end of slots at index 70").arg(appKey("70"))));
        QCOMPARE(fx.fakes.order->storedSlots, model.slots());
        QCOMPARE(model.insertKey(SlotKey::workflow(QUuid::createUuid())), -1); // no such workflow
    }

    void removeEmptiesTheCellOrReportsAbsence()
    {
        LogCapture log;
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B")}, {"A", "B"});
        const qint64 revision = model.layoutRevision();
        QCOMPARE(model.removeKey(appKey("A")), 0);
        QCOMPARE(model.slots(), QStringList({"", appKey("B")}));
        QCOMPARE(model.layoutRevision(), revision + 1);
        QVERIFY(log.contains(QStringLiteral("🗑️ [REMOVE LOG] Removing %1 from slot 0, slot becomes empty").arg(appKey("A"))));
        const int saves = fx.fakes.order->slotSaves;
        QCOMPARE(model.removeKey(appKey("A")), -1);
        QVERIFY(log.contains(QStringLiteral("🗑️ [REMOVE LOG] Key %1 not found in slots").arg(appKey("A"))));
        QCOMPARE(fx.fakes.order->slotSaves, saves);
    }

    void hideAndUnhide()
    {
        LogCapture log;
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), "", appKey("B"), appKey("C")}, {"A", "B", "C"});
        model.hideApp(path("B"));
        QCOMPARE(model.slots(), QStringList({appKey("A"), "", "", appKey("C")}));
        QVERIFY(fx.fakes.hidden->isHidden(path("B")));
        QVERIFY(log.contains(QStringLiteral("👁️ [HIDE LOG] App %1 found at slot 2, freeing this slot").arg(path("B"))));

        // Unhiding takes the first empty cell, not the old one.
        model.unhideApp(path("B"));
        QCOMPARE(model.slots(), QStringList({appKey("A"), appKey("B"), "", appKey("C")}));
        QVERIFY(log.contains(QStringLiteral("👁️ [UNHIDE LOG] Unhiding app: %1").arg(path("B"))));
        model.unhideApp(path("B"));
        QVERIFY(log.contains(QStringLiteral("👁️ [UNHIDE LOG] App %1 is not in hidden list, skipping").arg(path("B"))));
        QCOMPARE(model.slots().count(appKey("B")), 1);
    }

    void hidingAnAppInAFolderLeavesTheGridAlone()
    {
        LogCapture log;
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B")}, {"A", "B"});
        const auto folder = model.createFolder("F", {path("A")});
        const QStringList before = model.slots();
        model.hideApp(path("A"));
        QCOMPARE(model.slots(), before);
        QVERIFY(log.contains(QStringLiteral("👁️ [HIDE LOG] App %1 not found in slots (may already be hidden or in folder)").arg(path("A"))));
        // Shown again, it stays in its folder rather than appearing twice.
        model.unhideApp(path("A"));
        QCOMPARE(model.slots(), before);
        QVERIFY(model.folder(folder->id)->appPaths.contains(path("A")));
    }

    void createFolderRecordsOriginalCellsAndUsesThePreferredSlot()
    {
        LogCapture log;
        Fixture fx;
        auto &model = loaded(fx, numberedKeys(12), numberedNames(12));
        const auto folder = model.createFolder("Games", {path("3"), path("9")}, {}, 3);
        QVERIFY(folder);
        QCOMPARE(model.slots().at(3), folder->key());
        QCOMPARE(model.slots().at(9), QString());
        QCOMPARE(folder->originalGridSlots.value(path("3")), 3);
        QCOMPARE(folder->originalGridSlots.value(path("9")), 9);
        QCOMPARE(fx.fakes.folders->stored, QList<FolderItem>({*folder}));
        QCOMPARE(fx.fakes.order->storedSlots, model.slots());
        QVERIFY(log.contains("📁 [FOLDER LOG] Creating folder 'Games' with 2 apps and 0 system folders"));
        QVERIFY(log.contains("📁 [FOLDER LOG] Removing 2 apps from main grid slots to place in folder"));
        QVERIFY(log.contains(QStringLiteral("📁 [FOLDER LOG] App %1 removed from slot 9 to be placed in folder").arg(path("9"))));
        QVERIFY(log.contains("📁 [FOLDER LOG] Placing folder 'Games' in empty slot 3"));

        // No preferred slot and no hole left after taking the members: the first hole wins.
        const auto second = model.createFolder("More", {path("0")});
        QCOMPARE(model.slots().at(0), second->key());
    }

    void createFolderAppendsWhenNoCellIsFree()
    {
        LogCapture log;
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B")}, {"A", "B"});
        // The preferred cell is occupied by a non-member: the folder takes the member's freed cell.
        const auto folder = model.createFolder("F", {path("B")}, {}, 0);
        QCOMPARE(model.slots(), QStringList({appKey("A"), folder->key()}));
        // Only system folders: nothing freed, so appended.
        const auto sys = model.createFolder("S", {}, {"/home/u/Documents"});
        QCOMPARE(model.slots().last(), sys->key());
        QVERIFY(log.contains("📁 [FOLDER LOG] No empty slots found, appending folder 'S' to end of slots"));
    }

    void folderEditsReturnAppsToTheirCells()
    {
        LogCapture log;
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B"), appKey("C"), appKey("D")}, {"A", "B", "C", "D"});
        const auto folder = model.createFolder("F", {path("B"), path("C")}, {}, 1);
        // B's old cell (1) holds the folder: B goes to the first empty cell; C gets 2 back.
        QVERIFY(model.removeAppFromFolder(folder->id, path("C")));
        QCOMPARE(model.slots().at(2), appKey("C"));
        QVERIFY(model.renameFolder(folder->id, "Renamed"));
        QCOMPARE(model.folder(folder->id)->name, QStringLiteral("Renamed"));

        // Removing the last member deletes the folder and frees its cell.
        QVERIFY(model.removeAppFromFolder(folder->id, path("B")));
        QVERIFY(log.contains("🔧 Folder is empty in updateFolder, deleting..."));
        QVERIFY(!model.folder(folder->id));
        QVERIFY(!model.slots().contains(folder->key()));
        QCOMPARE(model.slots().count(appKey("B")), 1);
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
        LogCapture log;
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B")}, {"A", "B"});
        model.setGridGeometry(8, 2); // 16 cells a page
        const auto widget = model.addWidget("clock", WidgetSize::size2x2, 2);
        QVERIFY(widget);
        model.beginDrag(appKey("A"), 0);
        QVERIFY(log.contains(QStringLiteral("🎯 [GRID DRAG LOG] Started dragging app: %1 from page slot 0").arg(path("A"))));
        QVERIFY(!model.endDrag(appKey("A"), 0, 0, 10)); // a widget cell (2+8)
        QVERIFY(log.contains("🎯 [GRID DRAG LOG] Drop blocked: target absolute slot 10 belongs to widget area"));
        QCOMPARE(model.slots().at(0), appKey("A"));

        QVERIFY(model.endDrag(appKey("A"), 0, 1, 4));
        QVERIFY(log.contains(QStringLiteral("🎯 [GRID DRAG LOG] Drag ended: %1 from page slot 0 to local slot 4 (absolute slot 20)").arg(path("A"))));
        QVERIFY(log.contains(QStringLiteral("🎯 [GRID DRAG LOG] Calling moveKeyInSlots for %1 to absolute slot 20").arg(path("A"))));
        QCOMPARE(model.slots().at(20), appKey("A"));

        const auto folder = model.createFolder("Box", {path("B")});
        model.beginDrag(folder->key(), 1);
        QVERIFY(model.endDrag(folder->key(), 1, 0, 5));
        QVERIFY(log.contains("🎯 [GRID DRAG LOG] Started dragging folder: 'Box' from page slot 1"));
        QVERIFY(log.contains("🎯 [GRID DRAG LOG] Folder drag ended: 'Box' from page slot 1 to local slot 5 (absolute slot 5)"));
        QVERIFY(log.contains("🎯 [GRID DRAG LOG] Calling moveKeyInSlots for folder Box to absolute slot 5"));
        QVERIFY(!model.endDrag(folder->key(), 5, 0, 3));
        QVERIFY(log.contains("🎯 [GRID DRAG LOG] Drop blocked: folder target absolute slot 3 belongs to widget area"));
    }

    void neighbourPageMoves()
    {
        LogCapture log;
        Fixture fx;
        auto &model = loaded(fx, {appKey("A"), appKey("B")}, {"A", "B"});
        model.setGridGeometry(8, 2); // 16 cells a page
        const AppItem a = model.apps().first();
        model.beginDrag(appKey("A"), 0);
        QCOMPARE(model.moveEntryToNeighbourPage(a, 0, 2, LaunchpadViewModel::NeighbourPage::Next), 18);
        QVERIFY(log.contains("🎯 [GRID DRAG LOG] Moving entry to next page, target slot: 18"));
        QVERIFY(log.contains(QStringLiteral("🎯 [GRAG LOG] Moving app %1 to neighbor page at slot 18").arg(path("A"))));
        QCOMPARE(model.slots().at(18), appKey("A"));
        QVERIFY(!model.endDrag(appKey("A"), 2, 0, 2, true));
        QVERIFY(log.contains("🎯 [GRID DRAG LOG] Item moved to other page, skip handleDragEnd"));
        QCOMPARE(model.slots().at(18), appKey("A"));

        QCOMPARE(model.moveEntryToNeighbourPage(a, 0, 0, LaunchpadViewModel::NeighbourPage::Previous), -1);
        const auto widget = model.addWidget("clock", WidgetSize::size2x2, 0);
        QVERIFY(widget);
        QCOMPARE(model.moveEntryToNeighbourPage(*widget, 0, 0, LaunchpadViewModel::NeighbourPage::Next), -1);
        QVERIFY(log.contains("🎯 [GRID DRAG LOG] Widget drag to neighbor page not implemented"));
        QCOMPARE(model.moveEntryToNeighbourPage(SystemFolderItem{}, 0, 0, LaunchpadViewModel::NeighbourPage::Next), -1);
        QVERIFY(log.contains("🎯 [GRID DRAG LOG] System folder drag to neighbor page not supported"));

        const auto folder = model.createFolder("Box", {path("B")});
        model.moveEntryToNeighbourPage(*folder, 1, 1, LaunchpadViewModel::NeighbourPage::Previous);
        QVERIFY(log.contains("🎯 [GRID DRAG LOG] Moving folder 'Box' to neighbor page at slot 1"));
        QCOMPARE(model.slots().at(1), QStringLiteral("WB:") + widget->id.toString(QUuid::WithoutBraces).toUpper());
        QCOMPARE(model.slots().count(folder->key()), 1); // refused: cell 1 is the widget's
        QVERIFY(!model.endDrag(folder->key(), 1, 0, 1)); // the drag's normal end still runs
    }

    void sevenColumnsStillMoveInRowsOfEight()
    {
        Fixture fx;
        // Cells 0-6 are the first 7-column row; cell 7 (empty) is in its 8-wide row.
        QStringList slots = numberedKeys(7);
        QStringList names = numberedNames(7);
        slots << "" << appKey("K");
        names << "K";
        auto &model = loaded(fx, slots, names);
        model.setGridColumns(7);
        QCOMPARE(model.gridColumns(), 7);
        model.moveKeyInSlots(appKey("K"), 3);
        QCOMPARE(model.slots().at(3), appKey("K"));
        QCOMPARE(model.slots().at(4), appKey("3"));
        QCOMPARE(model.slots().at(7), appKey("6")); // shifted right into the 8th cell
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
