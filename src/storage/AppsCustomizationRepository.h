#pragma once

#include "storage/CustomizationRecords.h"
#include "storage/JsonMapCache.h"

class FileSystemStore;

// Custom application icons by app path ("CustomAppIconsV1", standard store)
// and their image files in "CustomIcons".
class AppsCustomizationRepositoryImpl {
public:
    AppsCustomizationRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> standardStore,
                                    std::shared_ptr<FileSystemStore> files);

    std::optional<CustomAppIcon> icon(const QString &appPath) const { return cache.get(appPath); }
    const QMap<QString, CustomAppIcon> &all() const { return cache.all(); }
    void setIcon(const QString &appPath, const CustomAppIcon &icon) { cache.set(appPath, icon); }
    // Removes the record and its image file; "asset:" icons have no file.
    void removeIcon(const QString &appPath);
    // Prepares the chosen image as an icon file in "CustomIcons" and records it.
    // Fails with domain "CustomIconImport" when the image cannot be used.
    std::optional<CustomAppIcon> importImage(const QString &appPath, const QString &imageFile, QString *error = nullptr);

    bool assetIconsApplied() const;
    void setAssetIconsApplied(bool applied);
    // Removes every "asset:" icon and clears the applied flag.
    void removeAllAssetIcons();

    static constexpr const char *kImportErrorDomain = "CustomIconImport";
    static constexpr const char *kImportErrorMessage = "The selected image could not be optimized for an app icon.";

    const QString defaultsKey;

private:
    JsonMapCache<CustomAppIcon> cache;
    std::shared_ptr<UserDefaultsStoreType> store;
    std::shared_ptr<FileSystemStore> m_files;
};
