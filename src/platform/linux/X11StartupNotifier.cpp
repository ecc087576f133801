#include "platform/linux/X11StartupNotifier.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <xcb/xcb.h>

X11StartupNotifier::X11StartupNotifier()
{
    if (!std::getenv("DISPLAY"))
        return;
    xcb_connection_t *connection = xcb_connect(nullptr, &m_screen);
    if (xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        return;
    }
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < m_screen && it.rem; ++i)
        xcb_screen_next(&it);
    if (!it.rem) {
        xcb_disconnect(connection);
        return;
    }
    m_root = it.data->root;
    m_connection = connection;
}

X11StartupNotifier::~X11StartupNotifier()
{
    if (!m_connection)
        return;
    if (m_window)
        xcb_destroy_window(m_connection, m_window);
    xcb_flush(m_connection);
    xcb_disconnect(m_connection);
}

quint32 X11StartupNotifier::atom(const char *name)
{
    xcb_intern_atom_reply_t *reply =
        xcb_intern_atom_reply(m_connection, xcb_intern_atom(m_connection, 0, uint16_t(std::strlen(name)), name), nullptr);
    const quint32 result = reply ? reply->atom : quint32(XCB_ATOM_NONE);
    std::free(reply);
    return result;
}

quint32 X11StartupNotifier::helperWindow()
{
    if (!m_window) {
        m_window = xcb_generate_id(m_connection);
        const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_root, -1, -1, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    }
    return m_window;
}

quint32 X11StartupNotifier::serverTime()
{
    if (!m_connection)
        return 0;
    // A zero-length property change makes the server report its time.
    const quint32 window = helperWindow();
    const quint32 property = atom("_TILLMORA_TIMESTAMP");
    xcb_change_property(m_connection, XCB_PROP_MODE_APPEND, window, property, XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_flush(m_connection);
    quint32 time = 0;
    while (xcb_generic_event_t *event = xcb_wait_for_event(m_connection)) {
        const bool found = (event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY
            && reinterpret_cast<xcb_property_notify_event_t *>(event)->window == window;
        if (found)
            time = reinterpret_cast<xcb_property_notify_event_t *>(event)->time;
        std::free(event);
        if (found)
            break;
    }
    return time;
}

void X11StartupNotifier::send(const QByteArray &message)
{
    if (!m_connection)
        return;
    const quint32 begin = atom("_NET_STARTUP_INFO_BEGIN");
    const quint32 more = atom("_NET_STARTUP_INFO");
    const quint32 window = helperWindow();
    // The text travels in 20-byte pieces, terminating NUL included.
    const QByteArray text = message + '\0';
    for (qsizetype offset = 0; offset < text.size(); offset += 20) {
        xcb_client_message_event_t event;
        std::memset(&event, 0, sizeof event);
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 8;
        event.window = window;
        event.type = offset == 0 ? begin : more;
        std::memcpy(event.data.data8, text.constData() + offset, size_t(std::min<qsizetype>(20, text.size() - offset)));
        xcb_send_event(m_connection, 0, m_root, XCB_EVENT_MASK_PROPERTY_CHANGE, reinterpret_cast<const char *>(&event));
    }
    // A round trip: requests still unread when the connection closes may be
    // dropped by the server, and the message with them.
    std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

QByteArray X11StartupNotifier::field(const char *key, const QString &value)
{
    QByteArray quoted = value.toUtf8();
    quoted.replace('\\', "\\\\").replace('"', "\\\"");
    return QByteArray(key) + "=\"" + quoted + '"';
}
