#pragma once

#include "foundation/GridRecords.h"

#include <QLoggingCategory>
#include <memory>

class UserDefaultsStoreType;

class FoldersRepository {
public:
    virtual ~FoldersRepository() = default;
    virtual QList<FolderItem> loadAll() const = 0;
    virtual void saveAll(const QList<FolderItem> &folders) = 0;
};

// The user's folders, one JSON list under "LaunchpadFolders_v1".
class FoldersRepositoryImpl final : public FoldersRepository {
public:
    explicit FoldersRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store);
    QList<FolderItem> loadAll() const override;
    void saveAll(const QList<FolderItem> &folders) override;

private:
    std::shared_ptr<UserDefaultsStoreType> m_store;
    const QLoggingCategory &m_logger;
};
