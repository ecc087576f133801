#include "platform/linux/XcbHotKeyService.h"

#include "foundation/Logging.h"
#include "input/KeyboardShortcut.h"
#include "input/ShortcutNames.h"
#include "platform/linux/XcbEventConnection.h"

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

namespace {

constexpr quint32 kNumLockKeysym = 0xff7f;
// Modifiers a shortcut is made of; the lock keys and the rest are ignored.
constexpr quint16 kShortcutModifiers =
    XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;

quint16 numLockMask(xcb_connection_t *c, xcb_key_symbols_t *symbols)
{
    xcb_keycode_t *numLock = xcb_key_symbols_get_keycode(symbols, kNumLockKeysym);
    if (!numLock)
        return 0;
    quint16 mask = 0;
    if (auto *reply = xcb_get_modifier_mapping_reply(c, xcb_get_modifier_mapping(c), nullptr)) {
        const xcb_keycode_t *map = xcb_get_modifier_mapping_keycodes(reply);
        const int perModifier = reply->keycodes_per_modifier;
        for (int mod = 0; mod < 8 && !mask; ++mod)
            for (int k = 0; k < perModifier; ++k)
                for (const xcb_keycode_t *n = numLock; *n != XCB_NO_SYMBOL; ++n)
                    if (map[mod * perModifier + k] == *n)
                        mask = quint16(1 << mod);
        free(reply);
    }
    free(numLock);
    return mask;
}

}

XcbHotKeyService::XcbHotKeyService(const QByteArray &displayName)
    : m_x(std::make_unique<XcbEventConnection>(displayName))
{
    if (!m_x->isConnected()) {
        qCWarning(lcServices, "Global shortcuts are unavailable: no X display could be opened");
        return;
    }
    m_symbols = xcb_key_symbols_alloc(m_x->connection());
    m_numLockMask = numLockMask(m_x->connection(), m_symbols);
    m_x->setEventHandler([this](xcb_generic_event_t *event) { handleEvent(event); });
}

XcbHotKeyService::~XcbHotKeyService()
{
    if (m_symbols)
        xcb_key_symbols_free(m_symbols);
}

bool XcbHotKeyService::isConnected() const
{
    return m_x->isConnected();
}

std::optional<quint32> XcbHotKeyService::keysym(quint32 virtualKeyCode)
{
    const auto name = ShortcutNames::keyName(virtualKeyCode);
    if (!name)
        return std::nullopt;
    // Printable keys are Latin-1 keysyms of their unshifted character.
    if (name->size() == 1)
        return quint32(name->toLower().at(0).unicode());
    constexpr quint32 kF1 = 0xffbe; // F1 ... F35 are consecutive
    if (ShortcutNames::standsAlone(virtualKeyCode))
        return kF1 + name->mid(1).toUInt() - 1;
    static const QHash<QString, quint32> named{
        {QStringLiteral("Enter"), 0xff0d},     {QStringLiteral("Tab"), 0xff09},
        {QStringLiteral("Space"), 0x0020},     {QStringLiteral("Backspace"), 0xff08},
        {QStringLiteral("Esc"), 0xff1b},       {QStringLiteral("Delete"), 0xffff},
        {QStringLiteral("Insert"), 0xff63},    {QStringLiteral("Home"), 0xff50},
        {QStringLiteral("End"), 0xff57},       {QStringLiteral("Page Up"), 0xff55},
        {QStringLiteral("Page Down"), 0xff56}, {QStringLiteral("Left"), 0xff51},
        {QStringLiteral("Up"), 0xff52},        {QStringLiteral("Right"), 0xff53},
        {QStringLiteral("Down"), 0xff54}};
    const auto found = named.constFind(*name);
    return found == named.cend() ? std::nullopt : std::optional<quint32>(*found);
}

quint16 XcbHotKeyService::xModifiers(quint32 carbon)
{
    quint16 mods = 0;
    if (carbon & KeyboardShortcut::kCmdKey)
        mods |= XCB_MOD_MASK_4;
    if (carbon & KeyboardShortcut::kOptionKey)
        mods |= XCB_MOD_MASK_1;
    if (carbon & KeyboardShortcut::kControlKey)
        mods |= XCB_MOD_MASK_CONTROL;
    if (carbon & KeyboardShortcut::kShiftKey)
        mods |= XCB_MOD_MASK_SHIFT;
    return mods;
}

