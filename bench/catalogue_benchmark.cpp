// Scans 1,000, 10,000 and 50,000 fixture bundles and as many desktop entries
// and prints the cost per 1,000 entries beside the floor: listing the same
// folders and parsing the same files once, with nothing else. A scan that
// grows linearly keeps its cost per 1,000 and its ratio to the floor from
// row to row.
#include "CatalogueFixtures.h"
#include "catalogue/AppsRepositoryImpl.h"
#include "platform/linux/DesktopEntrySource.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <functional>
#include <unistd.h>
#include <vector>

#include <gio/gio.h>
#include <plist/plist.h>

using namespace CatalogueFixtures;

namespace {

constexpr int kRounds = 7;

double medianMs(const std::function<qsizetype()> &work, qsizetype expected)
{
    work(); // warm: caches filled, code paged in
    std::vector<double> times;
    for (int i = 0; i < kRounds; ++i) {
        QElapsedTimer timer;
        timer.start();
        const qsizetype found = work();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
        if (found != expected) {
            std::fprintf(stderr, "expected %lld entries, found %lld\n", (long long)expected, (long long)found);
            std::exit(1);
        }
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void makeFixtures(const QString &root, int count)
{
    for (int i = 0; i < count; ++i) {
        const QString name = QStringLiteral("App %1").arg(i, 5, 10, QLatin1Char('0'));
        makeBundle(root + "/Applications", name + ".app",
                   {QStringLiteral("com.example.app%1").arg(i), name, {}, QStringLiteral("AppIcon"),
                    i % 2 ? PlistFormat::Binary : PlistFormat::Xml});
        makeDesktopEntry(root + "/data/applications", QStringLiteral("org.example.App%1.desktop").arg(i),
                         QStringLiteral("Type=Application\nVersion=1.5\nName=%1\nName[de]=Programm %2\n"
                                        "GenericName=Example\nComment=An application of the benchmark\n"
                                        "Exec=true %U\nIcon=org.example.App%2\nTerminal=false\n"
                                        "Categories=Utility;\nMimeType=text/plain;\nStartupNotify=true\n")
                             .arg(name)
                             .arg(i));
    }
}

QByteArray readAll(const QByteArray &path)
{
    QByteArray out;
    const int fd = ::open(path.constData(), O_RDONLY);
    if (fd < 0)
        return out;
    char buffer[16384];
    for (ssize_t n; (n = ::read(fd, buffer, sizeof buffer)) > 0;)
        out.append(buffer, n);
    ::close(fd);
    return out;
}

// Calls visit with the path of every entry of the folder, unsorted.
void forEachEntry(const QByteArray &folder, const std::function<void(const QByteArray &)> &visit)
{
    DIR *dir = ::opendir(folder.constData());
    if (!dir)
        return;
    while (const dirent *e = ::readdir(dir))
        if (e->d_name[0] != '.')
            visit(folder + '/' + e->d_name);
    ::closedir(dir);
}

// The floor: readdir over the folders, each Info.plist read and parsed by
// libplist, each desktop file parsed by GKeyFile. Nothing is sorted, checked
// or kept.
qsizetype floorBundles(const QByteArray &bundles)
{
    qsizetype parsed = 0;
    forEachEntry(bundles, [&](const QByteArray &bundle) {
        const QByteArray bytes = readAll(bundle + "/Contents/Info.plist");
        plist_t root = nullptr;
        plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &root);
        parsed += root != nullptr;
        plist_free(root);
    });
    return parsed;
}

qsizetype floorEntries(const QByteArray &entries)
{
    qsizetype parsed = 0;
    forEachEntry(entries, [&](const QByteArray &entry) {
        GKeyFile *keys = g_key_file_new();
        parsed += g_key_file_load_from_file(keys, entry.constData(), G_KEY_FILE_NONE, nullptr);
        g_key_file_free(keys);
    });
    return parsed;
}

}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    std::printf("ms per 1,000 entries, median of %d runs. warm: the same catalogue scanning again (what a\n"
                "reload after an install does); first: a new catalogue, nothing cached; floor: listing the\n"
                "folders and parsing every file once, nothing else.\n\n",
                kRounds);
    std::printf("%7s %7s | %8s %8s %8s %6s %6s | %9s %8s %6s | %9s %8s %6s\n", "bundles", "entries", "warm",
                "first", "floor", "warm/f", "first/f", "bundles 1st", "floor", "ratio", "entries 1st", "floor",
                "ratio");
    for (const int count : {1000, 10000, 50000}) {
        QTemporaryDir root;
        makeFixtures(root.path(), count);
        // Only the fixtures: no system folders, no Flatpak or Snap exports.
        qputenv("HOME", root.path().toLocal8Bit());
        qputenv("XDG_DATA_HOME", (root.path() + "/data").toLocal8Bit());
        qputenv("XDG_DATA_DIRS", (root.path() + "/none").toLocal8Bit());
        qputenv(AppsRepositoryImpl::kAppDirsVariable, (root.path() + "/Applications").toLocal8Bit());

        const QByteArray bundles = QFile::encodeName(root.path() + "/Applications");
        const QByteArray entries = QFile::encodeName(root.path() + "/data/applications");
        const auto makeRepo = [](bool withEntries) {
            auto repo = std::make_unique<AppsRepositoryImpl>(AppsRepositoryImpl::searchDirectoriesFromEnvironment());
            if (withEntries)
                repo->addSource(std::make_shared<DesktopEntrySource>());
            return repo;
        };

        const auto repo = makeRepo(true);
        const double warm = medianMs([&] { return repo->fetch().size(); }, 2 * count);
        const double first = medianMs([&] { return makeRepo(true)->fetch().size(); }, 2 * count);
        const double bundlesFirst = medianMs([&] { return makeRepo(false)->fetch().size(); }, count);
        const double entriesFirst = medianMs([&] { return DesktopEntrySource().fetch().size(); }, count);
        const double bundleFloor = medianMs([&] { return floorBundles(bundles); }, count);
        const double entryFloor = medianMs([&] { return floorEntries(entries); }, count);
        const double floor = bundleFloor + entryFloor;
        const auto per1000 = [](double ms, qsizetype n) { return ms * 1000.0 / double(n); };
        std::printf("%7d %7d | %8.2f %8.2f %8.2f %6.2f %6.2f | %11.2f %8.2f %6.2f | %11.2f %8.2f %6.2f\n", count,
                    count, per1000(warm, 2 * count), per1000(first, 2 * count), per1000(floor, 2 * count),
                    warm / floor, first / floor, per1000(bundlesFirst, count), per1000(bundleFloor, count),
                    bundlesFirst / bundleFloor, per1000(entriesFirst, count), per1000(entryFloor, count),
                    entriesFirst / entryFloor);
    }
    return 0;
}
