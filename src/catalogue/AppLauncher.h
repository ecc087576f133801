#pragma once

#include "foundation/GridRecords.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

// Opens applications, folders and URLs the way the desktop itself would. A
// failure is logged and returned to the caller; it never stops the program.
class AppLauncher {
public:
    struct Result {
        bool ok = true;
        QString error;

        static Result success() { return {}; }
        static Result failure(QString message) { return {false, std::move(message)}; }
        explicit operator bool() const { return ok; }
    };

    // An action a desktop entry offers besides opening ("New Window").
    struct Action {
        QString id;
        QString name;
    };

    virtual ~AppLauncher() = default;
    virtual Result openApp(const AppItem &app) = 0;
    virtual QList<Action> actions(const AppItem &) const { return {}; }
    // The desktop menu's categories the entry declares ("Game", "Office").
    virtual QStringList categories(const AppItem &) const { return {}; }
    virtual Result openAction(const AppItem &app, const QString &actionId)
    {
        return Result::failure(QStringLiteral("%1 offers no action %2").arg(app.path, actionId));
    }
    // A folder (a file URL) or any URL, with the desktop's default handler.
    virtual Result openLocation(const QUrl &url) = 0;
};
