// The settings store: types survive a restart, defaults vs persisted values,
// exact keys, unreadable files, torn writes and two writers.
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "storage/AppNameRepository.h"
#include "storage/DomainFile.h"
#include "storage/UserDefaultsStore.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>
#include <QThread>

#include <csignal>
#include <sys/resource.h>
#include <limits>

namespace {

const QString kDomain = QStringLiteral("com.tillmora.test");

// Child modes, run as this same executable with --child:
//   read DIR DOMAIN KEY           prints the value's type name and text
//   writer DIR DOMAIN PREFIX N    writes PREFIX0..N-1, syncing after each
//   limited DIR DOMAIN            a save past a 4 KiB file size limit
//   bursts DIR DOMAIN PREFIX N    saves bursts N, N+1, ... until killed: a
//                                 counter, one of twenty keys and a large
//                                 list set to the burst's number in one
//                                 save; "ready" first, "ack N" once burst
//                                 N is on disk
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
    if (mode == QLatin1String("bursts")) {
        const QString prefix = args.value(3);
        std::printf("ready\n");
        std::fflush(stdout);
        for (qint64 n = args.value(4).toLongLong();; ++n) {
            QStringList list;
            for (int i = 0; i < 400; ++i)
                list.append(QStringLiteral("A:/usr/share/applications/app-%1-%2.desktop").arg(n).arg(i));
            store.set(n, prefix + QStringLiteral("counter"));
            store.set(n, prefix + QStringLiteral("k%1").arg(n % 20));
            store.set(list, prefix + QStringLiteral("list"));
            if (!store.synchronize())
                return 1;
            std::printf("ack %lld\n", static_cast<long long>(n));
            std::fflush(stdout);
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

    // Two writers of one file are killed at random moments, round after
    // round (TILLMORA_CRASH_ROUNDS, 500 by default: 1,000 kills). After each
    // kill the file reads whole, each writer's last burst is all there or not
    // at all, and nothing a writer acknowledged is missing.
    void killedWritersLoseNothingTheyAcknowledged()
    {
        TempEnvironment env;
        const int rounds = qEnvironmentVariableIntValue("TILLMORA_CRASH_ROUNDS") > 0
            ? qEnvironmentVariableIntValue("TILLMORA_CRASH_ROUNDS")
            : 500;
        struct Writer {
            QString prefix;
            qint64 acknowledged = -1;
            qint64 next = 0;
        } writers[2] = {{QStringLiteral("a.")}, {QStringLiteral("b.")}};
        QRandomGenerator random(20261123);

        for (int round = 0; round < rounds; ++round) {
            QProcess processes[2];
            for (int w = 0; w < 2; ++w) {
                startChild(processes[w], {QStringLiteral("bursts"), env.configDir(), kDomain, writers[w].prefix,
                                          QString::number(writers[w].next)});
                QVERIFY(processes[w].waitForStarted());
            }
            for (auto &process : processes)
                QVERIFY(process.canReadLine() || process.waitForReadyRead(20000));
            // While reading, waiting for or holding the lock, writing or renaming.
            for (int w = 0; w < 2; ++w) {
                QThread::usleep(random.bounded(200, 25000));
                // A writer already gone has pid 0, and kill(0) would end this
                // whole process group (ctest with it).
                if (const pid_t pid = pid_t(processes[w].processId()); pid > 0)
                    ::kill(pid, SIGKILL);
            }
            for (int w = 0; w < 2; ++w) {
                QVERIFY(processes[w].waitForFinished(10000));
                QCOMPARE(processes[w].exitStatus(), QProcess::CrashExit);
                for (const QByteArray &line : processes[w].readAllStandardOutput().split('\n'))
                    if (line.startsWith("ack "))
                        writers[w].acknowledged = line.mid(4).toLongLong();
            }

            QString error;
            const auto content = DomainFile::read(settingsFile(env), &error);
            QVERIFY2(content, qPrintable(error));
            QVERIFY2(!content->unparsable && content->undecodable.isEmpty(), qPrintable(QString::number(round)));
            for (auto &writer : writers) {
                const QVariant counter = content->values.value(writer.prefix + QStringLiteral("counter"));
                if (!counter.isValid()) {
                    QCOMPARE(writer.acknowledged, qint64(-1));
                    continue;
                }
                // Never older than what was acknowledged or seen before, and at
                // most the one burst that was being saved at the kill.
                const qint64 stored = counter.toLongLong();
                const qint64 floor = std::max(writer.acknowledged, writer.next - 1);
                QVERIFY2(stored >= floor && stored <= floor + 1,
                         qPrintable(QStringLiteral("round %1: %2counter %3, acknowledged %4")
                                        .arg(round).arg(writer.prefix).arg(stored).arg(writer.acknowledged)));
                QCOMPARE(content->values.value(writer.prefix + QStringLiteral("k%1").arg(stored % 20)).toLongLong(),
                         stored);
                const QStringList list = content->values.value(writer.prefix + QStringLiteral("list")).toStringList();
                QCOMPARE(list.size(), 400);
                QVERIFY(list.first().contains(QStringLiteral("app-%1-").arg(stored)));
                QVERIFY(list.last().contains(QStringLiteral("app-%1-").arg(stored)));
                writer.next = stored + 1;
            }
        }
        // A killed writer's lock never failed the next one's save (that child
        // would have exited instead of being killed). On a loaded machine every
        // round may end before a first save does, so saving is shown once more
        // at the end, after all the abandoned locks, with time to finish.
        qInfo("acknowledged bursts: %lld and %lld", writers[0].acknowledged + 1, writers[1].acknowledged + 1);
        for (const auto &writer : writers) {
            QProcess process;
            startChild(process, {QStringLiteral("bursts"), env.configDir(), kDomain, writer.prefix,
                                 QString::number(writer.next)});
            QVERIFY(process.waitForStarted());
            bool saved = false;
            while (!saved && (process.canReadLine() || process.waitForReadyRead(20000)))
                while (process.canReadLine())
                    saved = saved || process.readLine().startsWith("ack ");
            if (const pid_t pid = pid_t(process.processId()); pid > 0)
                ::kill(pid, SIGKILL);
            process.waitForFinished(10000);
            QVERIFY2(saved, qPrintable(writer.prefix));
        }
    }

    // As in the launcher: a lock held elsewhere (a writer stopped with
    // Ctrl-Z) never holds up the caller, the change stays readable, the
    // failure is reported, and the write goes through once the lock is free.
    void backgroundWritesNeverWaitForALock()
    {
        TempEnvironment env;
        QDir().mkpath(env.configDir());
        UserDefaultsStore::setBackgroundWrites(true);
        const auto restore = qScopeGuard([] { UserDefaultsStore::setBackgroundWrites(false); });
        QList<bool> statuses; // what the launcher would show the user
        UserDefaultsStore::setSaveStatusHandler([&](bool saved, const QString &) { statuses.append(saved); });
        const auto noHandler = qScopeGuard([] { UserDefaultsStore::setSaveStatusHandler({}); });
        UserDefaultsStore store(kDomain, std::nullopt, env.configDir());
        auto lock = std::make_unique<QLockFile>(settingsFile(env) + QStringLiteral(".lock"));
        QVERIFY(lock->lock());

        std::optional<bool> saved;
        store.set(1, QStringLiteral("k"));
        QVERIFY(store.synchronize()); // only queued here
        store.synchronizeInBackground(this, [&](bool ok, const QString &) { saved = ok; });
        QVERIFY(!saved);
        QCOMPARE(store.object(QStringLiteral("k")).toInt(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(saved.has_value(), 15000);
        QVERIFY(!*saved);
        QVERIFY(!QFile::exists(settingsFile(env)));

        lock.reset();
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(settingsFile(env)), 15000);
        QCOMPARE(readInChild(env, QStringLiteral("k")), QStringLiteral("qlonglong|1"));
        QTRY_COMPARE(statuses, QList<bool>({false, true}));
    }

    // What another process writes reaches this one without a restart: the
    // watcher names the changed keys, reads return the new values, cached
    // maps follow, and this process's own writes are no news.
    void changesMadeElsewhereAreTakenIn()
    {
        TempEnvironment env;
        auto store = std::make_shared<UserDefaultsStore>(kDomain, std::nullopt, env.configDir());
        AppNameRepositoryImpl names(store);
        names.setCustomName(QStringLiteral("/a.desktop"), QStringLiteral("Mine"));
        store->set(1, QStringLiteral("shared"));
        QVERIFY(store->synchronize());
        QStringList seen;
        store->watchExternalChanges(this, [&](const QStringList &keys) { seen += keys; });

        DomainFile::Content merged;
        QString error;
        const QByteArray names2 = R"({"/a.desktop":"Theirs","/b.desktop":7})";
        QVERIFY(DomainFile::write(settingsFile(env),
                                  {{QStringLiteral("other"), QVariant::fromValue(qint64(5))},
                                   {names.defaultsKey, QVariant(names2)}},
                                  &merged, &error));
        QTRY_VERIFY_WITH_TIMEOUT(seen.contains(QStringLiteral("other")), 5000);
        QVERIFY(seen.contains(names.defaultsKey));
        QCOMPARE(store->object(QStringLiteral("other")).toInt(), 5);
        QCOMPARE(names.customName(QStringLiteral("/a.desktop")), QStringLiteral("Theirs"));

        // A map entry that does not decode is skipped and kept.
        names.setCustomName(QStringLiteral("/c.desktop"), QStringLiteral("Third"));
        QVERIFY(store->synchronize());
        const QJsonObject stored = QJsonDocument::fromJson(*store->data(names.defaultsKey)).object();
        QCOMPARE(stored.value(QStringLiteral("/b.desktop")).toInt(), 7);
        QCOMPARE(stored.value(QStringLiteral("/c.desktop")).toString(), QStringLiteral("Third"));

        seen.clear();
        store->set(2, QStringLiteral("shared"));
        QVERIFY(store->synchronize());
        QTest::qWait(400);
        QVERIFY2(seen.isEmpty(), qPrintable(seen.join(u',')));
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
