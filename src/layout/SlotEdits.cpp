#include "layout/SlotEdits.h"

#include "foundation/Logging.h"

namespace SlotEdits {

qsizetype firstEmpty(const SlotEdit &edit, qsizetype from, qsizetype end)
{
    const qsizetype stop = end < 0 ? edit.size() : std::min(end, edit.size());
    for (qsizetype i = std::max<qsizetype>(0, from); i < stop; ++i)
        if (edit.isEmptyAt(i))
            return i;
    return -1;
}

qsizetype insertKey(SlotEdit &edit, const QString &key, qsizetype knownFull)
{
    const qsizetype empty = firstEmpty(edit, knownFull);
    if (empty >= 0) {
        edit.set(empty, key);
        qCDebug(lcLayout, "📝 [INSERT LOG] Placed %s in empty slot %ld", qUtf8Printable(key), long(empty));
        return empty;
    }
    edit.append(key);
    const qsizetype last = edit.size() - 1;
    qCDebug(lcLayout, "📝 [INSERT LOG] Appended %s to end of slots at index %ld", qUtf8Printable(key), long(last));
    return last;
}

qsizetype removeKey(SlotEdit &edit, const QString &key)
{
    const qsizetype index = edit.indexOf(key);
    if (index < 0) {
        qCDebug(lcLayout, "🗑️ [REMOVE LOG] Key %s not found in slots", qUtf8Printable(key));
        return -1;
    }
    edit.clear(index);
    qCDebug(lcLayout, "🗑️ [REMOVE LOG] Removing %s from slot %ld, slot becomes empty", qUtf8Printable(key),
            long(index));
    return index;
}

}
