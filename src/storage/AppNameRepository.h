#pragma once

#include "storage/JsonMapCache.h"

class AppNameRepository {
public:
    virtual ~AppNameRepository() = default;
    virtual std::optional<QString> customName(const QString &appPath) const = 0;
    virtual void setCustomName(const QString &appPath, const QString &name) = 0;
    virtual void removeCustomName(const QString &appPath) = 0;
    virtual const QMap<QString, QString> &all() const = 0;
    // The name to show: the custom one, else the catalogue's.
    virtual QString displayName(const QString &appPath, const QString &catalogueName) const = 0;
    // The app now lives at to: its custom name follows it.
    virtual void moveAppPath(const QString &from, const QString &to) = 0;
};

// Custom names of applications by path ("CustomAppNamesV1", standard store).
class AppNameRepositoryImpl final : public AppNameRepository {
public:
    explicit AppNameRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> standardStore);

    std::optional<QString> customName(const QString &appPath) const override { return m_cache.get(appPath); }
    void setCustomName(const QString &appPath, const QString &name) override;
    void removeCustomName(const QString &appPath) override { m_cache.remove(appPath); }
    const QMap<QString, QString> &all() const override { return m_cache.all(); }
    QString displayName(const QString &appPath, const QString &catalogueName) const override;
    void moveAppPath(const QString &from, const QString &to) override;

    const QString defaultsKey;

private:
    JsonMapCache<QString> m_cache;
};
