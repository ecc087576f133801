#pragma once

#include "foundation/Logging.h"
#include "storage/UserDefaultsStoreType.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <functional>
#include <memory>
#include <optional>

// A map from text to a value, stored whole as JSON bytes under one key and
// cached in memory while the stored bytes stay the same (another process may
// change them). Every change writes the whole map. An entry that does not
// decode is skipped, logged, and written back unchanged until it is set.
template <typename Value>
class JsonMapCache {
public:
    using Encode = std::function<QJsonValue(const Value &)>;
    using Decode = std::function<std::optional<Value>(const QJsonValue &)>;

    JsonMapCache(std::shared_ptr<UserDefaultsStoreType> store, QString key, Encode encode, Decode decode)
        : m_store(std::move(store)), m_key(std::move(key)), m_encode(std::move(encode)), m_decode(std::move(decode))
    {
    }

    const QMap<QString, Value> &all() const
    {
        const QByteArray bytes = m_store->data(m_key).value_or(QByteArray());
        if (!m_cache || bytes != m_bytes) {
            m_bytes = bytes;
            m_cache = read(bytes);
        }
        return *m_cache;
    }
    std::optional<Value> get(const QString &key) const
    {
        const auto &map = all();
        const auto it = map.constFind(key);
        return it == map.cend() ? std::nullopt : std::optional<Value>(*it);
    }
    void set(const QString &key, const Value &value)
    {
        all();
        m_cache->insert(key, value);
        m_unreadable.remove(key);
        write();
    }
    bool remove(const QString &key)
    {
        all();
        if (!m_cache->remove(key) && !m_unreadable.contains(key))
            return false;
        m_unreadable.remove(key);
        write();
        return true;
    }
    void replaceAll(const QMap<QString, Value> &map)
    {
        // Entries that did not decode stay: nobody can say they should go.
        m_cache = map;
        write();
    }
    const QString &key() const { return m_key; }

private:
    QMap<QString, Value> read(const QByteArray &bytes) const
    {
        QMap<QString, Value> out;
        m_unreadable = {};
        if (bytes.isEmpty())
            return out;
        const QJsonDocument doc = QJsonDocument::fromJson(bytes);
        if (!doc.isObject()) {
            qCWarning(lcPersistence, "Failed to decode %s: not a JSON map", qUtf8Printable(m_key));
            return out;
        }
        const QJsonObject object = doc.object();
        for (auto it = object.begin(); it != object.end(); ++it) {
            if (auto value = m_decode(it.value())) {
                out.insert(it.key(), *value);
                continue;
            }
            qCWarning(lcPersistence, "Failed to decode %s: bad entry for \"%s\"", qUtf8Printable(m_key),
                      qUtf8Printable(it.key()));
            m_unreadable.insert(it.key(), it.value());
        }
        return out;
    }
    void write()
    {
        QJsonObject object = m_unreadable;
        for (auto it = m_cache->cbegin(); it != m_cache->cend(); ++it)
            object.insert(it.key(), m_encode(it.value()));
        m_bytes = QJsonDocument(object).toJson(QJsonDocument::Compact);
        m_store->set(m_bytes, m_key);
    }

    std::shared_ptr<UserDefaultsStoreType> m_store;
    QString m_key;
    Encode m_encode;
    Decode m_decode;
    mutable std::optional<QMap<QString, Value>> m_cache;
    mutable QByteArray m_bytes;           // what m_cache was decoded from
    mutable QJsonObject m_unreadable;     // entries kept as they were
};
