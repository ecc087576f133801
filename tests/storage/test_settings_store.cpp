// The settings store: types survive a restart, defaults vs persisted values,
// exact keys, unreadable files, torn writes and two writers.
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "storage/UserDefaultsStore.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <limits>

namespace {

const QString kDomain = QStringLiteral("com.tillmora.test");

// Child modes, run as this same executable with --child:
//   read DIR DOMAIN KEY           prints the value's type name and text
//   writer DIR DOMAIN PREFIX N    writes PREFIX0..N-1, syncing after each
//   limited DIR DOMAIN            a save past a 4 KiB file size limit
//   churn DIR DOMAIN              rewrites one large value forever
int childMain(const QStringList &args)
{
    const QString mode = args.value(0);
    UserDefaultsStore store(args.value(2), std::nullopt, args.value(1));
    if (mode == QLatin1String("read")) {
        const QVariant v = store.persistedObject(args.value(3));
        const QByteArray text = v.typeId() == QMetaType::QByteArray ? v.toByteArray().toHex()
                                : v.typeId() == QMetaType::QVariantList || v.typeId() == QMetaType::QVariantMap
                                    ? QJsonDocument::fromVariant(v).toJson(QJsonDocument::Compact)
                                    : v.toString().toUtf8();
        std::printf("%s|%s\n", v.isValid() ? v.typeName() : "invalid", text.constData());
        return 0;
    }
    if (mode == QLatin1String("writer")) {
        const int n = args.value(4).toInt();
        for (int i = 0; i < n; ++i) {
            store.set(i, args.value(3) + QString::number(i));
            // A save that found the lock busy for too long keeps its
            // changes pending; the next one carries them.
            store.synchronize();
        }
        for (int attempt = 0; attempt < 20; ++attempt)
            if (store.synchronize())
                return 0;
        return 1;
    }
    if (mode == QLatin1String("limited")) {
        // Files may not grow past 4 KiB, so the save fails at its flush.
        const rlimit limit{4096, 4096};
        ::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &limit);
        store.set(QByteArray(64 * 1024, 'x'), QStringLiteral("k"));
        return store.synchronize() ? 0 : 1;
    }
    if (mode == QLatin1String("churn")) {
        for (qint64 round = 0;; ++round) {
            store.set(QByteArray(200000, char('a' + round % 26)), QStringLiteral("blob"));
            store.set(round, QStringLiteral("round"));
            store.synchronize();
        }
    }
    return 2;
}

void startChild(QProcess &p, const QStringList &args)
{
    p.start(QCoreApplication::applicationFilePath(), QStringList{QStringLiteral("--child")} + args);
}

// What a fresh process reads for the key.
QString readInChild(const TempEnvironment &env, const QString &key)
{
    QProcess p;
    startChild(p, {QStringLiteral("read"), env.configDir(), kDomain, key});
    return p.waitForFinished(30000) ? QString::fromUtf8(p.readAllStandardOutput()).trimmed() : QStringLiteral("timeout");
}

QString settingsFile(const TempEnvironment &env) { return env.configDir() + u'/' + kDomain + QStringLiteral(".json"); }

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

QByteArray fileBytes(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("(unreadable)");
}

}

class SettingsStoreTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void valuesKeepTheirTypesAcrossARestart_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("true") << QVariant(true) << "bool|true";
        QTest::newRow("false") << QVariant(false) << "bool|false";
        QTest::newRow("int64 min") << QVariant::fromValue(std::numeric_limits<qint64>::min())
                                   << "qlonglong|-9223372036854775808";
        QTest::newRow("negative int") << QVariant(-5) << "qlonglong|-5";
        QTest::newRow("uint64 max") << QVariant::fromValue(std::numeric_limits<quint64>::max())
                                    << "qulonglong|18446744073709551615";
        QTest::newRow("integral double") << QVariant(2.0) << "double|2";
        QTest::newRow("double") << QVariant(0.1) << "double|0.1";
        QTest::newRow("text") << QVariant(QStringLiteral("Grüße 🚀 \"q\"\n")) << "QString|Grüße 🚀 \"q\"";
        QTest::newRow("bytes") << QVariant(QByteArray("\x00\x01{\xff", 4)) << "QByteArray|00017bff";
        QTest::newRow("date") << QVariant(QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7, 890), Qt::UTC))
                              << "QDateTime|2026-03-04T05:06:07.890Z";
        QTest::newRow("nested") << QVariant(QVariantMap{{"list", QVariantList{1, "two", QVariantMap{{"x", false}}}}})
                                << R"(QVariantMap|{"list":[1,"two",{"x":false}]})";
    }

    void valuesKeepTheirTypesAcrossARestart()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, expected);
        TempEnvironment env;
        {
            UserDefaultsStore store(kDomain, std::nullopt, env.configDir());
            store.set(value, QStringLiteral("k"));
            store.synchronize();
        }
        QCOMPARE(readInChild(env, QStringLiteral("k")), expected);
    }

    void keysRoundTripExactly()
    {
        TempEnvironment env;
        const QStringList keys{QStringLiteral("folder_bookmark_/home/me/My Apps/"), QStringLiteral("columns@DP-1"),
                               QStringLiteral("a//b\\c"), QStringLiteral("100%2F"), QStringLiteral("hotKey.keyCode"),
                               QStringLiteral(" spaced key "), QString()};
        {
            UserDefaultsStore store(kDomain, std::nullopt, env.configDir());
            for (int i = 0; i < keys.size(); ++i)
                store.set(i, keys[i]);
            store.synchronize();
        }
        for (int i = 0; i < keys.size(); ++i)
            QCOMPARE(readInChild(env, keys[i]), QStringLiteral("qlonglong|%1").arg(i));
        // The file is meant to be read by people: keys appear as written.
        const QJsonObject root = QJsonDocument::fromJson(fileBytes(settingsFile(env))).object();
        QVERIFY(root.contains(QStringLiteral("folder_bookmark_/home/me/My Apps/")));
        QCOMPARE(root.size(), keys.size());
    }

    void falseIsNotAbsentAndDefaultsAreNeverWritten()
    {
        TempEnvironment env;
        UserDefaultsStore::registerDefaults({{"test.registered", 42}, {"test.flag", true}});
        {
            UserDefaultsStore store(kDomain, kDomain, env.configDir());
            QCOMPARE(store.object(QStringLiteral("test.registered")).toInt(), 42);
            QVERIFY(!store.persistedObject(QStringLiteral("test.registered")).isValid());
            store.set(false, QStringLiteral("test.flag"));
            QCOMPARE(store.object(QStringLiteral("test.flag")), QVariant(false));
            QCOMPARE(store.persistedObject(QStringLiteral("test.flag")), QVariant(false));
            QVERIFY(!store.persistedObject(QStringLiteral("test.absent")).isValid());
            store.removeObject(QStringLiteral("test.flag"));
            QCOMPARE(store.boolValue(QStringLiteral("test.flag")), true); // the registered default again
            store.set(1, QStringLiteral("test.written"));
            store.synchronize();
        }
        QCOMPARE(QJsonDocument::fromJson(fileBytes(settingsFile(env))).object().keys(),
                 QStringList{QStringLiteral("test.written")});
    }

    void typedReadsRefuseOtherTypes()
    {
        TempEnvironment env;
        UserDefaultsStore store(kDomain, std::nullopt, env.configDir());
        store.set(QStringLiteral("text"), QStringLiteral("s"));
        store.set(QByteArray("xyz"), QStringLiteral("b"));
        store.set(QStringList{QStringLiteral("a"), QStringLiteral("b")}, QStringLiteral("l"));
        store.set(7, QStringLiteral("n"));
        QVERIFY(!store.data(QStringLiteral("s")));
        QCOMPARE(*store.data(QStringLiteral("b")), QByteArray("xyz"));
        QVERIFY(!store.string(QStringLiteral("b")));
        QCOMPARE(*store.string(QStringLiteral("n")), QStringLiteral("7"));
        QVERIFY(!store.array(QStringLiteral("s")));
        QCOMPARE(store.stringList(QStringLiteral("l")), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
        QVERIFY(!store.dictionary(QStringLiteral("l")));
        QVERIFY(store.boolValue(QStringLiteral("n")));
        QVERIFY(!store.boolValue(QStringLiteral("missing")));
    }

    void nonPropertyListValueKeepsThePreviousOne()
    {
        TempEnvironment env;
        LogCapture log;
        UserDefaultsStore store(kDomain, std::nullopt, env.configDir());
        store.set(QStringLiteral("kept"), QStringLiteral("k"));
        store.set(QVariant::fromValue(QSize(1, 2)), QStringLiteral("k"));
        store.set(QVariantList{QVariant::fromValue(QPoint(1, 1))}, QStringLiteral("k"));
        // Dates that ISO 8601 cannot write: past year 9999 in UTC, invalid.
        store.set(QDateTime(QDate(9999, 12, 31), QTime(23, 30), Qt::OffsetFromUTC, -3600),
                  QStringLiteral("k"));
        store.set(QDateTime(), QStringLiteral("k"));
        QCOMPARE(store.object(QStringLiteral("k")).toString(), QStringLiteral("kept"));
        QCOMPARE(log.matching(QStringLiteral("Refusing to store")).size(), 4);
    }

    void unreadableFileReadsEmptyAndIsKeptBeforeItIsReplaced()
    {
        TempEnvironment env;
        QDir().mkpath(env.configDir());
        const QString path = settingsFile(env);
        const QByteArray broken = "{\"hiddenApps_v1\": [\"/Applications/A.app\", ";
        QVERIFY(writeFile(path, broken));
        LogCapture log;
        {
            UserDefaultsStore store(kDomain, std::nullopt, env.configDir());
            QVERIFY(!store.object(QStringLiteral("hiddenApps_v1")).isValid());
            QVERIFY(store.synchronize());
        }
        QCOMPARE(log.messages().filter(QStringLiteral("could not be read")).size(), 1);
        // Reading never writes: neither the file nor a copy.
        QCOMPARE(fileBytes(path), broken);
        const QStringList pattern{kDomain + QStringLiteral(".json.unreadable-*")};
        QVERIFY(QDir(env.configDir()).entryList(pattern).isEmpty());

        {
            UserDefaultsStore store(kDomain, std::nullopt, env.configDir());
            store.set(true, QStringLiteral("fresh"));
            QVERIFY(store.synchronize());
        }
        QCOMPARE(readInChild(env, QStringLiteral("fresh")), QStringLiteral("bool|true"));
        const QStringList copies = QDir(env.configDir()).entryList(pattern);
        QCOMPARE(copies.size(), 1);
        QCOMPARE(fileBytes(env.configDir() + u'/' + copies.first()), broken);
    }

    // One bad value (a typo, a tag a newer version wrote) costs that key
    // only; its bytes stay until the key itself is written.
    void aMalformedValueCostsOnlyItsKey()
    {
        TempEnvironment env;
        QDir().mkpath(env.configDir());
        const QString path = settingsFile(env);
        // "late" is a valid ISO date whose UTC form is in year 10000: it could
        // be read but not written back.
        QVERIFY(writeFile(path, R"({"good": {"int": "7"}, "bad": {"quaternion": [1, 2]}, "list": ["a", {"int": "x"}],
                                    "late": {"date": "9999-12-31T23:30:00-01:00"}})"));
        LogCapture log;
        {
            UserDefaultsStore store(kDomain, std::nullopt, env.configDir());
            QCOMPARE(store.integer(QStringLiteral("good")), std::optional<qint64>(7));
            QVERIFY(!store.object(QStringLiteral("bad")).isValid());
            QVERIFY(!store.object(QStringLiteral("list")).isValid());
            QVERIFY(!store.object(QStringLiteral("late")).isValid());
            store.set(1, QStringLiteral("other"));
            QVERIFY(store.synchronize());
        }
        QCOMPARE(log.messages().filter(QStringLiteral("could not be decoded")).size(), 3);
        QJsonObject root = QJsonDocument::fromJson(fileBytes(path)).object();
        QCOMPARE(root.value(QStringLiteral("late")).toObject().value(QStringLiteral("date")).toString(),
                 QStringLiteral("9999-12-31T23:30:00-01:00"));
        QCOMPARE(root.value(QStringLiteral("bad")).toObject().value(QStringLiteral("quaternion")).toArray().size(), 2);
        QCOMPARE(readInChild(env, QStringLiteral("good")), QStringLiteral("qlonglong|7"));
        QCOMPARE(readInChild(env, QStringLiteral("other")), QStringLiteral("qlonglong|1"));
        {
            UserDefaultsStore store(kDomain, std::nullopt, env.configDir());
            store.set(QStringLiteral("fixed"), QStringLiteral("bad"));
            QVERIFY(store.synchronize());
        }
        QCOMPARE(readInChild(env, QStringLiteral("bad")), QStringLiteral("QString|fixed"));
    }

    // A write that cannot complete (here: a file size limit, as on a full
    // disk the flush fails) is reported and leaves the old file as it was.
    void aFailedWriteIsReportedAndChangesNothing()
    {
        TempEnvironment env;
        {
            UserDefaultsStore store(kDomain, std::nullopt, env.configDir());
            store.set(QStringLiteral("before"), QStringLiteral("k"));
            QVERIFY(store.synchronize());
        }
        const QByteArray before = fileBytes(settingsFile(env));
        QProcess child;
        startChild(child, {QStringLiteral("limited"), env.configDir(), kDomain});
        QVERIFY(child.waitForFinished(30000));
        QCOMPARE(child.exitCode(), 1);
        QVERIFY(child.readAllStandardError().contains("could not be written"));
        QCOMPARE(fileBytes(settingsFile(env)), before);
        QCOMPARE(readInChild(env, QStringLiteral("k")), QStringLiteral("QString|before"));
    }

    void filesArePrivateAndLeftOverLocksDoNotStall()
    {
        TempEnvironment env;
        QDir().mkpath(env.configDir());
        // An empty lock file names no writer: a crash between creating and
        // filling it, or another program's file.
        const QString lockPath = settingsFile(env) + QStringLiteral(".lock");
        QVERIFY(writeFile(lockPath, QByteArray()));
        QFile lockFile(lockPath);
        QVERIFY(lockFile.open(QIODevice::ReadWrite));
        QVERIFY(lockFile.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFileDevice::FileModificationTime));
        lockFile.close();
        UserDefaultsStore store(kDomain, std::nullopt, env.configDir());
        store.set(1, QStringLiteral("k"));
        QVERIFY2(store.synchronize(), qPrintable(store.lastError()));
        const auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup
                            | QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
        QCOMPARE(QFile::permissions(settingsFile(env)) & others, QFileDevice::Permissions());
        QCOMPARE(QFile::permissions(env.configDir()) & others, QFileDevice::Permissions());
    }

    void killedWriterNeverLeavesATornFile()
    {
        TempEnvironment env;
        const QString path = settingsFile(env);
        for (int attempt = 0; attempt < 8; ++attempt) {
            QProcess child;
            startChild(child, {QStringLiteral("churn"), env.configDir(), kDomain});
            QVERIFY(child.waitForStarted());
            QTest::qWait(150 + QRandomGenerator::global()->bounded(250));
            ::kill(pid_t(child.processId()), SIGKILL);
            QVERIFY(child.waitForFinished());

            if (!QFile::exists(path))
                continue; // killed before the first save
            QJsonParseError error;
            const QJsonDocument doc = QJsonDocument::fromJson(fileBytes(path), &error);
            QVERIFY2(error.error == QJsonParseError::NoError, qPrintable(error.errorString()));
            QVERIFY(doc.object().contains(QStringLiteral("blob")));
        }
        QVERIFY(QFile::exists(path));
    }

    void fourWriterProcessesKeepEachOthersKeys()
    {
        TempEnvironment env;
        constexpr int kWriters = 4;
        constexpr int kKeys = 600;
        std::vector<std::unique_ptr<QProcess>> writers;
        for (int w = 0; w < kWriters; ++w) {
            writers.push_back(std::make_unique<QProcess>());
            startChild(*writers.back(), {QStringLiteral("writer"), env.configDir(), kDomain,
                                         QStringLiteral("w%1-").arg(w), QString::number(kKeys)});
        }
        for (auto &p : writers) {
            QVERIFY(p->waitForFinished(240000));
            QCOMPARE(p->exitCode(), 0);
        }
        UserDefaultsStore store(kDomain, std::nullopt, env.configDir());
        const QStringList keys = store.persistedKeys();
        QCOMPARE(keys.size(), kWriters * kKeys);
        for (int w = 0; w < kWriters; ++w)
            for (int i = 0; i < kKeys; ++i)
                QVERIFY2(keys.contains(QStringLiteral("w%1-%2").arg(w).arg(i)),
                         qPrintable(QStringLiteral("w%1-%2 lost").arg(w).arg(i)));
    }
};

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc > 1 && QByteArray(argv[1]) == "--child")
        return childMain(app.arguments().mid(2));
    SettingsStoreTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_settings_store.moc"
