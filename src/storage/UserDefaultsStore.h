#pragma once

#include "storage/UserDefaultsStoreType.h"

#include "storage/DomainFile.h"

#include <functional>
#include <memory>

class QFileSystemWatcher;
class QObject;

// The settings store over one preferences domain. On Linux a domain is one
// JSON file named after the domain in $XDG_CONFIG_HOME/tillmora, private to
// the user. Registered defaults are process-wide, answer reads of keys never
// stored and are never written to disk.
//
// Changes are kept in memory (shared by every store of the same file in
// this process) until synchronize() (called at once by whoever
// needs the change on disk, else soon after from the event loop, and at the
// latest when the store is destroyed). Only changes are ever written: a
// store that was only read never touches its file.
class UserDefaultsStore final : public UserDefaultsStoreType {
public:
    // directory empty = the default configuration folder.
    explicit UserDefaultsStore(const QString &domainName,
                               std::optional<QString> persistentDomainName = std::nullopt,
                               const QString &directory = {});
    ~UserDefaultsStore() override;

    // The main store: the domain named by the bundle identifier.
    static std::shared_ptr<UserDefaultsStore> standard(const QString &directory = {});
    static QString defaultDirectory();
    static void registerDefaults(const QVariantMap &defaults);
    // For commands that only read: from now on no store of this process
    // writes anything; changes (migrations, reconciliation) live in memory.
    static void setProcessReadOnly(bool readOnly);
    static QVariant registeredDefault(const QString &key);

    void set(const QVariant &value, const QString &key) override;
    QVariant object(const QString &key) const override;
    QVariant persistedObject(const QString &key) const override;
    std::optional<QByteArray> data(const QString &key) const override;
    std::optional<QString> string(const QString &key) const override;
    bool boolValue(const QString &key) const override;
    std::optional<QVariantList> array(const QString &key) const override;
    std::optional<QVariantMap> dictionary(const QString &key) const override;
    void removeObject(const QString &key) override;
    // In the launcher (background writes) this only queues the write.
    bool synchronize() override;
    void synchronizeInBackground(QObject *context, SaveDone done) override;
    QString lastError() const override { return m_lastError; }
    // For the launcher: from now on no store of this process waits for the
    // disk or another process's lock on the calling thread; writes happen on
    // a writer thread and a failed one is retried.
    static void setBackgroundWrites(bool background);
    // Called on the main thread when background saves start failing
    // (saved false, with the reason) and when they succeed again.
    using SaveStatusHandler = std::function<void(bool saved, const QString &error)>;
    static void setSaveStatusHandler(SaveStatusHandler handler);

    // For the launcher: calls onChange (in context's thread) with the keys
    // another process changed in this store's file, once the new values read
    // here. Needs an event loop.
    void watchExternalChanges(QObject *context, std::function<void(const QStringList &keys)> onChange);
    // Takes in what another process wrote; returns the keys whose value
    // changed. Public for tests that have no time to wait for the watcher.
    QStringList refreshFromDisk();

    // Deletes the domain: its file goes and what was pending for it is
    // dropped, so no later flush brings the file back. For a deleted Space.
    bool removeDomain(QString *error = nullptr);

    QString domainName() const { return m_domainName; }
    QString fileName() const;
    // Every key stored in this domain (registered defaults excluded).
    QStringList persistedKeys() const;

    // What every store of one file shares (internal).
    struct Shared;

private:
    QVariant storedValue(const QString &key) const;
    const DomainFile::Content &content() const;
    void change(const QString &key, std::optional<QVariant> value);

    QString m_domainName;
    QString m_directory;
    QString m_fileName;
    std::optional<QString> m_persistentDomainName;
    // Every store of one file in this process shares what was read and what
    // is pending, so a change made through one is seen at once by the others.
    std::shared_ptr<Shared> m_shared;
    QString m_lastError;
    // Receiver of the deferred flush; gone with the store.
    std::unique_ptr<QObject> m_flushContext;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
};
