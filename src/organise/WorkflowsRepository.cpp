#include "organise/WorkflowsRepository.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "foundation/RecordList.h"
#include "storage/KeptAside.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"

WorkflowsRepositoryImpl::WorkflowsRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store)
    : m_store(std::move(store))
    , m_logger(lcPersistence())
{
}

QList<WorkflowItem> WorkflowsRepositoryImpl::load() const
{
    const auto bytes = m_store->data(QLatin1String(SettingsKeys::kWorkflows));
    if (!bytes) {
        qCDebug(m_logger, LogTexts::kWorkflowsNone);
        return {};
    }
    const auto decoded = RecordList::decodeEach<WorkflowItem>(*bytes);
    for (const QString &error : decoded.errors)
        qCWarning(m_logger, LogTexts::kWorkflowsDecodeFailed, qUtf8Printable(error));
    qCDebug(m_logger, LogTexts::kWorkflowsLoaded, long(decoded.records.size()));
    return decoded.records;
}

void WorkflowsRepositoryImpl::save(const QList<WorkflowItem> &workflows)
{
    KeptAside::beforeSaving<WorkflowItem>(*m_store, QLatin1String(SettingsKeys::kWorkflows));
    m_store->set(RecordList::encode(workflows), QLatin1String(SettingsKeys::kWorkflows));
    qCDebug(m_logger, LogTexts::kWorkflowsSaved, long(workflows.size()));
}
