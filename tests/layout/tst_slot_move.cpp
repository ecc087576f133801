#include "LayoutTestSupport.h"
#include "layout/SlotMove.h"

#include <QTest>

using LayoutTest::keys;

// The main grid's drag-and-drop move, run directly on slot lists. Rows are
// 8 cells wide and pages 8 x rows, whatever the configured columns.
class SlotMoveTest : public QObject {
    Q_OBJECT

    // count keys "A:/x0" ..., with the given cells left empty.
    static QStringList filled(int count, std::initializer_list<int> holes = {})
    {
        QStringList out;
        for (int i = 0; i < count; ++i)
            out.append(QStringLiteral("A:/x%1").arg(i));
        for (int h : holes)
            out[h] = QString();
        return out;
    }
    static QStringList with(QStringList slots, std::initializer_list<std::pair<int, const char *>> cells)
    {
        for (const auto &[index, key] : cells) {
            while (slots.size() <= index)
                slots.append(QString());
            slots[index] = QString::fromUtf8(key);
        }
        return slots;
    }

private Q_SLOTS:
    void move_data()
    {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("to");
        QTest::addColumn<int>("rows");
        QTest::addColumn<QStringList>("after");
        QTest::addColumn<int>("writes");

        QTest::newRow("own cell: nothing written") << keys({"A:/p", "A:/k"}) << "A:/k" << 1 << 5
                                                   << keys({"A:/p", "A:/k"}) << 0;
        // Row 0: P, Q, empty, R; K comes from row 1. Nothing empty on the left of 1.
        QTest::newRow("row shifts right")
            << keys({"A:/P", "A:/Q", "", "A:/R", "A:/a", "A:/b", "A:/c", "A:/d", "A:/K"}) << "A:/K" << 1 << 5
            << keys({"A:/P", "A:/K", "A:/Q", "A:/R", "A:/a", "A:/b", "A:/c", "A:/d", ""}) << 3;
        QTest::newRow("left side wins over right")
            << keys({"", "A:/a", "A:/T", "", "A:/b", "A:/c", "A:/d", "A:/e", "A:/K"}) << "A:/K" << 2 << 5
            << keys({"A:/a", "A:/T", "A:/K", "", "A:/b", "A:/c", "A:/d", "A:/e", ""}) << 4;
        QTest::newRow("shift carrying the key left never duplicates it")
            << keys({"", "A:/P", "A:/K", "A:/Q", "A:/a", "A:/b", "A:/c", "A:/d"}) << "A:/K" << 3 << 5
            << keys({"A:/P", "", "A:/Q", "A:/K", "A:/a", "A:/b", "A:/c", "A:/d"}) << 5;
        QTest::newRow("shift carrying the key right never duplicates it")
            << keys({"A:/P", "A:/K", "", "A:/a", "A:/b", "A:/c", "A:/d", "A:/e"}) << "A:/K" << 0 << 5
            << keys({"A:/K", "A:/P", "", "A:/a", "A:/b", "A:/c", "A:/d", "A:/e"}) << 4;
        // rows = 3: the page is cells 0-23; row 8-15 is full; holes at 2 and 20.
        QTest::newRow("full row: occupant to the hole after the target")
            << with(filled(24, {2, 20}), {{24, "A:/K"}}) << "A:/K" << 9 << 3
            << with(filled(24, {2}), {{9, "A:/K"}, {20, "A:/x9"}, {24, ""}}) << 3;
        QTest::newRow("full row: else the hole before it")
            << with(filled(24, {2}), {{24, "A:/K"}}) << "A:/K" << 10 << 3
            << with(filled(24), {{2, "A:/x10"}, {10, "A:/K"}, {24, ""}}) << 3;
        QTest::newRow("full page swaps") << with(filled(8), {{8, "A:/K"}}) << "A:/K" << 3 << 1
                                         << with(filled(8), {{3, "A:/K"}, {8, "A:/x3"}}) << 2;
        // rows = 2: pages are 16 cells, so neither hole (14, 35) is on the
        // target's page 16-31: a swap, where 5 rows would have used 35.
        QTest::newRow("two rows: holes on other pages do not count")
            << with(filled(40, {14, 35}), {{40, "A:/K"}}) << "A:/K" << 17 << 2
            << with(filled(40, {14, 35}), {{17, "A:/K"}, {40, "A:/x17"}}) << 2;
        // rows = 4: page 0 is cells 0-31, so 35 is not on it and the search
        // goes back to 2, where 5 rows would have gone forward to 35.
        QTest::newRow("four rows: a page is 32 cells")
            << with(filled(40, {2, 35}), {{40, "A:/K"}}) << "A:/K" << 12 << 4
            << with(filled(40, {35}), {{2, "A:/x12"}, {12, "A:/K"}, {40, ""}}) << 3;
        QTest::newRow("rows below one count as one")
            << with(filled(8), {{8, "A:/K"}}) << "A:/K" << 3 << 0
            << with(filled(8), {{3, "A:/K"}, {8, "A:/x3"}}) << 2;
        QTest::newRow("onto an empty or malformed cell") << keys({"A:/k", "A:", "", "F:  "}) << "A:/k" << 1 << 5
                                                         << keys({"", "A:/k", "", "F:  "}) << 2;
        QTest::newRow("onto a blank-payload key") << keys({"", "", "", "F:  ", "A:/k"}) << "A:/k" << 3 << 5
                                                  << keys({"", "", "", "A:/k", ""}) << 2;
        QTest::newRow("duplicate at target keeps one") << keys({"A:/k", "A:/p", "A:/k"}) << "A:/k" << 2 << 5
                                                       << keys({"", "A:/p", "A:/k"}) << 1;
        QTest::newRow("negative target is cell 0") << keys({"", "A:/k"}) << "A:/k" << -7 << 5 << keys({"A:/k", ""})
                                                   << 2;
        QTest::newRow("far target pads the list")
            << keys({"A:/k"}) << "A:/k" << 40 << 5 << with(QStringList(41, QString()), {{40, "A:/k"}}) << 3;
        QTest::newRow("new key: occupant forward on the page")
            << keys({"", "A:/a", "A:/b", "", "A:/c"}) << "WF:1" << 1 << 1
            << keys({"", "WF:1", "A:/b", "A:/a", "A:/c", "", "", ""}) << 3;
        QTest::newRow("new key on an empty cell") << keys({""}) << "WF:2" << 0 << 5 << keys({"WF:2"}) << 1;
        // The hole at 0 lies before the target: the forward search does not see it.
        QTest::newRow("new key on a full page: occupant to the next page")
            << filled(8, {0}) << "WF:1" << 2 << 1 << with(filled(8, {0}), {{2, "WF:1"}, {8, "A:/x2"}}) << 3;
        QTest::newRow("new key: the next page's first cell is kept")
            << filled(12, {10}) << "WF:2" << 2 << 1 << with(filled(12), {{2, "WF:2"}, {10, "A:/x2"}}) << 2;
        // Cells 1-2 are a widget's: the row cannot shift through them to 0.
        QTest::newRow("widget cells are walls")
            << keys({"", "WB:w", "WB:w", "A:/T", "A:/a", "A:/b", "A:/c", "A:/d", "A:/K"}) << "A:/K" << 3 << 1
            << keys({"A:/T", "WB:w", "WB:w", "A:/K", "A:/a", "A:/b", "A:/c", "A:/d", ""}) << 3;
    }

