#include "layout/FolderAppsGrid.h"

namespace FolderAppsGrids {

const QList<FolderAppsGrid> &all()
{
    static const QList<FolderAppsGrid> cases = [] {
        QList<FolderAppsGrid> out;
        for (int i = int(FolderAppsGrid::rows3Columns5); i <= int(FolderAppsGrid::rows5Columns8); ++i)
            out.append(FolderAppsGrid(i));
        return out;
    }();
    return cases;
}

// Cases run rows-major: four column counts (5 to 8) for each row count (3 to 5).
int rows(FolderAppsGrid grid) { return 3 + int(grid) / 4; }
int columns(FolderAppsGrid grid) { return 5 + int(grid) % 4; }
int cellsPerPage(FolderAppsGrid grid) { return rows(grid) * columns(grid); }
QString rawValue(FolderAppsGrid grid) { return QStringLiteral("%1x%2").arg(rows(grid)).arg(columns(grid)); }

std::optional<FolderAppsGrid> fromRawValue(const QString &raw)
{
    for (FolderAppsGrid g : all())
        if (rawValue(g) == raw)
            return g;
    return std::nullopt;
}

}
