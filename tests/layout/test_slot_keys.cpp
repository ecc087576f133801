// The slot-key grammar, page arithmetic and key resolution.
#include "layout/GridEntry.h"
#include "layout/PageGeometry.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"

#include <QTest>

using SlotKey::Kind;

class SlotKeysTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void kindsFollowThePrefixOrder_data();
    void kindsFollowThePrefixOrder();
    void malformedKeys_data();
    void malformedKeys();
    void buildersUseCanonicalUpperCaseUuids();
    void collectingAppsSkipsOtherKinds();
    void pageArithmeticAndPadding();
    void resolutionOfEveryKind();
};

void SlotKeysTest::kindsFollowThePrefixOrder_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("payload");
    QTest::newRow("empty") << "" << int(Kind::Empty) << "";
    QTest::newRow("app") << "A:/Applications/Mail.app" << int(Kind::App) << "/Applications/Mail.app";
    QTest::newRow("bare path") << "/Applications/Mail.app" << int(Kind::App) << "/Applications/Mail.app";
    QTest::newRow("folder") << "F:ABC" << int(Kind::Folder) << "ABC";
    QTest::newRow("anchor") << "W:ABC" << int(Kind::WidgetAnchor) << "ABC";
    QTest::newRow("block is not an anchor") << "WB:ABC" << int(Kind::WidgetBlock) << "ABC";
    QTest::newRow("workflow is not an anchor") << "WF:ABC" << int(Kind::Workflow) << "ABC";
    QTest::newRow("payload trimmed") << "A: /x/Y.app \n" << int(Kind::App) << "/x/Y.app";
    QTest::newRow("prefixes are case-sensitive") << "a:/x" << int(Kind::App) << "a:/x";
}

void SlotKeysTest::kindsFollowThePrefixOrder()
{
    QFETCH(QString, key);
    QFETCH(int, kind);
    QFETCH(QString, payload);
    QCOMPARE(int(SlotKey::kindOf(key)), kind);
    QCOMPARE(SlotKey::payload(key), payload);
    QCOMPARE(SlotKey::isWidgetMarker(key), kind == int(Kind::WidgetAnchor) || kind == int(Kind::WidgetBlock));
}

void SlotKeysTest::malformedKeys_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("malformedOnLoad");
    QTest::addColumn<bool>("emptyForMoves");
    QTest::newRow("exactly A:") << "A:" << true << true;
    QTest::newRow("exactly F:") << "F:" << true << true;
    QTest::newRow("blank app payload") << "A: \t\n" << true << true;
    QTest::newRow("blank folder payload") << "F:  " << true << true;
    QTest::newRow("blank workflow payload") << "WF: " << false << true;
    QTest::newRow("empty") << "" << false << true;
    QTest::newRow("good app") << "A:/x.app" << false << false;
    QTest::newRow("bare path") << "/x.app" << false << false;
}

void SlotKeysTest::malformedKeys()
{
    QFETCH(QString, key);
    QFETCH(bool, malformedOnLoad);
    QFETCH(bool, emptyForMoves);
    QCOMPARE(SlotKey::isMalformedAppOrFolder(key), malformedOnLoad);
    QCOMPARE(SlotKey::isEmptyOrMalformed(key), emptyForMoves);
}

void SlotKeysTest::buildersUseCanonicalUpperCaseUuids()
{
    const QUuid id = QUuid::fromString(QStringLiteral("6f1a2b3c-aaaa-4bbb-8ccc-ddddeeeeffff"));
    QCOMPARE(SlotKey::folder(id), QStringLiteral("F:6F1A2B3C-AAAA-4BBB-8CCC-DDDDEEEEFFFF"));
    QCOMPARE(SlotKey::widgetBlock(id), QStringLiteral("WB:6F1A2B3C-AAAA-4BBB-8CCC-DDDDEEEEFFFF"));
    QCOMPARE(SlotKey::workflow(id), QStringLiteral("WF:6F1A2B3C-AAAA-4BBB-8CCC-DDDDEEEEFFFF"));
    QCOMPARE(Uuids::fromText(SlotKey::idText(SlotKey::widgetAnchor(id))), std::optional<QUuid>(id));
    QVERIFY(!Uuids::fromText(QStringLiteral("nope")));
}

void SlotKeysTest::collectingAppsSkipsOtherKinds()
{
    const QStringList slots{QStringLiteral("A:/a.app"), QStringLiteral("/b.app"), QStringLiteral("F:X"),
                            QStringLiteral("W:X"), QStringLiteral("WB:X"), QStringLiteral("WF:X"), QString()};
    QCOMPARE(SlotKey::appPathsIn(slots), (QStringList{QStringLiteral("/a.app"), QStringLiteral("/b.app")}));
}

void SlotKeysTest::pageArithmeticAndPadding()
{
    const PageGeometry grid{7, 5};
    QCOMPARE(grid.capacity(), 35);
    QCOMPARE(grid.pageOf(34), 0);
    QCOMPARE(grid.pageOf(35), 1);
    QCOMPARE(grid.localIndex(40), 5);
    QCOMPARE(grid.absoluteSlot(2, 3), 73);
    QCOMPARE(grid.pageCount(0), 1);
    QCOMPARE(grid.pageCount(36), 2);

    QStringList slots(12, QStringLiteral("A:/x"));
    SlotList::write(slots, 40, QStringLiteral("A:/new"));
    QCOMPARE(slots.size(), 41);
    QVERIFY(slots.at(12).isEmpty() && slots.at(39).isEmpty());
    QCOMPARE(slots.at(40), QStringLiteral("A:/new"));
    QCOMPARE(SlotList::at(slots, 99), QString());
}

void SlotKeysTest::resolutionOfEveryKind()
{
    const AppItem mail{QUuid::createUuid(), QStringLiteral("/Applications/Mail.app"), QStringLiteral("Mail")};
    FolderItem folder;
    folder.id = QUuid::createUuid();
    folder.name = QStringLiteral("F");
    const WidgetItem clock{QUuid::createUuid(), QStringLiteral("clock"), WidgetSize::size2x2, {}};
    WorkflowItem flow;
    flow.id = QUuid::createUuid();
    const GridLookup lookup = GridLookup::build({mail}, {folder}, {clock}, {flow});

    QVERIFY(!lookup.resolve(QString()));
    QCOMPARE(std::get<AppItem>(*lookup.resolve(QStringLiteral("A:/Applications/Mail.app"))), mail);
    QCOMPARE(std::get<AppItem>(*lookup.resolve(QStringLiteral("/Applications/Mail.app"))), mail);
    QVERIFY(!lookup.resolve(QStringLiteral("A:/Applications/Gone.app"))); // stale until clean-up
    QCOMPARE(std::get<FolderItem>(*lookup.resolve(folder.key())), folder);
    QCOMPARE(entryId(*lookup.resolve(SlotKey::widgetAnchor(clock.id))), clock.id);
    QVERIFY(!lookup.resolve(SlotKey::widgetBlock(clock.id)));
    QCOMPARE(entryId(*lookup.resolve(flow.key())), flow.id);
    QVERIFY(!lookup.resolve(SlotKey::folder(QUuid::createUuid())));
}

QTEST_GUILESS_MAIN(SlotKeysTest)
#include "test_slot_keys.moc"
