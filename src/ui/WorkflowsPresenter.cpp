#include "ui/WorkflowsPresenter.h"

#include "foundation/Uuids.h"
#include "layout/LaunchpadViewModel.h"
#include "layout/WorkflowsViewModel.h"
#include "platform/FileChooser.h"
#include "ui/CellFactory.h"
#include "ui/FallbackFileChooser.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>

WorkflowsPresenter::WorkflowsPresenter(LaunchpadViewModel &layout, const CellFactory &cells, QObject *parent)
    : QObject(parent)
    , m_layout(layout)
    , m_cells(cells)
{
}

void WorkflowsPresenter::attach(WorkflowsViewModel *workflows, std::shared_ptr<FileChooser> chooser)
{
    m_workflows = workflows;
    m_chooser = std::move(chooser);
    connect(workflows, &WorkflowsViewModel::workflowToEditChanged, this, [this] {
        if (WorkflowEditViewModel *e = editor())
            connect(e, &WorkflowEditViewModel::changed, this, &WorkflowsPresenter::fieldsChanged);
        Q_EMIT editorChanged();
        Q_EMIT fieldsChanged();
    });
}

bool WorkflowsPresenter::isNew() const { return !editor() || editor()->isNew(); }
QString WorkflowsPresenter::workflowId() const
{
    return editor() ? Uuids::toText(editor()->result().id) : QString();
}
QString WorkflowsPresenter::name() const { return editor() ? editor()->property("name").toString() : QString(); }
void WorkflowsPresenter::setName(const QString &name)
{
    if (editor() && name != this->name()) {
        editor()->setProperty("name", name);
        Q_EMIT editor()->changed();
    }
}
QString WorkflowsPresenter::emoji() const { return editor() ? editor()->property("emoji").toString() : QString(); }
void WorkflowsPresenter::setEmoji(const QString &emoji)
{
    if (!editor())
        return;
    editor()->setProperty("emoji", emoji);
    editor()->setImageIcon(false);
    Q_EMIT editor()->changed();
}
QString WorkflowsPresenter::color() const
{
    return editor() ? editor()->property("backgroundColorHex").toString() : QString();
}
void WorkflowsPresenter::setColor(const QString &color)
{
    if (!editor())
        return;
    editor()->setProperty("backgroundColorHex", color);
    editor()->setImageIcon(false);
    Q_EMIT editor()->changed();
}
QString WorkflowsPresenter::image() const
{
    return editor() && editor()->imageIcon() ? editor()->property("imagePath").toString() : QString();
}
double WorkflowsPresenter::interval() const
{
    return editor() ? editor()->property("launchIntervalSeconds").toDouble() : 0;
}
void WorkflowsPresenter::setInterval(double seconds)
{
    if (editor() && seconds != interval()) {
        editor()->setProperty("launchIntervalSeconds", seconds);
        Q_EMIT editor()->changed();
    }
}
QStringList WorkflowsPresenter::appPaths() const { return editor() ? editor()->selectedAppPaths() : QStringList(); }
QStringList WorkflowsPresenter::folderPaths() const
{
    return editor() ? editor()->selectedFolderPaths() : QStringList();
}
QString WorkflowsPresenter::problem() const { return editor() ? editor()->problem() : QString(); }
void WorkflowsPresenter::addApp(const QString &path)
{
    if (editor())
        editor()->addApp(path);
}
void WorkflowsPresenter::removeApp(const QString &path)
{
    if (editor())
        editor()->removeApp(path);
}
void WorkflowsPresenter::moveApp(int from, int to)
{
    if (editor())
        editor()->moveApp(from, to);
}
void WorkflowsPresenter::removeFolder(const QString &path)
{
    if (editor())
        editor()->removeFolder(path);
}

WorkflowEditViewModel *WorkflowsPresenter::editor() const
{
    return m_workflows ? m_workflows->workflowToEdit() : nullptr;
}

QVariantList WorkflowsPresenter::installedApps() const
{
    QList<std::pair<QString, QString>> apps;
    for (const AppItem &app : m_layout.apps())
        apps.append({m_cells.appTitle(app), app.path});
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(apps.begin(), apps.end(), [&](const auto &a, const auto &b) { return collator.compare(a.first, b.first) < 0; });
    QVariantList out;
    for (const auto &[title, path] : apps)
        out.append(QVariantMap{{QStringLiteral("path"), path}, {QStringLiteral("title"), title}});
    return out;
}

void WorkflowsPresenter::create()
{
    if (m_workflows)
        m_workflows->beginCreate();
}

void WorkflowsPresenter::edit(const QString &workflowId)
{
    if (m_workflows)
        m_workflows->beginEdit(workflowId);
}

bool WorkflowsPresenter::save() { return m_workflows && m_workflows->saveEdit(); }

void WorkflowsPresenter::cancel()
{
    if (m_workflows)
        m_workflows->cancelEdit();
}

bool WorkflowsPresenter::remove(const QString &workflowId)
{
    if (!m_workflows || !m_workflows->remove(workflowId))
        return false;
    m_workflows->cancelEdit();
    return true;
}

QString WorkflowsPresenter::appTitle(const QString &path) const
{
    for (const AppItem &app : m_layout.apps())
        if (app.path == path)
            return m_cells.appTitle(app);
    // An app no longer installed stays in the list under its file name.
    return tr("%1 (not installed)").arg(QFileInfo(path).completeBaseName());
}

void WorkflowsPresenter::chooseFolder() { choose(int(FileChooser::Kind::Folder), tr("Choose a folder to open")); }
void WorkflowsPresenter::chooseImage() { choose(int(FileChooser::Kind::Image), tr("Choose an image for the icon")); }

void WorkflowsPresenter::choose(int kindValue, const QString &title)
{
    const auto kind = FileChooser::Kind(kindValue);
    QPointer<WorkflowsPresenter> self(this);
    const auto chosen = [self, kind](const QString &path) {
        WorkflowEditViewModel *editor = self ? self->editor() : nullptr;
        if (!editor || path.isEmpty())
            return;
        if (kind == FileChooser::Kind::Folder) {
            editor->addFolder(QDir::cleanPath(path));
        } else if (!QImageReader(path).canRead()) {
            Q_EMIT self->notice(tr("%1 is not an image Tillmora can read.").arg(QFileInfo(path).fileName()));
        } else {
            editor->setProperty("imagePath", path);
            editor->setImageIcon(true);
            Q_EMIT editor->changed();
        }
    };
    FallbackFileChooser::chooseWith(m_chooser.get(), kind, title, chosen);
}
