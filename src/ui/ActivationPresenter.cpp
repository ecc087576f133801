#include "ui/ActivationPresenter.h"

#include "foundation/Logging.h"
#include "catalogue/AppLauncher.h"
#include "layout/LaunchpadViewModel.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"
#include "organise/WorkflowLaunchService.h"

#include <QPointer>

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
        return;
    }
    const auto *app = std::get_if<AppItem>(&*entry);
    if (!app)
        return;
    reportLaunch(*app, m_launcher ? m_launcher->openApp(*app)
                                  : AppLauncher::Result::failure(QStringLiteral("no launcher available")));
}

void ActivationPresenter::reportLaunch(const AppItem &app, const AppLauncher::Result &result)
{
    if (!result)
        qCWarning(lcApp, "Could not open %s: %s", qUtf8Printable(app.path), qUtf8Printable(result.error));
    m_lastError = result.ok ? QString() : result.error;
    if (result)
        m_layout.noteLaunched(app.path);
    Q_EMIT launched(app.path, result.ok, result.error);
    if (result)
        Q_EMIT opened();
}

const AppItem *ActivationPresenter::appOf(const QString &key, GridEntryOrEmpty &holder) const
{
    holder = m_layout.resolve(key);
    return holder ? std::get_if<AppItem>(&*holder) : nullptr;
}

QVariantList ActivationPresenter::actionsOf(const QString &key) const
{
    GridEntryOrEmpty holder;
    const AppItem *app = appOf(key, holder);
    QVariantList out;
    if (!app || !m_launcher)
        return out;
    for (const AppLauncher::Action &action : m_launcher->actions(*app))
        out.append(QVariantMap{{QStringLiteral("id"), action.id}, {QStringLiteral("name"), action.name}});
    return out;
}

QStringList ActivationPresenter::categoriesOf(const QString &appPath) const
{
    GridEntryOrEmpty holder;
    const AppItem *app = appOf(SlotKey::app(appPath), holder);
    return app && m_launcher ? m_launcher->categories(*app) : QStringList();
}

void ActivationPresenter::activateAction(const QString &key, const QString &actionId)
{
    GridEntryOrEmpty holder;
    if (const AppItem *app = appOf(key, holder); app && m_launcher)
        reportLaunch(*app, m_launcher->openAction(*app, actionId));
}

void ActivationPresenter::setWorkflowLaunchService(std::shared_ptr<WorkflowLaunchService> service)
{
    m_workflowLauncher = std::move(service);
}

void ActivationPresenter::launchWorkflow(const WorkflowItem &workflow)
{
    if (!m_workflowLauncher)
        return;
    // The overlay stays while the items open, and goes after the last one
    // unless the user keeps it always on.
    QPointer<ActivationPresenter> self(this);
    m_workflowLauncher->launch(workflow, m_layout.apps(), [self](WorkflowLaunchService::Overlay overlay) {
        if (self && overlay == WorkflowLaunchService::Overlay::Hide)
            Q_EMIT self->opened();
    });
}
