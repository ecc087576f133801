#pragma once

#include "layout/LayoutRefusal.h"
#include "organise/WorkflowEditViewModel.h"
#include "organise/WorkflowItem.h"

#include <QObject>
#include <QPointer>
#include <QVariantList>
#include <functional>
#include <memory>

class LaunchpadViewModel;
class UserDefaultsStoreType;

// The profiles a workflow change reaches besides the one the layout model
// shows. Spaces fill this in; without them there are none.
struct OtherProfiles {
    // Each holds "workflows_storage_v1", "LaunchpadApp_Slots_v1" and the
    // folders: the standard store while a Space is shown, and every Space
    // that is not shown.
    QList<std::shared_ptr<UserDefaultsStoreType>> stores;
    // How many Spaces a new workflow was written to, the shown one included.
    long spaceCount = 0;
    // Called once the stores are written (a Space keeps a copy of its profile
    // that must not fall behind).
    std::function<void()> written;
};
using OtherProfilesProvider = std::function<OtherProfiles()>;

// Creating, editing and deleting workflows. A new workflow goes into every
// profile, its key in each layout's first empty cell (else at the end); a
// deleted one leaves every layout and folder.
class WorkflowsViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariantList workflows READ workflowsForView NOTIFY workflowsChanged)
    Q_PROPERTY(WorkflowEditViewModel *workflowToEdit READ workflowToEdit NOTIFY workflowToEditChanged)
public:
    // imagesDirectory: where images chosen as icons are copied, so the icon
    // survives the original being moved or deleted.
    WorkflowsViewModel(LaunchpadViewModel &layout, QString imagesDirectory, OtherProfilesProvider otherProfiles = {},
                       QObject *parent = nullptr);

    const QList<WorkflowItem> &workflows() const;

    // Stores the edited or new workflow. The image, if any, is copied first;
    // returns the record as stored.
    LayoutResult<WorkflowItem> save(const WorkflowItem &workflow);
    LayoutResult<void> remove(const QUuid &id);

    // The editor: open for a new workflow or an existing one, save, close.
    WorkflowEditViewModel *workflowToEdit() const { return m_workflowToEdit; }
    Q_INVOKABLE void beginCreate();
    Q_INVOKABLE bool beginEdit(const QString &id);
    // False (the editor stays open) when the edit has a problem.
    Q_INVOKABLE bool saveEdit();
    Q_INVOKABLE void cancelEdit();
    Q_INVOKABLE bool remove(const QString &id);

Q_SIGNALS:
    void workflowsChanged();
    void workflowToEditChanged();

private:
    QVariantList workflowsForView() const;
    void setWorkflowToEdit(WorkflowEditViewModel *edit);
    // The image under imagesDirectory, copied there when it is elsewhere.
    QString keptImage(const WorkflowItem &workflow) const;

    LaunchpadViewModel &m_layout;
    QString m_imagesDirectory;
    OtherProfilesProvider m_otherProfiles;
    QPointer<WorkflowEditViewModel> m_workflowToEdit;
};
