#include "layout/FolderSlots.h"

#include "layout/PageGeometry.h"
#include "foundation/SlotKey.h"

#include <QSet>

namespace FolderSlots {

namespace {
qsizetype nearestEmpty(const QStringList &slots, qsizetype from, qsizetype step, qsizetype lo, qsizetype hi)
{
    for (qsizetype i = from; i >= lo && i <= hi; i += step)
        if (slots.at(i).isEmpty())
            return i;
    return -1;
}
}

QStringList moveKey(QStringList slots, const QString &key, qsizetype target, int maxSlotsPerPage,
                    int columnsPerRow)
{
    const qsizetype perPage = std::max(1, maxSlotsPerPage);
    const qsizetype perRow = std::max(1, columnsPerRow);
    target = std::max<qsizetype>(0, target);
    const qsizetype from = slots.indexOf(key);
    if (from == target)
        return slots;

    const qsizetype pageEnd = (target / perPage + 1) * perPage;
    SlotList::padTo(slots, pageEnd);
    if (from >= 0)
        slots[from].clear();
    if (slots.at(target).isEmpty()) {
        slots[target] = key;
        return slots;
    }

    const qsizetype rowStart = (target / perRow) * perRow;
    const qsizetype rowEnd = std::min(rowStart + perRow, pageEnd);
    const qsizetype left = nearestEmpty(slots, target - 1, -1, rowStart, target - 1);
    const qsizetype right = nearestEmpty(slots, target + 1, 1, target + 1, rowEnd - 1);
    if (left >= 0) {
        for (qsizetype i = left; i < target; ++i)
            slots[i] = slots.at(i + 1);
    } else if (right >= 0) {
        for (qsizetype i = right; i > target; --i)
            slots[i] = slots.at(i - 1);
    } else {
        const QString occupant = slots.at(target);
        qsizetype dest = from;
        if (dest < 0)
            dest = slots.indexOf(QString());
        if (dest < 0)
            slots.append(occupant);
        else
            slots[dest] = occupant;
    }
    slots[target] = key;
    return slots;
}

QStringList completed(const FolderItem &folder)
{
    const QSet<QString> members(folder.appPaths.cbegin(), folder.appPaths.cend());
    QSet<QString> seen;
    QStringList slots = folder.slots;
    for (QString &key : slots) {
        if (key.isEmpty())
            continue;
        const SlotKey::Kind kind = SlotKey::kindOf(key);
        QString identity;
        if (kind == SlotKey::Kind::App) {
            identity = SlotKey::appPath(key);
            if (!members.contains(identity))
                identity.clear();
        } else if (kind == SlotKey::Kind::Workflow) {
            identity = key;
        }
        if (identity.isEmpty() || seen.contains(identity))
            key.clear();
        else
            seen.insert(identity);
    }
    qsizetype searchFrom = 0;
    for (const QString &path : folder.appPaths) {
        if (seen.contains(path))
            continue;
        seen.insert(path);
        const qsizetype empty = slots.indexOf(QString(), searchFrom);
        if (empty < 0) {
            slots.append(path);
            searchFrom = slots.size();
        } else {
            slots[empty] = path;
            searchFrom = empty + 1;
        }
    }
    return slots;
}

}
