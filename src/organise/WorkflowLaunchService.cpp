#include "organise/WorkflowLaunchService.h"

#include "catalogue/AppLauncher.h"
#include "catalogue/SystemFoldersService.h"
#include "foundation/Clock.h"
#include "foundation/LogTexts.h"
#include "foundation/Logging.h"
#include "storage/UserDefaultsStoreType.h"

namespace {
constexpr const char *kAlwaysOnEnabled = "AlwaysOnEnabled";
}

struct WorkflowLaunchService::Run {
    struct Item {
        std::optional<AppItem> app; // an app found in the catalogue
        QString path;               // the app path as stored, or a folder
        bool isFolder = false;
    };
    QString name;
    QList<Item> items;
    qsizetype next = 0;
    double pause = 0;
    Finished finished;
    std::unique_ptr<Clock::Timer> timer;
};

WorkflowLaunchService::WorkflowLaunchService(std::shared_ptr<AppLauncher> launcher,
                                             std::shared_ptr<SystemFoldersService> folders,
                                             std::shared_ptr<UserDefaultsStoreType> standard,
                                             std::shared_ptr<Clock> clock)
    : m_logger(lcServices())
    , m_launcher(std::move(launcher))
    , m_folders(std::move(folders))
    , m_standard(std::move(standard))
    , m_clock(std::move(clock))
{
}

WorkflowLaunchService::~WorkflowLaunchService() = default;

int WorkflowLaunchService::runningCount() const { return int(m_runs.size()); }

bool WorkflowLaunchService::launch(const WorkflowItem &workflow, const QList<AppItem> &apps, Finished finished)
{
    if (workflow.appPaths.isEmpty() && workflow.folderPaths.isEmpty()) {
        qCInfo(m_logger, LogTexts::kWorkflowNothingToLaunch, qUtf8Printable(workflow.name));
        return false;
    }
    auto run = std::make_shared<Run>();
    run->name = workflow.name;
    run->pause = workflow.effectiveLaunchInterval();
    run->finished = std::move(finished);
    // Looked up now: the catalogue may be rescanned while the run waits.
    for (const QString &path : workflow.appPaths) {
        Run::Item item{std::nullopt, path, false};
        for (const AppItem &app : apps)
            if (app.path == path) {
                item.app = app;
                break;
            }
        run->items.append(item);
    }
    for (const QString &path : workflow.folderPaths)
        run->items.append({std::nullopt, path, true});
    m_runs.append(run);
    step(run);
    return true;
}

void WorkflowLaunchService::step(const std::shared_ptr<Run> &run)
{
    while (run->next < run->items.size()) {
        const Run::Item item = run->items.at(run->next++);
        if (item.isFolder) {
            if (m_folders)
                m_folders->openFolder(item.path);
        } else if (!item.app) {
            // Skipped without a pause: nothing was opened to wait for.
            qCWarning(m_logger, LogTexts::kWorkflowAppNotFound, qUtf8Printable(item.path));
            continue;
        } else if (m_launcher) {
            m_launcher->openApp(*item.app);
        }
        if (run->next < run->items.size() && run->pause > 0) {
            std::weak_ptr<Run> weak = run;
            run->timer = m_clock->startTimer(run->pause, Clock::Mode::SingleShot, [this, weak] {
                if (auto alive = weak.lock())
                    step(alive);
            });
            return;
        }
    }
    run->timer.reset();
    m_runs.removeOne(run);
    const bool alwaysOn = m_standard && m_standard->boolValue(QLatin1String(kAlwaysOnEnabled));
    if (run->finished)
        run->finished(alwaysOn ? Overlay::StayOpen : Overlay::Hide);
}