QList<quint16> XcbHotKeyService::lockVariants() const
{
    // The shortcut must work whatever the state of Caps Lock and Num Lock.
    QList<quint16> variants{0, XCB_MOD_MASK_LOCK};
    if (m_numLockMask)
        variants << m_numLockMask << quint16(m_numLockMask | XCB_MOD_MASK_LOCK);
    return variants;
}

HotKeyService::Handle XcbHotKeyService::installHandler(PressHandler handler)
{
    m_handlers.append(std::move(handler));
    return Handle(m_handlers.size());
}

HotKeyService::Registration XcbHotKeyService::registerHotKey(quint32 keyCode, quint32 carbonModifiers, HotKeyId id)
{
    const auto sym = keysym(keyCode);
    if (!m_x->isConnected() || !sym)
        return {kHotKeyInvalidErr, 0};
    Grab grab{{}, xModifiers(carbonModifiers), id};
    if (xcb_keycode_t *codes = xcb_key_symbols_get_keycode(m_symbols, *sym)) {
        for (const xcb_keycode_t *c = codes; *c != XCB_NO_SYMBOL; ++c)
            if (!grab.keycodes.contains(*c))
                grab.keycodes.append(*c);
        free(codes);
    }
    if (grab.keycodes.isEmpty())
        return {kHotKeyInvalidErr, 0};
    // X lets one client grab a combination twice; the facility does not.
    for (const Grab &other : std::as_const(m_grabs))
        if (other.modifiers == grab.modifiers)
            for (quint8 c : grab.keycodes)
                if (other.keycodes.contains(c))
                    return {kHotKeyExistsErr, 0};

    xcb_connection_t *x = m_x->connection();
    QList<xcb_void_cookie_t> cookies;
    for (quint8 c : grab.keycodes)
        for (quint16 variant : lockVariants())
            cookies.append(xcb_grab_key_checked(x, 1, m_x->rootWindow(), grab.modifiers | variant, c,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    qint32 status = kNoErr;
    for (const xcb_void_cookie_t cookie : cookies) {
        if (xcb_generic_error_t *error = xcb_request_check(x, cookie)) {
            // BadAccess: another client holds the combination.
            if (status == kNoErr)
                status = error->error_code == XCB_ACCESS ? kHotKeyExistsErr : kHotKeyInvalidErr;
            free(error);
        }
    }
    m_x->drainSoon();
    if (status != kNoErr) {
        // Ungrabbing what another client holds leaves its grab alone.
        ungrab(grab);
        return {status, 0};
    }
    const Handle handle = ++m_nextHandle;
    m_grabs.insert(handle, grab);
    return {kNoErr, handle};
}

qint32 XcbHotKeyService::unregisterHotKey(Handle handle)
{
    const auto it = m_grabs.find(handle);
    if (it == m_grabs.end())
        return kHotKeyInvalidErr;
    ungrab(*it);
    m_grabs.erase(it);
    return kNoErr;
}

void XcbHotKeyService::ungrab(const Grab &grab)
{
    xcb_connection_t *x = m_x->connection();
    for (quint8 c : grab.keycodes)
        for (quint16 variant : lockVariants())
            xcb_ungrab_key(x, c, m_x->rootWindow(), grab.modifiers | variant);
    xcb_flush(x);
}

void XcbHotKeyService::handleEvent(xcb_generic_event_t *event)
{
    switch (event->response_type & ~0x80) {
    case XCB_KEY_RELEASE: {
        const auto *release = reinterpret_cast<xcb_key_release_event_t *>(event);
        m_lastRelease.insert(release->detail, release->time);
        break;
    }
    case XCB_KEY_PRESS: {
        const auto *press = reinterpret_cast<xcb_key_press_event_t *>(event);
        // Auto-repeat sends a release and a press with the same time stamp;
        // one press of the shortcut is one activation.
        const auto last = m_lastRelease.constFind(press->detail);
        if (last != m_lastRelease.cend() && *last == press->time)
            break;
        const quint16 modifiers = press->state & kShortcutModifiers;
        for (const Grab &grab : std::as_const(m_grabs))
            if (grab.modifiers == modifiers && grab.keycodes.contains(press->detail)) {
                for (const PressHandler &handler : std::as_const(m_handlers))
                    handler(grab.id);
                break;
            }
        break;
    }
    case XCB_MAPPING_NOTIFY:
        xcb_refresh_keyboard_mapping(m_symbols, reinterpret_cast<xcb_mapping_notify_event_t *>(event));
        break;
    default:
        break;
    }
}
