#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <optional>

enum class WorkflowIconType { emoji, image };

// One grid icon that opens several applications and folders in order.
struct WorkflowItem {
    QUuid id;
    QString name;
    WorkflowIconType iconType = WorkflowIconType::emoji;
    QString emoji;
    QString backgroundColorHex;
    QString imagePath;
    bool isPNG = false;
    QStringList appPaths;
    QStringList folderPaths;
    double launchIntervalSeconds = 0;

    QString key() const;
    // Negative pauses count as none.
    double effectiveLaunchInterval() const { return launchIntervalSeconds < 0 ? 0 : launchIntervalSeconds; }

    QJsonObject toJson() const;
    static std::optional<WorkflowItem> fromJson(const QJsonObject &json, QString *error = nullptr);
    bool operator==(const WorkflowItem &) const = default;
};
