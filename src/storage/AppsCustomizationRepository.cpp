#include "storage/AppsCustomizationRepository.h"

#include "foundation/Uuids.h"
#include "storage/FileSystemStore.h"
#include "storage/SettingsKeys.h"

#include <QDir>
#include <QImage>
#include <QImageReader>

namespace {
constexpr int kMaxIconEdge = 1024;
}

AppsCustomizationRepositoryImpl::AppsCustomizationRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> standardStore,
                                                                 std::shared_ptr<FileSystemStore> files)
    : defaultsKey(QLatin1String(SettingsKeys::kCustomAppIcons))
    , m_cache(standardStore, defaultsKey, [](const CustomAppIcon &icon) { return QJsonValue(icon.toJson()); },
            [](const QJsonValue &v) {
                return v.isObject() ? CustomAppIcon::fromJson(v.toObject()) : std::nullopt;
            })
    , m_store(std::move(standardStore))
    , m_files(std::move(files))
{
}

void AppsCustomizationRepositoryImpl::removeIcon(const QString &appPath)
{
    const auto existing = m_cache.get(appPath);
    if (!existing)
        return;
    if (!existing->isAsset())
        m_files->removeItemIfExists(existing->imagePath);
    m_cache.remove(appPath);
}

std::optional<CustomAppIcon> AppsCustomizationRepositoryImpl::importImage(const QString &appPath,
                                                                          const QString &imageFile, QString *error)
{
    QImageReader reader(imageFile);
    reader.setAutoTransform(true);
    QImage image = reader.read();
    if (image.isNull()) {
        if (error)
            *error = QStringLiteral("%1: %2").arg(QLatin1String(kImportErrorDomain), QLatin1String(kImportErrorMessage));
        return std::nullopt;
    }
    if (image.width() > kMaxIconEdge || image.height() > kMaxIconEdge)
        image = image.scaled(kMaxIconEdge, kMaxIconEdge, Qt::KeepAspectRatio, Qt::SmoothTransformation);

    const QString folder = m_files->pathFor(QStringLiteral("CustomIcons"));
    if (!m_files->ensureDirectory(folder, error))
        return std::nullopt;
    const QString target = QDir(folder).filePath(Uuids::newText() + QStringLiteral(".png"));
    if (!image.save(target, "PNG")) {
        if (error)
            *error = QStringLiteral("%1: %2").arg(QLatin1String(kImportErrorDomain), QLatin1String(kImportErrorMessage));
        return std::nullopt;
    }
    removeIcon(appPath);
    CustomAppIcon icon{target, image.hasAlphaChannel(), CustomAppIconBackgroundMode::material};
    m_cache.set(appPath, icon);
    return icon;
}

bool AppsCustomizationRepositoryImpl::assetIconsApplied() const
{
    return m_store->boolValue(QLatin1String(SettingsKeys::kAssetIconsApplied));
}

void AppsCustomizationRepositoryImpl::setAssetIconsApplied(bool applied)
{
    m_store->set(applied, QLatin1String(SettingsKeys::kAssetIconsApplied));
}

void AppsCustomizationRepositoryImpl::removeAllAssetIcons()
{
    QMap<QString, CustomAppIcon> kept;
    const auto &icons = m_cache.all();
    for (auto it = icons.cbegin(); it != icons.cend(); ++it)
        if (!it.value().isAsset())
            kept.insert(it.key(), it.value());
    m_cache.replaceAll(kept);
    m_store->removeObject(QLatin1String(SettingsKeys::kAssetIconsApplied));
}

void AppsCustomizationRepositoryImpl::moveAppPath(const QString &from, const QString &to)
{
    const auto icon = m_cache.get(from);
    if (!icon)
        return;
    m_cache.set(to, *icon);
    m_cache.remove(from);
}
