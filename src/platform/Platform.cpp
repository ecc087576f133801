#include "platform/Platform.h"

#include "foundation/Logging.h"
#include "input/ApplicationActivity.h"
#include "foundation/Clock.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/DesktopEntrySource.h"
#include "platform/linux/EvdevTouchpadSource.h"
#include "platform/linux/GioAppLauncher.h"
#include "platform/linux/GioFolderAssets.h"
#include "platform/linux/PortalFileChooser.h"
#include "platform/linux/LinuxDesktopWallpaperSource.h"
#include "platform/linux/LinuxApplicationPlatform.h"
#include "platform/linux/LogindSleepWatcher.h"
#include "platform/linux/X11PointerSource.h"
#include "platform/linux/XcbHotKeyService.h"

#include <QCoreApplication>
#include <QGuiApplication>

namespace {

QString qtPlatformName()
{
    // A command run from the shell has a QCoreApplication and no platform plugin.
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) ? QGuiApplication::platformName() : QString();
}

QString xdgSessionType()
{
    return qEnvironmentVariable("XDG_SESSION_TYPE");
}

}

Platform::Session Platform::sessionFor(const QString &qtPlatformName, const QString &xdgSessionType)
{
    // Qt's plugin decides where windows go; the X11 services talk to the same
    // server, Xwayland included, as they always have.
    if (qtPlatformName == QLatin1String("xcb"))
        return Session::X11;
    if (qtPlatformName.startsWith(QLatin1String("wayland"))
        || xdgSessionType.compare(QLatin1String("wayland"), Qt::CaseInsensitive) == 0)
        return Session::Wayland;
    return Session::Other;
}

const char *Platform::sessionName(Session session)
{
    switch (session) {
    case Session::X11:
        return "x11";
    case Session::Wayland:
        return "wayland";
    case Session::Other:
        break;
    }
    return "other";
}

Platform::Platform()
    : Platform(sessionFor(qtPlatformName(), xdgSessionType()))
{
}

Platform::Platform(Session session)
    : m_session(session)
{
}

Platform::~Platform() = default;

void Platform::logSession() const
{
    qCInfo(lcApp, "Session type: %s (Qt platform \"%s\", XDG_SESSION_TYPE \"%s\")", sessionName(m_session),
           qUtf8Printable(qtPlatformName()), qUtf8Printable(xdgSessionType()));
}

CataloguePlatform Platform::catalogue() const
{
    return {{std::make_shared<DesktopEntrySource>()}, std::make_shared<GioAppLauncher>(),
            std::make_shared<GioFolderAssets>()};
}

InputPlatform Platform::input() const
{
    InputPlatform platform;
    if (m_session == Session::X11) {
        platform.hotKeys = std::make_shared<XcbHotKeyService>();
        platform.pointer = std::make_shared<X11PointerSource>();
    } else if (m_session == Session::Wayland) {
        qCWarning(lcServices, "Global hotkeys are not available on Wayland; use `tillmora toggle` "
                              "(bind it to a shortcut in the desktop's settings)");
        qCWarning(lcServices, "Hot corners are not available on Wayland: the pointer can only be followed on X11");
    } else {
        qCWarning(lcServices, "Global hotkeys are not available without an X11 session (Qt platform \"%s\"); "
                              "use `tillmora toggle`",
                  qUtf8Printable(qtPlatformName()));
        qCWarning(lcServices, "Hot corners are not available without an X11 session (Qt platform \"%s\")",
                  qUtf8Printable(qtPlatformName()));
    }
    // Touchpads are read from /dev/input and sleep comes from logind: neither needs X.
    platform.touchpads = std::make_shared<EvdevTouchpadSource>();
    platform.power = std::make_shared<LogindSleepWatcher>();
    platform.activity = std::make_shared<QtApplicationActivity>();
    platform.clock = std::make_shared<QtClock>();
    return platform;
}

ApplicationPlatform &Platform::application(InstanceChannel &channel, const QStringList &arguments)
{
    if (!m_application)
        m_application = std::make_unique<LinuxApplicationPlatform>(channel, arguments);
    return *m_application;
}

std::shared_ptr<FileChooser> Platform::fileChooser() const
{
    return std::make_shared<PortalFileChooser>();
}

std::shared_ptr<DesktopWallpaperSource> Platform::desktopWallpaper()
{
    if (!m_desktopWallpaper)
        m_desktopWallpaper = std::make_shared<LinuxDesktopWallpaperSource>();
    return m_desktopWallpaper;
}

bool Platform::dockIconVisible() const
{
    return !m_application || m_application->dockIconVisible();
}

bool Platform::startsAtLogin()
{
    return AutostartEntry::isEnabled();
}

bool Platform::setStartsAtLogin(bool enabled)
{
    return AutostartEntry::setEnabled(enabled, QCoreApplication::applicationFilePath());
}
