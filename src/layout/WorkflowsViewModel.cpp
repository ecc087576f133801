#include "layout/WorkflowsViewModel.h"

#include "foundation/LogTexts.h"
#include "foundation/Logging.h"
#include "foundation/Uuids.h"
#include "layout/LaunchpadViewModel.h"
#include "layout/LayoutSanitizer.h"
#include "layout/SlotEdit.h"
#include "layout/SlotEdits.h"
#include "organise/WorkflowsRepository.h"
#include "storage/FoldersRepository.h"
#include "storage/OrderRepository.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

// One profile that is not on screen, edited through its own store.
struct StoredProfile {
    explicit StoredProfile(const std::shared_ptr<UserDefaultsStoreType> &store)
        : workflows(store), order(store), folders(store)
    {
    }
    WorkflowsRepositoryImpl workflows;
    OrderRepositoryImpl order;
    FoldersRepositoryImpl folders;
};

qsizetype indexOf(const QList<WorkflowItem> &list, const QUuid &id)
{
    for (qsizetype i = 0; i < list.size(); ++i)
        if (list.at(i).id == id)
            return i;
    return -1;
}

}

WorkflowsViewModel::WorkflowsViewModel(LaunchpadViewModel &layout, QString imagesDirectory,
                                       OtherProfilesProvider otherProfiles, QObject *parent)
    : QObject(parent)
    , m_layout(layout)
    , m_imagesDirectory(std::move(imagesDirectory))
    , m_otherProfiles(std::move(otherProfiles))
{
    connect(&m_layout, &LaunchpadViewModel::workflowsChanged, this, &WorkflowsViewModel::workflowsChanged);
}

const QList<WorkflowItem> &WorkflowsViewModel::workflows() const { return m_layout.workflows(); }

QVariantList WorkflowsViewModel::workflowsForView() const
{
    QVariantList out;
    for (const WorkflowItem &w : workflows())
        out.append(w.toJson().toVariantMap());
    return out;
}

QString WorkflowsViewModel::keptImage(const WorkflowItem &workflow) const
{
    if (workflow.iconType != WorkflowIconType::image || workflow.imagePath.isEmpty() || m_imagesDirectory.isEmpty())
        return workflow.imagePath;
    const QFileInfo source(workflow.imagePath);
    if (source.absolutePath() == QDir(m_imagesDirectory).absolutePath())
        return workflow.imagePath;
    QDir().mkpath(m_imagesDirectory);
    // A new name per copy: the old image may still be on screen.
    const QString target = QDir(m_imagesDirectory)
                               .filePath(QStringLiteral("%1-%2.%3")
                                             .arg(Uuids::toText(workflow.id), Uuids::toText(QUuid::createUuid()).left(8),
                                                  source.suffix().toLower()));
    if (!QFile::copy(source.absoluteFilePath(), target)) {
        qCWarning(lcServices, "Could not copy the workflow image %s; it is used where it is",
                  qUtf8Printable(workflow.imagePath));
        return workflow.imagePath;
    }
    return target;
}

LayoutResult<WorkflowItem> WorkflowsViewModel::save(const WorkflowItem &edited)
{
    WorkflowItem workflow = edited;
    workflow.imagePath = keptImage(edited);
    workflow.isPNG = workflow.imagePath.endsWith(QLatin1String(".png"), Qt::CaseInsensitive);
    const bool isNew = !m_layout.workflow(workflow.id);
    if (isNew) {
        if (const auto placed = m_layout.addWorkflow(workflow); !placed)
            return placed.error();
    } else if (const auto updated = m_layout.updateWorkflow(workflow); !updated) {
        return updated.error();
    }

    const OtherProfiles others = m_otherProfiles ? m_otherProfiles() : OtherProfiles{};
    for (const auto &store : others.stores) {
        StoredProfile profile(store);
        QList<WorkflowItem> list = profile.workflows.load();
        const qsizetype at = indexOf(list, workflow.id);
        if (at >= 0) {
            list[at] = workflow;
            profile.workflows.save(list);
        } else if (isNew) {
            list.append(workflow);
            profile.workflows.save(list);
            QStringList slots = profile.order.slots();
            SlotEdit edit(slots);
            SlotEdits::insertKey(edit, workflow.key());
            profile.order.setSlots(slots);
        }
    }
    if (others.written)
        others.written();
    // Every save writes the standard profile and the Spaces; the line says which kind it was.
    qCInfo(lcServices, LogTexts::kWorkflowAdded, qUtf8Printable(workflow.name), others.spaceCount,
           isNew ? "true" : "false");
    return workflow;
}

LayoutResult<void> WorkflowsViewModel::remove(const QUuid &id)
{
    if (const auto removed = m_layout.deleteWorkflow(id); !removed)
        return removed;
    const OtherProfiles others = m_otherProfiles ? m_otherProfiles() : OtherProfiles{};
    for (const auto &store : others.stores) {
        StoredProfile profile(store);
        QList<WorkflowItem> list = profile.workflows.load();
        const qsizetype at = indexOf(list, id);
        if (at >= 0) {
            list.removeAt(at);
            profile.workflows.save(list);
        }
        // Keys go even where the record was already gone.
        QStringList slots = profile.order.slots();
        SlotEdit edit(slots);
        if (LayoutSanitizer::clearOrphanWorkflowKeys(edit, list) > 0)
            profile.order.setSlots(slots);
        QList<FolderItem> folders = profile.folders.loadAll();
        if (LayoutSanitizer::clearOrphanWorkflowKeysInFolders(folders, list) > 0)
            profile.folders.saveAll(folders);
    }
    if (others.written)
        others.written();
    return {};
}

void WorkflowsViewModel::setWorkflowToEdit(WorkflowEditViewModel *edit)
{
    if (m_workflowToEdit)
        m_workflowToEdit->deleteLater();
    m_workflowToEdit = edit;
    Q_EMIT workflowToEditChanged();
}

void WorkflowsViewModel::beginCreate()
{
    setWorkflowToEdit(new WorkflowEditViewModel(std::nullopt, this));
}

bool WorkflowsViewModel::beginEdit(const QString &id)
{
    const auto uuid = Uuids::fromText(id);
    const auto workflow = uuid ? m_layout.workflow(*uuid) : std::nullopt;
    if (!workflow)
        return false;
    setWorkflowToEdit(new WorkflowEditViewModel(workflow, this));
    return true;
}

bool WorkflowsViewModel::saveEdit()
{
    if (!m_workflowToEdit || !m_workflowToEdit->problem().isEmpty())
        return false;
    if (!save(m_workflowToEdit->result()))
        return false;
    setWorkflowToEdit(nullptr);
    return true;
}

void WorkflowsViewModel::cancelEdit() { setWorkflowToEdit(nullptr); }

bool WorkflowsViewModel::remove(const QString &id)
{
    const auto uuid = Uuids::fromText(id);
    return uuid && remove(*uuid).has_value();
}
