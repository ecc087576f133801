#include "catalogue/SystemFolderPanelAssetCache.h"

#include <QDir>
#include <QFileInfo>

SystemFolderPanelAssetCache::SystemFolderPanelAssetCache(std::shared_ptr<FolderAssetSource> source)
    : m_source(std::move(source))
{
}

QString SystemFolderPanelAssetCache::displayName(const QString &path)
{
    if (!m_displayNameCache.contains(path))
        fill(path);
    return m_displayNameCache.value(path);
}

QString SystemFolderPanelAssetCache::iconName(const QString &path)
{
    if (!m_iconCache.contains(path))
        fill(path);
    return m_iconCache.value(path);
}

void SystemFolderPanelAssetCache::fill(const QString &path)
{
    const auto assets = m_source ? m_source->assetsOf(path) : std::nullopt;
    QString name = assets ? assets->displayName : QString();
    if (name.isEmpty()) {
        const QString clean = QDir::cleanPath(path);
        name = clean == QLatin1String("/") ? clean : QFileInfo(clean).fileName();
    }
    m_displayNameCache.insert(path, name);
    m_iconCache.insert(path, assets && !assets->iconName.isEmpty() ? assets->iconName : QLatin1String(kFallbackIcon));
}
