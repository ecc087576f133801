#include "storage/WallpaperResolver.h"

#include "foundation/LogTexts.h"
#include "foundation/Logging.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {
bool isFile(const QString &path) { return !path.isEmpty() && QFileInfo(path).isFile(); }
}

QString WallpaperResolver::missingNotice(const QString &path)
{
    return QCoreApplication::translate("WallpaperResolver",
                                       "Your wallpaper image %1 is missing. It stays chosen and shows again when the "
                                       "file is back.")
        .arg(path);
}

WallpaperResolver::Result WallpaperResolver::resolve(const WallpaperChoice &choice, const QString &desktopWallpaper)
{
    Result result;
    result.color = choice.color;
    if (!choice.imagePath.isEmpty()) {
        if (isFile(choice.imagePath)) {
            m_reportedMissing.remove(choice.imagePath); // should it go again, say so again
            result.source = Result::Source::ProfileImage;
            result.imagePath = choice.imagePath;
            return result;
        }
        result.notice = missingNotice(choice.imagePath);
        if (!m_reportedMissing.contains(choice.imagePath)) {
            m_reportedMissing.insert(choice.imagePath);
            qCWarning(lcServices, LogTexts::kWallpaperMissing, qUtf8Printable(choice.imagePath));
        }
        // The image stood in for the style: its loss shows the desktop's
        // wallpaper whatever the style says, as the log tells.
        if (isFile(desktopWallpaper)) {
            result.source = Result::Source::DesktopWallpaper;
            result.imagePath = desktopWallpaper;
        }
        return result;
    }
    if (choice.style == WallpaperChoice::Style::Desktop && isFile(desktopWallpaper)) {
        result.source = Result::Source::DesktopWallpaper;
        result.imagePath = desktopWallpaper;
    }
    return result;
}
