#include "storage/WidgetsRepository.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "foundation/RecordList.h"
#include "storage/FileSystemStore.h"
#include "storage/KeptAside.h"
#include "storage/UserDefaultsStoreType.h"

#include <QDir>
#include <QFileInfo>

WidgetsRepositoryImpl::WidgetsRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store,
                                             std::shared_ptr<FileSystemStore> files, QString key)
    : m_store(std::move(store))
    , m_key(std::move(key))
    , m_files(std::move(files))
{
}

QList<WidgetItem> WidgetsRepositoryImpl::load() const
{
    const auto bytes = m_store->data(m_key);
    if (!bytes)
        return {};
    const auto decoded = RecordList::decodeEach<WidgetItem>(*bytes);
    for (const QString &error : decoded.errors)
        qCWarning(lcPersistence, LogTexts::kWidgetsDecodeFailed, qUtf8Printable(error));
    return decoded.records;
}

void WidgetsRepositoryImpl::save(const QList<WidgetItem> &widgets)
{
    KeptAside::beforeSaving<WidgetItem>(*m_store, m_key);
    m_store->set(RecordList::encode(widgets), m_key);
}

std::optional<QString> WidgetsRepositoryImpl::copyImage(const QString &source, QString *error) const
{
    const QString folder = m_files->pathFor(QStringLiteral("Widgets"));
    if (!m_files->ensureDirectory(folder, error))
        return std::nullopt;
    const QString destination = QDir(folder).filePath(QFileInfo(source).fileName());
    if (!m_files->copyItem(source, destination, error))
        return std::nullopt;
    return destination;
}
