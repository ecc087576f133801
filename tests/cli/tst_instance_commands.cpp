// What a forwarded request turns into in the running launcher, before
// anything runs: only verbs the table forwards, with their arguments as
// sent; everything else is answered without touching the layout.
#include "cli/InstanceCommands.h"

#include <QJsonArray>
#include <QTest>

using Kind = InstanceCommands::Invocation::Kind;
using Overlay = Verbs::OverlayAction;

class InstanceCommandsTest : public QObject {
    Q_OBJECT

    static QJsonObject cli(const QJsonArray &args) { return {{"command", "cli"}, {"args", args}}; }

private Q_SLOTS:
    void requestsBecomeInvocations_data()
    {
        QTest::addColumn<QJsonObject>("request");
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<Overlay>("overlay");
        QTest::addColumn<QStringList>("args");
        QTest::newRow("activate") << QJsonObject{{"command", "activate"}} << Kind::Activate << Overlay::None
                                  << QStringList();
        QTest::newRow("hide alone hides the overlay")
            << cli({"hide"}) << Kind::Overlay << Overlay::Hide << QStringList{"hide"};
        QTest::newRow("hide PATH hides an app")
            << cli({"hide", "/a.desktop"}) << Kind::Layout << Overlay::None << QStringList{"hide", "/a.desktop"};
        QTest::newRow("folder create keeps every argument")
            << cli({"folder", "create", "Work", "--slot", "3", "/a.desktop"}) << Kind::Layout << Overlay::None
            << QStringList{"folder", "create", "Work", "--slot", "3", "/a.desktop"};
    }
    void requestsBecomeInvocations()
    {
        QFETCH(QJsonObject, request);
        QFETCH(Kind, kind);
        QFETCH(Overlay, overlay);
        QFETCH(QStringList, args);
        const auto invocation = InstanceCommands::interpret(request);
        QCOMPARE(invocation.kind, kind);
        QCOMPARE(invocation.overlay, overlay);
        QCOMPARE(invocation.args, args);
        QVERIFY(invocation.reply.isEmpty());
    }

    // Refusals are answered as the client expects: an unknown request with
    // an error, a command line the launcher does not take as a usage error.
    void otherRequestsAreRefused_data()
    {
        QTest::addColumn<QJsonObject>("request");
        QTest::addColumn<QString>("error"); // the "error" field, or empty for a usage reply
        QTest::addColumn<QString>("usage"); // how the usage error starts
        const QString unknown = QStringLiteral("tillmora: unknown command '");
        const QString notStrings = QStringLiteral("tillmora: arguments must be strings");
        QTest::newRow("no command") << QJsonObject{} << "unknown request" << "";
        QTest::newRow("unknown command") << QJsonObject{{"command", "quit"}} << "unknown request" << "";
        QTest::newRow("command not a string") << QJsonObject{{"command", 1}} << "unknown request" << "";
        QTest::newRow("defaults is never forwarded") << cli({"defaults", "read"}) << "" << unknown;
        QTest::newRow("--help is never forwarded") << cli({"--help"}) << "" << unknown;
        QTest::newRow("toggle takes no arguments") << cli({"toggle", "now"}) << "" << unknown;
        QTest::newRow("no arguments") << QJsonObject{{"command", "cli"}} << "" << unknown;
        QTest::newRow("a number among the arguments") << cli({"move", "A:/a.desktop", 0}) << "" << notStrings;
        QTest::newRow("an object among the arguments")
            << cli({"folder", "create", QJsonObject{}, "/a.desktop"}) << "" << notStrings;
    }
    void otherRequestsAreRefused()
    {
        QFETCH(QJsonObject, request);
        QFETCH(QString, error);
        QFETCH(QString, usage);
        const auto invocation = InstanceCommands::interpret(request);
        QCOMPARE(invocation.kind, Kind::Refused);
        QVERIFY(invocation.args.isEmpty());
        if (!error.isEmpty()) {
            QCOMPARE(invocation.reply.value("error").toString(), error);
            return;
        }
        QCOMPARE(invocation.reply.value("exitCode").toInt(), 2);
        QVERIFY2(invocation.reply.value("err").toString().startsWith(usage),
                 qPrintable(invocation.reply.value("err").toString()));
    }
};

QTEST_GUILESS_MAIN(InstanceCommandsTest)
#include "tst_instance_commands.moc"
