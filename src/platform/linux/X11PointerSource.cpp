#include "platform/linux/X11PointerSource.h"

#include "platform/linux/XcbEventConnection.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

X11PointerSource::X11PointerSource(const QByteArray &displayName)
    : m_displayName(displayName)
{
}

X11PointerSource::~X11PointerSource() = default;

QPoint X11PointerSource::cursorPosition() const
{
    return QCursor::pos();
}

QList<QRect> X11PointerSource::screenGeometries() const
{
    QList<QRect> out;
    if (!qGuiApp)
        return out;
    const QScreen *primary = QGuiApplication::primaryScreen();
    if (primary)
        out.append(primary->geometry());
    for (const QScreen *screen : QGuiApplication::screens())
        if (screen != primary)
            out.append(screen->geometry());
    return out;
}

bool X11PointerSource::isMotionListenerAllowed()
{
    if (m_xinputChecked)
        return m_xinputOpcode != 0;
    m_xinputChecked = true;
    m_x = std::make_unique<XcbEventConnection>(m_displayName);
    if (!m_x->isConnected())
        return false;
    xcb_connection_t *c = m_x->connection();
    const xcb_query_extension_reply_t *ext = xcb_get_extension_data(c, &xcb_input_id);
    if (!ext || !ext->present)
        return false;
    auto *version = xcb_input_xi_query_version_reply(c, xcb_input_xi_query_version(c, 2, 0), nullptr);
    const bool xi2 = version && version->major_version >= 2;
    free(version);
    if (!xi2)
        return false;
    m_xinputOpcode = ext->major_opcode;
    m_x->setEventHandler([this](xcb_generic_event_t *event) {
        if ((event->response_type & ~0x80) != XCB_GE_GENERIC)
            return;
        const auto *ge = reinterpret_cast<xcb_ge_generic_event_t *>(event);
        if (ge->extension != m_xinputOpcode || ge->event_type != XCB_INPUT_RAW_MOTION || m_motionPending)
            return;
        // A fast mouse sends a thousand events a second; one check per
        // batch read from the server is enough.
        m_motionPending = true;
        QMetaObject::invokeMethod(m_x.get(), [this] {
            m_motionPending = false;
            if (m_onMotion)
                m_onMotion();
        }, Qt::QueuedConnection);
    });
    return true;
}

bool X11PointerSource::selectRawMotion(bool on)
{
    struct {
        xcb_input_event_mask_t head;
        quint32 mask;
    } mask{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, on ? quint32(XCB_INPUT_XI_EVENT_MASK_RAW_MOTION) : 0u};
    xcb_connection_t *c = m_x->connection();
    xcb_generic_error_t *error =
        xcb_request_check(c, xcb_input_xi_select_events_checked(c, m_x->rootWindow(), 1, &mask.head));
    m_x->drainSoon();
    const bool selected = !error;
    free(error);
    return selected;
}

bool X11PointerSource::startMotionListener(std::function<void()> onMotion)
{
    if (!isMotionListenerAllowed() || !selectRawMotion(true))
        return false;
    m_onMotion = std::move(onMotion);
    return true;
}

void X11PointerSource::stopMotionListener()
{
    m_onMotion = nullptr;
    if (m_xinputOpcode)
        selectRawMotion(false);
}
