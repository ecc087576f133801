#pragma once

#include <QStringList>
#include <algorithm>

// Cutting the flat slot list into pages of columns x rows cells.
struct PageGeometry {
    int columns = 8;
    int rows = 5;

    int capacity() const { return std::max(1, columns) * std::max(1, rows); }
    int pageOf(int slot) const { return slot / capacity(); }
    int pageStart(int page) const { return page * capacity(); }
    int localIndex(int slot) const { return slot - pageStart(pageOf(slot)); }
    int absoluteSlot(int page, int local) const { return pageStart(page) + local; }
    int pageCount(int slotCount) const { return std::max(1, (slotCount + capacity() - 1) / capacity()); }
};

// The list may be shorter than its pages: cells past the end are empty, and a
// write there first pads the list with empty keys.
namespace SlotList {
inline void padTo(QStringList &slots, qsizetype length)
{
    while (slots.size() < length)
        slots.append(QString());
}
inline void write(QStringList &slots, qsizetype index, const QString &key)
{
    padTo(slots, index + 1);
    slots[index] = key;
}
inline QString at(const QStringList &slots, qsizetype index)
{
    return index >= 0 && index < slots.size() ? slots.at(index) : QString();
}
}
