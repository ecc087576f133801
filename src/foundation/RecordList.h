#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QList>
#include <QString>
#include <optional>

// Encoding and decoding a list of records stored as JSON bytes. decode() is
// all or nothing (for formats that must be whole); decodeEach() keeps every
// good record and hands back the bad ones as they were.
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

template <typename Record>
struct Decoded {
    QList<Record> records;
    // The elements that did not decode, untouched, with one error each.
    QJsonArray rejected;
    QStringList errors;
    // Set when the bytes were not a JSON list at all (then nothing decoded).
    bool unreadable = false;
};

template <typename Record>
Decoded<Record> decodeEach(const QByteArray &bytes)
{
    Decoded<Record> out;
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(bytes, &parseError);
    if (parseError.error != QJsonParseError::NoError || !doc.isArray()) {
        out.unreadable = true;
        out.errors.append(parseError.error != QJsonParseError::NoError ? parseError.errorString()
                                                                       : QStringLiteral("expected a JSON list"));
        return out;
    }
    const QJsonArray array = doc.array();
    for (qsizetype i = 0; i < array.size(); ++i) {
        QString elementError = QStringLiteral("expected an object");
        std::optional<Record> record;
        if (array.at(i).isObject())
            record = Record::fromJson(array.at(i).toObject(), &elementError);
        if (record) {
            out.records.append(*record);
        } else {
            out.rejected.append(array.at(i));
            out.errors.append(QStringLiteral("element %1: %2").arg(i).arg(elementError));
        }
    }
    return out;
}

}
