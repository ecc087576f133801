#pragma once

#include "catalogue/SystemFolderPanelAssetCache.h"

// A folder's display name and themed icon as GIO gives them to file managers:
// the XDG user folders get their own icons (folder-documents, folder-download,
// user-home, ...), any other folder the plain folder icon.
class GioFolderAssets final : public FolderAssetSource {
public:
    std::optional<Assets> assetsOf(const QString &path) const override;
};
