// The look, names, icons and shortcuts through the real `tillmora`
// executable in temporary XDG folders: values are checked before anything is
// written, and a running launcher takes a change in itself.
#include "CatalogueFixtures.h"
#include "common/CommandRun.h"
#include "common/TempEnvironment.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>

using Run = CommandRun;

class SettingsCommandsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TempEnvironment> env;
    QString apps;

    QProcessEnvironment processEnvironment() const
    {
        return commandEnvironment(apps, env->path(QStringLiteral("no-share")));
    }

    Run tillmora(const QStringList &args)
    {
        return runCommand(QStringLiteral(TILLMORA_BINARY), args, processEnvironment(), env->root());
    }

    QString app(const QString &name) const { return apps + u'/' + name + QStringLiteral(".app"); }

    QJsonObject stored() const
    {
        QFile f(env->configDir() + QStringLiteral("/com.tillmora.Tillmora.json"));
        return f.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(f.readAll()).object() : QJsonObject();
    }
    // A map kept as JSON bytes under key ("CustomAppNamesV1", ...).
    QJsonObject storedMap(const QString &key) const
    {
        const QString base64 = stored().value(key).toObject().value(QStringLiteral("data")).toString();
        return QJsonDocument::fromJson(QByteArray::fromBase64(base64.toLatin1())).object();
    }
    // Integers are kept tagged, {"int": "6"} or {"uint": "6"}.
    qint64 storedInteger(const QString &key) const
    {
        const QJsonObject tagged = stored().value(key).toObject();
        return tagged.value(tagged.contains(QStringLiteral("uint")) ? QStringLiteral("uint") : QStringLiteral("int"))
            .toString()
            .toLongLong();
    }
    QJsonObject appearance() { return QJsonDocument::fromJson(tillmora({"appearance", "--json"}).out.toUtf8()).object(); }

    bool startLauncher(QProcess &launcher)
    {
        launcher.setProcessEnvironment(processEnvironment());
        launcher.start(QStringLiteral(TILLMORA_BINARY), {"--login-item"});
        const QString socket = env->runtimeDir() + QStringLiteral("/tillmora/instance.sock");
        QElapsedTimer waited;
        waited.start();
        while (launcher.state() != QProcess::NotRunning && !QFile::exists(socket) && waited.elapsed() < 20000)
            QTest::qWait(50);
        return QFile::exists(socket);
    }

