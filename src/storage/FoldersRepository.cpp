#include "storage/FoldersRepository.h"

#include "foundation/Logging.h"
#include "foundation/RecordList.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"

FoldersRepositoryImpl::FoldersRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store)
    : store(std::move(store))
    , logger(lcPersistence())
{
}

QList<FolderItem> FoldersRepositoryImpl::loadAll() const
{
    const auto bytes = store->data(QLatin1String(SettingsKeys::kFolders));
    if (!bytes) {
        qCDebug(logger, "No folders data found in UserDefaults");
        return {};
    }
    QString error;
    const auto folders = RecordList::decode<FolderItem>(*bytes, &error);
    if (!folders) {
        qCWarning(logger, "Failed to decode folders from UserDefaults: %s", qUtf8Printable(error));
        return {};
    }
    qCDebug(logger, "Successfully decoded %ld folders from UserDefaults", long(folders->size()));
    return *folders;
}

void FoldersRepositoryImpl::saveAll(const QList<FolderItem> &folders)
{
    store->set(RecordList::encode(folders), QLatin1String(SettingsKeys::kFolders));
    qCDebug(logger, "Successfully saved %ld folders to UserDefaults", long(folders.size()));
}
