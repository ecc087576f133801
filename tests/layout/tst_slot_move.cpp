#include "LayoutTestSupport.h"
#include "common/LogCapture.h"
#include "layout/SlotMove.h"

#include <QTest>

using LayoutTest::keys;

// The main grid's drag-and-drop move, run directly on slot lists.
class SlotMoveTest : public QObject {
    Q_OBJECT

    static QStringList filled(int count, const QString &prefix = QStringLiteral("A:/x"))
    {
        QStringList out;
        for (int i = 0; i < count; ++i)
            out.append(prefix + QString::number(i));
        return out;
    }
    static SlotMove::Outcome move(QStringList &slots, const QString &key, qsizetype to, int rows = 5,
                                  qint64 *writes = nullptr)
    {
        SlotEdit edit(slots);
        const auto outcome = SlotMove::moveKeyInSlots(edit, key, to, rows);
        if (writes)
            *writes = edit.writes();
        return outcome;
    }

private Q_SLOTS:
    void dropOnOwnCellChangesNothing()
    {
        LogCapture log;
        QStringList slots = keys({"A:/p", "A:/k"});
        qint64 writes = -1;
        QCOMPARE(move(slots, "A:/k", 1, 5, &writes), SlotMove::Outcome::Unchanged);
        QCOMPARE(slots, keys({"A:/p", "A:/k"}));
        QCOMPARE(writes, 0);
        QVERIFY(log.contains("🔄 [DRAG LOG] A:/k dropped on same slot 1, no movement needed"));
    }

    void rowShiftsRightWhenNoEmptyCellOnTheLeft()
    {
        // Row 0: P, Q, empty, R; K comes from row 1.
        LogCapture log;
        QStringList slots = keys({"A:/P", "A:/Q", "", "A:/R", "A:/a", "A:/b", "A:/c", "A:/d", "A:/K"});
        QCOMPARE(move(slots, "A:/K", 1), SlotMove::Outcome::Moved);
        QCOMPARE(slots.mid(0, 4), keys({"A:/P", "A:/K", "A:/Q", "A:/R"}));
        QCOMPARE(slots.at(8), QString());
        QVERIFY(log.contains("🔄 [DRAG LOG] Target slot 1 is occupied by A:/Q, attempting shift operation"));
        QVERIFY(log.contains("🔄 [DRAG LOG] Will shift right, empty slot found at 2"));
        QVERIFY(log.contains("🔄 [DRAG LOG] Shifted A:/Q from slot 1 to slot 2"));
        QVERIFY(log.contains("🔄 [DRAG LOG] Placed A:/K at target slot 1"));
    }

    void rowShiftPrefersTheLeftSide()
    {
        LogCapture log;
        QStringList slots = keys({"", "A:/a", "A:/T", "", "A:/b", "A:/c", "A:/d", "A:/e", "A:/K"});
        move(slots, "A:/K", 2);
        QCOMPARE(slots.mid(0, 4), keys({"A:/a", "A:/T", "A:/K", ""}));
        QVERIFY(log.contains("🔄 [DRAG LOG] Will shift left, empty slot found at 0"));
        QVERIFY(log.contains("🔄 [DRAG LOG] Executing left shift operation"));
        // Shifts run from the empty cell towards the target.
        QCOMPARE(log.matching("🔄 [DRAG LOG] Shifted"),
                 QStringList({"🔄 [DRAG LOG] Shifted A:/a from slot 1 to slot 0",
                              "🔄 [DRAG LOG] Shifted A:/T from slot 2 to slot 1"}));
    }

    void fullRowSendsOccupantToTheEmptyCellAfterTarget()
    {
        // rows = 3: the page is cells 0-23. Row 8-15 is full; the page has an
        // empty cell before the target's row (2) and one after it (20).
        LogCapture log;
        QStringList slots = filled(24);
        slots[2] = QString();
        slots[20] = QString();
        slots.append(QStringLiteral("A:/K")); // on page 1
        QCOMPARE(move(slots, "A:/K", 9, 3), SlotMove::Outcome::Moved);
        QVERIFY(log.contains("🔄 [DRAG LOG] No empty slots in row, searching for empty slots on page"));
        QVERIFY(log.contains("🔄 [DRAG LOG] Found empty slot at 20, moving displaced item there"));
        QVERIFY(log.contains("🔄 [DRAG LOG] Moved: A:/K to 9, A:/x9 to 20"));
        QCOMPARE(slots.at(9), QStringLiteral("A:/K"));
        QCOMPARE(slots.at(20), QStringLiteral("A:/x9"));
        QCOMPARE(slots.at(24), QString());
        QCOMPARE(slots.at(2), QString());

        // With only the cell before the target free, the search goes backwards.
        slots[20] = QStringLiteral("A:/x20");
        slots[24] = QStringLiteral("A:/L");
        move(slots, "A:/L", 10, 3);
        QCOMPARE(slots.at(2), QStringLiteral("A:/x10"));
        QCOMPARE(slots.at(10), QStringLiteral("A:/L"));
    }

    void fullPageSwaps()
    {
        LogCapture log;
        QStringList slots = filled(8); // rows = 1: the page is 8 cells
        slots.append(QStringLiteral("A:/K"));
        QCOMPARE(move(slots, "A:/K", 3, 1), SlotMove::Outcome::Moved);
        QCOMPARE(slots.at(3), QStringLiteral("A:/K"));
        QCOMPARE(slots.at(8), QStringLiteral("A:/x3"));
        QVERIFY(log.contains("🔄 [DRAG LOG] No empty slots found on page, performing simple swap"));
        QVERIFY(log.contains("🔄 [DRAG LOG] Swapped: A:/K moved to 3, A:/x3 moved to 8"));
    }

