#pragma once

#include "organise/WorkflowItem.h"

#include <QObject>
#include <QStringList>
#include <optional>

// The editor's copy of one workflow: every field can be changed and the
// app list put in order before anything is stored. Nothing here writes.
class WorkflowEditViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isNew READ isNew CONSTANT)
    Q_PROPERTY(QString name MEMBER m_name NOTIFY changed)
    Q_PROPERTY(bool imageIcon READ imageIcon WRITE setImageIcon NOTIFY changed)
    Q_PROPERTY(QString emoji MEMBER m_emoji NOTIFY changed)
    Q_PROPERTY(QString backgroundColorHex MEMBER m_backgroundColorHex NOTIFY changed)
    Q_PROPERTY(QString imagePath MEMBER m_imagePath NOTIFY changed)
    Q_PROPERTY(QStringList selectedAppPaths READ selectedAppPaths NOTIFY changed)
    Q_PROPERTY(QStringList selectedFolderPaths READ selectedFolderPaths NOTIFY changed)
    Q_PROPERTY(double launchIntervalSeconds MEMBER m_launchIntervalSeconds NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
public:
    static constexpr const char *kDefaultEmoji = "⚡";
    static constexpr const char *kDefaultColor = "#3478F6";

    // workflow: the item being edited; none for a new one.
    explicit WorkflowEditViewModel(std::optional<WorkflowItem> workflow = std::nullopt, QObject *parent = nullptr);

    bool isNew() const { return !m_workflow; }
    bool imageIcon() const { return m_iconType == WorkflowIconType::image; }
    void setImageIcon(bool image);
    QStringList selectedAppPaths() const { return m_selectedAppPaths; }
    QStringList selectedFolderPaths() const { return m_selectedFolderPaths; }

    Q_INVOKABLE void addApp(const QString &path);
    Q_INVOKABLE void removeApp(const QString &path);
    // The drag of one app to another place in the launch order.
    Q_INVOKABLE void moveApp(int from, int to);
    Q_INVOKABLE void addFolder(const QString &path);
    Q_INVOKABLE void removeFolder(const QString &path);
    void setSelectedAppPaths(const QStringList &paths);
    void setSelectedFolderPaths(const QStringList &paths);

    // Why the workflow cannot be saved as it stands, or empty.
    QString problem() const;
    // The record to store: the edited one with its id, or a new id.
    WorkflowItem result() const;

Q_SIGNALS:
    void changed();

private:
    QString m_name;
    WorkflowIconType m_iconType = WorkflowIconType::emoji;
    QString m_emoji;
    QString m_backgroundColorHex;
    QString m_imagePath;
    QStringList m_selectedAppPaths;
    QStringList m_selectedFolderPaths;
    double m_launchIntervalSeconds = 0;
    std::optional<WorkflowItem> m_workflow;
    QUuid m_newId;
};
