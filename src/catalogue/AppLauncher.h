#pragma once

#include "foundation/GridRecords.h"

#include <QString>
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

    virtual ~AppLauncher() = default;
    virtual Result openApp(const AppItem &app) = 0;
    // A folder (a file URL) or any URL, with the desktop's default handler.
    virtual Result openLocation(const QUrl &url) = 0;
};
