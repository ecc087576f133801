#include "LayoutTestSupport.h"
#include "layout/FolderSlotManager.h"
#include "layout/FolderSlots.h"

using namespace LayoutTest;

// An open folder's own grid: its shapes, its move rule and the list it shows.
class FolderSlotsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void twelveShapesInOrder()
    {
        QStringList raw;
        for (FolderAppsGrid g : FolderAppsGrids::all())
            raw.append(FolderAppsGrids::rawValue(g));
        QCOMPARE(raw, QStringList({"3x5", "3x6", "3x7", "3x8", "4x5", "4x6", "4x7", "4x8", "5x5", "5x6", "5x7", "5x8"}));
        QCOMPARE(FolderAppsGrids::cellsPerPage(FolderAppsGrid::rows4Columns7), 28);
        QCOMPARE(FolderAppsGrids::columns(FolderAppsGrid::rows5Columns6), 6);
        QCOMPARE(FolderAppsGrids::fromRawValue("3x8"), std::optional(FolderAppsGrid::rows3Columns8));
        QVERIFY(!FolderAppsGrids::fromRawValue("8x3"));
    }

    void moveInsideAFolder_data()
    {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("to");
        QTest::addColumn<QStringList>("after");
        QTest::newRow("own cell: unchanged") << keys({"a", "b", "c"}) << "b" << 1 << keys({"a", "b", "c"});
        QTest::newRow("negative target is 0") << keys({"a", "b", "c"}) << "a" << -4 << keys({"a", "b", "c"});
        QTest::newRow("far page pads to its end")
            << keys({"a", "b", "c"}) << "c" << 17
            << keys({"a", "b", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "c", "", "", "", "", "", ""});
        // Row 0 full: b goes one cell right, c slides into b's freed cell.
        QTest::newRow("old cell is emptied first") << keys({"a", "b", "c", "d"}) << "b" << 2
                                                   << keys({"a", "c", "b", "d", "", "", "", ""});
        QTest::newRow("left beats right") << keys({"", "x", "T", "", "y", "z", "w", "K"}) << "K" << 2
                                          << keys({"x", "T", "K", "", "y", "z", "w", ""});
        QTest::newRow("right when the left is full") << keys({"a", "T", "", "b", "c", "d", "e", "f"}) << "f" << 1
                                                     << keys({"a", "f", "T", "b", "c", "d", "e", ""});
        // Row 1 (4-7) full: a key from inside the folder swaps with the occupant.
        QTest::newRow("full row, key from inside: swap") << keys({"a", "K", "b", "c", "d", "T", "e", "f"}) << "K" << 5
                                                         << keys({"a", "T", "b", "c", "d", "K", "e", "f"});
        // A key from outside: the occupant goes to the first hole of the whole list, any page.
        QTest::newRow("full row, key from outside: first hole")
            << keys({"a", "b", "c", "d", "e", "f", "g", "h", "i", ""}) << "N" << 1
            << keys({"a", "N", "c", "d", "e", "f", "g", "h", "i", "b"});
        QTest::newRow("full row, key from outside: first hole before the target")
            << keys({"", "b", "c", "d", "e", "f", "g", "h"}) << "N" << 5 << keys({"f", "b", "c", "d", "e", "N", "g", "h"});
        QTest::newRow("full row, key from outside, no hole: appended")
            << keys({"a", "b", "c", "d", "e", "f", "g", "h"}) << "N" << 0
            << keys({"N", "b", "c", "d", "e", "f", "g", "h", "a"});
    }
    void moveInsideAFolder()
    {
        QFETCH(QStringList, before);
        QFETCH(QString, key);
        QFETCH(int, to);
        QFETCH(QStringList, after);
        QCOMPARE(FolderSlots::moveKey(before, key, to, 8, 4), after);
    }

    void shownListGivesEveryMemberACell()
    {
        FolderItem f;
        f.id = QUuid::createUuid();
        f.appPaths = {"/a.app", "/b.app", "/c.app", "/d.app"};
        f.slots = {"A:/b.app", "", "/x.app", "/b.app", "WF:1", "WF:1"};
        QCOMPARE(FolderSlots::completed(f), keys({"A:/b.app", "/a.app", "/c.app", "/d.app", "WF:1", ""}));
        f.slots.clear();
        QCOMPARE(FolderSlots::completed(f), f.appPaths);
    }

    void managerStoresItsMovesIntoTheFolder()
    {
        Fixture fx;
        fx.fakes.apps->setApps(apps({"A", "B", "C"}));
        auto &model = fx.load();
        const auto folder = model.createFolder("F", {path("A"), path("B")});
        model.setFolderAppsGrid(FolderAppsGrid::rows3Columns5);
        std::unique_ptr<FolderSlotManager> manager(model.makeFolderSlotManager(folder->id));
        QVERIFY(manager);
        QCOMPARE(manager->maxSlotsPerPage(), 15);
        QCOMPARE(manager->columnsPerRow(), 5);
        QCOMPARE(manager->slots(), QStringList({path("A"), path("B")}));

        manager->moveKey(path("A"), 3);
        QCOMPARE(model.folder(folder->id)->slots.mid(0, 4), QStringList({"", path("B"), "", path("A")}));
        QCOMPARE(fx.fakes.folders->stored.first().slots, model.folder(folder->id)->slots);

        // A member added elsewhere shows up in the open folder; the grid shape follows the setting.
        model.addAppToFolder(folder->id, path("C"));
        QCOMPARE(manager->slots().at(0), path("C"));
        model.setFolderAppsGrid(FolderAppsGrid::rows5Columns8);
        QCOMPARE(manager->maxSlotsPerPage(), 40);
        QVERIFY(!model.makeFolderSlotManager(QUuid::createUuid()));
    }
};

QTEST_GUILESS_MAIN(FolderSlotsTest)
#include "tst_folder_slots.moc"
