#pragma once

#include "spaces/SpaceStorageProvider.h"
#include "spaces/SpacesRepository.h"
#include "spaces/SpacesSnapshotService.h"
#include "spaces/SpacesViewModel.h"
#include "spaces/ThemeExporter.h"
#include "spaces/ThemeImporter.h"
#include "storage/FileSystemStore.h"
#include "storage/UserDefaultsStore.h"

#include <memory>

// One profile on one machine, without the grid: its settings ("root/config")
// and data ("root/data") folders, the Spaces and the theme operations.
struct SpacesProfile {
    QString config, data;
    std::shared_ptr<UserDefaultsStore> main;
    std::shared_ptr<SpaceStorageProvider> provider;
    std::shared_ptr<FileSystemStore> files;
    std::shared_ptr<SpacesSnapshotService> snapshots;
    std::unique_ptr<SpacesViewModel> spaces;

    explicit SpacesProfile(const QString &root)
        : config(root + QStringLiteral("/config")), data(root + QStringLiteral("/data"))
    {
        main = UserDefaultsStore::standard(config);
        provider = std::make_shared<SpaceStorageProvider>(main, config);
        files = std::make_shared<FileSystemStore>(data);
        snapshots = std::make_shared<SpacesSnapshotService>(main, files);
        spaces = std::make_unique<SpacesViewModel>(std::make_shared<SpacesRepositoryImpl>(main), snapshots, provider);
    }
    ThemeImporter importer() const { return ThemeImporter(files, snapshots, provider); }
    ThemeExporter exporter() const { return ThemeExporter(files, snapshots, provider); }
};
