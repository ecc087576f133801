#include "catalogue/AppsRepositoryImpl.h"

#include "foundation/BundleIdentity.h"
#include "foundation/Logging.h"
#include "catalogue/ExclusionRules.h"
#include "catalogue/FolderWalk.h"
#include "catalogue/SmallFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QSet>
#include <cerrno>

namespace {

const QString kAppSuffix = QStringLiteral(".app");

QStringList cleanPaths(const QStringList &paths)
{
    QStringList out;
    for (const QString &path : paths)
        if (!path.isEmpty())
            out.append(QDir::cleanPath(path));
    return out;
}

// The .app folder around the running executable (…/X.app/Contents/MacOS/x).
QString runningBundlePath()
{
    if (!QCoreApplication::instance())
        return {};
    const QString executable = QCoreApplication::applicationFilePath();
    const qsizetype marker = executable.lastIndexOf(QLatin1String(".app/Contents/MacOS/"));
    return marker < 0 ? QString() : executable.left(marker + kAppSuffix.size());
}

}

struct AppsRepositoryImpl::Scan {
    AppScan result;
    QHash<QString, CachedInfo> cache;
};

QStringList AppsRepositoryImpl::standardSearchDirectories()
{
    return {QDir::homePath() + QStringLiteral("/Applications"),
            QStringLiteral("/Applications"),
            QStringLiteral("/Applications/Utilities"),
            QStringLiteral("/System/Applications"),
            QStringLiteral("/System/Applications/Utilities"),
            QLatin1String(kCoreServicesPath),
            QStringLiteral("/System/Cryptexes/App/System/Applications")};
}

bool AppsRepositoryImpl::searchDirectoriesOverridden()
{
    return qEnvironmentVariableIsSet(kAppDirsVariable);
}

QStringList AppsRepositoryImpl::searchDirectoriesFromEnvironment()
{
    if (!searchDirectoriesOverridden())
        return standardSearchDirectories();
    return cleanPaths(qEnvironmentVariable(kAppDirsVariable).split(u':', Qt::SkipEmptyParts));
}

AppsRepositoryImpl::AppsRepositoryImpl(QStringList searchDirectories, QString coreServicesPath,
                                       QStringList allowedCoreServicesApps)
    : m_searchDirectories(cleanPaths(searchDirectories))
    , m_coreServicesPath(QDir::cleanPath(coreServicesPath))
    , m_allowedCoreServicesApps(std::move(allowedCoreServicesApps))
{
    const QString own = runningBundlePath();
    const auto ownInfo = own.isEmpty() ? std::nullopt : BundleInfo::read(own);
    setOwnBundle(own, ownInfo ? ownInfo->identifier : QString());
}

void AppsRepositoryImpl::setOwnBundle(const QString &bundlePath, const QString &identifier)
{
    m_ownBundlePath = bundlePath.isEmpty() ? QString() : QDir::cleanPath(bundlePath);
    m_ownIdentifier = identifier;
}

void AppsRepositoryImpl::addSource(std::shared_ptr<AppSource> source)
{
    if (source)
        m_sources.append(std::move(source));
}

QList<std::shared_ptr<AppSource>> AppsRepositoryImpl::sources() const
{
    return m_sources;
}

void AppsRepositoryImpl::setUserFolders(const QStringList &folders)
{
    QStringList clean = cleanPaths(folders);
    for (const auto &source : m_sources)
        source->setUserFolders(clean);
    QMutexLocker lock(&m_userFoldersMutex);
    m_userFolders = std::move(clean);
}

QStringList AppsRepositoryImpl::userFolders() const
{
    QMutexLocker lock(&m_userFoldersMutex);
    return m_userFolders;
}

QStringList AppsRepositoryImpl::watchedDirectories() const
{
    QStringList out = m_searchDirectories + userFolders();
    for (const auto &source : m_sources)
        out += source->watchedDirectories();
    out.removeDuplicates();
    return out;
}

bool AppsRepositoryImpl::shouldIncludeApp(const QString &bundlePath) const
{
    return shouldIncludeApp(bundlePath, BundleInfo::read(bundlePath).value_or(BundleInfo{}));
}

