#pragma once

#include "storage/CustomizationRecords.h"
#include "storage/JsonMapCache.h"

class FolderIconStyleRepository {
public:
    virtual ~FolderIconStyleRepository() = default;
    virtual std::optional<FolderIconStyle> style(const QString &folderId) const = 0;
    virtual void setStyle(const QString &folderId, const FolderIconStyle &style) = 0;
    virtual void removeStyle(const QString &folderId) = 0;
    virtual const QMap<QString, FolderIconStyle> &all() const = 0;
};

// Folder icon looks by folder id ("FolderIconStylesV1", standard store).
class FolderIconStyleRepositoryImpl final : public FolderIconStyleRepository {
public:
    explicit FolderIconStyleRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> standardStore);

    std::optional<FolderIconStyle> style(const QString &folderId) const override { return m_cache.get(folderId); }
    void setStyle(const QString &folderId, const FolderIconStyle &style) override { m_cache.set(folderId, style); }
    void removeStyle(const QString &folderId) override { m_cache.remove(folderId); }
    const QMap<QString, FolderIconStyle> &all() const override { return m_cache.all(); }

    const QString defaultsKey;

private:
    JsonMapCache<FolderIconStyle> m_cache;
};
