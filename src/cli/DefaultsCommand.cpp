#include "cli/DefaultsCommand.h"

#include "foundation/BundleIdentity.h"
#include "storage/UserDefaultsStore.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace DefaultsCommand {

namespace {

const QString kUsage = QStringLiteral(
    "expected 'defaults read [--suite NAME] [KEY]', 'defaults write [--suite NAME] KEY TYPE VALUE...' "
    "or 'defaults delete [--suite NAME] KEY'");

QJsonValue toOutput(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool();
    case QMetaType::LongLong: return QJsonValue(value.toLongLong());
    case QMetaType::ULongLong: return QJsonValue(double(value.toULongLong()));
    case QMetaType::Double: return value.toDouble();
    case QMetaType::QString: return value.toString();
    case QMetaType::QDateTime: return value.toDateTime().toUTC().toString(Qt::ISODateWithMs);
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        QJsonParseError error;
        const QJsonDocument doc = QJsonDocument::fromJson(bytes, &error);
        if (error.error == QJsonParseError::NoError) {
            if (doc.isArray())
                return doc.array();
            if (doc.isObject())
                return doc.object();
        }
        return QJsonObject{{"data", QString::fromLatin1(bytes.toBase64())}};
    }
    case QMetaType::QVariantList: {
        QJsonArray out;
        for (const QVariant &v : value.toList())
            out.append(toOutput(v));
        return out;
    }
    case QMetaType::QVariantMap: {
        QJsonObject out;
        const QVariantMap map = value.toMap();
        for (auto it = map.cbegin(); it != map.cend(); ++it)
            out.insert(it.key(), toOutput(it.value()));
        return out;
    }
    default: return QJsonValue::Null;
    }
}

QString print(const QJsonValue &value)
{
    if (value.isObject())
        return QString::fromUtf8(QJsonDocument(value.toObject()).toJson(QJsonDocument::Indented));
    if (value.isArray())
        return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Indented));
    // Scalars: wrapped in an array to use the JSON writer, then unwrapped.
    const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text.mid(1, text.size() - 2)) + u'\n';
}

// Parses VALUE... by TYPE; returns an invalid QVariant and sets error on bad input.
QVariant parseValue(const QString &type, const QStringList &values, QString *error)
{
    const auto single = [&]() -> std::optional<QString> {
        if (values.size() != 1) {
            *error = QStringLiteral("defaults write: %1 takes exactly one value").arg(type);
            return std::nullopt;
        }
        return values.first();
    };
    if (type == QLatin1String("-array")) {
        QVariantList list;
        for (const QString &v : values)
            list.append(v);
        return list;
    }
    const auto text = single();
    if (!text)
        return {};
    bool ok = false;
    if (type == QLatin1String("-string"))
        return *text;
    if (type == QLatin1String("-int")) {
        const qint64 n = text->toLongLong(&ok);
        if (ok)
            return QVariant::fromValue(n);
        *error = QStringLiteral("defaults write: '%1' is not an integer").arg(*text);
        return {};
    }
    if (type == QLatin1String("-float")) {
        const double d = text->toDouble(&ok);
        if (ok)
            return d;
        *error = QStringLiteral("defaults write: '%1' is not a number").arg(*text);
        return {};
    }
    if (type == QLatin1String("-bool")) {
        const QString t = text->toLower();
        if (t == QLatin1String("true") || t == QLatin1String("yes") || t == QLatin1String("1"))
            return true;
        if (t == QLatin1String("false") || t == QLatin1String("no") || t == QLatin1String("0"))
            return false;
        *error = QStringLiteral("defaults write: '%1' is not a boolean (true/false, yes/no, 1/0)").arg(*text);
        return {};
    }
    if (type == QLatin1String("-date")) {
        QDateTime dt = QDateTime::fromString(*text, Qt::ISODateWithMs);
        if (!dt.isValid())
            dt = QDateTime::fromString(*text, Qt::ISODate);
        if (dt.isValid())
            return dt.toUTC();
        *error = QStringLiteral("defaults write: '%1' is not an ISO 8601 date").arg(*text);
        return {};
    }
    if (type == QLatin1String("-data")) {
        static const QRegularExpression hex(QStringLiteral("^([0-9a-fA-F]{2})*$"));
        if (hex.match(*text).hasMatch())
            return QByteArray::fromHex(text->toLatin1());
        *error = QStringLiteral("defaults write: '%1' is not hexadecimal bytes").arg(*text);
        return {};
    }
    if (type == QLatin1String("-json")) {
        QJsonParseError parseError;
        const QJsonDocument doc = QJsonDocument::fromJson(text->toUtf8(), &parseError);
        if (parseError.error == QJsonParseError::NoError && !doc.isNull())
            return doc.toJson(QJsonDocument::Compact);
        *error = QStringLiteral("defaults write: not valid JSON (%1)").arg(parseError.errorString());
        return {};
    }
    *error = QStringLiteral("defaults write: unknown type '%1'; expected -string, -int, -float, -bool, -date, "
                            "-data, -array or -json")
                 .arg(type);
    return {};
}

}

CommandResult run(const QStringList &input, const QString &configDirectory)
{
    QStringList args = input;
    const QString verb = args.isEmpty() ? QString() : args.takeFirst();
    QString suite = BundleIdentity::identifier();
    if (args.size() >= 1 && args.first() == QLatin1String("--suite")) {
        if (args.size() < 2 || args.at(1).isEmpty())
            return CommandResult::usage(QStringLiteral("defaults: --suite needs a NAME"));
        suite = args.at(1);
        args = args.mid(2);
    }
    if (suite.contains(u'/'))
        return CommandResult::usage(QStringLiteral("defaults: a suite name cannot contain '/'"));
    UserDefaultsStore store(suite, suite, configDirectory);

    if (verb == QLatin1String("read")) {
        if (args.size() > 1)
            return CommandResult::usage(QStringLiteral("defaults read takes at most one KEY"));
        if (args.isEmpty()) {
            QJsonObject all;
            for (const QString &key : store.persistedKeys())
                all.insert(key, toOutput(store.persistedObject(key)));
            return CommandResult::ok(print(all));
        }
        const QVariant value = store.persistedObject(args.first());
        if (!value.isValid())
            return CommandResult::usage(QStringLiteral("defaults read: no key '%1' in %2").arg(args.first(), suite));
        return CommandResult::ok(print(toOutput(value)));
    }
    if (verb == QLatin1String("write")) {
        if (args.size() < 3)
            return CommandResult::usage(QStringLiteral("defaults write needs KEY TYPE VALUE..."));
        QString error;
        const QVariant value = parseValue(args.at(1), args.mid(2), &error);
        if (!value.isValid())
            return CommandResult::usage(error);
        store.set(value, args.first());
        const bool saved = store.synchronize();
        return CommandResult::saved(CommandResult::ok(), saved, store.lastError());
    }
    if (verb == QLatin1String("delete")) {
        if (args.size() != 1)
            return CommandResult::usage(QStringLiteral("defaults delete needs exactly one KEY"));
        if (!store.persistedObject(args.first()).isValid())
            return CommandResult::usage(QStringLiteral("defaults delete: no key '%1' in %2").arg(args.first(), suite));
        store.removeObject(args.first());
        const bool saved = store.synchronize();
        return CommandResult::saved(CommandResult::ok(), saved, store.lastError());
    }
    return CommandResult::usage(kUsage);
}

}
