#include "organise/WorkflowsRepository.h"

#include "foundation/Logging.h"
#include "foundation/RecordList.h"
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
        qCDebug(logger, "No workflows data found");
        return {};
    }
    QString error;
    const auto workflows = RecordList::decode<WorkflowItem>(*bytes, &error);
    if (!workflows) {
        qCWarning(logger, "Failed to decode workflows: %s", qUtf8Printable(error));
        return {};
    }
    qCDebug(logger, "Loaded %ld workflows", long(workflows->size()));
    return *workflows;
}

void WorkflowsRepositoryImpl::save(const QList<WorkflowItem> &workflows)
{
    store->set(RecordList::encode(workflows), QLatin1String(SettingsKeys::kWorkflows));
    qCDebug(logger, "Saved %ld workflows", long(workflows.size()));
}
