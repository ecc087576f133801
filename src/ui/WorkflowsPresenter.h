#pragma once

#include "layout/WorkflowsViewModel.h"
#include "organise/WorkflowEditViewModel.h"

#include <QObject>
#include <QPointer>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>
#include <memory>

class CellFactory;
class FileChooser;
class LaunchpadViewModel;

// The workflow editor's side of the overlay: opening it for a new or an
// existing workflow, the installed apps to pick from, the desktop's chooser
// for folders and images, and saving or deleting.
class WorkflowsPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Owned by the grid presenter")
    // The open editor's fields, forwarded to its model (none open: defaults).
    Q_PROPERTY(bool editing READ editing NOTIFY editorChanged)
    Q_PROPERTY(bool isNew READ isNew NOTIFY editorChanged)
    Q_PROPERTY(QString workflowId READ workflowId NOTIFY editorChanged)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY fieldsChanged)
    Q_PROPERTY(QString emoji READ emoji WRITE setEmoji NOTIFY fieldsChanged)
    Q_PROPERTY(QString color READ color WRITE setColor NOTIFY fieldsChanged)
    Q_PROPERTY(QString image READ image NOTIFY fieldsChanged)
    Q_PROPERTY(double interval READ interval WRITE setInterval NOTIFY fieldsChanged)
    Q_PROPERTY(QStringList appPaths READ appPaths NOTIFY fieldsChanged)
    Q_PROPERTY(QStringList folderPaths READ folderPaths NOTIFY fieldsChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY fieldsChanged)
    // {path, title} of every installed app, by name.
    Q_PROPERTY(QVariantList installedApps READ installedApps NOTIFY editorChanged)
    Q_PROPERTY(bool available READ available CONSTANT)
public:
    WorkflowsPresenter(LaunchpadViewModel &layout, const CellFactory &cells, QObject *parent = nullptr);

    // Without these (tests of other parts) the editor never opens.
    void attach(WorkflowsViewModel *workflows, std::shared_ptr<FileChooser> chooser);
    bool available() const { return m_workflows != nullptr; }

    WorkflowEditViewModel *editor() const;
    bool editing() const { return editor() != nullptr; }
    bool isNew() const;
    QString workflowId() const;
    QString name() const;
    void setName(const QString &name);
    QString emoji() const;
    // Choosing an emoji or a colour goes back from an image to the emoji plate.
    void setEmoji(const QString &emoji);
    QString color() const;
    void setColor(const QString &color);
    // The image drawn, or empty when the emoji is.
    QString image() const;
    double interval() const;
    void setInterval(double seconds);
    QStringList appPaths() const;
    QStringList folderPaths() const;
    QString problem() const;
    Q_INVOKABLE void addApp(const QString &path);
    Q_INVOKABLE void removeApp(const QString &path);
    Q_INVOKABLE void moveApp(int from, int to);
    Q_INVOKABLE void removeFolder(const QString &path);
    QVariantList installedApps() const;

    Q_INVOKABLE void create();
    Q_INVOKABLE void edit(const QString &workflowId);
    Q_INVOKABLE bool save();
    Q_INVOKABLE void cancel();
    Q_INVOKABLE bool remove(const QString &workflowId);
    Q_INVOKABLE QString appTitle(const QString &path) const;
    // Ask the desktop for a folder to add, or an image for the icon.
    Q_INVOKABLE void chooseFolder();
    Q_INVOKABLE void chooseImage();

Q_SIGNALS:
    void editorChanged();
    void fieldsChanged();
    // Something to tell the user (an image that cannot be read).
    void notice(const QString &text);

private:
    void choose(int kind, const QString &title);

    LaunchpadViewModel &m_layout;
    const CellFactory &m_cells;
    QPointer<WorkflowsViewModel> m_workflows;
    std::shared_ptr<FileChooser> m_chooser;
};
