// Workflows and system folders through the real `tillmora` executable, with
// desktop entries whose Exec appends a line to a file and a file manager
// that does the same: the lines arrive in launch order, spaced by the
// workflow's pause, and every rejected command leaves the stored data as it was.
#include "common/CommandRun.h"
#include "common/TempEnvironment.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

using Run = CommandRun;

class WorkflowCommandsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TempEnvironment> env;

    QString share() const { return env->path(QStringLiteral("share")); }
    QString entry(const QString &name) const { return share() + QStringLiteral("/applications/%1.desktop").arg(name); }
    QString record() const { return env->path(QStringLiteral("record.txt")); }

    Run tillmora(const QStringList &args)
    {
        return runCommand(QStringLiteral(TILLMORA_BINARY), args,
                          commandEnvironment(env->path(QStringLiteral("no-bundles")), share()));
    }

    QByteArray storedBytes() const
    {
        QFile f(env->configDir() + QStringLiteral("/com.tillmora.Tillmora.json"));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    QJsonObject layoutJson() { return QJsonDocument::fromJson(tillmora({"layout", "--json"}).out.toUtf8()).object(); }

    // Lines of the record file: what was opened, and when (seconds).
    QList<std::pair<QString, double>> recorded() const
    {
        QFile f(record());
        QList<std::pair<QString, double>> out;
        if (!f.open(QIODevice::ReadOnly))
            return out;
        for (const QByteArray &line : f.readAll().split('\n')) {
            const qsizetype space = line.lastIndexOf(' ');
            if (space > 0)
                out.append({QString::fromUtf8(line.left(space)), line.mid(space + 1).toDouble()});
        }
        return out;
    }

    QString createMorning(const QString &projects, const QString &interval)
    {
        const Run r = tillmora({"workflow", "create", "Morning", "--emoji", "☀", "--color", "#ff8800", "--interval",
                                interval, "--app", entry("mail"), "--app", entry("calendar"), "--app", entry("chat"),
                                "--folder", projects});
        return r.exitCode == 0 ? r.out.trimmed() : QString();
    }

private Q_SLOTS:
    void init()
    {
        env = std::make_unique<TempEnvironment>();
        QVERIFY(QDir().mkpath(share() + QStringLiteral("/applications")));
        const QString script = env->path(QStringLiteral("record.sh"));
        QFile s(script);
        QVERIFY(s.open(QIODevice::WriteOnly));
        s.write("#!/bin/sh\necho \"$* $(date +%s.%N)\" >> '" + record().toUtf8() + "'\n");
        s.close();
        QVERIFY(s.setPermissions(s.permissions() | QFile::ExeOwner));
        const auto write = [](const QString &path, const QByteArray &text) {
            QFile f(path);
            return f.open(QIODevice::WriteOnly) && f.write(text) == text.size();
        };
        for (const char *name : {"mail", "calendar", "chat"})
            QVERIFY(write(entry(QLatin1String(name)), "[Desktop Entry]\nType=Application\nName=" + QByteArray(name)
                                                           + "\nExec=" + script.toUtf8() + ' ' + name + '\n'));
        // The desktop's file manager: the default handler of folders.
        QVERIFY(write(entry(QStringLiteral("files")), "[Desktop Entry]\nType=Application\nName=Files\nNoDisplay=true\n"
                                                      "MimeType=inode/directory;\nExec=" + script.toUtf8()
                                                          + " folder %f\n"));
        QVERIFY(QDir().mkpath(env->path(QStringLiteral("config"))));
        QVERIFY(write(env->path(QStringLiteral("config/mimeapps.list")),
                      "[Default Applications]\ninode/directory=files.desktop\n"));
    }

    void aLaunchOpensItsItemsInOrderSpacedByThePause()
    {
        const QString projects = env->path(QStringLiteral("home/Projects"));
        QVERIFY(QDir().mkpath(projects));
        const QString id = createMorning(projects, QStringLiteral("1"));
        QVERIFY(!id.isEmpty());
        QCOMPARE(layoutJson()["slots"].toArray().last().toString(), "WF:" + id);

        const Run r = tillmora({"workflow", "launch", id});
        QCOMPARE(r.exitCode, 0);
        QTRY_COMPARE_WITH_TIMEOUT(recorded().size(), 4, 10000);
        const auto lines = recorded();
        QCOMPARE(lines.at(0).first, QStringLiteral("mail"));
        QCOMPARE(lines.at(1).first, QStringLiteral("calendar"));
        QCOMPARE(lines.at(2).first, QStringLiteral("chat"));
        QCOMPARE(lines.at(3).first, QStringLiteral("folder ") + projects);
        for (int i = 1; i < 4; ++i) {
            const double gap = lines.at(i).second - lines.at(i - 1).second;
            QVERIFY2(gap > 0.9 && gap < 2.5, qPrintable(QStringLiteral("gap %1: %2 s").arg(i).arg(gap)));
        }
    }

    void workflowsAreListedEditedAndDeleted()
    {
        const QString projects = env->path(QStringLiteral("home/Projects"));
        QVERIFY(QDir().mkpath(projects));
        const QString id = createMorning(projects, QStringLiteral("2"));
        QVERIFY(!id.isEmpty());
        QCOMPARE(tillmora({"workflow", "list"}).out, id + QStringLiteral("\tMorning\t3 apps, 1 folders, 2 s apart\n"));

        QCOMPARE(tillmora({"workflow", "edit", id, "--name", "Late", "--app", entry("chat")}).exitCode, 0);
        const QJsonObject stored =
            QJsonDocument::fromJson(tillmora({"workflow", "list", "--json"}).out.toUtf8()).array().first().toObject();
        QCOMPARE(stored["name"].toString(), QStringLiteral("Late"));
        QCOMPARE(stored["appPaths"].toArray(), QJsonArray{entry("chat")});
        QCOMPARE(stored["folderPaths"].toArray(), QJsonArray{projects}); // not given: kept
        QCOMPARE(stored["backgroundColorHex"].toString(), QStringLiteral("#FF8800"));

        QCOMPARE(tillmora({"workflow", "delete", id}).exitCode, 0);
        const QJsonObject layout = layoutJson();
        QVERIFY(layout["workflows"].toArray().isEmpty());
        QVERIFY(!layout["slots"].toArray().contains("WF:" + id));
    }

    void systemFoldersGoInAndOutOfFolders()
    {
        const Run created = tillmora({"folder", "create", "Work", entry("mail")});
        QCOMPARE(created.exitCode, 0);
        const QString folderId = created.out.trimmed();
        const QString docs = env->path(QStringLiteral("home/Documents"));
        QVERIFY(QDir().mkpath(docs));
        QCOMPARE(tillmora({"folder", "add-system", folderId, docs}).exitCode, 0);
        QCOMPARE(layoutJson()["folders"].toArray().first()["systemFolderPaths"].toArray(), QJsonArray{docs});
        const QJsonObject settings = QJsonDocument::fromJson(storedBytes()).object();
        QCOMPARE(settings["folder_bookmark_" + docs].toObject()["data"].toString(),
                 QString::fromLatin1(QUrl::fromLocalFile(docs).toEncoded().toBase64()));

        QCOMPARE(tillmora({"open-folder", docs}).exitCode, 0);
        QTRY_COMPARE_WITH_TIMEOUT(recorded().size(), 1, 10000);
        QCOMPARE(recorded().first().first, QStringLiteral("folder ") + docs);

        // A folder deleted from the disk stays listed until the user takes it out.
        QVERIFY(QDir(docs).removeRecursively());
        QCOMPARE(layoutJson()["folders"].toArray().first()["systemFolderPaths"].toArray(), QJsonArray{docs});
        QCOMPARE(tillmora({"folder", "remove-system", folderId, docs}).exitCode, 0);
        QVERIFY(layoutJson()["folders"].toArray().first()["systemFolderPaths"].toArray().isEmpty());
    }

    void badInputExitsTwoAndChangesNothing_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("unknown app") << QStringList{"workflow", "create", "X", "--app", "/nowhere/ghost.desktop"};
        QTest::newRow("not a folder") << QStringList{"workflow", "create", "X", "--folder", "{share}/applications/mail.desktop"};
        QTest::newRow("interval not a number") << QStringList{"workflow", "create", "X", "--interval", "soon"};
        QTest::newRow("colour not hex") << QStringList{"workflow", "create", "X", "--color", "orange"};
        QTest::newRow("image not an image") << QStringList{"workflow", "create", "X", "--image", "{share}/applications/mail.desktop"};
        QTest::newRow("no name") << QStringList{"workflow", "create"};
        QTest::newRow("unknown option") << QStringList{"workflow", "create", "X", "--colour", "#FFFFFF"};
        QTest::newRow("edit unknown id") << QStringList{"workflow", "edit", "6F1A2B3C-0000-4000-8000-000000000001", "--name", "Y"};
        QTest::newRow("edit bad interval") << QStringList{"workflow", "edit", "{id}", "--interval", "1s"};
        QTest::newRow("delete unknown id") << QStringList{"workflow", "delete", "nope"};
        QTest::newRow("launch unknown id") << QStringList{"workflow", "launch", "6F1A2B3C-0000-4000-8000-000000000001"};
        QTest::newRow("add-system not a folder") << QStringList{"folder", "add-system", "{folder}", "/nowhere"};
        QTest::newRow("add-system unknown folder") << QStringList{"folder", "add-system", "nope", "{share}"};
        QTest::newRow("remove-system not in it") << QStringList{"folder", "remove-system", "{folder}", "{share}"};
        QTest::newRow("open-folder not a folder") << QStringList{"open-folder", "/nowhere"};
    }

    void badInputExitsTwoAndChangesNothing()
    {
        QFETCH(QStringList, args);
        const QString id = createMorning(share(), QStringLiteral("0"));
        QVERIFY(!id.isEmpty());
        const QString folderId = tillmora({"folder", "create", "Work", entry("mail")}).out.trimmed();
        args.replaceInStrings(QStringLiteral("{share}"), share());
        args.replaceInStrings(QStringLiteral("{id}"), id);
        args.replaceInStrings(QStringLiteral("{folder}"), folderId);
        const QByteArray before = storedBytes();

        const Run r = tillmora(args);
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.startsWith(QLatin1String("tillmora: ")) && r.err.count(u'\n') == 1, qPrintable(r.err));
        QCOMPARE(storedBytes(), before);
        QVERIFY(recorded().isEmpty());
    }
};

QTEST_GUILESS_MAIN(WorkflowCommandsTest)
#include "test_workflow_commands.moc"
