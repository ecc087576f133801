#include "storage/FoldersRepository.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "foundation/RecordList.h"
#include "storage/KeptAside.h"
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
    // Record by record: one bad folder costs only itself.
    const auto decoded = RecordList::decodeEach<FolderItem>(*bytes);
    for (const QString &error : decoded.errors)
        qCWarning(m_logger, LogTexts::kFoldersDecodeFailed, qUtf8Printable(error));
    qCDebug(m_logger, LogTexts::kFoldersDecoded, long(decoded.records.size()));
    return decoded.records;
}

void FoldersRepositoryImpl::saveAll(const QList<FolderItem> &folders)
{
    KeptAside::beforeSaving<FolderItem>(*m_store, QLatin1String(SettingsKeys::kFolders));
    m_store->set(RecordList::encode(folders), QLatin1String(SettingsKeys::kFolders));
    qCDebug(m_logger, LogTexts::kFoldersSaved, long(folders.size()));
}
