#include "storage/FoldersRepository.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "foundation/RecordList.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"

FoldersRepositoryImpl::FoldersRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store)
    : m_store(std::move(store))
    , m_logger(lcPersistence())
{
}

QList<FolderItem> FoldersRepositoryImpl::loadAll() const
{
    const auto bytes = m_store->data(QLatin1String(SettingsKeys::kFolders));
    if (!bytes) {
        qCDebug(m_logger, LogTexts::kFoldersNone);
        return {};
    }
    QString error;
    const auto folders = RecordList::decode<FolderItem>(*bytes, &error);
    if (!folders) {
        qCWarning(m_logger, LogTexts::kFoldersDecodeFailed, qUtf8Printable(error));
        return {};
    }
    qCDebug(m_logger, LogTexts::kFoldersDecoded, long(folders->size()));
    return *folders;
}

void FoldersRepositoryImpl::saveAll(const QList<FolderItem> &folders)
{
    m_store->set(RecordList::encode(folders), QLatin1String(SettingsKeys::kFolders));
    qCDebug(m_logger, LogTexts::kFoldersSaved, long(folders.size()));
}
