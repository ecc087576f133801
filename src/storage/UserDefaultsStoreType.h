#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <functional>
#include <optional>

class QObject;

// The settings-store interface every repository holds. A value is a
// property-list value: bool, signed or unsigned 64-bit integer, double,
// string, bytes, date, and lists and maps of those. An invalid QVariant
// passed to set() removes the key.
class UserDefaultsStoreType {
public:
    virtual ~UserDefaultsStoreType() = default;

    virtual void set(const QVariant &value, const QString &key) = 0;
    // Registered defaults included.
    virtual QVariant object(const QString &key) const = 0;
    // Only what was really stored in this store's persistent domain.
    virtual QVariant persistedObject(const QString &key) const = 0;
    virtual std::optional<QByteArray> data(const QString &key) const = 0;
    virtual std::optional<QString> string(const QString &key) const = 0;
    virtual bool boolValue(const QString &key) const = 0;
    virtual std::optional<QVariantList> array(const QString &key) const = 0;
    virtual std::optional<QVariantMap> dictionary(const QString &key) const = 0;
    virtual void removeObject(const QString &key) = 0;
    // Writes what changed. False when it could not be written (nothing on
    // disk changed then); lastError() says why.
    virtual bool synchronize() = 0;
    virtual QString lastError() const { return {}; }
    // Writes what changed without making the caller wait for the disk;
    // done(ok, error) runs on the main thread once the changes are on disk
    // or could not be written, unless context is gone by then.
    using SaveDone = std::function<void(bool ok, const QString &error)>;
    virtual void synchronizeInBackground(QObject *context, SaveDone done);

    // Conveniences derived from object(); not part of the store's contract.
    std::optional<qint64> integer(const QString &key) const;
    std::optional<double> number(const QString &key) const;
    QStringList stringList(const QString &key) const;
};
