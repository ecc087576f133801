#pragma once

#include "storage/UserDefaultsStoreType.h"

#include <QHash>
#include <QUuid>
#include <memory>
#include <optional>

class UserDefaultsStore;

// Which settings store the layout lives in: the main store (the standard
// profile) or the suite of the active Space. Suites are opened on first use
// and stay open. Main thread only.
class SpaceStorageProvider {
public:
    static constexpr const char *kSuitePrefix = "com.tillmora.space";

    // directory: where the main store's file lives; suites sit beside it.
    SpaceStorageProvider(std::shared_ptr<UserDefaultsStore> mainStore, QString directory);
    ~SpaceStorageProvider();

    static QString suiteName(const QUuid &space);

    std::shared_ptr<UserDefaultsStore> mainStore() const { return m_mainStore; }
    std::shared_ptr<UserDefaultsStore> storeForSpace(const QUuid &space);
    // The pinned Space's store, else the active one's, else the main store.
    std::shared_ptr<UserDefaultsStore> layoutStore();
    // The active Space's store, or the main store.
    std::shared_ptr<UserDefaultsStore> activeStore();

    std::optional<QUuid> activeSpaceId() const { return m_activeSpaceId; }
    void setActiveSpaceId(std::optional<QUuid> id) { m_activeSpaceId = id; }
    std::optional<QUuid> pinnedSpaceId() const { return m_pinnedSpaceId; }
    void setPinnedSpaceId(std::optional<QUuid> id) { m_pinnedSpaceId = id; }

    // Forgets a deleted Space's suite and removes its file for good.
    bool removeSuite(const QUuid &space, QString *error = nullptr);

    // Writes the main store and every open suite. False when one of them
    // could not be written; lastError() says which and why.
    bool synchronizeAll();
    QString lastError() const { return m_lastError; }
    // The same without waiting: done(ok, error) once every store is on disk
    // or one of them could not be written.
    void synchronizeAllInBackground(QObject *context, UserDefaultsStoreType::SaveDone done);

private:
    QList<std::shared_ptr<UserDefaultsStoreType>> openStores() const;

    std::shared_ptr<UserDefaultsStore> m_mainStore;
    QString m_directory;
    QHash<QUuid, std::shared_ptr<UserDefaultsStore>> m_suiteCache;
    std::optional<QUuid> m_activeSpaceId;
    std::optional<QUuid> m_pinnedSpaceId;
    QString m_lastError;
};

// A settings store that owns nothing: each call goes to the store the
// provider names at that moment, so the repositories built over it follow
// a Space switch without being rebuilt.
class SpaceAwareStore final : public UserDefaultsStoreType {
public:
    // standard: answers when the provider is gone (at exit).
    SpaceAwareStore(std::weak_ptr<SpaceStorageProvider> provider, std::shared_ptr<UserDefaultsStoreType> standard,
                    bool usesLayoutPin = false);

    bool usesLayoutPin() const { return m_usesLayoutPin; }
    std::shared_ptr<UserDefaultsStoreType> resolved() const;

    void set(const QVariant &value, const QString &key) override;
    QVariant object(const QString &key) const override;
    QVariant persistedObject(const QString &key) const override;
    std::optional<QByteArray> data(const QString &key) const override;
    std::optional<QString> string(const QString &key) const override;
    bool boolValue(const QString &key) const override;
    std::optional<QVariantList> array(const QString &key) const override;
    std::optional<QVariantMap> dictionary(const QString &key) const override;
    void removeObject(const QString &key) override;
    bool synchronize() override;
    QString lastError() const override;
    void synchronizeInBackground(QObject *context, SaveDone done) override;

private:
    std::weak_ptr<SpaceStorageProvider> m_provider;
    std::shared_ptr<UserDefaultsStoreType> m_standard;
    bool m_usesLayoutPin;
    // The store the last synchronize() went to, for lastError().
    mutable std::shared_ptr<UserDefaultsStoreType> m_lastSynchronized;
};
