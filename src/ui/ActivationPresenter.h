#pragma once


#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <memory>

class AppLauncher;
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
    QString lastError() const { return m_lastError; }

Q_SIGNALS:
    void folderRequested(const QString &folderId);
    // An app was opened (or failed to open, with the error text).
    void launched(const QString &appPath, bool ok, const QString &error);
    // Something was opened: the overlay may go.
    void opened();

private:
    void launchWorkflow(const WorkflowItem &workflow);

    LaunchpadViewModel &m_layout;
    std::shared_ptr<AppLauncher> m_launcher;
    std::shared_ptr<WorkflowLaunchService> m_workflowLauncher;
    QString m_lastError;
};
