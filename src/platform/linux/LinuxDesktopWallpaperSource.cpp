#include "platform/linux/LinuxDesktopWallpaperSource.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QStandardPaths>
#include <QUrl>

#include <gio/gio.h>

namespace {
constexpr const char *kPortalService = "org.freedesktop.portal.Desktop";
constexpr const char *kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char *kPortalSettings = "org.freedesktop.portal.Settings";
constexpr const char *kAppearance = "org.freedesktop.appearance";
constexpr const char *kColorScheme = "color-scheme";

// A schema that is not installed is not an error: that desktop is not here.
GSettings *settingsIfInstalled(const char *schemaId, const char *requiredKey)
{
    GSettingsSchemaSource *source = g_settings_schema_source_get_default();
    if (!source)
        return nullptr;
    GSettingsSchema *schema = g_settings_schema_source_lookup(source, schemaId, TRUE);
    if (!schema)
        return nullptr;
    GSettings *settings = nullptr;
    if (g_settings_schema_has_key(schema, requiredKey))
        settings = g_settings_new_full(schema, nullptr, nullptr);
    g_settings_schema_unref(schema);
    return settings;
}

bool hasKey(GSettings *settings, const char *key)
{
    GSettingsSchema *schema = nullptr;
    g_object_get(settings, "settings-schema", &schema, nullptr);
    const bool has = schema && g_settings_schema_has_key(schema, key);
    if (schema)
        g_settings_schema_unref(schema);
    return has;
}

QString stringOf(GSettings *settings, const char *key)
{
    gchar *value = g_settings_get_string(settings, key);
    QString text = QString::fromUtf8(value);
    g_free(value);
    return text;
}

// The portal's Read wraps the value in one more variant than ReadOne.
QVariant unwrap(QVariant value)
{
    for (int depth = 0; depth < 3; ++depth) {
        if (value.canConvert<QDBusVariant>())
            value = value.value<QDBusVariant>().variant();
        else if (value.canConvert<QDBusArgument>()) {
            QDBusVariant inner;
            value.value<QDBusArgument>() >> inner;
            value = inner.variant();
        } else
            break;
    }
    return value;
}

DesktopWallpaperSource::State::Scheme portalScheme(uint value)
{
    using Scheme = DesktopWallpaperSource::State::Scheme;
    return value == 1 ? Scheme::Dark : value == 2 ? Scheme::Light : Scheme::NoPreference;
}

void onGSettingsChanged(GSettings *, gchar *, gpointer self)
{
    // GLib calls this from the main loop; the notification is still queued
    // so the handler never runs inside a GLib emission.
    QMetaObject::invokeMethod(static_cast<QObject *>(self), "notifyLater", Qt::QueuedConnection);
}
}

LinuxDesktopWallpaperSource::LinuxDesktopWallpaperSource(QObject *parent) : QObject(parent)
{
    const bool plasmaSession = qEnvironmentVariable("XDG_CURRENT_DESKTOP").contains(QLatin1String("KDE"), Qt::CaseInsensitive);
    if (!plasmaSession)
        m_background = settingsIfInstalled("org.gnome.desktop.background", "picture-uri");
    m_usePlasma = !m_background && QFileInfo::exists(plasmaFile());
    m_interface = settingsIfInstalled("org.gnome.desktop.interface", kColorScheme);
    for (GSettings *settings : {m_background, m_interface})
        if (settings)
            g_signal_connect(settings, "changed", G_CALLBACK(onGSettingsChanged), this);
    if (m_usePlasma) {
        // Plasma saves by writing a new file over the old: watch the folder
        // too, and take the file up again after each save.
        m_plasmaWatcher = new QFileSystemWatcher(this);
        m_plasmaWatcher->addPath(QFileInfo(plasmaFile()).absolutePath());
        m_plasmaWatcher->addPath(plasmaFile());
        const auto reread = [this] {
            if (!m_plasmaWatcher->files().contains(plasmaFile()) && QFileInfo::exists(plasmaFile()))
                m_plasmaWatcher->addPath(plasmaFile());
            notify();
        };
        connect(m_plasmaWatcher, &QFileSystemWatcher::fileChanged, this, reread);
        connect(m_plasmaWatcher, &QFileSystemWatcher::directoryChanged, this, reread);
    }
    readPortal();
    m_last = current();
}

LinuxDesktopWallpaperSource::~LinuxDesktopWallpaperSource()
{
    for (GSettings *settings : {m_background, m_interface}) {
        if (settings) {
            g_signal_handlers_disconnect_by_data(settings, this);
            g_object_unref(settings);
        }
    }
}

