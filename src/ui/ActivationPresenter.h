#pragma once

#include "catalogue/AppLauncher.h"
#include "layout/GridEntry.h"

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>
#include <memory>

class LaunchpadViewModel;
class WorkflowLaunchService;
struct WorkflowItem;

// Opening what a cell holds: an app is launched, a workflow runs its steps,
// a folder is handed to whoever shows folders.
class ActivationPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Owned by the grid presenter")
    Q_PROPERTY(QString lastError READ lastError NOTIFY launched)
public:
    ActivationPresenter(LaunchpadViewModel &layout, std::shared_ptr<AppLauncher> launcher,
                        QObject *parent = nullptr);

    // Workflows run through this; without it they do not run.
    void setWorkflowLaunchService(std::shared_ptr<WorkflowLaunchService> service);
    Q_INVOKABLE void activate(const QString &key);
    // The desktop entry's own actions of an app ({id, name} maps); none for
    // anything else.
    Q_INVOKABLE QVariantList actionsOf(const QString &key) const;
    Q_INVOKABLE void activateAction(const QString &key, const QString &actionId);
    QStringList categoriesOf(const QString &appPath) const;
    QString lastError() const { return m_lastError; }

Q_SIGNALS:
    void folderRequested(const QString &folderId);
    // An app was opened (or failed to open, with the error text).
    void launched(const QString &appPath, bool ok, const QString &error);
    // Something was opened: the overlay may go.
    void opened();

private:
    const AppItem *appOf(const QString &key, GridEntryOrEmpty &holder) const;
    void reportLaunch(const AppItem &app, const AppLauncher::Result &result);
    void launchWorkflow(const WorkflowItem &workflow);

    LaunchpadViewModel &m_layout;
    std::shared_ptr<AppLauncher> m_launcher;
    std::shared_ptr<WorkflowLaunchService> m_workflowLauncher;
    QString m_lastError;
};
