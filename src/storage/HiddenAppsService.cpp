#include "storage/HiddenAppsService.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"

HiddenAppsServiceImpl::HiddenAppsServiceImpl(std::shared_ptr<UserDefaultsStoreType> store)
    : m_store(std::move(store))
    , m_logger(lcPersistence())
{
}

QStringList HiddenAppsServiceImpl::stored() const
{
    QStringList list = m_store->stringList(QLatin1String(SettingsKeys::kHiddenApps));
    list.removeDuplicates();
    return list;
}

QStringList HiddenAppsServiceImpl::hiddenApps() const
{
    const QStringList list = stored();
    qCDebug(m_logger, LogTexts::kHiddenRetrieved, long(list.size()));
    return list;
}

void HiddenAppsServiceImpl::hide(const QString &path)
{
    QStringList list = stored();
    if (list.contains(path))
        return;
    list.append(path);
    m_store->set(list, QLatin1String(SettingsKeys::kHiddenApps));
    qCDebug(m_logger, LogTexts::kHiddenHid, qUtf8Printable(path));
}

void HiddenAppsServiceImpl::show(const QString &path)
{
    QStringList list = stored();
    if (!list.removeAll(path))
        return;
    m_store->set(list, QLatin1String(SettingsKeys::kHiddenApps));
    qCDebug(m_logger, LogTexts::kHiddenShowed, qUtf8Printable(path));
}

bool HiddenAppsServiceImpl::isHidden(const QString &path) const
{
    return stored().contains(path);
}

qsizetype HiddenAppsServiceImpl::removeDeleted(const std::function<bool(const QString &)> &stillInstalled)
{
    const QStringList before = stored();
    QStringList kept;
    for (const QString &path : before)
        if (stillInstalled(path))
            kept.append(path);
    const qsizetype removed = before.size() - kept.size();
    if (removed > 0) {
        m_store->set(kept, QLatin1String(SettingsKeys::kHiddenApps));
        qCDebug(m_logger, LogTexts::kHiddenCleanup, long(removed));
    }
    return removed;
}

void HiddenAppsServiceImpl::moveAppPath(const QString &from, const QString &to)
{
    QStringList list = stored();
    const qsizetype at = list.indexOf(from);
    if (at < 0)
        return;
    list[at] = to;
    list.removeDuplicates();
    m_store->set(list, QLatin1String(SettingsKeys::kHiddenApps));
}