QString LinuxDesktopWallpaperSource::plasmaFile() const
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/plasma-org.kde.plasma.desktop-appletsrc");
}

void LinuxDesktopWallpaperSource::readPortal()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()
        || !bus.interface()->isServiceRegistered(QLatin1String(kPortalService)).value())
        return;
    bus.connect(QLatin1String(kPortalService), QLatin1String(kPortalPath), QLatin1String(kPortalSettings),
                QStringLiteral("SettingChanged"), this, SLOT(portalSettingChanged(QString, QString, QDBusVariant)));
    // Asked without waiting: start-up never stalls on a slow portal. ReadOne
    // first; portals older than version 2 only know Read.
    const auto ask = [this, bus](const char *method, auto &&self) -> void {
        QDBusMessage call = QDBusMessage::createMethodCall(QLatin1String(kPortalService), QLatin1String(kPortalPath),
                                                           QLatin1String(kPortalSettings), QLatin1String(method));
        call << QLatin1String(kAppearance) << QLatin1String(kColorScheme);
        auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
        const bool first = qstrcmp(method, "ReadOne") == 0;
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, first, self] {
            watcher->deleteLater();
            const QDBusMessage reply = watcher->reply();
            if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
                bool ok = false;
                const uint scheme = unwrap(reply.arguments().constFirst()).toUInt(&ok);
                if (ok) {
                    m_portalScheme = portalScheme(scheme);
                    notify();
                }
            } else if (first) {
                self("Read", self);
            }
        });
    };
    ask("ReadOne", ask);
}

void LinuxDesktopWallpaperSource::portalSettingChanged(const QString &nameSpace, const QString &key,
                                                       const QDBusVariant &value)
{
    if (nameSpace != QLatin1String(kAppearance) || key != QLatin1String(kColorScheme))
        return;
    bool ok = false;
    const uint scheme = unwrap(value.variant()).toUInt(&ok);
    if (!ok)
        return;
    m_portalScheme = portalScheme(scheme);
    notify();
}

DesktopWallpaperSource::State LinuxDesktopWallpaperSource::current() const
{
    State state;
    if (m_portalScheme) {
        state.scheme = *m_portalScheme;
    } else if (m_interface) {
        const QString scheme = stringOf(m_interface, kColorScheme);
        if (scheme == QLatin1String("prefer-dark"))
            state.scheme = State::Scheme::Dark;
        else if (scheme == QLatin1String("prefer-light"))
            state.scheme = State::Scheme::Light;
    }
    if (m_background) {
        // The dark picture's default names a file many systems lack; the
        // desktop then shows the light one, and so do we.
        if (state.scheme == State::Scheme::Dark && hasKey(m_background, "picture-uri-dark"))
            state.wallpaperPath = localPath(stringOf(m_background, "picture-uri-dark"));
        if (state.wallpaperPath.isEmpty() || !QFileInfo(state.wallpaperPath).isFile())
            state.wallpaperPath = localPath(stringOf(m_background, "picture-uri"));
    } else if (m_usePlasma) {
        state.wallpaperPath = plasmaWallpaper(plasmaFile());
    }
    return state;
}

void LinuxDesktopWallpaperSource::setChangedHandler(std::function<void()> handler)
{
    m_changed = std::move(handler);
}

void LinuxDesktopWallpaperSource::notifyLater()
{
    notify();
}

void LinuxDesktopWallpaperSource::notify()
{
    // Folder and key notifications come for much that is not ours.
    const State now = current();
    if (now == m_last)
        return;
    m_last = now;
    if (m_changed)
        m_changed();
}

QString LinuxDesktopWallpaperSource::localPath(const QString &uriOrPath)
{
    const QString text = uriOrPath.trimmed();
    if (text.startsWith(u'/'))
        return text;
    const QUrl url(text);
    return url.isLocalFile() ? url.toLocalFile() : QString();
}

QString LinuxDesktopWallpaperSource::plasmaWallpaper(const QString &appletsFile)
{
    QFile file(appletsFile);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    // [Containments][N][Wallpaper][org.kde.image][General] holds Image=; the
    // first desktop containment that has one is the primary screen's.
    bool inImageGroup = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(u'[')) {
            inImageGroup = line.startsWith(QLatin1String("[Containments]"))
                && line.endsWith(QLatin1String("[Wallpaper][org.kde.image][General]"));
            continue;
        }
        if (inImageGroup && line.startsWith(QLatin1String("Image="))) {
            const QString path = localPath(line.mid(6));
            if (!path.isEmpty())
                return path;
        }
    }
    return {};
}
