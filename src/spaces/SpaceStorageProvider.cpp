#include "spaces/SpaceStorageProvider.h"

#include "foundation/Uuids.h"
#include "storage/UserDefaultsStore.h"

#include <QFile>
#include <QObject>
#include <QPointer>

SpaceStorageProvider::SpaceStorageProvider(std::shared_ptr<UserDefaultsStore> mainStore, QString directory)
    : m_mainStore(std::move(mainStore))
    , m_directory(std::move(directory))
{
}

SpaceStorageProvider::~SpaceStorageProvider() = default;

QString SpaceStorageProvider::suiteName(const QUuid &space)
{
    return QLatin1String(kSuitePrefix) + u'.' + Uuids::toText(space);
}

std::shared_ptr<UserDefaultsStore> SpaceStorageProvider::storeForSpace(const QUuid &space)
{
    if (space.isNull())
        return m_mainStore;
    auto it = m_suiteCache.constFind(space);
    if (it == m_suiteCache.cend())
        it = m_suiteCache.insert(space, std::make_shared<UserDefaultsStore>(suiteName(space), suiteName(space),
                                                                            m_directory));
    return *it;
}

std::shared_ptr<UserDefaultsStore> SpaceStorageProvider::layoutStore()
{
    if (m_pinnedSpaceId)
        return storeForSpace(*m_pinnedSpaceId);
    return activeStore();
}

std::shared_ptr<UserDefaultsStore> SpaceStorageProvider::activeStore()
{
    return m_activeSpaceId ? storeForSpace(*m_activeSpaceId) : m_mainStore;
}

bool SpaceStorageProvider::removeSuite(const QUuid &space, QString *error)
{
    const auto cached = m_suiteCache.take(space);
    const auto suite = cached ? cached : std::make_shared<UserDefaultsStore>(suiteName(space), suiteName(space), m_directory);
    return suite->removeDomain(error);
}

QList<std::shared_ptr<UserDefaultsStoreType>> SpaceStorageProvider::openStores() const
{
    QList<std::shared_ptr<UserDefaultsStoreType>> stores{m_mainStore};
    for (const auto &suite : m_suiteCache)
        stores.append(suite);
    return stores;
}

bool SpaceStorageProvider::synchronizeAll()
{
    m_lastError.clear();
    bool ok = true;
    for (const auto &store : openStores()) {
        if (!store->synchronize()) {
            ok = false;
            if (m_lastError.isEmpty())
                m_lastError = store->lastError();
        }
    }
    return ok;
}

void SpaceStorageProvider::synchronizeAllInBackground(QObject *context, UserDefaultsStoreType::SaveDone done)
{
    struct Pending {
        int left = 0;
        bool ok = true;
        QString error;
        UserDefaultsStoreType::SaveDone done;
    };
    const auto stores = openStores();
    auto pending = std::make_shared<Pending>(Pending{int(stores.size()), true, {}, std::move(done)});
    for (const auto &store : stores) {
        store->synchronizeInBackground(context, [pending](bool ok, const QString &error) {
            if (!ok && pending->ok) {
                pending->ok = false;
                pending->error = error;
            }
            if (--pending->left == 0 && pending->done)
                pending->done(pending->ok, pending->error);
        });
    }
}

SpaceAwareStore::SpaceAwareStore(std::weak_ptr<SpaceStorageProvider> provider,
                                 std::shared_ptr<UserDefaultsStoreType> standard, bool usesLayoutPin)
    : m_provider(std::move(provider))
    , m_standard(std::move(standard))
    , m_usesLayoutPin(usesLayoutPin)
{
}

std::shared_ptr<UserDefaultsStoreType> SpaceAwareStore::resolved() const
{
    const auto provider = m_provider.lock();
    if (!provider)
        return m_standard;
    return m_usesLayoutPin ? provider->layoutStore() : provider->activeStore();
}

void SpaceAwareStore::set(const QVariant &value, const QString &key) { resolved()->set(value, key); }
QVariant SpaceAwareStore::object(const QString &key) const { return resolved()->object(key); }
QVariant SpaceAwareStore::persistedObject(const QString &key) const { return resolved()->persistedObject(key); }
std::optional<QByteArray> SpaceAwareStore::data(const QString &key) const { return resolved()->data(key); }
std::optional<QString> SpaceAwareStore::string(const QString &key) const { return resolved()->string(key); }
bool SpaceAwareStore::boolValue(const QString &key) const { return resolved()->boolValue(key); }
std::optional<QVariantList> SpaceAwareStore::array(const QString &key) const { return resolved()->array(key); }
std::optional<QVariantMap> SpaceAwareStore::dictionary(const QString &key) const
{
    return resolved()->dictionary(key);
}
void SpaceAwareStore::removeObject(const QString &key) { resolved()->removeObject(key); }

bool SpaceAwareStore::synchronize()
{
    m_lastSynchronized = resolved();
    return m_lastSynchronized->synchronize();
}

QString SpaceAwareStore::lastError() const
{
    return m_lastSynchronized ? m_lastSynchronized->lastError() : QString();
}

void SpaceAwareStore::synchronizeInBackground(QObject *context, SaveDone done)
{
    resolved()->synchronizeInBackground(context, std::move(done));
}
