#include "catalogue/AppIconLookup.h"

#include "catalogue/AppsRepositoryImpl.h"
#include "catalogue/BundleInfo.h"
#include "catalogue/XdgDirectories.h"

#include <QDir>
#include <QFileInfo>
#include <mutex>

namespace {

// Without a desktop session Qt knows no theme; the common desktop themes give
// far more icons than hicolor alone, so the first one installed is used.
QString installedDefaultTheme()
{
    for (const char *theme : {"Adwaita", "breeze", "elementary", "Papirus", "Yaru"}) {
        for (const QString &root : AppIconLookupImpl::themeSearchPaths())
            if (QFileInfo::exists(root + u'/' + QLatin1String(theme) + QStringLiteral("/index.theme")))
                return QLatin1String(theme);
    }
    return QStringLiteral("hicolor");
}

void configureSearchPaths()
{
    static std::once_flag once;
    std::call_once(once, [] {
        QIcon::setThemeSearchPaths(AppIconLookupImpl::themeSearchPaths());
        QIcon::setFallbackSearchPaths(AppIconLookupImpl::fallbackSearchPaths());
        // Every desktop ships hicolor; it is where applications install
        // icons. Without a desktop theme Qt looks up no theme at all.
        QIcon::setFallbackThemeName(QStringLiteral("hicolor"));
        if (QIcon::themeName().isEmpty() || QIcon::themeName() == QLatin1String("hicolor"))
            QIcon::setThemeName(installedDefaultTheme());
    });
}

QStringList withSuffix(const QStringList &dirs, const QString &suffix)
{
    QStringList out;
    for (const QString &dir : dirs)
        out.append(dir + suffix);
    return out;
}

QStringList dataDirsForIcons()
{
    return XdgDirectories::dataDirsWithExports(
        AppsRepositoryImpl::searchDirectoriesOverridden() ? QStringList() : XdgDirectories::systemExportDirs());
}

}

AppIconLookupImpl::AppIconLookupImpl(QList<std::shared_ptr<AppSource>> sources)
    : m_sources(std::move(sources))
{
}

QStringList AppIconLookupImpl::themeSearchPaths()
{
    // ~/.icons first, as the icon theme rules have it, then every data folder.
    return QStringList{QDir::homePath() + QStringLiteral("/.icons")} + withSuffix(dataDirsForIcons(), QStringLiteral("/icons"));
}

QStringList AppIconLookupImpl::fallbackSearchPaths()
{
    return withSuffix(dataDirsForIcons(), QStringLiteral("/pixmaps"));
}

QIcon AppIconLookupImpl::icon(const QString &appPath) const
{
    configureSearchPaths();
    if (appPath.endsWith(QLatin1String(".app"))) {
        if (const auto info = BundleInfo::read(appPath)) {
            const QString file = info->iconPath(appPath);
            if (!file.isEmpty())
                return QIcon(file);
        }
        return {};
    }
    for (const auto &source : m_sources)
        if (const auto reference = source->iconReference(appPath))
            return resolve(*reference);
    return {};
}

QIcon AppIconLookupImpl::resolve(const AppIconReference &reference)
{
    QString file = reference.filePath;
    QString name = reference.themeName;
    if (QDir::isAbsolutePath(name))
        file = name;
    if (!file.isEmpty())
        return QFileInfo(file).isFile() ? QIcon(file) : QIcon();
    // "Icon=foo.png" is wrong but common; the theme knows the icon as "foo".
    for (const char *extension : {".png", ".svg", ".xpm"})
        if (name.endsWith(QLatin1String(extension)))
            name.chop(4);
    return name.isEmpty() ? QIcon() : QIcon::fromTheme(name);
}
