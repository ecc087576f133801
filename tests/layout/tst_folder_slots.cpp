#include "LayoutTestSupport.h"
#include "layout/FolderSlotManager.h"
#include "layout/FolderSlots.h"

using namespace LayoutTest;

// An open folder's own grid: its shapes, its move rule and the list it shows.
class FolderSlotsTest : public QObject {
    Q_OBJECT

    // Folder pages of 2 rows x 4 columns.
    static QStringList move(const QStringList &slots, const char *key, int target)
    {
        return FolderSlots::moveKey(slots, QString::fromUtf8(key), target, 8, 4);
    }

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

    void ownCellAndFarPages()
    {
        const QStringList slots = keys({"a", "b", "c"});
        QCOMPARE(move(slots, "b", 1), slots);
        const QStringList far = move(slots, "c", 17); // page 2 of 8-cell pages
        QCOMPARE(far.size(), 24);
        QCOMPARE(far.at(17), QStringLiteral("c"));
        QCOMPARE(far.at(2), QString());
        QCOMPARE(move(slots, "a", -4), slots);
    }

    void oldCellIsEmptiedFirstSoTheNeighbourShiftsLeft()
    {
        // Row 0 full: b goes one cell right, c slides into b's freed cell.
        QCOMPARE(move(keys({"a", "b", "c", "d"}), "b", 2), keys({"a", "c", "b", "d", "", "", "", ""}));
    }

    void leftBeatsRightAndAFullRowSwapsOrUsesTheFirstHole()
    {
        QCOMPARE(move(keys({"", "x", "T", "", "y", "z", "w", "K"}), "K", 2),
                 keys({"x", "T", "K", "", "y", "z", "w", ""}));
        QCOMPARE(move(keys({"a", "T", "", "b", "c", "d", "e", "f"}), "f", 1),
                 keys({"a", "f", "T", "b", "c", "d", "e", ""}));
        // Row 1 (4-7) full, key from row 0: the occupant takes the key's old cell.
        QCOMPARE(move(keys({"a", "K", "b", "c", "d", "T", "e", "f"}), "K", 5),
                 keys({"a", "T", "b", "c", "d", "K", "e", "f"}));
        // A key from outside: the occupant goes to the first hole of any page, else the end.
        QCOMPARE(move(keys({"a", "b", "c", "d", "e", "f", "g", "h", "i", ""}), "N", 1),
                 keys({"a", "N", "c", "d", "e", "f", "g", "h", "i", "b"}));
        QCOMPARE(move(keys({"a", "b", "c", "d", "e", "f", "g", "h"}), "N", 0),
                 keys({"N", "b", "c", "d", "e", "f", "g", "h", "a"}));
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
