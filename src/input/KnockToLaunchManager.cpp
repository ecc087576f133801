#include "input/KnockToLaunchManager.h"

#include "storage/UserDefaultsStoreType.h"

KnockToLaunchManager::KnockToLaunchManager(std::shared_ptr<UserDefaultsStoreType> store, QObject *parent)
    : QObject(parent)
{
    store->set(false, QLatin1String(kEnabledKey));
}
