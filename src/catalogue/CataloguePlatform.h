#pragma once

#include "catalogue/AppLauncher.h"
#include "catalogue/AppSource.h"
#include "catalogue/SystemFolderPanelAssetCache.h"

#include <QList>
#include <memory>

// What the platform adds to the catalogue: its own kinds of application
// (desktop entries on Linux) and the way to open them. Empty in headless
// tests: the catalogue then lists bundles only and opens nothing.
struct CataloguePlatform {
    QList<std::shared_ptr<AppSource>> appSources;
    std::shared_ptr<AppLauncher> launcher;
    // Names and icons of folders as the desktop shows them; null: file names.
    std::shared_ptr<FolderAssetSource> folderAssets;
};
