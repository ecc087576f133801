#pragma once

#include "foundation/GridRecords.h"

#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QStringList>
#include <functional>
#include <optional>

// Which installed application a theme's app path stands for on this
// machine: the same path first, then the same application identity (the
// desktop-file id), then the same display name. Each installed app answers
// for one theme path at most.
class ThemeAppMatcher {
public:
    // exported: the package's description of its apps (path -> {identity, name}).
    ThemeAppMatcher(const QList<AppItem> &installed, const QStringList &themePaths, const QJsonObject &exported);

    std::optional<QString> localPath(const QString &themePath) const;
    int matchedCount(const QStringList &themePaths) const;

    // The description a package carries of the apps its snapshot names.
    static QJsonObject describe(const QStringList &paths, const QList<AppItem> &installed);
    // Every app path the snapshot names anywhere (grid, folders, hidden,
    // icons, workflows, orders), and those the grid and folders place.
    static QStringList allAppPaths(const QJsonObject &snapshot);
    static QStringList placedAppPaths(const QJsonObject &snapshot);

    // Rewrites every app path of the snapshot through map (nothing = the app
    // is not here): grid cells become empty, list entries and icons go,
    // folders and workflows keep the apps found. Folders are left alone;
    // the importer reconciles them.
    static QJsonObject mapAppPaths(const QJsonObject &snapshot,
                                   const std::function<std::optional<QString>(const QString &)> &map);

private:
    QHash<QString, QString> m_matches; // theme path -> installed path
};
