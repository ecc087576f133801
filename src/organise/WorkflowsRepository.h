#pragma once

#include "organise/WorkflowItem.h"

#include <QList>
#include <memory>

class UserDefaultsStoreType;
class QLoggingCategory;

class WorkflowsRepository {
public:
    virtual ~WorkflowsRepository() = default;
    virtual QList<WorkflowItem> load() const = 0;
    virtual void save(const QList<WorkflowItem> &workflows) = 0;
};

// Workflows as one JSON list under "workflows_storage_v1".
class WorkflowsRepositoryImpl final : public WorkflowsRepository {
public:
    explicit WorkflowsRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store);
    QList<WorkflowItem> load() const override;
    void save(const QList<WorkflowItem> &workflows) override;

private:
    std::shared_ptr<UserDefaultsStoreType> m_store;
    const QLoggingCategory &m_logger;
};
