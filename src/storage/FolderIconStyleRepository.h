#pragma once

#include "storage/CustomizationRecords.h"
#include "storage/JsonMapCache.h"

// Folder icon looks by folder id ("FolderIconStylesV1", standard store).
class FolderIconStyleRepositoryImpl {
public:
    explicit FolderIconStyleRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> standardStore);

    std::optional<FolderIconStyle> style(const QString &folderId) const { return cache.get(folderId); }
    void setStyle(const QString &folderId, const FolderIconStyle &style) { cache.set(folderId, style); }
    void removeStyle(const QString &folderId) { cache.remove(folderId); }
    const QMap<QString, FolderIconStyle> &all() const { return cache.all(); }

    const QString defaultsKey;

private:
    JsonMapCache<FolderIconStyle> cache;
};
