#pragma once

#include "storage/WallpaperRepository.h"

#include <QColor>
#include <QSet>
#include <QString>

// Decides what the overlay draws from the user's choice and the desktop's
// wallpaper: the profile's image while its file exists, else the desktop's
// wallpaper (unless the user chose a plain colour), else the colour.
class WallpaperResolver {
public:
    struct Result {
        enum class Source { ProfileImage, DesktopWallpaper, Color };
        Source source = Source::Color;
        QString imagePath; // empty for Color
        QColor color;      // always set: drawn under the image and while it loads
        // For the user when the chosen image cannot be shown; empty otherwise.
        QString notice;
        bool operator==(const Result &) const = default;
    };

    // desktopWallpaper: the desktop's wallpaper file, empty when unknown.
    // A chosen image whose file vanished (an unmounted disk) stays chosen
    // and is shown again once the file is back; the log says so once.
    Result resolve(const WallpaperChoice &choice, const QString &desktopWallpaper);

    static QString missingNotice(const QString &path);

private:
    QSet<QString> m_reportedMissing;
};
