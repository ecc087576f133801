#include "platform/linux/GioFolderAssets.h"

#include <QFile>

#include <gio/gio.h>

std::optional<FolderAssetSource::Assets> GioFolderAssets::assetsOf(const QString &path) const
{
    GFile *file = g_file_new_for_path(QFile::encodeName(path).constData());
    GFileInfo *info = g_file_query_info(file, G_FILE_ATTRIBUTE_STANDARD_DISPLAY_NAME "," G_FILE_ATTRIBUTE_STANDARD_ICON,
                                        G_FILE_QUERY_INFO_NONE, nullptr, nullptr);
    g_object_unref(file);
    if (!info)
        return std::nullopt;
    Assets assets;
    assets.displayName = QString::fromUtf8(g_file_info_get_display_name(info));
    if (GIcon *icon = g_file_info_get_icon(info); icon && G_IS_THEMED_ICON(icon)) {
        // GIO lists the most specific name first: folder-documents for the
        // user's Documents, but the MIME type's inode-directory for any other
        // folder, whose standard icon-theme name is "folder".
        if (const char *const *names = g_themed_icon_get_names(G_THEMED_ICON(icon))) {
            for (; *names && assets.iconName.isEmpty(); ++names) {
                const QString name = QString::fromUtf8(*names);
                if (name.startsWith(QLatin1String("folder")) || name.startsWith(QLatin1String("user-")))
                    assets.iconName = name;
            }
        }
    }
    g_object_unref(info);
    if (assets.iconName.isEmpty())
        assets.iconName = QStringLiteral("folder");
    return assets;
}
