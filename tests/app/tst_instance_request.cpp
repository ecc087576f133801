// A request line as the running launcher takes it: the 1 MiB cap counts the
// newline, a line without one is not a request, and anything that is not a
// JSON object reaches the handler as an empty request.
#include "app/InstanceRequest.h"

#include <QJsonArray>
#include <QTest>

using InstanceRequest::Refusal;

class InstanceRequestTest : public QObject {
    Q_OBJECT

    // A JSON object line of exactly size bytes, newline included.
    static QByteArray lineOfSize(qsizetype size)
    {
        const QByteArray head = "{\"command\":\"cli\",\"args\":[\"";
        const QByteArray tail = "\"]}\n";
        return head + QByteArray(size - head.size() - tail.size(), 'x') + tail;
    }

private Q_SLOTS:
    void theCapCountsTheWholeLine()
    {
        const auto atCap = InstanceRequest::parse(lineOfSize(InstanceRequest::kMaxBytes));
        QVERIFY(std::holds_alternative<InstanceRequest::Request>(atCap));
        QCOMPARE(std::get<InstanceRequest::Request>(atCap).object.value("args").toArray().at(0).toString().size(),
                 InstanceRequest::kMaxBytes - 30);

        const auto over = InstanceRequest::parse(lineOfSize(InstanceRequest::kMaxBytes + 1));
        QVERIFY(std::holds_alternative<Refusal>(over));
        QCOMPARE(std::get<Refusal>(over), Refusal::TooLong);
    }

    void linesAreRefusedOrTaken_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<bool>("taken");
        QTest::addColumn<QString>("command"); // of the request handed on
        QTest::addColumn<bool>("hello");
        QTest::newRow("cli") << QByteArray("{\"command\":\"cli\",\"args\":[\"layout\"]}\n") << true << "cli" << false;
        QTest::newRow("hello") << QByteArray("{\"command\":\"hello\"}\n") << true << "hello" << true;
        QTest::newRow("hello in another case is not hello")
            << QByteArray("{\"command\":\"Hello\"}\n") << true << "Hello" << false;
        QTest::newRow("unterminated") << QByteArray("{\"command\":\"hello\"}") << false << "" << false;
        QTest::newRow("empty") << QByteArray() << false << "" << false;
        QTest::newRow("not JSON reaches the handler empty") << QByteArray("hello\n") << true << "" << false;
        QTest::newRow("a list is not a request") << QByteArray("[{\"command\":\"hello\"}]\n") << true << ""
                                                 << false;
        QTest::newRow("trailing bytes after the object")
            << QByteArray("{\"command\":\"hello\"} x\n") << true << "" << false;
    }
    void linesAreRefusedOrTaken()
    {
        QFETCH(QByteArray, line);
        QFETCH(bool, taken);
        QFETCH(QString, command);
        QFETCH(bool, hello);
        const auto parsed = InstanceRequest::parse(line);
        QCOMPARE(std::holds_alternative<InstanceRequest::Request>(parsed), taken);
        if (!taken) {
            QCOMPARE(std::get<Refusal>(parsed), Refusal::Unterminated);
            return;
        }
        const auto &request = std::get<InstanceRequest::Request>(parsed);
        QCOMPARE(request.object.value("command").toString(), command);
        QCOMPARE(request.hello, hello);
    }
};

QTEST_GUILESS_MAIN(InstanceRequestTest)
#include "tst_instance_request.moc"
