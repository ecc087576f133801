#pragma once

#include "foundation/GridRecords.h"
#include "spaces/SpaceItem.h"

#include <QList>
#include <QString>
#include <memory>
#include <optional>

class FileSystemStore;
class SpaceStorageProvider;
class SpacesSnapshotService;

// Writes a Space as a theme package: its identity, its whole profile and
// every file the profile points to, in one ZIP file.
class ThemeExporter {
public:
    struct Summary {
        QString fileURL;
        qint64 byteSize = 0;
        QUuid themeId;
    };

    ThemeExporter(std::shared_ptr<FileSystemStore> fs, std::shared_ptr<SpacesSnapshotService> snapshots,
                  std::shared_ptr<SpaceStorageProvider> provider);

    // installed: this machine's apps, so that another machine can find the
    // theme's apps by identity and name where their paths differ.
    std::optional<Summary> exportSpace(const SpaceItem &space, const QString &destination,
                                       const QList<AppItem> &installed, QString *error);

    // A Space keeps its theme id across exports, so a friend who imports a
    // newer export of it is asked before getting a second copy.
    static QUuid themeIdFor(const QUuid &space);

private:
    std::shared_ptr<FileSystemStore> m_files;
    std::shared_ptr<SpacesSnapshotService> m_snapshots;
    std::shared_ptr<SpaceStorageProvider> m_provider;
};