bool AppsRepositoryImpl::shouldIncludeApp(const QString &bundlePath, const BundleInfo &info) const
{
    const QString path = QDir::cleanPath(bundlePath);
    const QString fileName = path.mid(path.lastIndexOf(u'/') + 1);

    if (!m_ownBundlePath.isEmpty() && path == m_ownBundlePath)
        return false;
    if (!info.identifier.isEmpty()
        && ((!m_ownIdentifier.isEmpty() && info.identifier == m_ownIdentifier)
            || info.identifier == QLatin1String(BundleIdentity::kIdentifier)))
        return false;
    if (ExclusionRules::mentionsLauncher(info.identifier))
        return false;
    if (ExclusionRules::mentionsLauncher(info.name) || ExclusionRules::mentionsLauncher(info.displayName))
        return false;
    // The system keeps the real Safari in the cryptex folder; the copy in
    // /Applications would list it twice.
    if (fileName == QLatin1String("Safari.app") && path == QLatin1String("/Applications/Safari.app"))
        return false;
    static const QStringList kLauncherFileNames = {QStringLiteral("Tillmora.app"), QStringLiteral("LaunchpadApp.app"),
                                                   QStringLiteral("App Launcher.app"),
                                                   QStringLiteral("AppLauncher.app")};
    if (kLauncherFileNames.contains(fileName))
        return false;
    return !ExclusionRules::mentionsLauncher(fileName);
}

AppScan AppsRepositoryImpl::scan() const
{
    Scan scan;
    {
        QMutexLocker lock(&m_cacheMutex);
        for (const QString &directory : m_searchDirectories + userFolders())
            scanDirectory(scan, directory);
        m_infoCache.swap(scan.cache); // forget bundles that are gone
    }
    const qsizetype bundles = scan.result.apps().size();
    for (const auto &source : m_sources)
        scan.result.merge(source->scan());
    qCDebug(lcServices, "Fetched %ld apps (%ld bundles)", long(scan.result.apps().size()), long(bundles));
    return scan.result;
}

void AppsRepositoryImpl::scanDirectory(Scan &scan, const QString &directory) const
{
    // Bundles in the folder and in its plain sub-folders (suites), no deeper;
    // a link to a folder is not a suite. Missing or unreadable folders are
    // normal (there is no ~/Applications on most machines).
    const bool coreServices = directory == m_coreServicesPath;
    FolderWalk::Options options;
    options.maxDepth = 1;
    options.listed = [&](const QString &folder, const QSet<QString> &subfolders) {
        scan.result.addListedFolder(folder, subfolders);
    };
    FolderWalk::walk(directory, options, [&](const FolderWalk::Entry &entry) {
        if (entry.name.endsWith(kAppSuffix)) {
            consider(scan, entry.path, entry.name, coreServices);
            return false;
        }
        return entry.isFolder;
    });
}

void AppsRepositoryImpl::consider(Scan &scan, const QString &bundlePath, const QString &fileName,
                                  bool fromCoreServices) const
{
    if (fromCoreServices && !m_allowedCoreServicesApps.contains(fileName))
        return;
    if (scan.result.contains(bundlePath))
        return;
    bool unreadable = false;
    const auto info = infoOf(scan, bundlePath, unreadable);
    if (unreadable)
        scan.result.addUnreadable(bundlePath);
    // Without an information dictionary or an identifier it is no application.
    if (!info || info->identifier.isEmpty())
        return;
    if (!shouldIncludeApp(bundlePath, *info))
        return;
    scan.result.add(AppItems::make(bundlePath, info->shownName(bundlePath), info->identifier));
}

std::optional<BundleInfo> AppsRepositoryImpl::infoOf(Scan &scan, const QString &bundlePath, bool &unreadable) const
{
    for (const char *relative : BundleInfo::kPlistLocations) {
        const QString plist = bundlePath + QLatin1String(relative);
        int error = 0;
        const auto stamp = FileStamp::of(plist, &error);
        if (!stamp) {
            if (error == ENOENT || error == ENOTDIR || error == ELOOP)
                continue;
            unreadable = true; // a Contents folder this run may not enter
            return std::nullopt;
        }
        // The stamp is taken before reading: a file changed meanwhile is read
        // again next time.
        const auto cached = m_infoCache.constFind(plist);
        if (cached != m_infoCache.cend() && cached->stamp == *stamp) {
            scan.cache.insert(plist, *cached);
            return cached->info;
        }
        const auto file = SmallFile::read(plist);
        if (file.status == SmallFile::Status::Unreadable) {
            unreadable = true;
            return std::nullopt;
        }
        const CachedInfo entry{*stamp, file.status == SmallFile::Status::Read ? BundleInfo::parse(file.bytes)
                                                                              : std::nullopt};
        scan.cache.insert(plist, entry);
        return entry.info;
    }
    return std::nullopt;
}
