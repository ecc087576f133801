#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>

// A private X server for one test (Xvfb on a free display), and xdotool
// aimed at it. isRunning() is false when Xvfb is missing or fails.
class XvfbServer {
public:
    XvfbServer();
    ~XvfbServer();

    bool isRunning() const { return !m_display.isEmpty(); }
    QByteArray display() const { return m_display; } // ":N"
    // Runs xdotool with the arguments against this server; true on success.
    bool xdotool(const QStringList &arguments) const;
    static bool haveTools();

private:
    QProcess m_process;
    QByteArray m_display;
};