    void simpleMoveOntoEmptyOrMalformedCell()
    {
        LogCapture log;
        QStringList slots = keys({"A:/k", "A:", "", "F:  "});
        qint64 writes = 0;
        move(slots, "A:/k", 1, 5, &writes);
        QCOMPARE(slots, keys({"", "A:/k", "", "F:  "}));
        QCOMPARE(writes, 2);
        QVERIFY(log.contains("🔄 [DRAG LOG] Simple move: A:/k moved from 0 to 1 (target was empty or malformed)"));
        move(slots, "A:/k", 3);
        QCOMPARE(slots, keys({"", "", "", "A:/k"}));
    }

    void duplicateAtTargetKeepsOne()
    {
        LogCapture log;
        QStringList slots = keys({"A:/k", "A:/p", "A:/k"});
        move(slots, "A:/k", 2);
        QCOMPARE(slots, keys({"", "A:/p", "A:/k"}));
        QVERIFY(log.contains("🔄 [DRAG LOG] Duplicate detected at target=2. Cleared original slot 0 and kept A:/k at target"));
    }

    void negativeTargetIsZeroAndFarTargetPads()
    {
        QStringList slots = keys({"", "A:/k"});
        move(slots, "A:/k", -7);
        QCOMPARE(slots, keys({"A:/k", ""}));
        qint64 writes = 0;
        move(slots, "A:/k", 40, 5, &writes);
        QCOMPARE(slots.size(), 41);
        QCOMPARE(slots.at(40), QStringLiteral("A:/k"));
        QCOMPARE(slots.at(0), QString());
        QCOMPARE(writes, 3); // the padding, the target, the old cell
    }

    void keyNotOnGridIsPlacedAndOccupantRelocatedForwardOnThePage()
    {
        LogCapture log;
        QStringList slots = keys({"", "A:/a", "A:/b", "", "A:/c"});
        move(slots, "WF:1", 1, 1);
        QCOMPARE(slots.mid(0, 5), keys({"", "WF:1", "A:/b", "A:/a", "A:/c"}));
        QCOMPARE(slots.size(), 8); // padded to the end of the page
        QVERIFY(log.contains("🔄 [DRAG LOG] Item WF:1 not found in slots, adding to target position 1"));
        QVERIFY(log.contains("🔄 [DRAG LOG] Target slot 1 was occupied by A:/a, need to relocate it"));
        QVERIFY(log.contains("🔄 [DRAG LOG] Moved displaced item A:/a to empty slot 3"));

        log.clear();
        QStringList empty = keys({""});
        move(empty, "WF:2", 0);
        QVERIFY(log.contains("🔄 [DRAG LOG] Target slot 0 was empty, simple placement completed"));
    }

    void keyNotOnGridOnAFullPageGoesToTheNextPageStart()
    {
        LogCapture log;
        QStringList slots = filled(8);
        slots[0] = QString(); // before the target: forward search only, so unused
        move(slots, "WF:1", 2, 1);
        QCOMPARE(slots.size(), 9);
        QCOMPARE(slots.at(8), QStringLiteral("A:/x2"));
        QVERIFY(slots.at(0).isEmpty());
        QVERIFY(log.contains("🔄 [DRAG LOG] No empty slots on page, moved A:/x2 to new page at slot 8"));

        // Something already stands at the next page's first cell: it is kept.
        QStringList longer = filled(12);
        longer[10] = QString();
        move(longer, "WF:2", 2, 1);
        QCOMPARE(longer.at(8), QStringLiteral("A:/x8"));
        QCOMPARE(longer.at(10), QStringLiteral("A:/x2"));
    }

    void shiftThatCarriesTheDraggedKeyNeverDuplicatesIt()
    {
        // K stands between the empty cell and the target: the left shift carries it.
        LogCapture log;
        QStringList slots = keys({"", "A:/P", "A:/K", "A:/Q", "A:/a", "A:/b", "A:/c", "A:/d"});
        move(slots, "A:/K", 3);
        QCOMPARE(slots.count("A:/K"), 1);
        QCOMPARE(slots.at(3), QStringLiteral("A:/K"));
        QVERIFY(slots.contains("A:/P") && slots.contains("A:/Q"));
        QVERIFY(log.contains("🔄 [DRAG LOG] Skipped clearing original slot 2 after shift because it no longer contains A:/K"));

        QStringList right = keys({"A:/P", "A:/K", "", "A:/a", "A:/b", "A:/c", "A:/d", "A:/e"});
        move(right, "A:/K", 0);
        QCOMPARE(right.count("A:/K"), 1);
        QCOMPARE(right.at(0), QStringLiteral("A:/K"));
        QVERIFY(right.contains("A:/P"));
    }

    void widgetCellsAreWallsAndRefusedTargets()
    {
        // Empty cell 0 lies behind a widget's cells 1-2: the row cannot shift through them.
        QStringList slots = keys({"", "WB:w", "WB:w", "A:/T", "A:/a", "A:/b", "A:/c", "A:/d", "A:/K"});
        move(slots, "A:/K", 3, 1);
        QCOMPARE(slots.mid(1, 2), keys({"WB:w", "WB:w"}));
        QCOMPARE(slots.at(3), QStringLiteral("A:/K"));
        QCOMPARE(slots.at(0), QStringLiteral("A:/T")); // found on the page instead

        LogCapture log;
        QStringList before = slots;
        QCOMPARE(move(slots, "A:/K", 1), SlotMove::Outcome::Refused);
        QCOMPARE(slots, before);
        QCOMPARE(move(slots, "W:w", 5), SlotMove::Outcome::Refused);
        QCOMPARE(slots, before);
    }
};

QTEST_GUILESS_MAIN(SlotMoveTest)
#include "tst_slot_move.moc"
