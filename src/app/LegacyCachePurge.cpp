#include "app/LegacyCachePurge.h"

#include "foundation/Logging.h"

#include <QDir>
#include <QFileInfo>

namespace LegacyCachePurge {

int run(const QString &appSupportDirectory)
{
    if (appSupportDirectory.isEmpty())
        return 0;
    int removed = 0;
    const QDir root(appSupportDirectory);
    for (const char *name : kLegacyCacheFolders) {
        const QString path = root.filePath(QLatin1String(name));
        if (QFileInfo(path).isDir() && QDir(path).removeRecursively())
            ++removed;
    }
    for (const QFileInfo &file : root.entryInfoList({QStringLiteral("*.iconcache")}, QDir::Files)) {
        if (QFile::remove(file.absoluteFilePath()))
            ++removed;
    }
    if (removed > 0)
        qCDebug(lcApp, "Purged %d legacy cache items", removed);
    return removed;
}

}
