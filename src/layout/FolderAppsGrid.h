#pragma once

#include "storage/SettingsKeys.h"

#include <QList>
#include <QString>
#include <optional>

// The shapes an open folder's grid can take, rows x columns; the raw value
// ("3x5" ...) is what is stored and shown.
enum class FolderAppsGrid {
    rows3Columns5, rows3Columns6, rows3Columns7, rows3Columns8,
    rows4Columns5, rows4Columns6, rows4Columns7, rows4Columns8,
    rows5Columns5, rows5Columns6, rows5Columns7, rows5Columns8,
};

namespace FolderAppsGrids {
// The choice is a per-user preference kept in the standard store (not per
// Space: it is how folders look on this machine, not part of a layout).
inline constexpr const char *kSettingsKey = SettingsKeys::kFolderAppsGrid;
// 4 rows of 5: twenty icons, a page that fits the overlay on small screens.
inline constexpr FolderAppsGrid kDefault = FolderAppsGrid::rows4Columns5;

// Every case, in the order the choice list offers them.
const QList<FolderAppsGrid> &all();
int rows(FolderAppsGrid grid);
int columns(FolderAppsGrid grid);
int cellsPerPage(FolderAppsGrid grid);
QString rawValue(FolderAppsGrid grid);
std::optional<FolderAppsGrid> fromRawValue(const QString &raw);
}
