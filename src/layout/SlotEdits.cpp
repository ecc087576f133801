#include "layout/SlotEdits.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"

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
        qCDebug(lcLayout, LogTexts::kInsertPlaced, qUtf8Printable(key), long(empty));
        return empty;
    }
    edit.append(key);
    const qsizetype last = edit.size() - 1;
    qCDebug(lcLayout, LogTexts::kInsertAppended, qUtf8Printable(key), long(last));
    return last;
}

qsizetype removeKey(SlotEdit &edit, const QString &key)
{
    const qsizetype index = edit.indexOf(key);
    if (index < 0) {
        qCDebug(lcLayout, LogTexts::kRemoveNotFound, qUtf8Printable(key));
        return -1;
    }
    edit.clear(index);
    qCDebug(lcLayout, LogTexts::kRemoved, qUtf8Printable(key),
            long(index));
    return index;
}

}
