#include "ui/GridCell.h"

#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"

namespace {
constexpr int kFolderPreviewCount = 9;
}

GridCell GridCellBuilder::cellFor(const QString &key) const
{
    GridCell cell;
    cell.key = key;
    if (SlotKey::kindOf(key) == SlotKey::Kind::WidgetBlock) {
        cell.kind = GridCell::Kind::Blocked;
        return cell;
    }
    const GridEntryOrEmpty entry = lookup ? lookup->resolve(key) : std::nullopt;
    if (!entry) {
        const auto unavailable = lookup ? lookup->unavailableAppsByPath.constFind(SlotKey::appPath(key))
                                        : QHash<QString, AppItem>::const_iterator();
        if (lookup && unavailable != lookup->unavailableAppsByPath.cend()) {
            cell.kind = GridCell::Kind::Unavailable;
            cell.title = displayName ? displayName(*unavailable) : unavailable->displayName;
            cell.iconPath = iconFor(unavailable->path);
        }
        return cell;
    }
    if (const auto *app = std::get_if<AppItem>(&*entry)) {
        cell.kind = GridCell::Kind::App;
        cell.title = displayName ? displayName(*app) : app->displayName;
        cell.iconPath = iconFor(app->path);
    } else if (const auto *folder = std::get_if<FolderItem>(&*entry)) {
        cell.kind = GridCell::Kind::Folder;
        cell.title = folder->name;
        cell.entryId = Uuids::toText(folder->id);
        cell.tint = folderTint ? folderTint(cell.entryId) : QString();
        // The preview follows the folder's own order, skipping empty cells.
        for (const QString &member : folder->slots) {
            const QString path = SlotKey::appPath(member);
            if (!path.isEmpty() && lookup->appsByPath.contains(path))
                cell.previewPaths.append(iconFor(path));
            if (cell.previewPaths.size() == kFolderPreviewCount)
                break;
        }
    } else if (const auto *widget = std::get_if<WidgetItem>(&*entry)) {
        cell.kind = GridCell::Kind::Widget;
        cell.entryId = Uuids::toText(widget->id);
        cell.widgetKind = widget->kind;
        cell.title = widget->kind;
        cell.spanColumns = WidgetSizes::columns(widget->size);
        cell.spanRows = WidgetSizes::rows(widget->size);
    } else if (const auto *workflow = std::get_if<WorkflowItem>(&*entry)) {
        cell.kind = GridCell::Kind::Workflow;
        cell.entryId = Uuids::toText(workflow->id);
        cell.title = workflow->name;
        cell.emoji = workflow->emoji;
        cell.tint = workflow->backgroundColorHex;
        if (workflow->iconType == WorkflowIconType::image)
            cell.image = workflow->imagePath;
    }
    return cell;
}

QList<GridCell> GridCellBuilder::page(const QStringList &slots, const PageGeometry &geometry, int page) const
{
    QList<GridCell> cells;
    cells.reserve(geometry.capacity());
    const int start = geometry.pageStart(page);
    for (int i = 0; i < geometry.capacity(); ++i)
        cells.append(cellFor(SlotList::at(slots, start + i)));
    return cells;
}
