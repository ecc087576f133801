#include "cli/Verbs.h"

#include <QTest>

// The verb table that the parser, the forwarding to a running launcher and
// --help share.
class VerbsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void argumentsFindTheirVerb_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("synopsis"); // empty: no verb
        QTest::addColumn<bool>("forwarded");
        QTest::newRow("hide alone is the overlay's") << QStringList{"hide"} << "hide" << true;
        QTest::newRow("hide PATH is the app's") << QStringList{"hide", "/a.app"} << "hide PATH" << true;
        QTest::newRow("toggle takes no arguments") << QStringList{"toggle", "x"} << "" << false;
        QTest::newRow("-h is --help") << QStringList{"-h"} << "--help" << false;
        QTest::newRow("help is --help") << QStringList{"help", "me"} << "--help" << false;
        QTest::newRow("defaults stays here") << QStringList{"defaults", "read"} << "defaults read|write|delete ..."
                                             << false;
        QTest::newRow("folder") << QStringList{"folder", "create", "X"} << "folder create|move|rename|delete|add-system|remove-system ..."
                                << true;
        QTest::newRow("workflow") << QStringList{"workflow", "launch", "X"} << "workflow list|create|edit|delete|launch ..."
                                  << true;
        QTest::newRow("unknown word") << QStringList{"frobnicate"} << "" << false;
        QTest::newRow("nothing") << QStringList{} << "" << false;
    }
    void argumentsFindTheirVerb()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, synopsis);
        QFETCH(bool, forwarded);
        const Verbs::Verb *verb = Verbs::find(args);
        QCOMPARE(verb ? QString::fromLatin1(verb->synopsis) : QString(), synopsis);
        QCOMPARE(verb && verb->forwarded, forwarded);
    }

    // A verb that changes the layout while a launcher runs must be carried
    // out there, or two writers would race over the same settings.
    void everyRowIsConsistent()
    {
        for (const Verbs::Verb &verb : Verbs::all()) {
            const bool onLayout = verb.layout || verb.withContext || verb.spaces;
            const int ways = (verb.layout ? 1 : 0) + (verb.withContext ? 1 : 0) + (verb.spaces ? 1 : 0)
                             + (verb.local ? 1 : 0) + (verb.overlay != Verbs::OverlayAction::None ? 1 : 0);
            QVERIFY2(ways <= 1, verb.name);
            QVERIFY2(!verb.changesLayout || (verb.forwarded && onLayout), verb.name);
            QVERIFY2(!verb.forwarded || !verb.local, verb.name);
            QVERIFY2(Verbs::helpText().contains(QLatin1String(verb.name)), verb.name);
        }
    }
};

QTEST_GUILESS_MAIN(VerbsTest)
#include "tst_verbs.moc"
