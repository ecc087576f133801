#pragma once

#include <QColor>
#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

class BackdropPresenter;
class WallpaperRepository;

// The wallpaper choice as a settings view shows and changes it: the
// profile's image, or else the desktop's wallpaper or a plain colour. Every
// change shows in the overlay at once.
class BackgroundPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Part of GridPresenter")
    Q_PROPERTY(QString style READ style NOTIFY changed)          // "desktop" or "color"
    Q_PROPERTY(QString imagePath READ imagePath NOTIFY changed)  // empty when none
    Q_PROPERTY(QColor color READ color NOTIFY changed)
    Q_PROPERTY(bool desktopWallpaperAvailable READ desktopWallpaperAvailable NOTIFY changed)
    // Why the chosen image is not shown (its file is missing); empty when it is.
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
public:
    explicit BackgroundPresenter(BackdropPresenter &backdrop, QObject *parent = nullptr);

    // Until attached the choices do nothing.
    void attach(WallpaperRepository *wallpapers);

    QString style() const;
    QString imagePath() const;
    QColor color() const;
    bool desktopWallpaperAvailable() const;
    QString notice() const;

    // An empty answer means done; otherwise the reason nothing changed.
    Q_INVOKABLE QString chooseImage(const QUrl &file);
    Q_INVOKABLE void useDesktop();
    Q_INVOKABLE void useColor(const QColor &color);

Q_SIGNALS:
    void changed();

private:
    void applied();

    BackdropPresenter &m_backdrop;
    WallpaperRepository *m_wallpapers = nullptr;
};
