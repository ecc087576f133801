#pragma once

#include <QByteArray>
#include <QObject>
#include <functional>
#include <memory>

#include <xcb/xcb.h>

class QSocketNotifier;

// A private connection to the X server whose events are read on the main
// thread, so the adaptors need nothing of Qt's own connection (and work
// under any Qt platform plugin while an X display is reachable).
class XcbEventConnection : public QObject {
    Q_OBJECT
public:
    using EventHandler = std::function<void(xcb_generic_event_t *)>;

    // displayName empty: $DISPLAY.
    explicit XcbEventConnection(const QByteArray &displayName = {}, QObject *parent = nullptr);
    ~XcbEventConnection() override;

    bool isConnected() const { return m_connection != nullptr; }
    xcb_connection_t *connection() const { return m_connection; }
    quint32 rootWindow() const { return m_root; }
    void setEventHandler(EventHandler handler) { m_handler = std::move(handler); }
    // A round trip (a checked request) may have pulled events into xcb's
    // queue, where the socket notifier no longer sees them.
    void drainSoon();

private:
    void drain();

    xcb_connection_t *m_connection = nullptr;
    quint32 m_root = 0;
    std::unique_ptr<QSocketNotifier> m_notifier;
    EventHandler m_handler;
};
