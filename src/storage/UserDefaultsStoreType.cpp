#include "storage/UserDefaultsStoreType.h"

#include <cmath>

std::optional<qint64> UserDefaultsStoreType::integer(const QString &key) const
{
    const QVariant v = object(key);
    bool ok = false;
    qint64 n = 0;
    switch (v.typeId()) {
    case QMetaType::Bool: return v.toBool() ? 1 : 0;
    case QMetaType::Double: {
        // NaN, infinities and doubles beyond 64 bits have no integer value.
        const double d = v.toDouble();
        if (!(d > -9.2e18 && d < 9.2e18))
            return std::nullopt;
        n = qint64(d);
        ok = true;
        break;
    }
    case QMetaType::QString: n = v.toString().trimmed().toLongLong(&ok); break;
    default: n = v.toLongLong(&ok); break;
    }
    return ok ? std::optional<qint64>(n) : std::nullopt;
}

std::optional<double> UserDefaultsStoreType::number(const QString &key) const
{
    const QVariant v = object(key);
    if (!v.isValid() || v.typeId() == QMetaType::QByteArray || v.typeId() == QMetaType::QVariantList
        || v.typeId() == QMetaType::QVariantMap)
        return std::nullopt;
    bool ok = false;
    const double d = v.typeId() == QMetaType::QString ? v.toString().trimmed().toDouble(&ok) : v.toDouble(&ok);
    return ok && std::isfinite(d) ? std::optional<double>(d) : std::nullopt;
}

QStringList UserDefaultsStoreType::stringList(const QString &key) const
{
    QStringList out;
    if (const auto list = array(key)) {
        for (const QVariant &v : *list)
            if (v.typeId() == QMetaType::QString)
                out.append(v.toString());
    }
    return out;
}

void UserDefaultsStoreType::synchronizeInBackground(QObject *, SaveDone done)
{
    const bool ok = synchronize();
    done(ok, lastError());
}
