#pragma once

#include "foundation/RecordList.h"
#include "storage/UserDefaultsStoreType.h"

#include <QJsonArray>
#include <QJsonDocument>

// Records that could not be decoded are never silently dropped: before a
// list is saved over them, they are appended (as they were) to the list
// stored under KEY + ".unreadable", where a person or a later version can
// find them.
namespace KeptAside {

inline QString keyFor(const QString &key) { return key + QStringLiteral(".unreadable"); }

template <typename Record>
void beforeSaving(UserDefaultsStoreType &store, const QString &key)
{
    const auto bytes = store.data(key);
    if (!bytes)
        return;
    const auto decoded = RecordList::decodeEach<Record>(*bytes);
    QJsonArray bad = decoded.rejected;
    if (decoded.unreadable && !bytes->trimmed().isEmpty())
        bad.append(QString::fromUtf8(*bytes));
    if (bad.isEmpty())
        return;
    const QString asideKey = keyFor(key);
    QJsonArray aside = QJsonDocument::fromJson(store.data(asideKey).value_or(QByteArray())).array();
    for (const QJsonValue &v : bad)
        if (!aside.contains(v))
            aside.append(v);
    store.set(QJsonDocument(aside).toJson(QJsonDocument::Compact), asideKey);
}

}