private Q_SLOTS:
    void init()
    {
        env = std::make_unique<TempEnvironment>();
        apps = env->path(QStringLiteral("Applications"));
        for (const char *name : {"Alpha", "Bravo"})
            CatalogueFixtures::makeBundle(apps, QLatin1String(name) + QStringLiteral(".app"),
                                          {QStringLiteral("org.example.") + QLatin1String(name), QLatin1String(name)});
    }

    void appearanceValuesAreCheckedBeforeWriting_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("err");
        QTest::newRow("out of range") << QStringList{"set", "columns", "20"} << "columns must be an integer from 3 to 12";
        QTest::newRow("not an integer") << QStringList{"set", "rows", "4.5"} << "rows must be an integer from 2 to 10";
        QTest::newRow("icon size") << QStringList{"set", "iconSize", "9000"} << "iconSize must be a number from 48 to 256";
        QTest::newRow("not a switch") << QStringList{"set", "showLabels", "maybe"} << "showLabels must be true or false";
        QTest::newRow("tint") << QStringList{"set", "liquidGlassTintIntensity", "0.9"} << "from 0 to 0.8";
        QTest::newRow("folder grid") << QStringList{"set", "folderAppsGrid", "9x9"} << "one of 3x5, 3x6";
        QTest::newRow("unknown key") << QStringList{"set", "wallpaper", "x"}
                                     << "unknown appearance key 'wallpaper'; the keys are iconSize, columns, rows";
        QTest::newRow("no value") << QStringList{"set", "columns"} << "expected 'appearance";
    }
    void appearanceValuesAreCheckedBeforeWriting()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, err);
        QCOMPARE(tillmora({"appearance", "set", "glassIntensity", "0.5"}).exitCode, 0);
        const QJsonObject before = stored();
        const Run r = tillmora(QStringList{"appearance"} + args);
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.contains(err), qPrintable(r.err));
        QCOMPARE(stored(), before);
    }

    void appearanceIsWrittenPerDisplayAndShown()
    {
        QJsonObject look = appearance();
        QCOMPARE(look["display"].toString(), QStringLiteral("default"));
        QCOMPARE(look["columns"].toInt(), 8);
        QCOMPARE(look["showLabels"].toBool(), true);
        QCOMPARE(look["folderAppsGrid"].toString(), QStringLiteral("4x5"));
        for (const char *field : {"iconSize", "iconSizeRange", "rows", "glassIntensity", "theme", "titleColorOverride",
                                  "liquidGlassEnabled", "liquidGlassMaterialStyle", "liquidGlassTintStandard",
                                  "liquidGlassTintIntensity", "liquidGlassTintHue", "blurEnabled",
                                  "cellBackgroundEnabled", "filledBackgroundEnabled"})
            QVERIFY2(look.contains(QLatin1String(field)), field);

        QCOMPARE(tillmora({"appearance", "set", "columns", "6"}).exitCode, 0);
        QCOMPARE(tillmora({"appearance", "set", "rows", "3", "--display", "HDMI-1"}).exitCode, 0);
        QCOMPARE(tillmora({"appearance", "set", "showLabels", "off"}).exitCode, 0);
        QCOMPARE(tillmora({"appearance", "set", "folderAppsGrid", "5x8"}).exitCode, 0);
        QCOMPARE(tillmora({"appearance", "set", "theme", "dark"}).exitCode, 0);
        const QJsonObject keys = stored();
        QCOMPARE(storedInteger(QStringLiteral("columns@default")), 6);
        QCOMPARE(storedInteger(QStringLiteral("rows@HDMI-1")), 3);
        QVERIFY(!keys.contains(QStringLiteral("rows@default")));
        QCOMPARE(keys["showLabels@default"].toBool(true), false);
        QCOMPARE(keys["folderAppsGrid"].toString(), QStringLiteral("5x8"));

        look = appearance();
        QCOMPARE(look["columns"].toInt(), 6);
        QCOMPARE(look["rows"].toInt(), 5); // the other display's rows stay there
        QCOMPARE(look["showLabels"].toBool(), false);
        QCOMPARE(look["theme"].toString(), QStringLiteral("dark"));
        QCOMPARE(look["folderAppsGrid"].toString(), QStringLiteral("5x8"));
    }

    void iconsAndNames()
    {
        QCOMPARE(tillmora({"apps"}).exitCode, 0);
        QFile notes(env->path(QStringLiteral("notes.txt")));
        QVERIFY(notes.open(QIODevice::WriteOnly));
        notes.write("not an image\n");
        notes.close();
        const Run refused = tillmora({"icon", "set", app("Alpha"), "notes.txt"});
        QCOMPARE(refused.exitCode, 1);
        QCOMPARE(refused.err, QStringLiteral("tillmora: The selected image could not be optimized for an app icon.\n"));
        QVERIFY(!stored().contains(QStringLiteral("CustomAppIconsV1")));
        QVERIFY(QDir(env->dataDir() + QStringLiteral("/CustomIcons")).isEmpty());

        QImage image(64, 64, QImage::Format_ARGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(env->path(QStringLiteral("red.png"))));
        // By identity, then by the name it shows.
        QCOMPARE(tillmora({"icon", "set", "org.example.Bravo", "red.png"}).exitCode, 0);
        const QString iconFile = storedMap(QStringLiteral("CustomAppIconsV1")).value(app("Bravo")).toObject().value(QStringLiteral("imagePath")).toString();
        QVERIFY2(QFile::exists(iconFile), qPrintable(iconFile));
        QCOMPARE(tillmora({"icon", "reset", "bravo"}).exitCode, 0);
        QVERIFY(storedMap(QStringLiteral("CustomAppIconsV1")).isEmpty());
        QVERIFY(!QFile::exists(iconFile));

        QCOMPARE(tillmora({"rename", "Alpha", "My Alpha"}).exitCode, 0);
        QCOMPARE(storedMap(QStringLiteral("CustomAppNamesV1"))[app("Alpha")].toString(), QStringLiteral("My Alpha"));
        // Named as it now shows; a blank name gives its own back.
        QCOMPARE(tillmora({"rename", "my alpha", ""}).exitCode, 0);
        QVERIFY(storedMap(QStringLiteral("CustomAppNamesV1")).isEmpty());

        const Run unknown = tillmora({"rename", "Zulu", "Z"});
        QCOMPARE(unknown.exitCode, 2);
        QVERIFY2(unknown.err.contains(QStringLiteral("no app is known as 'Zulu'")), qPrintable(unknown.err));
    }

    // The launcher answers from its own managers, so what it prints after a
    // change is what it has taken in.
    void wallpaperChoices()
    {
        QCOMPARE(tillmora({"wallpaper"}).out, QStringLiteral("desktop\n"));
        QFile notes(env->path(QStringLiteral("notes.png")));
        QVERIFY(notes.open(QIODevice::WriteOnly));
        notes.write("not an image\n");
        notes.close();
        const Run refused = tillmora({"wallpaper", "set", "notes.png"});
        QCOMPARE(refused.exitCode, 1);
        QVERIFY(!QDir(env->dataDir() + QStringLiteral("/Wallpapers")).exists()
                || QDir(env->dataDir() + QStringLiteral("/Wallpapers")).isEmpty());
        QCOMPARE(tillmora({"wallpaper"}).out, QStringLiteral("desktop\n"));

        QImage image(40, 30, QImage::Format_RGB32);
        image.fill(Qt::blue);
        QVERIFY(image.save(env->path(QStringLiteral("blue.png"))));
        QCOMPARE(tillmora({"wallpaper", "set", "blue.png"}).exitCode, 0);
        const QString copy = tillmora({"wallpaper"}).out.trimmed();
        QVERIFY2(copy.startsWith(env->dataDir() + QStringLiteral("/Wallpapers/")) && QImage(copy).size() == QSize(40, 30),
                 qPrintable(copy));

        QCOMPARE(tillmora({"wallpaper", "set", "color", "not-a-colour"}).exitCode, 2);
        QCOMPARE(tillmora({"wallpaper", "set", "color", "#5a2d4f"}).exitCode, 0);
        QCOMPARE(tillmora({"wallpaper"}).out, QStringLiteral("color #5a2d4f\n"));
        QVERIFY(QFile::exists(copy)); // a picture once chosen is kept: a Space or a theme may name it
        QCOMPARE(tillmora({"wallpaper", "set", "desktop"}).exitCode, 0);
        QCOMPARE(tillmora({"wallpaper"}).out, QStringLiteral("desktop\n"));
    }

    void aRunningLauncherTakesShortcutsAndLookAtOnce()
    {
        QProcess launcher;
        const auto stop = qScopeGuard([&] {
            launcher.terminate();
            launcher.waitForFinished(10000);
        });
        QVERIFY(startLauncher(launcher));

        QCOMPARE(tillmora({"hotkey"}).out, QStringLiteral("Super+4\n"));
        Run r = tillmora({"hotkey", "set", "CTRL+alt+l"});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out, QStringLiteral("Ctrl+Alt+L\n"));
        QCOMPARE(tillmora({"hotkey"}).out, QStringLiteral("Ctrl+Alt+L\n"));
        QCOMPARE(storedInteger(QStringLiteral("hotKey.keyCode")), 37);
        QCOMPARE(storedInteger(QStringLiteral("hotKey.modifiers")), 0x40000 | 0x80000);

        r = tillmora({"hotkey", "set", "l"});
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.contains(QStringLiteral("L alone would be taken from every application")), qPrintable(r.err));
        r = tillmora({"hotkey", "set", "super+bogus"});
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.contains(QStringLiteral("F1-F24")), qPrintable(r.err));
        QCOMPARE(tillmora({"hotkey"}).out, QStringLiteral("Ctrl+Alt+L\n"));

        QCOMPARE(tillmora({"hotcorner"}).out, QStringLiteral("none\n"));
        QCOMPARE(tillmora({"hotcorner", "set", "top-right"}).exitCode, 0);
        QCOMPARE(tillmora({"hotcorner"}).out, QStringLiteral("top-right\n"));
        QCOMPARE(tillmora({"hotcorner", "set", "none"}).exitCode, 0);
        QCOMPARE(tillmora({"hotcorner"}).out, QStringLiteral("none\n"));
        QCOMPARE(tillmora({"hotcorner", "set", "middle"}).exitCode, 2);

        QCOMPARE(tillmora({"appearance", "set", "columns", "4"}).exitCode, 0);
        QCOMPARE(appearance()["columns"].toInt(), 4);
    }
};

QTEST_GUILESS_MAIN(SettingsCommandsTest)
#include "test_settings_commands.moc"
