#include "organise/WorkflowEditViewModel.h"

#include <QColor>

WorkflowEditViewModel::WorkflowEditViewModel(std::optional<WorkflowItem> workflow, QObject *parent)
    : QObject(parent)
    , m_workflow(std::move(workflow))
    , m_newId(QUuid::createUuid())
{
    const WorkflowItem start = m_workflow.value_or(WorkflowItem{});
    m_name = start.name;
    m_iconType = start.iconType;
    m_emoji = m_workflow ? start.emoji : QString::fromUtf8(kDefaultEmoji);
    m_backgroundColorHex = m_workflow ? start.backgroundColorHex : QLatin1String(kDefaultColor);
    m_imagePath = start.imagePath;
    m_selectedAppPaths = start.appPaths;
    m_selectedFolderPaths = start.folderPaths;
    m_launchIntervalSeconds = m_workflow ? start.launchIntervalSeconds : 1.0;
}

void WorkflowEditViewModel::setImageIcon(bool image)
{
    const auto type = image ? WorkflowIconType::image : WorkflowIconType::emoji;
    if (type == m_iconType)
        return;
    m_iconType = type;
    Q_EMIT changed();
}

void WorkflowEditViewModel::addApp(const QString &path)
{
    if (path.isEmpty() || m_selectedAppPaths.contains(path))
        return;
    m_selectedAppPaths.append(path);
    Q_EMIT changed();
}

void WorkflowEditViewModel::removeApp(const QString &path)
{
    if (m_selectedAppPaths.removeAll(path) > 0)
        Q_EMIT changed();
}

void WorkflowEditViewModel::moveApp(int from, int to)
{
    const int count = int(m_selectedAppPaths.size());
    if (from < 0 || from >= count || to < 0 || to >= count || from == to)
        return;
    m_selectedAppPaths.move(from, to);
    Q_EMIT changed();
}

void WorkflowEditViewModel::addFolder(const QString &path)
{
    if (path.isEmpty() || m_selectedFolderPaths.contains(path))
        return;
    m_selectedFolderPaths.append(path);
    Q_EMIT changed();
}

void WorkflowEditViewModel::removeFolder(const QString &path)
{
    if (m_selectedFolderPaths.removeAll(path) > 0)
        Q_EMIT changed();
}

void WorkflowEditViewModel::setSelectedAppPaths(const QStringList &paths)
{
    m_selectedAppPaths = paths;
    Q_EMIT changed();
}

void WorkflowEditViewModel::setSelectedFolderPaths(const QStringList &paths)
{
    m_selectedFolderPaths = paths;
    Q_EMIT changed();
}

QString WorkflowEditViewModel::problem() const
{
    if (m_name.trimmed().isEmpty())
        return tr("Give the workflow a name.");
    if (m_iconType == WorkflowIconType::image && m_imagePath.isEmpty())
        return tr("Choose an image, or use an emoji.");
    if (!m_backgroundColorHex.isEmpty() && !QColor::isValidColorName(m_backgroundColorHex))
        return tr("The colour is not a hexadecimal colour such as #3478F6.");
    return {};
}

WorkflowItem WorkflowEditViewModel::result() const
{
    WorkflowItem item = m_workflow.value_or(WorkflowItem{});
    if (!m_workflow)
        item.id = m_newId;
    item.name = m_name.trimmed();
    item.iconType = m_iconType;
    item.emoji = m_emoji;
    item.backgroundColorHex = m_backgroundColorHex;
    item.imagePath = m_imagePath;
    item.isPNG = m_imagePath.endsWith(QLatin1String(".png"), Qt::CaseInsensitive);
    item.appPaths = m_selectedAppPaths;
    item.folderPaths = m_selectedFolderPaths;
    item.launchIntervalSeconds = m_launchIntervalSeconds;
    return item;
}
