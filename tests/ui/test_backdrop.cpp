// The backdrop: made once per input at the screen's size, kept in memory and
// on disk, made again when the file changes, and following the desktop and
// settings written by another process while the launcher runs.
#include "common/TempEnvironment.h"
#include "fakes/FakeDesktopWallpaperSource.h"
#include "storage/AppearanceRepository.h"
#include "storage/DomainFile.h"
#include "storage/FileSystemStore.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStore.h"
#include "storage/WallpaperRepository.h"
#include "ui/BackdropCache.h"
#include "ui/BackdropPresenter.h"
#include "ui/BackdropProvider.h"

#include <QDateTime>
#include <QFile>
#include <QImage>
#include <QTest>

namespace {
QString writeImage(const QString &path, QSize size, QColor color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image.save(path) ? path : QString();
}

// Blurring and JPEG shift a flat colour a little.
bool near(QColor a, QColor b)
{
    return std::abs(a.red() - b.red()) < 12 && std::abs(a.green() - b.green()) < 12 && std::abs(a.blue() - b.blue()) < 12;
}
QColor middle(const QImage &image) { return image.pixelColor(image.width() / 2, image.height() / 2); }
}

class BackdropTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aBackdropIsMadeOncePerInputAndAgainWhenTheFileChanges()
    {
        TempEnvironment env;
        const QString cacheFolder = env.path(QStringLiteral("cache"));
        const QString wallpaper = writeImage(env.path(QStringLiteral("w.png")), {3000, 2000}, Qt::darkCyan);
        const BackdropSource sharp{wallpaper, {300, 200}, false};

        BackdropCache cache(cacheFolder);
        const QImage first = cache.image(sharp);
        QCOMPARE(first.size(), QSize(300, 200)); // the screen's size, not the file's
        QVERIFY(near(middle(first), Qt::darkCyan));
        QCOMPARE(cache.image(sharp).cacheKey(), first.cacheKey()); // from memory

        // A new process finds it on disk and does not make it again: what
        // the disk holds (here marked red) is what it gets.
        const QString kept = cache.fileFor(BackdropCache::keyFor(sharp));
        QVERIFY(QFile::exists(kept));
        QVERIFY(writeImage(kept, {300, 200}, Qt::red) == kept);
        QVERIFY(near(middle(BackdropCache(cacheFolder).image(sharp)), Qt::red));

        // Blur, another screen size and a changed file are each other inputs.
        const BackdropSource blurred{wallpaper, {300, 200}, true};
        const BackdropSource wide{wallpaper, {600, 200}, false};
        QVERIFY(BackdropCache::keyFor(blurred) != BackdropCache::keyFor(sharp));
        QCOMPARE(BackdropCache(cacheFolder).image(wide).size(), QSize(600, 200));
        QVERIFY(near(middle(BackdropCache(cacheFolder).image(blurred)), Qt::darkCyan));

        writeImage(wallpaper, {3000, 2000}, Qt::darkYellow);
        QFile file(wallpaper);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(5), QFileDevice::FileModificationTime));
        file.close();
        QVERIFY(near(middle(BackdropCache(cacheFolder).image(sharp)), Qt::darkYellow));
        QVERIFY(near(middle(cache.image(sharp)), Qt::darkYellow)); // the memory copy is not taken for it

        QVERIFY(BackdropCache::keyFor({env.path(QStringLiteral("none.png")), {300, 200}, true}).isEmpty());
    }

    void theBackdropFollowsTheDesktopAndSettingsWrittenElsewhere()
    {
        TempEnvironment env;
        auto store = UserDefaultsStore::standard(env.configDir());
        auto files = std::make_shared<FileSystemStore>(env.dataDir());
        WallpaperRepositoryImpl wallpapers(store, store, files);
        AppearanceRepositoryImpl appearance(store);
        auto desktop = std::make_shared<FakeDesktopWallpaperSource>();
        using Scheme = DesktopWallpaperSource::State::Scheme;
        desktop->state = {writeImage(env.path(QStringLiteral("desk.png")), {800, 500}, Qt::darkRed), Scheme::Light};

        BackdropPresenter backdrop;
        backdrop.setScreenSize({160, 100});
        backdrop.attach({&wallpapers, &appearance, store, desktop, QString()});
        QVERIFY(backdrop.waitUntilPrepared(10000));
        QVERIFY(backdrop.hasImage());
        QVERIFY(near(middle(backdrop.frame()->image()), Qt::darkRed));
        QVERIFY(!backdrop.dark()); // "auto" follows the desktop
        QCOMPARE(backdrop.titleColor().lightness() < 128, true); // dark names on light glass

        // The desktop's wallpaper and colour scheme change while it runs.
        desktop->change({writeImage(env.path(QStringLiteral("desk2.png")), {800, 500}, Qt::darkBlue), Scheme::NoPreference});
        QVERIFY(backdrop.waitUntilPrepared(10000));
        QVERIFY(near(middle(backdrop.frame()->image()), Qt::darkBlue));
        QVERIFY(backdrop.dark()); // no preference: the launcher's own dark glass
        QCOMPARE(backdrop.titleColor(), QColor(Qt::white));
        // A chosen title colour holds whatever the glass; an unknown one reads as "auto".
        appearance.setTitleColorOverride(QStringLiteral("dark"));
        backdrop.refresh();
        QVERIFY(backdrop.titleColor().lightness() < 128);
        store->set(QStringLiteral("chartreuse"), QLatin1String(SettingsKeys::kTitleColorOverride));
        backdrop.refresh();
        QCOMPARE(backdrop.titleColor(), QColor(Qt::white));
        // The glass settings: off shows the picture bare; the user's own hue and strength.
        const double standardAlpha = backdrop.glassTint().alphaF();
        QVERIFY(standardAlpha > 0);
        appearance.setLiquidGlassEnabled(false);
        backdrop.refresh();
        QCOMPARE(backdrop.glassTint().alpha(), 0);
        appearance.setLiquidGlassEnabled(true);
        appearance.setLiquidGlassTintStandard(false);
        appearance.setLiquidGlassTintHue(0.0);
        appearance.setLiquidGlassTintIntensity(0.3);
        backdrop.refresh();
        QCOMPARE(backdrop.glassTint().hslHue(), 0);
        QVERIFY(qAbs(backdrop.glassTint().alphaF() - 0.3) < 0.01);
        QVERIFY(!backdrop.cellPlates() && !backdrop.filled());
        appearance.setCellBackgroundEnabled(true);
        backdrop.refresh();
        QVERIFY(backdrop.cellPlates());
        // The time-of-day tint: night is bluer than the glass; midday is the glass as it is.
        appearance.setLiquidGlassTintStandard(true);
        backdrop.refresh();
        const QColor plain = backdrop.glassTint();
        appearance.setSunBackgroundEnabled(true);
        appearance.setSunBackgroundAutoEnabled(false);
        appearance.setSunBackgroundManualTime(23);
        backdrop.refresh();
        QVERIFY(backdrop.glassTint() != plain && backdrop.glassTint().blueF() > backdrop.glassTint().redF());
        appearance.setSunBackgroundManualTime(12);
        backdrop.refresh();
        QCOMPARE(backdrop.glassTint(), plain);

        // Another process (the command line) picks a plain colour and a light look.
        wallpapers.useDesktop(); // the settings file exists, as it does once the user chose anything
        QVERIFY(store->synchronize());
        QStringList seen;
        store->watchExternalChanges(this, [&](const QStringList &keys) {
            seen += keys;
            backdrop.refresh();
        });
        DomainFile::Content merged;
        QString error;
        QVERIFY2(DomainFile::write(store->fileName(),
                                   {{QLatin1String(SettingsKeys::kBackgroundStyle), QVariant(QStringLiteral("color"))},
                                    {QLatin1String(SettingsKeys::kBackgroundColor), QVariant(QStringLiteral("#204060"))},
                                    {QLatin1String(SettingsKeys::kTheme), QVariant(QStringLiteral("light"))}},
                                   &merged, &error),
                 qPrintable(error));
        QTRY_VERIFY_WITH_TIMEOUT(seen.contains(QLatin1String(SettingsKeys::kBackgroundColor)), 5000);
        QVERIFY(!backdrop.hasImage());
        QCOMPARE(backdrop.color(), QColor(0x20, 0x40, 0x60));
        QVERIFY(!backdrop.dark());
    }
};

QTEST_MAIN(BackdropTest)
#include "test_backdrop.moc"
