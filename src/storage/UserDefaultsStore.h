#pragma once

#include "storage/UserDefaultsStoreType.h"

#include <QSettings>
#include <memory>

// The settings store over one preferences domain. On Linux a domain is one
// JSON file named after the domain in $XDG_CONFIG_HOME/tillmora. Registered
// defaults are process-wide, answer reads of keys never stored and are never
// written to disk.
class UserDefaultsStore final : public UserDefaultsStoreType {
public:
    // directory empty = the default configuration folder.
    explicit UserDefaultsStore(const QString &domainName,
                               std::optional<QString> persistentDomainName = std::nullopt,
                               const QString &directory = {});
    ~UserDefaultsStore() override;

    // The main store: the domain named by the bundle identifier.
    static std::shared_ptr<UserDefaultsStore> standard(const QString &directory = {});
    static QString defaultDirectory();
    static void registerDefaults(const QVariantMap &defaults);
    static QVariant registeredDefault(const QString &key);

    void set(const QVariant &value, const QString &key) override;
    QVariant object(const QString &key) const override;
    QVariant persistedObject(const QString &key) const override;
    std::optional<QByteArray> data(const QString &key) const override;
    std::optional<QString> string(const QString &key) const override;
    bool boolValue(const QString &key) const override;
    std::optional<QVariantList> array(const QString &key) const override;
    std::optional<QVariantMap> dictionary(const QString &key) const override;
    void removeObject(const QString &key) override;
    void synchronize() override;

    QString domainName() const { return m_domainName; }
    QString fileName() const;
    // Every key stored in this domain (registered defaults excluded).
    QStringList persistedKeys() const;

private:
    QVariant storedValue(const QString &key) const;

    QString m_domainName;
    QString m_directory;
    std::unique_ptr<QSettings> m_defaults;
    std::optional<QString> m_persistentDomainName;
    mutable std::unique_ptr<QSettings> m_persistentDomain;
};
