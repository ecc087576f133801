#pragma once

#include "platform/DesktopWallpaperSource.h"

#include <QObject>
#include <QString>
#include <optional>

class QDBusVariant;
class QFileSystemWatcher;
typedef struct _GSettings GSettings;

// GNOME: GSettings org.gnome.desktop.background ("picture-uri", or
// "picture-uri-dark" when the desktop prefers dark). KDE Plasma: the image
// of the wallpaper plugin in plasma-org.kde.plasma.desktop-appletsrc.
// Dark or light: the settings portal's "color-scheme", else GNOME's
// org.gnome.desktop.interface "color-scheme". A schema that is not
// installed is simply not read.
class LinuxDesktopWallpaperSource final : public QObject, public DesktopWallpaperSource {
    Q_OBJECT
public:
    explicit LinuxDesktopWallpaperSource(QObject *parent = nullptr);
    ~LinuxDesktopWallpaperSource() override;

    State current() const override;
    void setChangedHandler(std::function<void()> handler) override;

    // The "Image=" of the image wallpaper plugin in a Plasma applets file.
    static QString plasmaWallpaper(const QString &appletsFile);
    static QString localPath(const QString &uriOrPath);

private Q_SLOTS:
    void notifyLater();
    void portalSettingChanged(const QString &nameSpace, const QString &key, const QDBusVariant &value);

private:
    void notify();
    void readPortal();
    QString plasmaFile() const;

    GSettings *m_background = nullptr;
    GSettings *m_interface = nullptr;
    bool m_usePlasma = false;
    QFileSystemWatcher *m_plasmaWatcher = nullptr;
    std::optional<State::Scheme> m_portalScheme;
    State m_last;
    std::function<void()> m_changed;
};
