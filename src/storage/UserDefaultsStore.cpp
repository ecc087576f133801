#include "storage/UserDefaultsStore.h"

#include "foundation/BundleIdentity.h"
#include "foundation/Logging.h"
#include "storage/PropertyListValue.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QHash>
#include <QMutex>
#include <QStandardPaths>
#include <QThread>
#include <QPointer>
#include <QThreadPool>
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
    explicit Shared(QString file) : path(std::move(file)) {}

    const QString path;
    QRecursiveMutex mutex; // guards everything below
    // What the file held when last read or written.
    std::optional<DomainFile::Content> content;
    DomainFile::Changes pending;
    // Bumped by every change of a key, so a write that finishes knows which
    // pending changes it carried and which came after it started.
    QHash<QString, quint64> pendingGeneration;
    quint64 generation = 0;
    bool flushScheduled = false;
    int failedFlushes = 0;
    // The version of the file `content` came from, when known: seeing it
    // again is no news.
    std::optional<DomainFile::Stamp> knownStamp;
    // One write of this file at a time in this process; file work happens
    // outside `mutex`, so readers never wait for the disk or another
    // process's lock.
    QMutex writeMutex;

    static std::shared_ptr<Shared> forFile(const QString &path)
    {
        static QMutex registryMutex;
        static QHash<QString, std::weak_ptr<Shared>> registry;
        QMutexLocker lock(&registryMutex);
        std::shared_ptr<Shared> shared = registry.value(path).lock();
        if (!shared) {
            shared = std::make_shared<Shared>(path);
            registry.insert(path, shared);
        }
        return shared;
    }

    // Writes what is pending now. Changes made meanwhile stay pending.
    bool writePending(QString *error)
    {
        QMutexLocker writing(&writeMutex);
        DomainFile::Changes changes;
        QHash<QString, quint64> generations;
        {
            QMutexLocker lock(&mutex);
            changes = pending;
            generations = pendingGeneration;
        }
        if (changes.isEmpty())
            return true;
        DomainFile::Content merged;
        std::optional<DomainFile::Stamp> stamp;
        if (!DomainFile::write(path, changes, &merged, error, &stamp)) {
            qCWarning(lcPersistence, "Settings file %s could not be written: %s", qUtf8Printable(path),
                      qUtf8Printable(*error));
            return false;
        }
        QMutexLocker lock(&mutex);
        for (auto it = generations.cbegin(); it != generations.cend(); ++it) {
            if (pendingGeneration.value(it.key()) == it.value()) {
                pending.remove(it.key());
                pendingGeneration.remove(it.key());
            }
        }
        content = std::move(merged);
        knownStamp = stamp;
        return true;
    }
};

