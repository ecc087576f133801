#include "platform/linux/XcbEventConnection.h"

#include <QSocketNotifier>
#include <xcb/xcb.h>

XcbEventConnection::XcbEventConnection(const QByteArray &displayName, QObject *parent)
    : QObject(parent)
{
    int screenNumber = 0;
    xcb_connection_t *c = xcb_connect(displayName.isEmpty() ? nullptr : displayName.constData(), &screenNumber);
    if (xcb_connection_has_error(c)) {
        xcb_disconnect(c);
        return;
    }
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(c));
    for (int i = 0; i < screenNumber && it.rem; ++i)
        xcb_screen_next(&it);
    if (!it.rem) {
        xcb_disconnect(c);
        return;
    }
    m_connection = c;
    m_root = it.data->root;
    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(c), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &XcbEventConnection::drain);
}

XcbEventConnection::~XcbEventConnection()
{
    m_notifier.reset();
    if (m_connection)
        xcb_disconnect(m_connection);
}

void XcbEventConnection::drainSoon()
{
    QMetaObject::invokeMethod(this, &XcbEventConnection::drain, Qt::QueuedConnection);
}

void XcbEventConnection::drain()
{
    if (!m_connection)
        return;
    while (xcb_generic_event_t *event = xcb_poll_for_event(m_connection)) {
        if (m_handler)
            m_handler(event);
        free(event);
    }
    if (xcb_connection_has_error(m_connection))
        m_notifier->setEnabled(false);
}
