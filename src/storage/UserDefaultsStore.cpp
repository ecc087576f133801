#include "storage/UserDefaultsStore.h"

#include "foundation/BundleIdentity.h"
#include "foundation/Logging.h"
#include "storage/PropertyListValue.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDir>
#include <QHash>
#include <QMutex>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>

#include <atomic>

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

std::atomic<bool> s_readOnly{false};

QString domainFile(const QString &directory, const QString &name)
{
    return QDir(directory).filePath(name + QStringLiteral(".json"));
}

DomainFile::Content readOrEmpty(const QString &path)
{
    QString error;
    if (auto content = DomainFile::read(path, &error))
        return *content;
    qCWarning(lcPersistence, "Settings file %s could not be read (%s); it reads as empty", qUtf8Printable(path),
              qUtf8Printable(error));
    return {};
}

}

struct UserDefaultsStore::Shared {
    QRecursiveMutex mutex;
    // What the file held when last read or written.
    std::optional<DomainFile::Content> content;
    DomainFile::Changes pending;
    bool flushScheduled = false;

    static std::shared_ptr<Shared> forFile(const QString &path)
    {
        static QMutex registryMutex;
        static QHash<QString, std::weak_ptr<Shared>> registry;
        QMutexLocker lock(&registryMutex);
        std::shared_ptr<Shared> shared = registry.value(path).lock();
        if (!shared) {
            shared = std::make_shared<Shared>();
            registry.insert(path, shared);
        }
        return shared;
    }
};

UserDefaultsStore::UserDefaultsStore(const QString &domainName, std::optional<QString> persistentDomainName,
                                     const QString &directory)
    : m_domainName(domainName)
    , m_directory(directory.isEmpty() ? defaultDirectory() : directory)
    , m_fileName(domainFile(m_directory, domainName))
    , m_persistentDomainName(std::move(persistentDomainName))
    , m_shared(Shared::forFile(m_fileName))
    , m_flushContext(std::make_unique<QObject>())
{
}

UserDefaultsStore::~UserDefaultsStore()
{
    QMutexLocker lock(&m_shared->mutex);
    if (!s_readOnly && !m_shared->pending.isEmpty())
        synchronize();
}

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

void UserDefaultsStore::setProcessReadOnly(bool readOnly)
{
    s_readOnly = readOnly;
}

QVariant UserDefaultsStore::registeredDefault(const QString &key)
{
    RegistrationDomain &domain = registration();
    QMutexLocker lock(&domain.mutex);
    return domain.values.value(key);
}

QString UserDefaultsStore::fileName() const
{
    return m_fileName;
}

// Callers hold the shared mutex.
const DomainFile::Content &UserDefaultsStore::content() const
{
    if (!m_shared->content)
        m_shared->content = readOrEmpty(m_fileName);
    return *m_shared->content;
}

QStringList UserDefaultsStore::persistedKeys() const
{
    QMutexLocker lock(&m_shared->mutex);
    QStringList keys = content().values.keys();
    for (auto it = m_shared->pending.cbegin(); it != m_shared->pending.cend(); ++it) {
        if (it.value() && !keys.contains(it.key()))
            keys.append(it.key());
        else if (!it.value())
            keys.removeAll(it.key());
    }
    return keys;
}

QVariant UserDefaultsStore::storedValue(const QString &key) const
{
    QMutexLocker lock(&m_shared->mutex);
    const auto pending = m_shared->pending.constFind(key);
    if (pending != m_shared->pending.cend())
        return pending.value().value_or(QVariant());
    return content().values.value(key);
}

void UserDefaultsStore::change(const QString &key, std::optional<QVariant> value)
{
    QMutexLocker lock(&m_shared->mutex);
    m_shared->pending.insert(key, std::move(value));
    // Written soon even if nobody asks, as the platform's settings stores do;
    // without an event loop, at the next synchronize() or at destruction.
    if (s_readOnly || m_shared->flushScheduled || !QCoreApplication::instance()
        || !QAbstractEventDispatcher::instance(QThread::currentThread()))
        return;
    m_shared->flushScheduled = true;
    QTimer::singleShot(0, m_flushContext.get(), [this] {
        QMutexLocker lock(&m_shared->mutex);
        m_shared->flushScheduled = false;
        if (!m_shared->pending.isEmpty())
            synchronize();
    });
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
    change(key, stored);
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
    // Another domain: read as it is now, never cached.
    return readOrEmpty(domainFile(m_directory, *m_persistentDomainName)).values.value(key);
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
    change(key, std::nullopt);
}

bool UserDefaultsStore::synchronize()
{
    QMutexLocker lock(&m_shared->mutex);
    if (s_readOnly) {
        m_lastError.clear();
        return true; // nothing is meant to reach the disk
    }
    if (m_shared->pending.isEmpty()) {
        // Nothing to write: pick up what other processes wrote meanwhile.
        m_shared->content.reset();
        m_lastError.clear();
        return true;
    }
    DomainFile::Content merged;
    QString error;
    if (!DomainFile::write(m_fileName, m_shared->pending, &merged, &error)) {
        // The changes stay pending (and readable here); a later call retries.
        m_lastError = error;
        qCWarning(lcPersistence, "Settings file %s could not be written: %s", qUtf8Printable(m_fileName),
                  qUtf8Printable(error));
        return false;
    }
    m_shared->pending.clear();
    m_shared->content = std::move(merged);
    m_lastError.clear();
    return true;
}
