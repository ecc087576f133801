#include "input/HotKeyManager.h"

#include "foundation/Logging.h"
#include "input/ApplicationActivity.h"
#include "input/KeyboardShortcut.h"
#include "storage/UserDefaultsStoreType.h"

#include <QPointer>
#include <cmath>
#include <limits>

namespace {

// A stored number that is exactly an integer; anything else (text, flags,
// fractions, absent) is not.
std::optional<qint64> exactInteger(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::LongLong:
    case QMetaType::Int:
        return value.toLongLong();
    case QMetaType::ULongLong:
    case QMetaType::UInt:
        if (value.toULongLong() <= quint64(std::numeric_limits<qint64>::max()))
            return qint64(value.toULongLong());
        return std::nullopt;
    case QMetaType::Double: {
        const double d = value.toDouble();
        if (std::trunc(d) == d && d >= -9.2233720368547758e18 && d < 9.2233720368547758e18)
            return qint64(d);
        return std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

quint64 storedModifiers(const QVariant &value)
{
    if (value.typeId() == QMetaType::ULongLong || value.typeId() == QMetaType::UInt)
        return value.toULongLong();
    if (const auto n = exactInteger(value); n && *n >= 0)
        return quint64(*n);
    return KeyboardShortcut::kCommandFlag;
}

bool storedEnabled(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    if (const auto n = exactInteger(value))
        return *n != 0;
    return true;
}

}

StoredKeyCode HotKeyManager::storedKeyCode(const UserDefaultsStoreType &store)
{
    const auto stored = exactInteger(store.object(QLatin1String(kKeyCodeKey)));
    if (!stored)
        return {kDefaultKeyCode, {}};
    if (*stored < 0 || *stored > qint64(std::numeric_limits<quint32>::max()))
        return {0, QStringLiteral("The stored hot key code %1 under \"%2\" does not fit an unsigned 32-bit key code; "
                                  "remove or correct the setting to start Tillmora.")
                       .arg(*stored)
                       .arg(QLatin1String(kKeyCodeKey))};
    return {quint32(*stored), {}};
}

HotKeyManager::HotKeyManager(std::shared_ptr<UserDefaultsStoreType> store, HotKeyService &service,
                             ApplicationActivity &activity, QObject *parent)
    : QObject(parent)
    , m_logger(lcServices())
    , m_store(std::move(store))
    , m_service(service)
    , m_activity(activity)
{
    const StoredKeyCode keyCode = storedKeyCode(*m_store);
    if (!keyCode.error.isEmpty())
        qFatal("%s", qPrintable(keyCode.error));
    m_currentKeyCode = keyCode.keyCode;
    m_currentModifiers = storedModifiers(m_store->object(QLatin1String(kModifiersKey)));
    m_isEnabled = storedEnabled(m_store->object(QLatin1String(kEnabledKey)));
}

HotKeyManager::~HotKeyManager() = default;

QString HotKeyManager::displayText() const
{
    return KeyboardShortcut::displayText(m_currentModifiers, m_currentKeyCode);
}

std::optional<quint32> HotKeyManager::hotKeyIdForSpace(const QUuid &space) const
{
    const auto it = m_spaceIdToHotKeyId.constFind(space);
    return it == m_spaceIdToHotKeyId.cend() ? std::nullopt : std::optional<quint32>(*it);
}

void HotKeyManager::registerHotKey()
{
    if (!m_carbonEventHandler) {
        QPointer<HotKeyManager> self(this);
        m_carbonEventHandler = m_service.installHandler([self](HotKeyId id) {
            // May run on the event-dispatch path: only hand the press on.
            if (self)
                QMetaObject::invokeMethod(self.data(), [self, id] { if (self) self->handlePress(id); },
                                          Qt::QueuedConnection);
        });
    } else if (m_carbonHotKeyRef) {
        unregisterToggle();
    }
    if (m_isEnabled) {
        // A failed registration is not examined: the handle stays empty.
        const auto result = m_service.registerHotKey(m_currentKeyCode, KeyboardShortcut::carbonModifiers(m_currentModifiers),
                                                     {mainAppSignature, kToggleId});
        m_carbonHotKeyRef = result.handle ? std::optional(result.handle) : std::nullopt;
    }
}

void HotKeyManager::handlePress(HotKeyId id)
{
    if (id.signature == spaceSignature) {
        const auto it = m_hotKeyIdToSpaceId.constFind(id.id);
        if (it == m_hotKeyIdToSpaceId.cend())
            return;
        // Pressed while another application is in front: consumed, no switch.
        if (m_activity.isActive() && m_spaceHotKeyCallback)
            m_spaceHotKeyCallback(*it);
        return;
    }
    if (id == HotKeyId{mainAppSignature, kToggleId} && m_onToggle)
        m_onToggle();
}

void HotKeyManager::unregisterToggle()
{
    if (!m_carbonHotKeyRef)
        return;
    m_service.unregisterHotKey(*m_carbonHotKeyRef);
    m_carbonHotKeyRef.reset();
}

void HotKeyManager::setEnabled(bool enabled)
{
    if (enabled == m_isEnabled)
        return;
    m_isEnabled = enabled;
    m_store->set(enabled, QLatin1String(kEnabledKey));
    m_store->synchronize();
    if (enabled) {
        if (!m_carbonHotKeyRef)
            registerHotKey();
    } else {
        unregisterToggle();
    }
    Q_EMIT isEnabledChanged(enabled);
}

void HotKeyManager::updateHotKey(quint64 modifiers, qint64 keyCode)
{
    const quint32 truncated = quint32(keyCode);
    m_store->set(qint64(truncated), QLatin1String(kKeyCodeKey));
    m_store->set(modifiers, QLatin1String(kModifiersKey));
    m_store->synchronize();
    m_currentKeyCode = truncated;
    m_currentModifiers = modifiers;
    unregisterToggle();
    if (m_isEnabled)
        registerHotKey();
    Q_EMIT shortcutChanged();
}

void HotKeyManager::stop()
{
    unregisterToggle();
}

void HotKeyManager::updateSpaceHotKeys(const QList<SpaceHotKey> &spaces)
{
    qCDebug(m_logger, "updateSpaceHotKeys called for %ld spaces", long(spaces.size()));

    const QList<HotKeyService::Handle> previous = m_spaceHotKeyRefs.values();
    m_spaceHotKeyRefs.clear();
    m_spaceIdToHotKeyId.clear();
    m_hotKeyIdToSpaceId.clear();
    for (const HotKeyService::Handle handle : previous) {
        m_service.unregisterHotKey(handle);
        qCDebug(m_logger, "Unregistered Space hotkey ref");
    }

    if (!m_carbonEventHandler)
        registerHotKey();

    long withShortcut = 0;
    for (qsizetype i = 0; i < spaces.size(); ++i) {
        const SpaceHotKey &space = spaces.at(i);
        if (!space.hotKeyKeyCode || !space.hotKeyModifiers) {
            qCDebug(m_logger, "Space '%s' has no hotkey configured", qUtf8Printable(space.name));
            continue;
        }
        const quint32 id = quint32(i) + kFirstSpaceId;
        m_spaceIdToHotKeyId.insert(space.id, id);
        m_hotKeyIdToSpaceId.insert(id, space.id);
        qCDebug(m_logger, "Registering hotkey for Space '%s': keyCode=%ld, modifiers=%lu, hotKeyId=%u",
                qUtf8Printable(space.name), long(*space.hotKeyKeyCode), ulong(*space.hotKeyModifiers), uint(id));
        registerSpaceHotKey(quint32(*space.hotKeyKeyCode), *space.hotKeyModifiers, id, space.id);
        ++withShortcut;
    }
    qCInfo(m_logger, "Registered %ld Space hotkeys", withShortcut);
}

void HotKeyManager::registerSpaceHotKey(quint32 keyCode, quint64 modifierFlags, quint32 hotKeyId, const QUuid &space)
{
    const quint32 mask = KeyboardShortcut::carbonModifiers(modifierFlags);
    const auto result = m_service.registerHotKey(keyCode, mask, {spaceSignature, hotKeyId});
    if (result.status == HotKeyService::kNoErr) {
        m_spaceHotKeyRefs.insert(space, result.handle);
        qCInfo(m_logger, "Registered Space hotkey: id=%u, keyCode=%u, modifiers=%u", uint(hotKeyId), uint(keyCode),
               uint(mask));
    } else {
        // The Space keeps its id; it simply never fires.
        qCWarning(m_logger, "Failed to register Space hotkey: status=%d, keyCode=%u, modifiers=%u, hotKeyId=%u",
                  int(result.status), uint(keyCode), uint(mask), uint(hotKeyId));
    }
}
