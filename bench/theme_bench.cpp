// Export and import of a Space of 500 apps with a 5 MB wallpaper, against a
// floor measured in the same run: copying the same bytes through a plain
// stored ZIP of the staging folder's files (what any package must cost).
#include "common/SpacesProfile.h"
#include "foundation/SlotKey.h"
#include "spaces/ThemePackage.h"
#include "storage/SettingsKeys.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>

namespace {

using Profile = SpacesProfile;

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    qputenv("TMPDIR", dir.path().toUtf8());
    const int rounds = 7;

    QList<AppItem> apps;
    QStringList slots;
    for (int i = 0; i < 500; ++i) {
        const QString path = QStringLiteral("/usr/share/applications/bench-%1.desktop").arg(i);
        apps.append({QUuid::createUuid(), path, QStringLiteral("App %1").arg(i), QFileInfo(path).fileName()});
        slots.append(SlotKey::app(path));
    }
    const QString wallpaper = dir.filePath(QStringLiteral("wallpaper.jpg"));
    {
        QFile f(wallpaper);
        f.open(QIODevice::WriteOnly);
        QByteArray bytes(5 * 1024 * 1024, Qt::Uninitialized);
        QRandomGenerator(7).fillRange(reinterpret_cast<quint32 *>(bytes.data()), bytes.size() / 4);
        f.write(bytes); // like a photo: it does not compress
    }

    Profile me(dir.filePath(QStringLiteral("me")));
    const SpaceItem space = me.spaces->createSpace(QStringLiteral("Bench"), QStringLiteral("⏱"), QStringLiteral("#123456"), false);
    auto suite = me.provider->storeForSpace(space.id);
    suite->set(slots, QLatin1String(SettingsKeys::kSlots));
    suite->set(wallpaper, QLatin1String(SettingsKeys::kCustomBackgroundImagePath));

    QList<double> exportMs, importMs, zipMs, unzipMs;
    const QString package = dir.filePath(QStringLiteral("Bench.tillmoratheme"));
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer t;
        t.start();
        QString error;
        const auto summary = me.exporter().exportSpace(space, package, apps, &error);
        exportMs.append(t.nsecsElapsed() / 1e6);
        if (!summary) {
            std::fprintf(stderr, "export failed: %s\n", qPrintable(error));
            return 1;
        }

        Profile other(dir.filePath(QStringLiteral("other-%1").arg(round)));
        ThemeImporter importer = other.importer();
        t.restart();
        auto inspected = importer.inspect(package, apps);
        const auto result = importer.importTheme(std::get<ThemeImporter::Inspection>(inspected),
                                                 ThemeImporter::FolderChoice::useTheme, apps, *other.spaces, &error);
        importMs.append(t.nsecsElapsed() / 1e6);
        if (!result) {
            std::fprintf(stderr, "import failed: %s\n", qPrintable(error));
            return 1;
        }

        // Floors: the wallpaper alone copied into a folder and zipped, and
        // that zip unpacked and the wallpaper copied out of it.
        const QString staging = dir.filePath(QStringLiteral("floor"));
        QDir(staging).removeRecursively();
        t.restart();
        QDir().mkpath(staging + QStringLiteral("/Wallpaper"));
        QFile::copy(wallpaper, staging + QStringLiteral("/Wallpaper/wallpaper.jpg"));
        ThemePackageLayout::writeArchive(staging, dir.filePath(QStringLiteral("floor.zip")));
        zipMs.append(t.nsecsElapsed() / 1e6);
        const QString out = dir.filePath(QStringLiteral("floor-out-%1").arg(round));
        QDir().mkpath(out);
        t.restart();
        ThemePackageLayout::extractArchive(dir.filePath(QStringLiteral("floor.zip")), out, &error);
        QFile::copy(out + QStringLiteral("/Wallpaper/wallpaper.jpg"), out + QStringLiteral("/copy.jpg"));
        unzipMs.append(t.nsecsElapsed() / 1e6);
    }
    std::printf("theme package, 500 apps + 5 MB wallpaper (median of %d)\n", rounds);
    std::printf("  export          %7.1f ms   floor (copy + zip the wallpaper)   %6.1f ms   ratio %.2f\n",
                median(exportMs), median(zipMs), median(exportMs) / median(zipMs));
    std::printf("  inspect+import  %7.1f ms   floor (unzip + copy the wallpaper) %6.1f ms   ratio %.2f\n",
                median(importMs), median(unzipMs), median(importMs) / median(unzipMs));
    return 0;
}
