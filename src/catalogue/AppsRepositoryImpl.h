#pragma once

#include "catalogue/AppSource.h"
#include "catalogue/AppsRepository.h"
#include "catalogue/BundleInfo.h"
#include "catalogue/FileStamp.h"

#include <QHash>
#include <QMutex>
#include <QStringList>
#include <memory>

// The catalogue: application bundles from the search directories and the
// user-added folders, then the applications of every further source (desktop
// entries on Linux). Each path is listed once, where it was found first.
class AppsRepositoryImpl final : public AppsRepository {
public:
    static constexpr const char *kCoreServicesPath = "/System/Library/CoreServices";
    // Colon-separated folders that replace every fixed application folder.
    static constexpr const char *kAppDirsVariable = "TILLMORA_APP_DIRS";

    // The seven bundle folders, the user's own first.
    static QStringList standardSearchDirectories();
    // TILLMORA_APP_DIRS when set, else the standard folders.
    static QStringList searchDirectoriesFromEnvironment();
    static bool searchDirectoriesOverridden();

    explicit AppsRepositoryImpl(QStringList searchDirectories,
                                QString coreServicesPath = QLatin1String(kCoreServicesPath),
                                QStringList allowedCoreServicesApps = {QStringLiteral("Finder.app")});

    AppScan scan() const override;

    // The exclusion test: true when the bundle may appear in the catalogue.
    bool shouldIncludeApp(const QString &bundlePath) const;
    bool shouldIncludeApp(const QString &bundlePath, const BundleInfo &info) const;

    // The running program's own bundle (excluded by path and identifier).
    // Defaults to the bundle around the executable, if it runs from one.
    void setOwnBundle(const QString &bundlePath, const QString &identifier);
    // Set up once, on the main thread, before the first fetch.
    void addSource(std::shared_ptr<AppSource> source);
    QList<std::shared_ptr<AppSource>> sources() const;
    // The user-added source folders; may change while a fetch runs elsewhere.
    void setUserFolders(const QStringList &folders);
    QStringList userFolders() const;

    QStringList searchDirectories() const { return m_searchDirectories; }
    // Everything a monitor should watch: the search directories, the
    // user-added folders and the sources' folders.
    QStringList watchedDirectories() const;

private:
    struct CachedInfo {
        FileStamp stamp;
        std::optional<BundleInfo> info;
    };
    struct Scan;
    // The bundle's information dictionary; unreadable is set when there is
    // one that this run could not read (it may still be an application).
    std::optional<BundleInfo> infoOf(Scan &scan, const QString &bundlePath, bool &unreadable) const;
    void scanDirectory(Scan &scan, const QString &directory) const;
    void consider(Scan &scan, const QString &bundlePath, const QString &fileName, bool fromCoreServices) const;

    QStringList m_searchDirectories;
    QString m_coreServicesPath;
    QStringList m_allowedCoreServicesApps;
    QString m_ownBundlePath;
    QString m_ownIdentifier;
    QList<std::shared_ptr<AppSource>> m_sources;
    // Info.plist files read by the last scan, by path. A file whose stamp is
    // unchanged is not read again: a reload after an install parses only what
    // the install touched.
    mutable QMutex m_cacheMutex;
    mutable QHash<QString, CachedInfo> m_infoCache;
    mutable QMutex m_userFoldersMutex;
    QStringList m_userFolders;
};
