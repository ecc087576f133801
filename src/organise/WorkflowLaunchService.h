#pragma once

#include "foundation/GridRecords.h"
#include "organise/WorkflowItem.h"

#include <QList>
#include <functional>
#include <memory>

class AppLauncher;
class Clock;
class SystemFoldersService;
class UserDefaultsStoreType;
class QLoggingCategory;

// Runs a workflow: its apps in order, then its folders, with the workflow's
// pause between two items. The pauses are main-loop timers, so the launcher
// stays responsive while a workflow runs.
class WorkflowLaunchService {
public:
    // What the overlay does once the last item is open.
    enum class Overlay { Hide, StayOpen };
    using Finished = std::function<void(Overlay)>;

    // standard: the standard preferences, where "AlwaysOnEnabled" lives.
    WorkflowLaunchService(std::shared_ptr<AppLauncher> launcher, std::shared_ptr<SystemFoldersService> folders,
                          std::shared_ptr<UserDefaultsStoreType> standard, std::shared_ptr<Clock> clock);
    ~WorkflowLaunchService();

    // Returns at once; finished runs on the main thread after the last item
    // (never for a workflow with nothing in it). apps: the catalogue the app
    // paths are looked up in. Returns false when there was nothing to launch.
    bool launch(const WorkflowItem &workflow, const QList<AppItem> &apps, Finished finished = {});
    // Workflows still between two items.
    int runningCount() const;

private:
    struct Run;
    void step(const std::shared_ptr<Run> &run);

    const QLoggingCategory &m_logger;
    std::shared_ptr<AppLauncher> m_launcher;
    std::shared_ptr<SystemFoldersService> m_folders;
    std::shared_ptr<UserDefaultsStoreType> m_standard;
    std::shared_ptr<Clock> m_clock;
    QList<std::shared_ptr<Run>> m_runs;
};
