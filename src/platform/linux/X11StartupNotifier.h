#pragma once

#include <QByteArray>
#include <QString>

struct xcb_connection_t;

// The X11 side of startup notification: tells the window manager that an
// application is starting (so it can show feedback and give the new window
// focus) and that a launch failed. Uses a connection of its own, so the
// launcher works the same with or without a Qt GUI; without an X server it
// does nothing.
class X11StartupNotifier {
public:
    X11StartupNotifier();
    ~X11StartupNotifier();
    X11StartupNotifier(const X11StartupNotifier &) = delete;
    X11StartupNotifier &operator=(const X11StartupNotifier &) = delete;

    bool isValid() const { return m_connection != nullptr; }
    int screen() const { return m_screen; }
    // The server's current time, for the _TIME part of a startup id.
    quint32 serverTime();
    // Broadcasts one message ("new: ID=… NAME=…", "remove: ID=…").
    void send(const QByteArray &message);

    // KEY=value with the value quoted as the protocol requires.
    static QByteArray field(const char *key, const QString &value);

private:
    quint32 atom(const char *name);
    quint32 helperWindow();

    xcb_connection_t *m_connection = nullptr;
    int m_screen = 0;
    quint32 m_root = 0;
    quint32 m_window = 0;
};
