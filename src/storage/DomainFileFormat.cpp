#include "storage/DomainFileFormat.h"

#include "foundation/Logging.h"
#include "storage/PropertyListValue.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace DomainFileFormat {

namespace {

// Keeps a copy of a domain file that could not be parsed, so the user's data
// can be recovered after the next write replaces it. One copy per content.
void keepUnreadableCopy(QIODevice &device, const QByteArray &content, const QString &reason)
{
    auto *file = qobject_cast<QFile *>(&device);
    if (!file)
        return;
    const QString hash = QString::fromLatin1(
        QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex().left(12));
    const QString copy = file->fileName() + QStringLiteral(".unreadable-") + hash;
    if (!QFile::exists(copy)) {
        QFile out(copy);
        if (out.open(QIODevice::WriteOnly))
            out.write(content);
    }
    qCWarning(lcPersistence, "Settings file %s could not be read (%s); it reads as empty, a copy was kept at %s",
              qUtf8Printable(file->fileName()), qUtf8Printable(reason), qUtf8Printable(copy));
}

bool readDomain(QIODevice &device, QSettings::SettingsMap &map)
{
    const QByteArray content = device.readAll();
    if (content.trimmed().isEmpty())
        return true;
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(content, &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject()) {
        keepUnreadableCopy(device, content,
                           error.error != QJsonParseError::NoError ? error.errorString()
                                                                   : QStringLiteral("not a JSON object"));
        return false;
    }
    const QJsonObject root = doc.object();
    QSettings::SettingsMap parsed;
    for (auto it = root.begin(); it != root.end(); ++it) {
        bool ok = false;
        const QVariant value = PropertyListValue::fromJson(it.value(), &ok);
        if (!ok) {
            keepUnreadableCopy(device, content, QStringLiteral("malformed value for key \"%1\"").arg(it.key()));
            return false;
        }
        parsed.insert(escapeKey(it.key()), value);
    }
    map = parsed;
    return true;
}

bool writeDomain(QIODevice &device, const QSettings::SettingsMap &map)
{
    QJsonObject root;
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        root.insert(unescapeKey(it.key()), PropertyListValue::toJson(it.value()));
    const QByteArray bytes = QJsonDocument(root).toJson(QJsonDocument::Indented);
    return device.write(bytes) == bytes.size();
}

}

QSettings::Format format()
{
    static const QSettings::Format registered =
        QSettings::registerFormat(QStringLiteral("json"), readDomain, writeDomain, Qt::CaseSensitive);
    return registered;
}

QString escapeKey(const QString &key)
{
    if (key.isEmpty())
        return QStringLiteral("%");
    QString out;
    out.reserve(key.size());
    for (const QChar c : key) {
        if (c == u'%')
            out += QLatin1String("%25");
        else if (c == u'/')
            out += QLatin1String("%2F");
        else if (c == u'\\')
            out += QLatin1String("%5C");
        else
            out += c;
    }
    return out;
}

QString unescapeKey(const QString &escaped)
{
    if (escaped == QLatin1String("%"))
        return {};
    QString out;
    out.reserve(escaped.size());
    for (qsizetype i = 0; i < escaped.size(); ++i) {
        const QStringView rest = QStringView(escaped).mid(i, 3);
        if (rest == QLatin1String("%25")) {
            out += u'%';
            i += 2;
        } else if (rest == QLatin1String("%2F")) {
            out += u'/';
            i += 2;
        } else if (rest == QLatin1String("%5C")) {
            out += u'\\';
            i += 2;
        } else {
            out += escaped.at(i);
        }
    }
    return out;
}

}
