#include "storage/WidgetsRepository.h"

#include "app/Logging.h"
#include "foundation/LogTexts.h"
#include "layout/RecordList.h"
#include "storage/FileSystemStore.h"
#include "storage/UserDefaultsStoreType.h"

#include <QDir>
#include <QFileInfo>

WidgetsRepositoryImpl::WidgetsRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store,
                                             std::shared_ptr<FileSystemStore> files, QString key)
    : store(std::move(store))
    , key(std::move(key))
    , m_files(std::move(files))
{
}

QList<WidgetItem> WidgetsRepositoryImpl::load() const
{
    const auto bytes = store->data(key);
    if (!bytes)
        return {};
    QString error;
    const auto widgets = RecordList::decode<WidgetItem>(*bytes, &error);
    if (!widgets) {
        qCWarning(lcPersistence, LogTexts::kWidgetsDecodeFailed, qUtf8Printable(error));
        return {};
    }
    return *widgets;
}

void WidgetsRepositoryImpl::save(const QList<WidgetItem> &widgets)
{
    store->set(RecordList::encode(widgets), key);
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
