#pragma once

#include <QByteArray>
#include <QSize>
#include <QProcess>
#include <QStringList>

// A private X server for one test (Xvfb on a free display), and xdotool
// aimed at it. isRunning() is false when Xvfb is missing or fails.
class XvfbServer {
public:
    explicit XvfbServer(QSize screen = {1280, 800});
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
