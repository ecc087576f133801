#include "storage/FolderIconStyleRepository.h"

#include "storage/SettingsKeys.h"

FolderIconStyleRepositoryImpl::FolderIconStyleRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> standardStore)
    : defaultsKey(QLatin1String(SettingsKeys::kFolderIconStyles))
    , m_cache(std::move(standardStore), defaultsKey,
            [](const FolderIconStyle &style) { return QJsonValue(style.toJson()); },
            [](const QJsonValue &v) { return v.isObject() ? FolderIconStyle::fromJson(v.toObject()) : std::nullopt; })
{
}
