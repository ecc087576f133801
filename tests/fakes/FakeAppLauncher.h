#pragma once

#include "catalogue/AppLauncher.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <QSet>

// Records what it was asked to open; paths or URLs listed in failing fail
// with the given message, as a launch refused by the desktop would.
class FakeAppLauncher final : public AppLauncher {
public:
    QList<AppItem> openedApps;
    QList<QUrl> openedLocations;
    QSet<QString> failing;
    QString failureMessage = QStringLiteral("refused");
    // The actions each desktop entry offers; what was run of them.
    QHash<QString, QList<Action>> actionsByPath;
    QStringList openedActions;

    Result openApp(const AppItem &app) override
    {
        openedApps.append(app);
        return failing.contains(app.path) ? Result::failure(failureMessage) : Result::success();
    }
    QList<Action> actions(const AppItem &app) const override { return actionsByPath.value(app.path); }
    Result openAction(const AppItem &app, const QString &actionId) override
    {
        openedActions.append(app.path + u'#' + actionId);
        return Result::success();
    }
    Result openLocation(const QUrl &url) override
    {
        openedLocations.append(url);
        return failing.contains(url.toString()) ? Result::failure(failureMessage) : Result::success();
    }
};
