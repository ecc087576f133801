#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>
#include <QUuid>
#include <optional>

// Reading record fields from JSON with the strictness of the stored formats:
// a required field that is missing or of the wrong type fails the record,
// an optional one falls back to its default.
class JsonFields {
public:
    explicit JsonFields(const QJsonObject &object) : m_object(object) {}

    bool ok() const { return m_error.isEmpty(); }
    QString error() const { return m_error; }

    // The record when every field read well, else nothing (and the first error).
    template <typename Record>
    std::optional<Record> result(Record record, QString *error) const
    {
        if (ok())
            return record;
        if (error)
            *error = m_error;
        return std::nullopt;
    }

    QUuid uuid(const char *key);
    QString string(const char *key);
    QString optionalString(const char *key, const QString &fallback = {});
    QStringList stringList(const char *key);
    std::optional<QStringList> optionalStringList(const char *key);
    bool optionalBool(const char *key, bool fallback);
    double optionalDouble(const char *key, double fallback);
    QJsonObject optionalObject(const char *key);

private:
    void fail(const char *key, const char *what);

    QJsonObject m_object;
    QString m_error;
};

QJsonArray toJsonArray(const QStringList &list);
