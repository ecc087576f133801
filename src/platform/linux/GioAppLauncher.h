#pragma once

#include "catalogue/AppLauncher.h"

// Opens applications through GIO: a desktop entry is launched as the desktop
// launches it (field codes, working folder, terminal, startup notification on
// X11); a bundle path, a folder or a URL goes to the desktop's default
// handler.
class GioAppLauncher final : public AppLauncher {
public:
    Result openApp(const AppItem &app) override;
    QList<Action> actions(const AppItem &app) const override;
    QStringList categories(const AppItem &app) const override;
    Result openAction(const AppItem &app, const QString &actionId) override;
    Result openLocation(const QUrl &url) override;
};
