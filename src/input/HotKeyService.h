#pragma once

#include <QtGlobal>
#include <functional>

// A four-character code packed big-endian into 32 bits, as the hot-key
// identities are written ("LPAD" = 0x4C504144).
using FourCharCode = quint32;

constexpr FourCharCode fourCharCode(const char (&code)[5])
{
    return (quint32(quint8(code[0])) << 24) | (quint32(quint8(code[1])) << 16) | (quint32(quint8(code[2])) << 8)
        | quint32(quint8(code[3]));
}

// The identity every registration carries; a press is reported by it.
struct HotKeyId {
    FourCharCode signature = 0;
    quint32 id = 0;
    friend bool operator==(const HotKeyId &, const HotKeyId &) = default;
};

// The system-wide shortcut facility: key codes are the virtual key codes of
// the ANSI layout (see KeyboardShortcut), modifiers the Carbon mask.
class HotKeyService {
public:
    using Handle = quint64;
    using PressHandler = std::function<void(HotKeyId)>;

    // Status codes of the Carbon hot-key calls, so the logs read the same.
    static constexpr qint32 kNoErr = 0;
    static constexpr qint32 kHotKeyExistsErr = -9878;  // another registration holds the combination
    static constexpr qint32 kHotKeyInvalidErr = -9879; // the key or the service is not usable

    struct Registration {
        qint32 status = kNoErr;
        Handle handle = 0; // 0 when the registration failed
    };

    virtual ~HotKeyService() = default;

    // The single handler that receives every press of this process; it may be
    // called on any thread. Returns the handler's handle; it is never removed.
    virtual Handle installHandler(PressHandler handler) = 0;
    virtual Registration registerHotKey(quint32 keyCode, quint32 carbonModifiers, HotKeyId id) = 0;
    virtual qint32 unregisterHotKey(Handle handle) = 0;
};
