#include "organise/WorkflowsRepository.h"

#include "app/Logging.h"
#include "foundation/LogTexts.h"
#include "layout/RecordList.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"

WorkflowsRepositoryImpl::WorkflowsRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store)
    : store(std::move(store))
    , logger(lcPersistence())
{
}

QList<WorkflowItem> WorkflowsRepositoryImpl::load() const
{
    const auto bytes = store->data(QLatin1String(SettingsKeys::kWorkflows));
    if (!bytes) {
        qCDebug(logger, LogTexts::kWorkflowsNone);
        return {};
    }
    QString error;
    const auto workflows = RecordList::decode<WorkflowItem>(*bytes, &error);
    if (!workflows) {
        qCWarning(logger, LogTexts::kWorkflowsDecodeFailed, qUtf8Printable(error));
        return {};
    }
    qCDebug(logger, LogTexts::kWorkflowsLoaded, long(workflows->size()));
    return *workflows;
}

void WorkflowsRepositoryImpl::save(const QList<WorkflowItem> &workflows)
{
    store->set(RecordList::encode(workflows), QLatin1String(SettingsKeys::kWorkflows));
    qCDebug(logger, LogTexts::kWorkflowsSaved, long(workflows.size()));
}
