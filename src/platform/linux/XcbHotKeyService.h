#pragma once

#include "input/HotKeyService.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMap>
#include <memory>
#include <optional>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

class XcbEventConnection;

// Global shortcuts on X11: a passive key grab on the root window per
// registration. Key codes are the stored virtual (ANSI) key codes, turned
// into keysyms by their names and into the server's keycodes by its
// keyboard map; Command is Super (Mod4), Option is Alt (Mod1).
class XcbHotKeyService final : public HotKeyService {
public:
    // displayName empty: $DISPLAY.
    explicit XcbHotKeyService(const QByteArray &displayName = {});
    ~XcbHotKeyService() override;

    bool isConnected() const;

    Handle installHandler(PressHandler handler) override;
    Registration registerHotKey(quint32 keyCode, quint32 carbonModifiers, HotKeyId id) override;
    qint32 unregisterHotKey(Handle handle) override;

    // The keysym a virtual key code stands for.
    static std::optional<quint32> keysym(quint32 virtualKeyCode);
    // The X modifier mask of a Carbon mask.
    static quint16 xModifiers(quint32 carbonModifiers);

private:
    struct Grab {
        QList<quint8> keycodes;
        quint16 modifiers;
        HotKeyId id;
    };

    void handleEvent(xcb_generic_event_t *event);
    QList<quint16> lockVariants() const;
    void ungrab(const Grab &grab);

    std::unique_ptr<XcbEventConnection> m_x;
    xcb_key_symbols_t *m_symbols = nullptr;
    quint16 m_numLockMask = 0;
    QList<PressHandler> m_handlers;
    QMap<Handle, Grab> m_grabs;
    Handle m_nextHandle = 0;
    QHash<quint8, quint32> m_lastRelease; // keycode -> server time, to spot auto-repeat
};
