#pragma once

#include <QJsonValue>
#include <QVariant>

// Property-list values and their typed JSON form. Every scalar other than
// strings and booleans is tagged ({"int": "-5"}, {"uint": "7"}, {"real": 0.5},
// {"data": "<base64>"}, {"date": "<ISO 8601>"}), maps are {"dict": {...}},
// so a value read back has exactly the type it was written with.
namespace PropertyListValue {

// Brings a QVariant to its canonical stored type (int -> qint64, QStringList ->
// list of strings, ...). Returns an invalid QVariant when the value (or any
// nested value) is not a property-list value.
QVariant normalized(const QVariant &value);

QJsonValue toJson(const QVariant &normalizedValue);
// Returns an invalid QVariant and sets *ok = false on a malformed value.
QVariant fromJson(const QJsonValue &json, bool *ok);

}
