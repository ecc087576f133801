#pragma once

#include "input/HotKeyService.h"
#include "storage/SettingsKeys.h"

#include <QHash>
#include <QList>
#include <QLoggingCategory>
#include <QObject>
#include <QString>
#include <QUuid>
#include <functional>
#include <memory>
#include <optional>

class ApplicationActivity;
class UserDefaultsStoreType;

// What the hot-key manager needs of a Space.
struct SpaceHotKey {
    QUuid id;
    QString name;
    std::optional<qint64> hotKeyKeyCode;
    std::optional<quint64> hotKeyModifiers; // modifier flags as stored
    bool operator==(const SpaceHotKey &) const = default;
};

// The stored toggle key code, or why it cannot be used.
struct StoredKeyCode {
    quint32 keyCode = 0;
    QString error; // non-empty: the stored value does not fit 32 bits
};

// The global shortcut that toggles the overlay ("LPAD"/1) and one shortcut
// per Space ("SPAD"/position + 2) that switches Spaces while Tillmora is in
// front. Main thread only.
class HotKeyManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(quint32 currentKeyCode READ currentKeyCode NOTIFY shortcutChanged)
    Q_PROPERTY(quint64 currentModifiers READ currentModifiers NOTIFY shortcutChanged)
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setEnabled NOTIFY isEnabledChanged)
    Q_PROPERTY(QString displayText READ displayText NOTIFY shortcutChanged)
public:
    static constexpr const char *kKeyCodeKey = SettingsKeys::kHotKeyKeyCode;
    static constexpr const char *kModifiersKey = SettingsKeys::kHotKeyModifiers;
    static constexpr const char *kEnabledKey = SettingsKeys::kHotKeyEnabled;
    static constexpr quint32 kDefaultKeyCode = 21; // the "4" key
    static constexpr FourCharCode mainAppSignature = fourCharCode("LPAD");
    static constexpr FourCharCode spaceSignature = fourCharCode("SPAD");
    static constexpr quint32 kToggleId = 1;
    static constexpr quint32 kFirstSpaceId = 2;

    // Reads "hotKey.keyCode"; a stored integer outside 0 ... 4294967295 is
    // an error, never clamped.
    static StoredKeyCode storedKeyCode(const UserDefaultsStoreType &store);

    // Aborts start-up with the error of storedKeyCode when the stored key
    // code does not fit. Registers nothing.
    HotKeyManager(std::shared_ptr<UserDefaultsStoreType> store, HotKeyService &service,
                  ApplicationActivity &activity, QObject *parent = nullptr);
    ~HotKeyManager() override;

    void setOnToggle(std::function<void()> action) { m_onToggle = std::move(action); }
    void setSpaceHotKeyCallback(std::function<void(const QUuid &)> action)
    {
        m_spaceHotKeyCallback = std::move(action);
    }

    quint32 currentKeyCode() const { return m_currentKeyCode; }
    quint64 currentModifiers() const { return m_currentModifiers; }
    bool isEnabled() const { return m_isEnabled; }
    QString displayText() const;
    bool isToggleRegistered() const { return m_carbonHotKeyRef.has_value(); }
    std::optional<quint32> hotKeyIdForSpace(const QUuid &space) const;

    void registerHotKey();
    void setEnabled(bool enabled);
    void updateHotKey(quint64 modifiers, qint64 keyCode);
    // Teardown of the window controller: drops the toggle registration; the
    // handler and the Space hotkeys stay.
    void stop();
    // Replaces every Space registration.
    void updateSpaceHotKeys(const QList<SpaceHotKey> &spaces);

Q_SIGNALS:
    void shortcutChanged();
    void isEnabledChanged(bool enabled);

private:
    void handlePress(HotKeyId id);
    void unregisterToggle();
    void registerSpaceHotKey(quint32 keyCode, quint64 modifierFlags, quint32 hotKeyId, const QUuid &space);

    std::function<void()> m_onToggle;
    std::optional<HotKeyService::Handle> m_carbonHotKeyRef;
    std::optional<HotKeyService::Handle> m_carbonEventHandler;
    const QLoggingCategory &m_logger;
    quint32 m_currentKeyCode = kDefaultKeyCode;
    quint64 m_currentModifiers = 0;
    bool m_isEnabled = true;
    QHash<QUuid, quint32> m_spaceIdToHotKeyId;
    QHash<quint32, QUuid> m_hotKeyIdToSpaceId;
    QHash<QUuid, HotKeyService::Handle> m_spaceHotKeyRefs;
    std::function<void(const QUuid &)> m_spaceHotKeyCallback;

    std::shared_ptr<UserDefaultsStoreType> m_store;
    HotKeyService &m_service;
    ApplicationActivity &m_activity;
};
