#pragma once

#include "catalogue/AppLauncher.h"

#include <QList>
#include <QSet>

// Records what it was asked to open; paths or URLs listed in failing fail
// with the given message, as a launch refused by the desktop would.
class FakeAppLauncher final : public AppLauncher {
public:
    QList<AppItem> openedApps;
    QList<QUrl> openedLocations;
    QSet<QString> failing;
    QString failureMessage = QStringLiteral("refused");

    Result openApp(const AppItem &app) override
    {
        openedApps.append(app);
        return failing.contains(app.path) ? Result::failure(failureMessage) : Result::success();
    }
    Result openLocation(const QUrl &url) override
    {
        openedLocations.append(url);
        return failing.contains(url.toString()) ? Result::failure(failureMessage) : Result::success();
    }
};
