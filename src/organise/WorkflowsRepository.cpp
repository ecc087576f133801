#include "organise/WorkflowsRepository.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "foundation/RecordList.h"
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
    QString error;
    const auto workflows = RecordList::decode<WorkflowItem>(*bytes, &error);
    if (!workflows) {
        qCWarning(m_logger, LogTexts::kWorkflowsDecodeFailed, qUtf8Printable(error));
        return {};
    }
    qCDebug(m_logger, LogTexts::kWorkflowsLoaded, long(workflows->size()));
    return *workflows;
}

void WorkflowsRepositoryImpl::save(const QList<WorkflowItem> &workflows)
{
    m_store->set(RecordList::encode(workflows), QLatin1String(SettingsKeys::kWorkflows));
    qCDebug(m_logger, LogTexts::kWorkflowsSaved, long(workflows.size()));
}
