#pragma once

#include "storage/CustomizationRecords.h"
#include "storage/JsonMapCache.h"

class FileSystemStore;

class AppsCustomizationRepository {
public:
    virtual ~AppsCustomizationRepository() = default;
    virtual std::optional<CustomAppIcon> icon(const QString &appPath) const = 0;
    virtual const QMap<QString, CustomAppIcon> &all() const = 0;
    virtual void setIcon(const QString &appPath, const CustomAppIcon &icon) = 0;
    // Removes the record and its image file; "asset:" icons have no file.
    virtual void removeIcon(const QString &appPath) = 0;
    // Prepares the chosen image as an icon file in "CustomIcons" and records it.
    virtual std::optional<CustomAppIcon> importImage(const QString &appPath, const QString &imageFile,
                                                     QString *error = nullptr) = 0;
    virtual bool assetIconsApplied() const = 0;
    virtual void setAssetIconsApplied(bool applied) = 0;
    // Removes every "asset:" icon and clears the applied flag.
    virtual void removeAllAssetIcons() = 0;
    // The app now lives at to: its custom icon follows it (the image stays).
    virtual void moveAppPath(const QString &from, const QString &to) = 0;
};

// Custom application icons by app path ("CustomAppIconsV1", standard store)
// and their image files in "CustomIcons".
class AppsCustomizationRepositoryImpl final : public AppsCustomizationRepository {
public:
    AppsCustomizationRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> standardStore,
                                    std::shared_ptr<FileSystemStore> files);

    std::optional<CustomAppIcon> icon(const QString &appPath) const override { return m_cache.get(appPath); }
    const QMap<QString, CustomAppIcon> &all() const override { return m_cache.all(); }
    void setIcon(const QString &appPath, const CustomAppIcon &icon) override { m_cache.set(appPath, icon); }
    // Removes the record and its image file; "asset:" icons have no file.
    void removeIcon(const QString &appPath) override;
    // Prepares the chosen image as an icon file in "CustomIcons" and records it.
    // Fails with domain "CustomIconImport" when the image cannot be used.
    std::optional<CustomAppIcon> importImage(const QString &appPath, const QString &imageFile,
                                             QString *error = nullptr) override;

    bool assetIconsApplied() const override;
    void setAssetIconsApplied(bool applied) override;
    // Removes every "asset:" icon and clears the applied flag.
    void removeAllAssetIcons() override;
    void moveAppPath(const QString &from, const QString &to) override;

    static constexpr const char *kImportErrorDomain = "CustomIconImport";
    static constexpr const char *kImportErrorMessage = "The selected image could not be optimized for an app icon.";

    const QString defaultsKey;

private:
    JsonMapCache<CustomAppIcon> m_cache;
    std::shared_ptr<UserDefaultsStoreType> m_store;
    std::shared_ptr<FileSystemStore> m_files;
};
