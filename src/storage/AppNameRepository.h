#pragma once

#include "storage/JsonMapCache.h"

// Custom names of applications by path ("CustomAppNamesV1", standard store).
class AppNameRepositoryImpl {
public:
    explicit AppNameRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> standardStore);

    std::optional<QString> customName(const QString &appPath) const { return cache.get(appPath); }
    void setCustomName(const QString &appPath, const QString &name);
    void removeCustomName(const QString &appPath) { cache.remove(appPath); }
    const QMap<QString, QString> &all() const { return cache.all(); }
    // The name to show: the custom one, else the catalogue's.
    QString displayName(const QString &appPath, const QString &catalogueName) const;

    const QString defaultsKey;

private:
    JsonMapCache<QString> cache;
};
