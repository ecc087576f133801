// Theme packages end to end: what extraction refuses (every refusal must
// leave the profile and the disk as they were), the round trip between two
// machines whose apps live in different folders, and the package name rule.
#include "common/LogCapture.h"
#include "common/SpacesProfile.h"
#include "common/TempEnvironment.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"
#include "spaces/ThemePathRewriter.h"
#include "storage/SettingsKeys.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <archive.h>
#include <archive_entry.h>

namespace {

using Profile = SpacesProfile;

struct Entry {
    QByteArray name;
    QByteArray data;
    mode_t type = AE_IFREG;
    QByteArray link = {}; // symlink or hard-link target
};

const QByteArray kManifest = R"({"themeId":"6A1B6C5E-3D2F-4B7A-9C8D-1E2F3A4B5C6D","name":"Hostile","schemaVersion":1})";
const QByteArray kSnapshot = R"({"slots":["A:/usr/share/applications/a.desktop"]})";

void writeZip(const QString &path, const QList<Entry> &entries, const char *options = nullptr)
{
    archive *a = archive_write_new();
    archive_write_set_format_zip(a);
    if (options) {
        QCOMPARE(archive_write_set_options(a, options), ARCHIVE_OK);
        archive_write_set_passphrase(a, "secret");
    }
    QCOMPARE(archive_write_open_filename(a, QFile::encodeName(path).constData()), ARCHIVE_OK);
    for (const Entry &e : entries) {
        archive_entry *entry = archive_entry_new();
        archive_entry_set_pathname(entry, e.name.constData());
        archive_entry_set_filetype(entry, e.type);
        archive_entry_set_perm(entry, 0644);
        if (e.type == AE_IFLNK)
            archive_entry_set_symlink(entry, e.link.constData());
        else if (!e.link.isEmpty())
            archive_entry_set_hardlink(entry, e.link.constData());
        archive_entry_set_size(entry, e.data.size());
        archive_write_header(a, entry);
        if (!e.data.isEmpty())
            archive_write_data(a, e.data.constData(), size_t(e.data.size()));
        archive_entry_free(entry);
    }
    archive_write_close(a);
    archive_write_free(a);
}

QList<Entry> valid() { return {{"manifest.json", kManifest}, {"snapshot.json", kSnapshot}}; }

// Every file under a folder with its hash: "byte for byte unchanged".
QMap<QString, QByteArray> contents(const QString &folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile f(it.next());
        f.open(QIODevice::ReadOnly);
        files.insert(it.filePath(), QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256));
    }
    return files;
}

QString writeImage(const QString &path, Qt::GlobalColor color)
{
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(color);
    image.save(path);
    return path;
}

AppItem app(const QString &path, const QString &name, const QString &identity)
{
    return AppItem{QUuid::createUuid(), path, name, identity};
}

QByteArray bytesOf(const QString &path)
{
    QFile f(path);
    f.open(QIODevice::ReadOnly);
    return f.readAll();
}

}

Q_DECLARE_METATYPE(Entry)

class ThemePackagesTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TempEnvironment> env;
    QString tmp;

