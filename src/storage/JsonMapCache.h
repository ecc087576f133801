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
// cached in memory after the first read. Every change writes the whole map.
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
        if (!m_cache)
            m_cache = read();
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
        write();
    }
    bool remove(const QString &key)
    {
        all();
        if (!m_cache->remove(key))
            return false;
        write();
        return true;
    }
    void replaceAll(const QMap<QString, Value> &map)
    {
        m_cache = map;
        write();
    }
    const QString &key() const { return m_key; }

private:
    QMap<QString, Value> read() const
    {
        QMap<QString, Value> out;
        const auto bytes = m_store->data(m_key);
        if (!bytes)
            return out;
        const QJsonDocument doc = QJsonDocument::fromJson(*bytes);
        if (!doc.isObject()) {
            qCWarning(lcPersistence, "Failed to decode %s: not a JSON map", qUtf8Printable(m_key));
            return out;
        }
        const QJsonObject object = doc.object();
        for (auto it = object.begin(); it != object.end(); ++it) {
            auto value = m_decode(it.value());
            if (!value) {
                qCWarning(lcPersistence, "Failed to decode %s: bad entry for \"%s\"", qUtf8Printable(m_key),
                          qUtf8Printable(it.key()));
                return {};
            }
            out.insert(it.key(), *value);
        }
        return out;
    }
    void write()
    {
        QJsonObject object;
        for (auto it = m_cache->cbegin(); it != m_cache->cend(); ++it)
            object.insert(it.key(), m_encode(it.value()));
        m_store->set(QJsonDocument(object).toJson(QJsonDocument::Compact), m_key);
    }

    std::shared_ptr<UserDefaultsStoreType> m_store;
    QString m_key;
    Encode m_encode;
    Decode m_decode;
    mutable std::optional<QMap<QString, Value>> m_cache;
};
