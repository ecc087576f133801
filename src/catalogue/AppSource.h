#pragma once

#include "catalogue/AppScan.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// Where an application's icon comes from: an image file, or a name to look
// up in the icon theme. At most one of the two is set.
struct AppIconReference {
    QString filePath;
    QString themeName;
};

// One kind of installed application beside the bundles (for example the
// desktop entries of a Linux desktop). scan() runs on a worker thread, so a
// source keeps no unguarded mutable state.
class AppSource {
public:
    virtual ~AppSource() = default;

    // The source's applications, in the order the catalogue should show them,
    // and the folders it could list.
    virtual AppScan scan() const = 0;
    QList<AppItem> fetch() const { return scan().apps(); }
    // Folders whose entry list changes when an application is installed or
    // removed.
    virtual QStringList watchedDirectories() const = 0;
    // The icon of an application this source lists; nothing when the path is
    // not one of its applications or names no icon.
    virtual std::optional<AppIconReference> iconReference(const QString &appPath) const = 0;
    // Folders the user added: a source lists what it knows in them too, after
    // its own folders. Called on the main thread, read by scans.
    virtual void setUserFolders(const QStringList &) {}
};

namespace AppItems {
// An item whose id follows from its path, so the same application keeps the
// same id across scans and restarts.
AppItem make(const QString &path, const QString &displayName, const QString &identity = {});
}