private Q_SLOTS:
    void init()
    {
        env = std::make_unique<TempEnvironment>();
        // Staging folders go to the temporary directory: one of our own, so
        // that "nothing left behind" can be checked.
        tmp = env->path(QStringLiteral("tmp"));
        QDir().mkpath(tmp);
        qputenv("TMPDIR", tmp.toUtf8());
    }

    void hostilePackagesChangeNothing_data()
    {
        QTest::addColumn<QList<Entry>>("entries");
        QTest::addColumn<QByteArray>("options");
        const auto with = [](QList<Entry> extra) { return valid() + extra; };
        // (ZIP has no hard links or fifos; a link is the special file it can carry.)
        QTest::newRow("symlink") << with({{"Wallpaper/w.png", {}, AE_IFLNK, "/etc/passwd"}}) << QByteArray();
        QTest::newRow("absolute") << with({{"/tmp/evil.png", "x"}}) << QByteArray();
        QTest::newRow("dot-dot") << with({{"Wallpaper/../../evil.png", "x"}}) << QByteArray();
        QTest::newRow("leading dot-dot") << with({{"../evil.png", "x"}}) << QByteArray();
        QTest::newRow("backslash") << with({{"Wallpaper\\..\\..\\evil.png", "x"}}) << QByteArray();
        QTest::newRow("duplicate") << with({{"snapshot.json", kSnapshot}}) << QByteArray();
        QTest::newRow("case collision") << with({{"Wallpaper/A.png", "x"}, {"Wallpaper/a.png", "y"}}) << QByteArray();
        QTest::newRow("composed collision")
            << with({{"Wallpaper/caf\xc3\xa9.png", "x"}, {"Wallpaper/cafe\xcc\x81.png", "y"}}) << QByteArray();
        QTest::newRow("file under a file") << with({{"Wallpaper", "x"}, {"Wallpaper/w.png", "y"}}) << QByteArray();
        QTest::newRow("encrypted") << valid() << QByteArray("zip:encryption=zipcrypt");
        QList<Entry> many = valid();
        for (int i = 0; i < 5000; ++i)
            many.append({"CustomIcons/" + QByteArray::number(i), "x"});
        QTest::newRow("too many entries") << many << QByteArray();
    }

    void hostilePackagesChangeNothing()
    {
        QFETCH(QList<Entry>, entries);
        QFETCH(QByteArray, options);
        Profile me(env->root());
        me.spaces->createSpace(QStringLiteral("Mine"), QStringLiteral("🏠"), QStringLiteral("#112233"), false);
        QVERIFY(me.provider->synchronizeAll());
        const auto before = contents(env->root() + QStringLiteral("/config"));
        const QString package = env->path(QStringLiteral("hostile.tillmoratheme"));
        writeZip(package, entries, options.isEmpty() ? nullptr : options.constData());

        LogCapture log;
        const auto result = me.importer().inspect(package, {});
        QVERIFY(std::holds_alternative<ThemeImporter::Failure>(result));
        const auto failure = std::get<ThemeImporter::Failure>(result);
        QCOMPARE(failure.message(), QStringLiteral("The file is damaged or is not a Tillmora theme."));
        QCOMPARE(log.matching(QStringLiteral("Theme unzip failed: ")).size(), 1);

        QCOMPARE(QDir(tmp).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), QStringList());
        QVERIFY(!QFile::exists(QStringLiteral("/tmp/evil.png")));
        QVERIFY(!QFile::exists(env->path(QStringLiteral("evil.png"))));
        QCOMPARE(me.spaces->spaceItems().size(), 1);
        QVERIFY(me.provider->synchronizeAll());
        QCOMPARE(contents(env->root() + QStringLiteral("/config")), before);
    }

    void inflationIsStoppedWhileReading()
    {
        // A gigabyte of zeros: refused for its stated size, and, where the
        // size limit would let it through, by how far it actually inflates.
        const QString package = env->path(QStringLiteral("bomb.tillmoratheme"));
        archive *a = archive_write_new();
        archive_write_set_format_zip(a);
        archive_write_open_filename(a, QFile::encodeName(package).constData());
        for (const Entry &e : valid()) {
            archive_entry *entry = archive_entry_new();
            archive_entry_set_pathname(entry, e.name.constData());
            archive_entry_set_filetype(entry, AE_IFREG);
            archive_entry_set_size(entry, e.data.size());
            archive_write_header(a, entry);
            archive_write_data(a, e.data.constData(), size_t(e.data.size()));
            archive_entry_free(entry);
        }
        archive_entry *entry = archive_entry_new();
        archive_entry_set_pathname(entry, "Wallpaper/zeros.png");
        archive_entry_set_filetype(entry, AE_IFREG);
        archive_entry_unset_size(entry);
        archive_write_header(a, entry);
        const QByteArray zeros(1 << 20, '\0');
        for (int i = 0; i < 1024; ++i)
            archive_write_data(a, zeros.constData(), size_t(zeros.size()));
        archive_entry_free(entry);
        archive_write_close(a);
        archive_write_free(a);
        QVERIFY(QFileInfo(package).size() < (8 << 20));

        Profile me(env->root());
        LogCapture log;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(std::holds_alternative<ThemeImporter::Failure>(me.importer().inspect(package, {})));
        ThemePackageLayout::Limits generous;
        generous.maxEntryBytes = generous.maxTotalBytes = 4ll << 30;
        QVERIFY(std::holds_alternative<ThemeImporter::Failure>(me.importer().inspect(package, {}, generous)));
        qInfo("1 GiB of zeros refused twice in %lld ms", timer.elapsed());
        const QStringList lines = log.matching(QStringLiteral("Theme unzip failed: "));
        QCOMPARE(lines.size(), 2);
        QVERIFY2(lines.at(0).endsWith(QLatin1String("is too large")), qPrintable(lines.at(0)));
        QVERIFY2(lines.at(1).endsWith(QLatin1String("inflates too far")), qPrintable(lines.at(1)));
        QCOMPARE(QDir(tmp).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    }

    void unreadablePackagesSayWhy()
    {
        Profile me(env->root());
        const QString package = env->path(QStringLiteral("p.tillmoratheme"));
        writeZip(package, {{"manifest.json", R"({"themeId":"6A1B6C5E-3D2F-4B7A-9C8D-1E2F3A4B5C6D","name":"New",
                                               "appVersion":"9.9","schemaVersion":2})"},
                           {"snapshot.json", kSnapshot}});
        auto result = me.importer().inspect(package, {});
        QCOMPARE(std::get<ThemeImporter::Failure>(result).message(),
                 QStringLiteral("This theme was created in Tillmora 9.9."));

        writeZip(package, {{"manifest.json", kManifest}});
        result = me.importer().inspect(package, {});
        QCOMPARE(std::get<ThemeImporter::Failure>(result).message(),
                 QStringLiteral("The file is damaged or is not a Tillmora theme."));

        QFile junk(package);
        QVERIFY(junk.open(QIODevice::WriteOnly | QIODevice::Truncate));
        junk.write("not a zip at all");
        junk.close();
        QVERIFY(std::holds_alternative<ThemeImporter::Failure>(me.importer().inspect(package, {})));
        QCOMPARE(QDir(tmp).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    }

    void roundTripToAMachineWhoseAppsLiveElsewhere()
    {
        // Here: four apps under /usr/share; there, three of them under
        // flatpak's exports, one by its id and one only by its name.
        const QString here = QStringLiteral("/usr/share/applications/");
        const QString there = QStringLiteral("/var/lib/flatpak/exports/share/applications/");
        const QList<AppItem> mine{app(here + "org.gnome.Maps.desktop", "Maps", "org.gnome.Maps.desktop"),
                                  app(here + "firefox.desktop", "Firefox", "firefox.desktop"),
                                  app(here + "gimp.desktop", "GIMP", "gimp.desktop"),
                                  app(here + "only-here.desktop", "Only Here", "only-here.desktop")};
        const QList<AppItem> theirs{app(there + "org.gnome.Maps.desktop", "Maps", "org.gnome.Maps.desktop"),
                                    app(there + "org.mozilla.firefox.desktop", "Firefox", "org.mozilla.firefox.desktop"),
                                    app(there + "gimp.desktop", "GIMP", "gimp.desktop"),
                                    app(there + "org.gnome.Calculator.desktop", "Calculator", "calc.desktop")};

        Profile me(env->path(QStringLiteral("me")));
        const SpaceItem work = me.spaces->createSpace(QStringLiteral("Work"), QStringLiteral("💼"),
                                                      QStringLiteral("#224466"), false);
        auto suite = me.provider->storeForSpace(work.id);
        const QUuid folderId = QUuid::createUuid();
        const QString wallpaper = writeImage(env->path(QStringLiteral("wall.png")), Qt::blue);
        const QString icon = writeImage(env->path(QStringLiteral("icon.png")), Qt::red);
        const QString photo = writeImage(env->path(QStringLiteral("photo.png")), Qt::green);
        suite->set(QStringList{SlotKey::folder(folderId), SlotKey::app(mine[0].path), SlotKey::app(mine[3].path),
                               SlotKey::app(mine[2].path)},
                   QLatin1String(SettingsKeys::kSlots));
        const QJsonArray folders{FolderItem{folderId, QStringLiteral("Web"), {mine[1].path}, {}, {mine[1].path}, {}}.toJson()};
        suite->set(QJsonDocument(folders).toJson(QJsonDocument::Compact), QLatin1String(SettingsKeys::kFolders));
        suite->set(wallpaper, QLatin1String(SettingsKeys::kCustomBackgroundImagePath));
        const QJsonObject icons{{mine[2].path, QJsonObject{{"imagePath", icon}, {"isPNG", true}}},
                                {mine[3].path, QJsonObject{{"imagePath", icon}, {"isPNG", true}}}};
        suite->set(QJsonDocument(icons).toJson(QJsonDocument::Compact), QLatin1String(SettingsKeys::kCustomAppIcons));
        const QJsonArray widgets{QJsonObject{{"id", Uuids::newText()}, {"kind", "clock"}, {"size", "size2x2"},
                                             {"settings", QJsonObject{{"backgroundImagePath", photo}}}}};
        suite->set(QJsonDocument(widgets).toJson(QJsonDocument::Compact), QLatin1String(SettingsKeys::kWidgets));

        const QString package = env->path(ThemePackageLayout::packageFileName(QStringLiteral(" Work ")));
        QString error;
        LogCapture log;
        const auto summary = me.exporter().exportSpace(work, package, mine, &error);
        QVERIFY2(summary, qPrintable(error));
        QCOMPARE(summary->byteSize, QFileInfo(package).size());
        QVERIFY(log.contains(QStringLiteral("Exported theme Work: %1 bytes").arg(summary->byteSize)));
        QCOMPARE(me.main->stringList(QLatin1String(SettingsKeys::kExportedThemeIds)),
                 QStringList{Uuids::toText(summary->themeId)});

        Profile friendly(env->path(QStringLiteral("friend")));
        auto inspected = friendly.importer().inspect(package, theirs);
        QVERIFY(std::holds_alternative<ThemeImporter::Inspection>(inspected));
        auto inspection = std::get<ThemeImporter::Inspection>(inspected);
        QCOMPARE(inspection.manifest.name, QStringLiteral("Work"));
        // Every path the snapshot holds is a package reference.
        QVERIFY(inspection.snapshot.value("customBackgroundImagePath").toString().startsWith("asset:Wallpaper/"));
        QVERIFY(!QJsonDocument(inspection.snapshot).toJson().contains(env->root().toUtf8()));

        const auto result = friendly.importer().importTheme(inspection, ThemeImporter::FolderChoice::useTheme, theirs,
                                                            *friendly.spaces, &error);
        QVERIFY2(result, qPrintable(error));
        QCOMPARE(result->themeAppCount, 4);
        QCOMPARE(result->matchedAppCount, 3);
        QCOMPARE(result->pendingIconCount, 1);
        QVERIFY(log.contains(QStringLiteral("Imported theme 'Work': 3/4 apps matched, 1 icons pending")));

        auto imported = friendly.provider->storeForSpace(result->space.id);
        // The grid: Maps found by identity at its new path; the app the theme
        // did not know takes the cell of the one that is not here.
        QCOMPARE(imported->stringList(QLatin1String(SettingsKeys::kSlots)),
                 (QStringList{SlotKey::folder(folderId), SlotKey::app(theirs[0].path), SlotKey::app(theirs[3].path),
                              SlotKey::app(theirs[2].path)}));
        const auto folder = FolderItem::fromJson(
            QJsonDocument::fromJson(*imported->data(QLatin1String(SettingsKeys::kFolders))).array().first().toObject());
        QCOMPARE(folder->appPaths, QStringList{theirs[1].path}); // found by name across ids

        const QString assets = friendly.snapshots->assetFolder(result->space.id);
        const QString newWallpaper = *imported->string(QLatin1String(SettingsKeys::kCustomBackgroundImagePath));
        QCOMPARE(newWallpaper, assets + QStringLiteral("/Wallpaper/wall.png"));
        QCOMPARE(bytesOf(newWallpaper), bytesOf(wallpaper));
        const QJsonObject newIcons =
            QJsonDocument::fromJson(*imported->data(QLatin1String(SettingsKeys::kCustomAppIcons))).object();
        QCOMPARE(newIcons.keys(), QStringList{theirs[2].path});
        QCOMPARE(bytesOf(newIcons.value(theirs[2].path)["imagePath"].toString()), bytesOf(icon));
        const QJsonObject widget =
            QJsonDocument::fromJson(*imported->data(QLatin1String(SettingsKeys::kWidgets))).array().first().toObject();
        QCOMPARE(bytesOf(widget["settings"]["backgroundImagePath"].toString()), bytesOf(photo));
        QVERIFY(widget["settings"]["backgroundImagePath"].toString().startsWith(assets));
        const QJsonObject pending = QJsonDocument::fromJson(bytesOf(assets + "/PendingIcons.json")).object();
        QCOMPARE(pending.keys(), QStringList{mine[3].path});
        // Once the app turns up here (under its own id), its icon is given.
        const AppItem arrived = app(there + "org.example.OnlyHere.desktop", "Only Here", "org.example.OnlyHere.desktop");
        QCOMPARE(ThemeImporter::applyPendingIcons(assets, *imported, theirs), 0);
        QCOMPARE(ThemeImporter::applyPendingIcons(assets, *imported, theirs + QList<AppItem>{arrived}), 1);
        const QJsonObject adopted =
            QJsonDocument::fromJson(*imported->data(QLatin1String(SettingsKeys::kCustomAppIcons))).object();
        QCOMPARE(bytesOf(adopted.value(arrived.path)["imagePath"].toString()), bytesOf(icon));
        QVERIFY(!QFile::exists(assets + "/PendingIcons.json"));

        QCOMPARE(friendly.main->stringList(QLatin1String(SettingsKeys::kImportedThemeIds)),
                 QStringList{Uuids::toText(summary->themeId)});
        // The unpacked package goes with the last handle on it.
        inspected = ThemeImporter::Failure{};
        inspection = {};
        QCOMPARE(QDir(tmp).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
        // A second import of the same theme is a question, and a re-export
        // keeps the theme id that question depends on.
        QVERIFY(std::get<ThemeImporter::Inspection>(friendly.importer().inspect(package, theirs)).alreadyImported);
        QCOMPARE(me.exporter().exportSpace(work, package, mine, &error)->themeId, summary->themeId);
    }

    void keepingMyFoldersKeepsTheirAppsOffTheGrid()
    {
        const QList<AppItem> apps{app("/a/x.desktop", "X", "x.desktop"), app("/a/y.desktop", "Y", "y.desktop")};
        Profile me(env->root());
        const QUuid mine = QUuid::createUuid();
        me.main->set(QJsonDocument(QJsonArray{FolderItem{mine, "Mine", {apps[0].path}, {}, {apps[0].path}, {}}.toJson()})
                         .toJson(QJsonDocument::Compact),
                     QLatin1String(SettingsKeys::kFolders));
        QJsonObject snapshot{{"slots", QJsonArray{SlotKey::app(apps[0].path), SlotKey::app(apps[1].path)}}};
        const QString staging = env->path(QStringLiteral("pkg"));
        QDir().mkpath(staging);
        ThemeImporter::Inspection inspection;
        inspection.manifest.themeId = QUuid::createUuid();
        inspection.manifest.name = QStringLiteral("T");
        inspection.snapshot = snapshot;
        inspection.packageRoot = staging;
        QString error;
        const auto result = me.importer().importTheme(inspection, ThemeImporter::FolderChoice::keepMine, apps,
                                                      *me.spaces, &error);
        QVERIFY2(result, qPrintable(error));
        // X lives in my folder, so its theme cell closes and the folder takes
        // a free place.
        QCOMPARE(me.provider->storeForSpace(result->space.id)->stringList(QLatin1String(SettingsKeys::kSlots)),
                 (QStringList{SlotKey::folder(mine), SlotKey::app(apps[1].path)}));
    }

    void packageNames()
    {
        using ThemePackageLayout::packageFileName;
        QCOMPARE(packageFileName(QStringLiteral("  A/B:C \n")), QStringLiteral("ABC.tillmoratheme"));
        QCOMPARE(packageFileName(QStringLiteral("///")), QStringLiteral("Space.tillmoratheme"));
        QCOMPARE(packageFileName(QStringLiteral("W*o?r\"k<>|\\")), QStringLiteral("Work.tillmoratheme"));
    }
};


QTEST_GUILESS_MAIN(ThemePackagesTest)
#include "tst_theme_packages.moc"
