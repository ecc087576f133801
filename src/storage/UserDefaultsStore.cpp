#include "storage/UserDefaultsStore.h"

#include "foundation/BundleIdentity.h"
#include "foundation/Logging.h"
#include "storage/DomainFileFormat.h"
#include "storage/PropertyListValue.h"

#include <QDir>
#include <QMutex>
#include <QStandardPaths>

namespace {

struct RegistrationDomain {
    QMutex mutex;
    QVariantMap values;
};

RegistrationDomain &registration()
{
    static RegistrationDomain domain;
    return domain;
}

std::unique_ptr<QSettings> openDomain(const QString &directory, const QString &name)
{
    QDir().mkpath(directory);
    return std::make_unique<QSettings>(QDir(directory).filePath(name + QStringLiteral(".json")),
                                       DomainFileFormat::format());
}

}

UserDefaultsStore::UserDefaultsStore(const QString &domainName, std::optional<QString> persistentDomainName,
                                     const QString &directory)
    : m_domainName(domainName)
    , m_directory(directory.isEmpty() ? defaultDirectory() : directory)
    , m_defaults(openDomain(m_directory, domainName))
    , m_persistentDomainName(std::move(persistentDomainName))
{
}

UserDefaultsStore::~UserDefaultsStore() = default;

std::shared_ptr<UserDefaultsStore> UserDefaultsStore::standard(const QString &directory)
{
    return std::make_shared<UserDefaultsStore>(BundleIdentity::identifier(), BundleIdentity::identifier(),
                                               directory);
}

QString UserDefaultsStore::defaultDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/tillmora");
}

void UserDefaultsStore::registerDefaults(const QVariantMap &values)
{
    RegistrationDomain &domain = registration();
    QMutexLocker lock(&domain.mutex);
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        domain.values.insert(it.key(), PropertyListValue::normalized(it.value()));
}

QVariant UserDefaultsStore::registeredDefault(const QString &key)
{
    RegistrationDomain &domain = registration();
    QMutexLocker lock(&domain.mutex);
    return domain.values.value(key);
}

QString UserDefaultsStore::fileName() const
{
    return m_defaults->fileName();
}

QStringList UserDefaultsStore::persistedKeys() const
{
    QStringList keys;
    for (const QString &k : m_defaults->allKeys())
        keys.append(DomainFileFormat::unescapeKey(k));
    return keys;
}

QVariant UserDefaultsStore::storedValue(const QString &key) const
{
    return m_defaults->value(DomainFileFormat::escapeKey(key));
}

void UserDefaultsStore::set(const QVariant &value, const QString &key)
{
    if (!value.isValid()) {
        removeObject(key);
        return;
    }
    const QVariant stored = PropertyListValue::normalized(value);
    if (!stored.isValid()) {
        qCWarning(lcPersistence, "Refusing to store a value of type %s under \"%s\": not a property-list value",
                  value.typeName(), qUtf8Printable(key));
        return;
    }
    m_defaults->setValue(DomainFileFormat::escapeKey(key), stored);
}

QVariant UserDefaultsStore::object(const QString &key) const
{
    const QVariant v = storedValue(key);
    return v.isValid() ? v : registeredDefault(key);
}

QVariant UserDefaultsStore::persistedObject(const QString &key) const
{
    if (!m_persistentDomainName)
        return object(key);
    if (*m_persistentDomainName == m_domainName)
        return storedValue(key);
    if (!m_persistentDomain)
        m_persistentDomain = openDomain(m_directory, *m_persistentDomainName);
    m_persistentDomain->sync();
    return m_persistentDomain->value(DomainFileFormat::escapeKey(key));
}

std::optional<QByteArray> UserDefaultsStore::data(const QString &key) const
{
    const QVariant v = object(key);
    if (v.typeId() == QMetaType::QByteArray)
        return v.toByteArray();
    return std::nullopt;
}

std::optional<QString> UserDefaultsStore::string(const QString &key) const
{
    const QVariant v = object(key);
    switch (v.typeId()) {
    case QMetaType::QString: return v.toString();
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double: return v.toString();
    default: return std::nullopt;
    }
}

bool UserDefaultsStore::boolValue(const QString &key) const
{
    const QVariant v = object(key);
    switch (v.typeId()) {
    case QMetaType::Bool: return v.toBool();
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double: return v.toDouble() != 0.0;
    case QMetaType::QString: {
        const QString s = v.toString().trimmed().toLower();
        return s == QLatin1String("yes") || s == QLatin1String("true") || s.toLongLong() != 0;
    }
    default: return false;
    }
}

std::optional<QVariantList> UserDefaultsStore::array(const QString &key) const
{
    const QVariant v = object(key);
    if (v.typeId() == QMetaType::QVariantList)
        return v.toList();
    return std::nullopt;
}

std::optional<QVariantMap> UserDefaultsStore::dictionary(const QString &key) const
{
    const QVariant v = object(key);
    if (v.typeId() == QMetaType::QVariantMap)
        return v.toMap();
    return std::nullopt;
}

void UserDefaultsStore::removeObject(const QString &key)
{
    m_defaults->remove(DomainFileFormat::escapeKey(key));
}

void UserDefaultsStore::synchronize()
{
    m_defaults->sync();
    if (m_defaults->status() == QSettings::AccessError)
        qCWarning(lcPersistence, "Settings file %s could not be written", qUtf8Printable(m_defaults->fileName()));
}
