#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QList>
#include <QString>
#include <optional>

// Encoding and decoding a whole list of records stored as JSON bytes. One bad
// element fails the whole list, as the stored formats are read all or nothing.
namespace RecordList {

template <typename Record>
QByteArray encode(const QList<Record> &records)
{
    QJsonArray array;
    for (const Record &r : records)
        array.append(r.toJson());
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

template <typename Record>
std::optional<QList<Record>> decode(const QByteArray &bytes, QString *error)
{
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(bytes, &parseError);
    if (parseError.error != QJsonParseError::NoError || !doc.isArray()) {
        if (error)
            *error = parseError.error != QJsonParseError::NoError ? parseError.errorString()
                                                                  : QStringLiteral("expected a JSON list");
        return std::nullopt;
    }
    QList<Record> out;
    const QJsonArray array = doc.array();
    for (qsizetype i = 0; i < array.size(); ++i) {
        QString elementError;
        if (!array.at(i).isObject()) {
            if (error)
                *error = QStringLiteral("element %1: expected an object").arg(i);
            return std::nullopt;
        }
        auto record = Record::fromJson(array.at(i).toObject(), &elementError);
        if (!record) {
            if (error)
                *error = QStringLiteral("element %1: %2").arg(i).arg(elementError);
            return std::nullopt;
        }
        out.append(*record);
    }
    return out;
}

}
