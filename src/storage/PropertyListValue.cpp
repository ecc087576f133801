#include "storage/PropertyListValue.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>
#include <cmath>

namespace PropertyListValue {

// Dates are written as ISO 8601 in UTC, which has four-digit years only: a
// date whose UTC form falls outside 0001..9999 (a year-9999 date west of
// Greenwich) would be written as an empty string and never read back.
static QVariant writableDate(const QDateTime &date)
{
    const QDateTime utc = date.toUTC();
    const int year = utc.date().year();
    return utc.isValid() && year >= 1 && year <= 9999 ? QVariant(utc) : QVariant();
}

QVariant normalized(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool();
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::SChar:
        return QVariant::fromValue<qint64>(value.toLongLong());
    case QMetaType::UInt:
    case QMetaType::UShort:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::UChar:
        return QVariant::fromValue<quint64>(value.toULongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return value.toDouble();
    case QMetaType::QString: return value.toString();
    case QMetaType::QByteArray: return value.toByteArray();
    case QMetaType::QDateTime: return writableDate(value.toDateTime());
    case QMetaType::QDate: return writableDate(QDateTime(value.toDate(), QTime(0, 0), Qt::UTC));
    case QMetaType::QStringList: {
        QVariantList out;
        for (const QString &s : value.toStringList())
            out.append(s);
        return out;
    }
    case QMetaType::QVariantList: {
        QVariantList out;
        for (const QVariant &v : value.toList()) {
            QVariant n = normalized(v);
            if (!n.isValid())
                return {};
            out.append(n);
        }
        return out;
    }
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash: {
        QVariantMap out;
        const QVariantMap in = value.toMap();
        for (auto it = in.cbegin(); it != in.cend(); ++it) {
            QVariant n = normalized(it.value());
            if (!n.isValid())
                return {};
            out.insert(it.key(), n);
        }
        return out;
    }
    default:
        return {};
    }
}

static QJsonValue realToJson(double d)
{
    if (std::isnan(d))
        return QStringLiteral("nan");
    if (std::isinf(d))
        return d > 0 ? QStringLiteral("inf") : QStringLiteral("-inf");
    return d;
}

QJsonValue toJson(const QVariant &v)
{
    switch (v.typeId()) {
    case QMetaType::Bool: return v.toBool();
    case QMetaType::LongLong: return QJsonObject{{"int", QString::number(v.toLongLong())}};
    case QMetaType::ULongLong: return QJsonObject{{"uint", QString::number(v.toULongLong())}};
    case QMetaType::Double: return QJsonObject{{"real", realToJson(v.toDouble())}};
    case QMetaType::QString: return v.toString();
    case QMetaType::QByteArray: return QJsonObject{{"data", QString::fromLatin1(v.toByteArray().toBase64())}};
    case QMetaType::QDateTime:
        return QJsonObject{{"date", v.toDateTime().toUTC().toString(Qt::ISODateWithMs)}};
    case QMetaType::QVariantList: {
        QJsonArray a;
        for (const QVariant &e : v.toList())
            a.append(toJson(e));
        return a;
    }
    case QMetaType::QVariantMap: {
        QJsonObject o;
        const QVariantMap m = v.toMap();
        for (auto it = m.cbegin(); it != m.cend(); ++it)
            o.insert(it.key(), toJson(it.value()));
        return QJsonObject{{"dict", o}};
    }
    default:
        return QJsonValue::Null;
    }
}

static QVariant fail(bool *ok)
{
    *ok = false;
    return {};
}

QVariant fromJson(const QJsonValue &json, bool *ok)
{
    *ok = true;
    if (json.isBool())
        return json.toBool();
    if (json.isString())
        return json.toString();
    if (json.isArray()) {
        QVariantList out;
        for (const QJsonValue &e : json.toArray()) {
            out.append(fromJson(e, ok));
            if (!*ok)
                return {};
        }
        return out;
    }
    if (!json.isObject() || json.toObject().size() != 1)
        return fail(ok);

    const QJsonObject o = json.toObject();
    const QString tag = o.begin().key();
    const QJsonValue payload = o.begin().value();
    if (tag == QLatin1String("int")) {
        const qint64 n = payload.toString().toLongLong(ok);
        return *ok ? QVariant::fromValue(n) : fail(ok);
    }
    if (tag == QLatin1String("uint")) {
        const quint64 n = payload.toString().toULongLong(ok);
        return *ok ? QVariant::fromValue(n) : fail(ok);
    }
    if (tag == QLatin1String("real")) {
        if (payload.isDouble())
            return payload.toDouble();
        const QString s = payload.toString();
        if (s == QLatin1String("nan"))
            return std::nan("");
        if (s == QLatin1String("inf"))
            return HUGE_VAL;
        if (s == QLatin1String("-inf"))
            return -HUGE_VAL;
        return fail(ok);
    }
    if (tag == QLatin1String("data")) {
        if (!payload.isString())
            return fail(ok);
        auto decoded = QByteArray::fromBase64Encoding(payload.toString().toLatin1(),
                                                      QByteArray::AbortOnBase64DecodingErrors);
        return decoded ? QVariant(*decoded) : fail(ok);
    }
    if (tag == QLatin1String("date")) {
        const QVariant date = writableDate(QDateTime::fromString(payload.toString(), Qt::ISODateWithMs));
        return date.isValid() ? date : fail(ok);
    }
    if (tag == QLatin1String("dict") && payload.isObject()) {
        QVariantMap out;
        const QJsonObject d = payload.toObject();
        for (auto it = d.begin(); it != d.end(); ++it) {
            out.insert(it.key(), fromJson(it.value(), ok));
            if (!*ok)
                return {};
        }
        return out;
    }
    return fail(ok);
}

}