namespace {

std::atomic<bool> s_backgroundWrites{false};

// Runs on the main thread (or nowhere, when the application is gone).
void onMainThread(std::function<void()> work)
{
    if (QCoreApplication *app = QCoreApplication::instance())
        QMetaObject::invokeMethod(app, std::move(work), Qt::QueuedConnection);
}


QMutex s_statusMutex;
UserDefaultsStore::SaveStatusHandler s_statusHandler;

// Tells the launcher when background saves start failing and when they
// succeed again, on the main thread.
void reportSaveStatus(bool saved, const QString &error)
{
    QMutexLocker lock(&s_statusMutex);
    if (!s_statusHandler)
        return;
    onMainThread([handler = s_statusHandler, saved, error] { handler(saved, error); });
}

// File work of the launcher's stores: one thread, so writes keep their order
// and a slow disk or a stalled lock holds up nothing but other writes.
QThreadPool &writerPool()
{
    static QThreadPool *pool = [] {
        auto *p = new QThreadPool;
        p->setMaxThreadCount(1);
        p->setObjectName(QStringLiteral("settings.writer"));
        return p;
    }();
    return *pool;
}

void writeInBackground(const std::shared_ptr<UserDefaultsStore::Shared> &shared);

// Counts failures in a row; the first one and the first success after them
// are reported. Callers hold the shared mutex.
void noteOutcome(UserDefaultsStore::Shared &shared, bool ok, const QString &error)
{
    if (ok != (shared.failedFlushes == 0))
        reportSaveStatus(ok, error);
    shared.failedFlushes = ok ? 0 : shared.failedFlushes + 1;
}

// A failed background write is retried, less often the longer it fails;
// the changes stay pending and readable meanwhile.
void retryLater(const std::weak_ptr<UserDefaultsStore::Shared> &weak, int failures)
{
    const int delayMs = std::min(5000, 500 << std::min(failures, 4));
    onMainThread([weak, delayMs] {
        QTimer::singleShot(delayMs, QCoreApplication::instance(), [weak] {
            if (const auto shared = weak.lock())
                writeInBackground(shared);
        });
    });
}

void writeInBackground(const std::shared_ptr<UserDefaultsStore::Shared> &shared)
{
    writerPool().start([shared] {
        {
            QMutexLocker lock(&shared->mutex);
            shared->flushScheduled = false;
        }
        if (s_readOnly)
            return;
        QString error;
        const bool ok = shared->writePending(&error);
        QMutexLocker lock(&shared->mutex);
        noteOutcome(*shared, ok, error);
        if (!ok && !shared->flushScheduled && !shared->pending.isEmpty()) {
            shared->flushScheduled = true;
            retryLater(shared, shared->failedFlushes);
        }
    });
}

}

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
    // Waits for the disk even in the launcher: this runs at exit, and what
    // the user changed last must not be lost.
    if (s_readOnly)
        return;
    QString error;
    m_shared->writePending(&error);
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
    if (!m_shared->content) {
        // Stamped before reading: a change in between is seen again later.
        m_shared->knownStamp = DomainFile::stampOf(m_fileName);
        m_shared->content = readOrEmpty(m_fileName);
    }
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
    m_shared->pendingGeneration.insert(key, ++m_shared->generation);
    // Written soon even if nobody asks, as the platform's settings stores do;
    // without an event loop, at the next synchronize() or at destruction.
    // The changes of one turn of the event loop are written together.
    if (s_readOnly || m_shared->flushScheduled || !QCoreApplication::instance()
        || !QAbstractEventDispatcher::instance(QThread::currentThread()))
        return;
    m_shared->flushScheduled = true;
    std::weak_ptr<Shared> weak = m_shared;
    QTimer::singleShot(0, m_flushContext.get(), [weak] {
        const auto shared = weak.lock();
        if (!shared)
            return;
        if (s_backgroundWrites) {
            writeInBackground(shared);
            return;
        }
        {
            QMutexLocker lock(&shared->mutex);
            shared->flushScheduled = false;
        }
        QString error;
        shared->writePending(&error);
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

bool UserDefaultsStore::removeDomain(QString *error)
{
    QMutexLocker writing(&m_shared->writeMutex);
    {
        QMutexLocker lock(&m_shared->mutex);
        m_shared->pending.clear();
        m_shared->pendingGeneration.clear();
        m_shared->content = DomainFile::Content();
        m_shared->knownStamp.reset();
    }
    if (s_readOnly)
        return true;
    QFile file(m_fileName);
    if (file.exists() && !file.remove()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

bool UserDefaultsStore::synchronize()
{
    if (s_readOnly) {
        m_lastError.clear();
        return true; // nothing is meant to reach the disk
    }
    if (s_backgroundWrites) {
        // Never wait for the disk here: the write is queued, retried until
        // it succeeds, and failures are logged.
        m_lastError.clear();
        QMutexLocker lock(&m_shared->mutex);
        if (!m_shared->pending.isEmpty() && !m_shared->flushScheduled) {
            m_shared->flushScheduled = true;
            writeInBackground(m_shared);
        }
        return true;
    }
    {
        QMutexLocker lock(&m_shared->mutex);
        if (m_shared->pending.isEmpty()) {
            // Nothing to write: pick up what other processes wrote meanwhile.
            m_shared->content.reset();
            m_lastError.clear();
            return true;
        }
    }
    QString error;
    if (!m_shared->writePending(&error)) {
        m_lastError = error;
        return false;
    }
    m_lastError.clear();
    return true;
}

void UserDefaultsStore::synchronizeInBackground(QObject *context, SaveDone done)
{
    if (s_readOnly) {
        done(true, QString());
        return;
    }
    QPointer<QObject> guard(context);
    std::shared_ptr<Shared> shared = m_shared;
    writerPool().start([shared, guard, done = std::move(done)] {
        QString error;
        const bool ok = shared->writePending(&error);
        {
            QMutexLocker lock(&shared->mutex);
            noteOutcome(*shared, ok, error);
        }
        onMainThread([guard, done, ok, error] {
            if (guard)
                done(ok, error);
        });
    });
}

void UserDefaultsStore::setBackgroundWrites(bool background)
{
    s_backgroundWrites = background;
}

void UserDefaultsStore::setSaveStatusHandler(SaveStatusHandler handler)
{
    QMutexLocker lock(&s_statusMutex);
    s_statusHandler = std::move(handler);
}

void UserDefaultsStore::watchExternalChanges(QObject *context, std::function<void(const QStringList &)> onChange)
{
    if (m_watcher)
        return;
    QDir().mkpath(m_directory);
    m_watcher = std::make_unique<QFileSystemWatcher>();
    m_watcher->addPath(m_directory);
    if (QFileInfo::exists(m_fileName))
        m_watcher->addPath(m_fileName);
    // A write is a lock file, a temporary file and a rename: one look after
    // the burst is enough.
    auto *settle = new QTimer(m_watcher.get());
    settle->setSingleShot(true);
    settle->setInterval(100);
    const auto changed = [this, settle] {
        // A rename drops the watch on the replaced file.
        if (!m_watcher->files().contains(m_fileName) && QFileInfo::exists(m_fileName))
            m_watcher->addPath(m_fileName);
        settle->start();
    };
    QObject::connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, settle, changed);
    QObject::connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, settle, changed);
    QObject::connect(settle, &QTimer::timeout, context, [this, onChange = std::move(onChange)] {
        const QStringList keys = refreshFromDisk();
        if (!keys.isEmpty())
            onChange(keys);
    });
}

QStringList UserDefaultsStore::refreshFromDisk()
{
    const auto stamp = DomainFile::stampOf(m_fileName);
    {
        QMutexLocker lock(&m_shared->mutex);
        if (!m_shared->content || (stamp && stamp == m_shared->knownStamp))
            return {}; // nothing read yet, so nothing is stale; or our own write
    }
    QString error;
    const auto fresh = DomainFile::read(m_fileName, &error);
    if (!fresh || fresh->unparsable)
        return {}; // a half-edited file is not taken in; the last good view stays
    QMutexLocker lock(&m_shared->mutex);
    QStringList keys;
    const auto &old = m_shared->content->values;
    for (auto it = old.cbegin(); it != old.cend(); ++it)
        if (!fresh->values.contains(it.key()) || fresh->values.value(it.key()) != it.value())
            keys.append(it.key());
    for (auto it = fresh->values.cbegin(); it != fresh->values.cend(); ++it)
        if (!old.contains(it.key()))
            keys.append(it.key());
    // A key changed here and not yet written reads as changed here.
    keys.removeIf([this](const QString &key) { return m_shared->pending.contains(key); });
    m_shared->content = *fresh;
    m_shared->knownStamp = stamp;
    return keys;
}
