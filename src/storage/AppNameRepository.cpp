#include "storage/AppNameRepository.h"

#include "storage/SettingsKeys.h"

AppNameRepositoryImpl::AppNameRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> standardStore)
    : defaultsKey(QLatin1String(SettingsKeys::kCustomAppNames))
    , m_cache(std::move(standardStore), defaultsKey, [](const QString &name) { return QJsonValue(name); },
            [](const QJsonValue &v) { return v.isString() ? std::optional<QString>(v.toString()) : std::nullopt; })
{
}

void AppNameRepositoryImpl::setCustomName(const QString &appPath, const QString &name)
{
    // A blank name means "use the application's own name again".
    if (name.trimmed().isEmpty()) {
        m_cache.remove(appPath);
        return;
    }
    m_cache.set(appPath, name.trimmed());
}

QString AppNameRepositoryImpl::displayName(const QString &appPath, const QString &catalogueName) const
{
    return customName(appPath).value_or(catalogueName);
}

void AppNameRepositoryImpl::moveAppPath(const QString &from, const QString &to)
{
    const auto name = m_cache.get(from);
    if (!name)
        return;
    m_cache.set(to, *name);
    m_cache.remove(from);
}
