#include "storage/FoldersRepository.h"

#include "app/Logging.h"
#include "foundation/LogTexts.h"
#include "layout/RecordList.h"
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
        qCDebug(logger, LogTexts::kFoldersNone);
        return {};
    }
    QString error;
    const auto folders = RecordList::decode<FolderItem>(*bytes, &error);
    if (!folders) {
        qCWarning(logger, LogTexts::kFoldersDecodeFailed, qUtf8Printable(error));
        return {};
    }
    qCDebug(logger, LogTexts::kFoldersDecoded, long(folders->size()));
    return *folders;
}

void FoldersRepositoryImpl::saveAll(const QList<FolderItem> &folders)
{
    store->set(RecordList::encode(folders), QLatin1String(SettingsKeys::kFolders));
    qCDebug(logger, LogTexts::kFoldersSaved, long(folders.size()));
}
