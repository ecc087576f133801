#include "platform/linux/GioAppLauncher.h"

#include "foundation/Logging.h"
#include "platform/linux/X11StartupNotifier.h"

#include <QAtomicInteger>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QHostInfo>

#include <gio/gdesktopappinfo.h>

// A launch context that takes part in startup notification: it makes the
// startup id (with the X server's time, so the new window may take focus)
// and announces the launch to the window manager. Without an X server it
// offers no id and GIO launches without notification.
extern "C" {
struct TillmoraLaunchContext {
    GAppLaunchContext parent_instance;
};
struct TillmoraLaunchContextClass {
    GAppLaunchContextClass parent_class;
};
}

G_DEFINE_TYPE(TillmoraLaunchContext, tillmora_launch_context, G_TYPE_APP_LAUNCH_CONTEXT)

namespace {

QAtomicInteger<quint32> g_sequence;

char *startupNotifyId(GAppLaunchContext *, GAppInfo *info, GList *)
{
    X11StartupNotifier notifier;
    if (!notifier.isValid())
        return nullptr;
    const QString name = QString::fromUtf8(g_app_info_get_name(info));
    const QByteArray id = QStringLiteral("tillmora-%1-%2-%3_TIME%4")
                              .arg(QCoreApplication::applicationPid())
                              .arg(QHostInfo::localHostName())
                              .arg(g_sequence.fetchAndAddRelaxed(1))
                              .arg(notifier.serverTime())
                              .toUtf8();
    QByteArray message = "new: " + X11StartupNotifier::field("ID", QString::fromUtf8(id)) + ' '
        + X11StartupNotifier::field("NAME", name) + ' '
        + X11StartupNotifier::field("SCREEN", QString::number(notifier.screen()));
    if (const char *executable = g_app_info_get_executable(info))
        message += ' ' + X11StartupNotifier::field("BIN", QFileInfo(QString::fromUtf8(executable)).fileName());
    if (G_IS_DESKTOP_APP_INFO(info)) {
        if (const char *file = g_desktop_app_info_get_filename(G_DESKTOP_APP_INFO(info)))
            message += ' ' + X11StartupNotifier::field("APPLICATION_ID", QString::fromUtf8(file));
        if (const char *wmClass = g_desktop_app_info_get_startup_wm_class(G_DESKTOP_APP_INFO(info)))
            message += ' ' + X11StartupNotifier::field("WMCLASS", QString::fromUtf8(wmClass));
    }
    if (GIcon *icon = g_app_info_get_icon(info); icon && G_IS_THEMED_ICON(icon)) {
        if (const char *const *names = g_themed_icon_get_names(G_THEMED_ICON(icon)); names && names[0])
            message += ' ' + X11StartupNotifier::field("ICON", QString::fromUtf8(names[0]));
    }
    notifier.send(message);
    return g_strdup(id.constData());
}

void launchFailed(GAppLaunchContext *, const char *startupNotifyId)
{
    X11StartupNotifier notifier;
    notifier.send("remove: " + X11StartupNotifier::field("ID", QString::fromUtf8(startupNotifyId)));
}

struct ObjectDeleter {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using GObjectPtr = std::unique_ptr<T, ObjectDeleter>;

GObjectPtr<GAppLaunchContext> newContext()
{
    return GObjectPtr<GAppLaunchContext>(
        G_APP_LAUNCH_CONTEXT(g_object_new(tillmora_launch_context_get_type(), nullptr)));
}

AppLauncher::Result finish(bool launched, GError *error, const QString &what)
{
    if (launched) {
        qCDebug(lcServices, "Opened %s", qUtf8Printable(what));
        return AppLauncher::Result::success();
    }
    const QString message = error ? QString::fromUtf8(error->message) : QStringLiteral("unknown error");
    g_clear_error(&error);
    qCWarning(lcServices, "Failed to open %s: %s", qUtf8Printable(what), qUtf8Printable(message));
    return AppLauncher::Result::failure(message);
}

AppLauncher::Result openUri(const QString &uri, const QString &what)
{
    GError *error = nullptr;
    const auto context = newContext();
    const bool launched = g_app_info_launch_default_for_uri(uri.toUtf8().constData(), context.get(), &error);
    return finish(launched, error, what);
}

}

static void tillmora_launch_context_init(TillmoraLaunchContext *) {}

static void tillmora_launch_context_class_init(TillmoraLaunchContextClass *klass)
{
    GAppLaunchContextClass *context = G_APP_LAUNCH_CONTEXT_CLASS(klass);
    context->get_startup_notify_id = startupNotifyId;
    context->launch_failed = launchFailed;
}

namespace {
GObjectPtr<GDesktopAppInfo> desktopEntry(const QString &path)
{
    if (!path.endsWith(QLatin1String(".desktop")))
        return {};
    return GObjectPtr<GDesktopAppInfo>(g_desktop_app_info_new_from_filename(QFile::encodeName(path).constData()));
}
}

QList<AppLauncher::Action> GioAppLauncher::actions(const AppItem &app) const
{
    QList<Action> out;
    const auto info = desktopEntry(app.path);
    if (!info)
        return out;
    if (const gchar *const *ids = g_desktop_app_info_list_actions(info.get())) {
        for (; *ids; ++ids) {
            gchar *name = g_desktop_app_info_get_action_name(info.get(), *ids);
            out.append({QString::fromUtf8(*ids), QString::fromUtf8(name)});
            g_free(name);
        }
    }
    return out;
}

QStringList GioAppLauncher::categories(const AppItem &app) const
{
    const auto info = desktopEntry(app.path);
    const char *list = info ? g_desktop_app_info_get_categories(info.get()) : nullptr;
    return list ? QString::fromUtf8(list).split(u';', Qt::SkipEmptyParts) : QStringList();
}

AppLauncher::Result GioAppLauncher::openAction(const AppItem &app, const QString &actionId)
{
    const auto info = desktopEntry(app.path);
    const QByteArray id = actionId.toUtf8();
    bool listed = false;
    if (info)
        if (const gchar *const *ids = g_desktop_app_info_list_actions(info.get()))
            for (; *ids && !listed; ++ids)
                listed = id == *ids;
    if (!listed) {
        const QString message = QStringLiteral("%1 offers no action %2").arg(app.path, actionId);
        qCWarning(lcServices, "Failed to open %s: %s", qUtf8Printable(app.path), qUtf8Printable(message));
        return Result::failure(message);
    }
    // GIO reports no error for actions; a failure shows only as no window.
    const auto context = newContext();
    g_desktop_app_info_launch_action(info.get(), id.constData(), context.get());
    qCDebug(lcServices, "Opened %s action %s", qUtf8Printable(app.path), id.constData());
    return Result::success();
}

AppLauncher::Result GioAppLauncher::openApp(const AppItem &app)
{
    if (!app.path.endsWith(QLatin1String(".desktop")))
        return openUri(QUrl::fromLocalFile(app.path).toString(QUrl::FullyEncoded), app.path);

    GObjectPtr<GDesktopAppInfo> info = desktopEntry(app.path);
    if (!info) {
        const QString message = QStringLiteral("%1 is not a launchable desktop entry").arg(app.path);
        qCWarning(lcServices, "Failed to open %s: %s", qUtf8Printable(app.path), qUtf8Printable(message));
        return Result::failure(message);
    }
    GError *error = nullptr;
    const auto context = newContext();
    const bool launched = g_app_info_launch(G_APP_INFO(info.get()), nullptr, context.get(), &error);
    return finish(launched, error, app.path);
}

AppLauncher::Result GioAppLauncher::openLocation(const QUrl &url)
{
    // A bare absolute path is a folder or file on this machine.
    const QUrl target = url.scheme().isEmpty() && url.path().startsWith(u'/') ? QUrl::fromLocalFile(url.path()) : url;
    if (!target.isValid() || target.scheme().isEmpty()) {
        const QString message = QStringLiteral("not an absolute URL");
        qCWarning(lcServices, "Failed to open %s: %s", qUtf8Printable(url.toString()), qUtf8Printable(message));
        return Result::failure(message);
    }
    return openUri(target.toString(QUrl::FullyEncoded), target.toString());
}
