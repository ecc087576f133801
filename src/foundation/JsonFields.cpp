#include "foundation/JsonFields.h"

#include "foundation/Uuids.h"

void JsonFields::fail(const char *key, const char *what)
{
    if (m_error.isEmpty())
        m_error = QStringLiteral("key \"%1\": %2").arg(QLatin1String(key), QLatin1String(what));
}

QUuid JsonFields::uuid(const char *key)
{
    const QJsonValue v = m_object.value(QLatin1String(key));
    if (!v.isString()) {
        fail(key, v.isUndefined() ? "missing" : "expected a UUID string");
        return {};
    }
    const auto id = Uuids::fromText(v.toString());
    if (!id) {
        fail(key, "not a valid UUID");
        return {};
    }
    return *id;
}

QString JsonFields::string(const char *key)
{
    const QJsonValue v = m_object.value(QLatin1String(key));
    if (!v.isString())
        fail(key, v.isUndefined() ? "missing" : "expected a string");
    return v.toString();
}

QString JsonFields::optionalString(const char *key, const QString &fallback)
{
    const QJsonValue v = m_object.value(QLatin1String(key));
    if (v.isUndefined() || v.isNull())
        return fallback;
    if (!v.isString())
        fail(key, "expected a string");
    return v.toString();
}

static std::optional<QStringList> readStringList(const QJsonValue &v)
{
    if (!v.isArray())
        return std::nullopt;
    QStringList out;
    for (const QJsonValue &e : v.toArray()) {
        if (!e.isString())
            return std::nullopt;
        out.append(e.toString());
    }
    return out;
}

QStringList JsonFields::stringList(const char *key)
{
    const QJsonValue v = m_object.value(QLatin1String(key));
    auto list = readStringList(v);
    if (!list) {
        fail(key, v.isUndefined() ? "missing" : "expected a list of strings");
        return {};
    }
    return *list;
}

std::optional<QStringList> JsonFields::optionalStringList(const char *key)
{
    const QJsonValue v = m_object.value(QLatin1String(key));
    if (v.isUndefined() || v.isNull())
        return std::nullopt;
    auto list = readStringList(v);
    if (!list)
        fail(key, "expected a list of strings");
    return list;
}

bool JsonFields::optionalBool(const char *key, bool fallback)
{
    const QJsonValue v = m_object.value(QLatin1String(key));
    if (v.isUndefined() || v.isNull())
        return fallback;
    if (!v.isBool())
        fail(key, "expected a boolean");
    return v.toBool(fallback);
}

double JsonFields::optionalDouble(const char *key, double fallback)
{
    const QJsonValue v = m_object.value(QLatin1String(key));
    if (v.isUndefined() || v.isNull())
        return fallback;
    if (!v.isDouble())
        fail(key, "expected a number");
    return v.toDouble(fallback);
}

QJsonObject JsonFields::optionalObject(const char *key)
{
    const QJsonValue v = m_object.value(QLatin1String(key));
    if (v.isUndefined() || v.isNull())
        return {};
    if (!v.isObject())
        fail(key, "expected an object");
    return v.toObject();
}

QJsonArray toJsonArray(const QStringList &list)
{
    QJsonArray a;
    for (const QString &s : list)
        a.append(s);
    return a;
}
