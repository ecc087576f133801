#include "ui/ActivationPresenter.h"

#include "foundation/Logging.h"
#include "catalogue/AppLauncher.h"
#include "layout/LaunchpadViewModel.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"

#include <QFileInfo>
#include <QTimer>
#include <QUrl>

ActivationPresenter::ActivationPresenter(LaunchpadViewModel &layout, std::shared_ptr<AppLauncher> launcher,
                                         QObject *parent)
    : QObject(parent)
    , m_layout(layout)
    , m_launcher(std::move(launcher))
{
}

void ActivationPresenter::activate(const QString &key)
{
    const GridEntryOrEmpty entry = m_layout.resolve(key);
    if (!entry)
        return;
    if (const auto *folder = std::get_if<FolderItem>(&*entry)) {
        Q_EMIT folderRequested(Uuids::toText(folder->id));
        return;
    }
    if (const auto *workflow = std::get_if<WorkflowItem>(&*entry)) {
        launchWorkflow(*workflow);
        Q_EMIT opened();
        return;
    }
    const auto *app = std::get_if<AppItem>(&*entry);
    if (!app)
        return;
    const AppLauncher::Result result = m_launcher ? m_launcher->openApp(*app)
                                                  : AppLauncher::Result::failure(QStringLiteral("no launcher available"));
    if (!result)
        qCWarning(lcApp, "Could not open %s: %s", qUtf8Printable(app->path), qUtf8Printable(result.error));
    m_lastError = result.ok ? QString() : result.error;
    if (result)
        m_layout.noteLaunched(app->path);
    Q_EMIT launched(app->path, result.ok, result.error);
    if (result)
        Q_EMIT opened();
}

void ActivationPresenter::launchWorkflow(const WorkflowItem &workflow)
{
    if (!m_launcher)
        return;
    // Each step waits the workflow's pause after the previous one.
    const int pauseMs = int(workflow.effectiveLaunchInterval() * 1000);
    int step = 0;
    std::shared_ptr<AppLauncher> launcher = m_launcher;
    for (const QString &path : workflow.appPaths) {
        const GridEntryOrEmpty entry = m_layout.resolve(SlotKey::app(path));
        const AppItem app = entry ? std::get<AppItem>(*entry) : AppItem{QUuid(), path, QFileInfo(path).baseName()};
        QTimer::singleShot(step++ * pauseMs, this, [launcher, app] { launcher->openApp(app); });
    }
    for (const QString &folder : workflow.folderPaths)
        QTimer::singleShot(step++ * pauseMs, this,
                           [launcher, folder] { launcher->openLocation(QUrl::fromLocalFile(folder)); });
}