    void move()
    {
        QFETCH(QStringList, before);
        QFETCH(QString, key);
        QFETCH(int, to);
        QFETCH(int, rows);
        QFETCH(QStringList, after);
        QFETCH(int, writes);
        SlotEdit edit(before);
        const auto outcome = SlotMove::moveKeyInSlots(edit, key, to, rows);
        QVERIFY(outcome);
        QCOMPARE(before, after);
        QCOMPARE(*outcome, writes == 0 ? SlotMove::Outcome::Unchanged : SlotMove::Outcome::Moved);
        QCOMPARE(edit.writes(), qint64(writes));
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("to");
        QTest::addColumn<LayoutRefusal>("refusal");
        QTest::newRow("onto a widget's anchor") << "A:/K" << 0 << LayoutRefusal::WidgetArea;
        QTest::newRow("onto a widget's block") << "A:/K" << 1 << LayoutRefusal::WidgetArea;
        QTest::newRow("a widget key") << "W:w" << 3 << LayoutRefusal::WidgetKey;
        QTest::newRow("the empty key") << "" << 3 << LayoutRefusal::EmptyKey;
    }

    void refusals()
    {
        QFETCH(QString, key);
        QFETCH(int, to);
        QFETCH(LayoutRefusal, refusal);
        QStringList slots = keys({"W:w", "WB:w", "A:/K", ""});
        const QStringList before = slots;
        SlotEdit edit(slots);
        const auto outcome = SlotMove::moveKeyInSlots(edit, key, to, 5);
        QVERIFY(!outcome);
        QCOMPARE(outcome.error(), refusal);
        QCOMPARE(slots, before);
        QCOMPARE(edit.writes(), 0);
    }
};

QTEST_GUILESS_MAIN(SlotMoveTest)
#include "tst_slot_move.moc"
