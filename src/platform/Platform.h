#pragma once

#include "catalogue/CataloguePlatform.h"
#include "input/InputPlatform.h"

#include <QString>
#include <QStringList>
#include <memory>

class ApplicationPlatform;
class DesktopWallpaperSource;
class FileChooser;
class InstanceChannel;
class LinuxApplicationPlatform;

// The platform the program runs on, chosen once at start. The session type
// decides which adaptors can work; every adaptor bundle (start-up, catalogue,
// activation inputs) comes from here, so main() never names an adaptor.
class Platform {
public:
    enum class Session { X11, Wayland, Other };

    // X11 when Qt talks to an X server, Wayland when Qt's plugin or the
    // session says so, anything else (offscreen, minimal, a console) Other.
    static Session sessionFor(const QString &qtPlatformName, const QString &xdgSessionType);
    static const char *sessionName(Session session);

    // Detects the session from the running application's Qt platform (none
    // for a command run from the shell) and $XDG_SESSION_TYPE.
    Platform();
    explicit Platform(Session session);
    ~Platform();
    Platform(const Platform &) = delete;
    Platform &operator=(const Platform &) = delete;

    Session session() const { return m_session; }
    // One line naming the chosen session; the launcher writes it at start-up.
    void logSession() const;

    CataloguePlatform catalogue() const;
    // The adaptors the session supports. Facilities it cannot offer stay
    // empty (the window controller fills them with inert ones) and are
    // logged once each with the reason.
    InputPlatform input() const;
    // Start-up's platform questions, made once; later calls return the same.
    ApplicationPlatform &application(InstanceChannel &channel, const QStringList &arguments);
    bool dockIconVisible() const;
    // The desktop's file chooser (the portal's, where one runs).
    std::shared_ptr<FileChooser> fileChooser() const;
    // The desktop's wallpaper and colour scheme (GNOME, KDE Plasma, the
    // settings portal); made once, later calls return the same.
    std::shared_ptr<DesktopWallpaperSource> desktopWallpaper();

    // "Start at login", for the settings window.
    static bool startsAtLogin();
    static bool setStartsAtLogin(bool enabled);

private:
    Session m_session;
    std::unique_ptr<LinuxApplicationPlatform> m_application;
    std::shared_ptr<DesktopWallpaperSource> m_desktopWallpaper;
};
