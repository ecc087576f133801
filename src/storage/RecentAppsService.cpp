#include "storage/RecentAppsService.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"

RecentAppsServiceImpl::RecentAppsServiceImpl(std::shared_ptr<UserDefaultsStoreType> store)
    : m_store(std::move(store))
{
}

QStringList RecentAppsServiceImpl::recentApps() const
{
    QStringList list = m_store->stringList(QLatin1String(SettingsKeys::kRecentApps));
    list.removeDuplicates();
    return list.mid(0, kLimit);
}

void RecentAppsServiceImpl::noteLaunched(const QString &path)
{
    QStringList list = recentApps();
    if (!list.isEmpty() && list.first() == path)
        return;
    list.removeAll(path);
    list.prepend(path);
    m_store->set(list.mid(0, kLimit), QLatin1String(SettingsKeys::kRecentApps));
}

qsizetype RecentAppsServiceImpl::removeDeleted(const std::function<bool(const QString &)> &stillInstalled)
{
    const QStringList before = m_store->stringList(QLatin1String(SettingsKeys::kRecentApps));
    QStringList kept = before;
    kept.removeIf([&](const QString &path) { return !stillInstalled(path); });
    const qsizetype removed = before.size() - kept.size();
    if (removed > 0) {
        m_store->set(kept, QLatin1String(SettingsKeys::kRecentApps));
        qCDebug(lcPersistence, LogTexts::kRecentCleanup, long(removed));
    }
    return removed;
}

void RecentAppsServiceImpl::moveAppPath(const QString &from, const QString &to)
{
    QStringList list = m_store->stringList(QLatin1String(SettingsKeys::kRecentApps));
    const qsizetype at = list.indexOf(from);
    if (at < 0)
        return;
    list[at] = to;
    list.removeDuplicates();
    m_store->set(list, QLatin1String(SettingsKeys::kRecentApps));
}
