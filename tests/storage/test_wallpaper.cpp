// The wallpaper choice: the profile's own image (copied into the program's
// folder, refused when it is no image) over the machine-wide style, and what
// the overlay draws when the chosen file has gone.
#include "common/LogCapture.h"
#include "common/TempEnvironment.h"
#include "foundation/LogTexts.h"
#include "spaces/SpaceStorageProvider.h"
#include "storage/FileSystemStore.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStore.h"
#include "storage/WallpaperRepository.h"
#include "storage/WallpaperResolver.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>

class WallpaperTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TempEnvironment> env;
    std::shared_ptr<UserDefaultsStore> main;
    std::shared_ptr<SpaceStorageProvider> provider;
    std::shared_ptr<FileSystemStore> files;
    std::unique_ptr<WallpaperRepositoryImpl> repo;

    QString makeImage(const QString &name, Qt::GlobalColor color = Qt::darkGreen)
    {
        QImage image(40, 30, QImage::Format_RGB32);
        image.fill(color);
        const QString path = env->path(name);
        [&] { QVERIFY(image.save(path)); }();
        return path;
    }
    QStringList wallpaperFiles() const
    {
        return QDir(files->pathFor(QStringLiteral("Wallpapers"))).entryList(QDir::Files);
    }

private Q_SLOTS:
    void init()
    {
        env = std::make_unique<TempEnvironment>();
        main = UserDefaultsStore::standard(env->configDir());
        provider = std::make_shared<SpaceStorageProvider>(main, env->configDir());
        files = std::make_shared<FileSystemStore>(env->dataDir());
        repo = std::make_unique<WallpaperRepositoryImpl>(std::make_shared<SpaceAwareStore>(provider, main), main, files);
    }

    void aChosenImageIsCopiedInAndAFileThatIsNoImageChangesNothing()
    {
        QCOMPARE(repo->choice().style, WallpaperChoice::Style::Desktop);
        QCOMPARE(repo->choice().color, QColor(QLatin1String(WallpaperRepositoryImpl::kDefaultColor)));

        const QString original = makeImage(QStringLiteral("beach.png"));
        QString error;
        QVERIFY2(repo->chooseImage(original, &error), qPrintable(error));
        const QString copy = repo->choice().imagePath;
        QCOMPARE(QFileInfo(copy).absolutePath(), files->pathFor(QStringLiteral("Wallpapers")));
        QVERIFY(QFileInfo(copy).fileName().endsWith(QLatin1String(".png")));
        QVERIFY(QUuid::fromString(QFileInfo(copy).completeBaseName()).isNull() == false);
        QCOMPARE(QImage(copy).pixelColor(0, 0), QColor(Qt::darkGreen));
        QFile::remove(original); // the program's copy does not depend on it
        QVERIFY(QFile::exists(copy));

        // Text dressed as an image, a truncated JPEG, a folder, nothing:
        // each refused with the reason, the chosen image and the folder kept.
        QFile fake(env->path(QStringLiteral("notes.jpg")));
        QVERIFY(fake.open(QIODevice::WriteOnly));
        fake.write("not a picture at all");
        fake.close();
        QFile truncated(env->path(QStringLiteral("cut.jpg")));
        QVERIFY(truncated.open(QIODevice::WriteOnly));
        truncated.write(QByteArray::fromHex("ffd8ffe000104a46494600"));
        truncated.close();
        for (const QString &bad : {fake.fileName(), truncated.fileName(), env->root(), env->path("absent.png")}) {
            error.clear();
            QVERIFY2(!repo->chooseImage(bad, &error), qPrintable(bad));
            QCOMPARE(error, QLatin1String(WallpaperRepositoryImpl::kNotAnImage));
        }
        QCOMPARE(repo->choice().imagePath, copy);
        QCOMPARE(wallpaperFiles().size(), 1);

        // A second choice gets its own copy; the first stays on disk (a
        // Space's snapshot may still name it).
        QVERIFY(repo->chooseImage(makeImage(QStringLiteral("forest.jpg"), Qt::darkBlue)));
        QVERIFY(repo->choice().imagePath.endsWith(QLatin1String(".jpg")));
        QCOMPARE(wallpaperFiles().size(), 2);
        QVERIFY(QFile::exists(copy));
    }

    // The image belongs to the Space, the style and colour to the machine.
    void theImageIsPerSpaceAndTheStyleIsShared()
    {
        QVERIFY(repo->chooseImage(makeImage(QStringLiteral("standard.png"))));
        const QString standardImage = repo->choice().imagePath;

        const QUuid space = QUuid::createUuid();
        provider->setActiveSpaceId(space);
        QVERIFY(repo->choice().imagePath.isEmpty());
        repo->useColor(QColor(0x33, 0x66, 0x99));
        QCOMPARE(repo->choice().style, WallpaperChoice::Style::Color);
        QCOMPARE(main->string(QLatin1String(SettingsKeys::kBackgroundColor)), QStringLiteral("#336699"));
        QVERIFY(repo->chooseImage(makeImage(QStringLiteral("space.png"))));
        const QString spaceImage = repo->choice().imagePath;
        QVERIFY(spaceImage != standardImage);
        QCOMPARE(provider->storeForSpace(space)->string(QLatin1String(SettingsKeys::kCustomBackgroundImagePath)),
                 spaceImage);

        provider->setActiveSpaceId(std::nullopt);
        QCOMPARE(repo->choice().imagePath, standardImage);
        QCOMPARE(repo->choice().color, QColor(0x33, 0x66, 0x99)); // the colour set while in the Space
        repo->useDesktop();
        QVERIFY(repo->choice().imagePath.isEmpty());
        QCOMPARE(repo->choice().style, WallpaperChoice::Style::Desktop);
        provider->setActiveSpaceId(space);
        QCOMPARE(repo->choice().imagePath, spaceImage); // the Space's image untouched
    }

    void theResolverFallsBackWhenTheChosenFileGoesAndSaysSoOnce()
    {
        const QString desktop = makeImage(QStringLiteral("desktop.png"));
        QVERIFY(repo->chooseImage(makeImage(QStringLiteral("mine.png"))));
        const QString mine = repo->choice().imagePath;
        WallpaperResolver resolver;
        using Source = WallpaperResolver::Result::Source;

        auto result = resolver.resolve(repo->choice(), desktop);
        QCOMPARE(result.source, Source::ProfileImage);
        QCOMPARE(result.imagePath, mine);
        QVERIFY(result.notice.isEmpty());

        QVERIFY(QFile::rename(mine, mine + QStringLiteral(".away"))); // an unmounted disk
        LogCapture log;
        const QString line = QString::asprintf(LogTexts::kWallpaperMissing, qUtf8Printable(mine));
        for (int i = 0; i < 3; ++i) {
            result = resolver.resolve(repo->choice(), desktop);
            QCOMPARE(result.source, Source::DesktopWallpaper);
            QCOMPARE(result.imagePath, desktop);
            QVERIFY(result.notice.contains(mine));
        }
        QCOMPARE(log.count(line), 1);
        QCOMPARE(repo->choice().imagePath, mine); // still chosen

        // No desktop wallpaper either: the colour.
        result = resolver.resolve(repo->choice(), QString());
        QCOMPARE(result.source, Source::Color);
        QVERIFY(result.imagePath.isEmpty());

        QVERIFY(QFile::rename(mine + QStringLiteral(".away"), mine));
        QCOMPARE(resolver.resolve(repo->choice(), desktop).source, Source::ProfileImage);
        QCOMPARE(log.count(line), 1);

        // Without an image the style decides between the desktop and the colour.
        repo->useColor(Qt::black);
        QCOMPARE(resolver.resolve(repo->choice(), desktop).source, Source::Color);
        repo->useDesktop();
        QCOMPARE(resolver.resolve(repo->choice(), desktop).source, Source::DesktopWallpaper);
        QCOMPARE(resolver.resolve(repo->choice(), env->path("gone.png")).source, Source::Color);
    }
};

QTEST_GUILESS_MAIN(WallpaperTest)
#include "test_wallpaper.moc"
