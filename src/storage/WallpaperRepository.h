#pragma once

#include <QColor>
#include <QString>
#include <memory>

class FileSystemStore;
class UserDefaultsStoreType;

// What the user chose to see behind the grid. An image belongs to the
// profile (each Space has its own); the fallback look when no image is set
// is one for the whole machine.
struct WallpaperChoice {
    enum class Style { Desktop, Color };
    QString imagePath; // the profile's image, a file the program owns; empty when none
    Style style = Style::Desktop;
    QColor color;
    bool operator==(const WallpaperChoice &) const = default;
};

class WallpaperRepository {
public:
    virtual ~WallpaperRepository() = default;
    virtual WallpaperChoice choice() const = 0;
    // Copies the image into the program's own folder and makes it the
    // profile's wallpaper. A file that is not a readable image is refused
    // with the reason in error, and nothing changes.
    virtual bool chooseImage(const QString &file, QString *error = nullptr) = 0;
    // Both clear the profile's image.
    virtual void useDesktop() = 0;
    virtual void useColor(const QColor &color) = 0;
};

// The image path lives under "customBackgroundImagePath" in the profile's
// store (the space-aware one); "backgroundStyle" and "backgroundColor" in the
// standard store. Copies go to "Wallpapers/<UUID>.<ext>" in the
// application-support folder. A copy that is replaced is kept on disk: a
// Space's snapshot or a theme may still name it, and nothing the user
// arranged is deleted behind their back.
class WallpaperRepositoryImpl final : public WallpaperRepository {
public:
    static constexpr const char *kWallpapersFolder = "Wallpapers";
    static constexpr const char *kStyleDesktop = "desktop";
    static constexpr const char *kStyleColor = "color";
    // A deep blue-grey that keeps the white labels readable.
    static constexpr const char *kDefaultColor = "#1f2a3f";
    static constexpr const char *kNotAnImage = "The selected file is not an image Tillmora can read.";

    WallpaperRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> profileStore,
                            std::shared_ptr<UserDefaultsStoreType> mainStore, std::shared_ptr<FileSystemStore> files);

    WallpaperChoice choice() const override;
    bool chooseImage(const QString &file, QString *error = nullptr) override;
    void useDesktop() override;
    void useColor(const QColor &color) override;

private:
    void setStyle(const char *style);
    void clearImage();

    std::shared_ptr<UserDefaultsStoreType> m_profile;
    std::shared_ptr<UserDefaultsStoreType> m_main;
    std::shared_ptr<FileSystemStore> m_files;
};
