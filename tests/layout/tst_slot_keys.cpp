#include "layout/GridEntry.h"
#include "layout/PageGeometry.h"
#include "layout/SlotKey.h"
#include "layout/Uuids.h"

#include <QJsonDocument>
#include <QTest>

// The slot-key grammar, the folder record's optional fields and key resolution.
class SlotKeysTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void widgetAndWorkflowPrefixesDoNotShadowEachOther()
    {
        QCOMPARE(SlotKey::kindOf("WB:1"), SlotKey::Kind::WidgetBlock);
        QCOMPARE(SlotKey::kindOf("WF:1"), SlotKey::Kind::Workflow);
        QCOMPARE(SlotKey::kindOf("W:1"), SlotKey::Kind::WidgetAnchor);
        QVERIFY(!SlotKey::isWidgetMarker("WF:1"));
        QCOMPARE(SlotKey::idText("WB: 1\n"), QStringLiteral("1"));
        QCOMPARE(SlotKey::kindOf("/Applications/Old.app"), SlotKey::Kind::App);
        QCOMPARE(SlotKey::appPath("/Applications/Old.app"), QStringLiteral("/Applications/Old.app"));
        QVERIFY(SlotKey::isMalformedAppOrFolder("A: \t\n"));
        QVERIFY(!SlotKey::isMalformedAppOrFolder("WF:"));
        QVERIFY(SlotKey::isEmptyOrMalformed("WF:"));
    }

    void folderWithoutOptionalFieldsDecodesToDefaults()
    {
        const auto json = QJsonDocument::fromJson(
            R"({"id":"6F1B8C9E-8E2A-4C3B-9B1F-1E2D3C4B5A69","name":"Work","appPaths":["/a.app","/b.app"]})");
        const auto folder = FolderItem::fromJson(json.object());
        QVERIFY(folder);
        QCOMPARE(folder->slots, QStringList({"/a.app", "/b.app"}));
        QVERIFY(folder->systemFolderPaths.isEmpty());
        QVERIFY(folder->originalGridSlots.isEmpty());
        QString error;
        QVERIFY(!FolderItem::fromJson(QJsonDocument::fromJson(R"({"id":"6F1B8C9E-8E2A-4C3B-9B1F-1E2D3C4B5A69","appPaths":[]})").object(), &error));
        QVERIFY(error.contains("name"));
    }

    void writingPastTheEndPads()
    {
        QStringList slots(12, QStringLiteral("A:/x.app"));
        SlotList::write(slots, 40, "F:1");
        QCOMPARE(slots.size(), 41);
        QCOMPARE(slots.at(39), QString());
        QCOMPARE(slots.at(40), QStringLiteral("F:1"));
    }

    void keysResolveToEntriesOrEmpty()
    {
        const AppItem app{QUuid::createUuid(), "/a.app", "A"};
        const WidgetItem widget{QUuid::createUuid(), "clock", WidgetSize::size2x2, {}};
        const GridLookup lookup = GridLookup::build({app}, {}, {widget}, {});
        QVERIFY(std::holds_alternative<AppItem>(*lookup.resolve("A:/a.app")));
        QVERIFY(std::holds_alternative<AppItem>(*lookup.resolve("/a.app")));
        QVERIFY(!lookup.resolve("A:/gone.app"));
        QVERIFY(std::holds_alternative<WidgetItem>(*lookup.resolve(SlotKey::widgetAnchor(widget.id))));
        QVERIFY(!lookup.resolve(SlotKey::widgetBlock(widget.id)));
        QVERIFY(!lookup.resolve(SlotKey::folder(QUuid::createUuid())));
        QVERIFY(!lookup.resolve(QString()));
    }
};

QTEST_GUILESS_MAIN(SlotKeysTest)
#include "tst_slot_keys.moc"
