#pragma once

#include "platform/DesktopWallpaperSource.h"
#include "storage/WallpaperResolver.h"

#include <QColor>
#include <QObject>
#include <QSize>
#include <QThreadPool>
#include <QTimer>
#include <QtQml/qqmlregistration.h>
#include <memory>

class AppearanceRepository;
class BackdropCache;
class BackdropFrame;
class UserDefaultsStoreType;
class WallpaperRepository;

// What the overlay draws behind the grid: the profile's image, the desktop's
// wallpaper or a plain colour, with a glass tint over it. The image is made
// (decoded at the screen's size, blurred, cached) on a worker thread when
// the choice, the wallpaper or the screen changes, never when the overlay
// opens: a show only draws what is ready.
class BackdropPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Part of GridPresenter")
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY changed)
    Q_PROPERTY(int revision READ revision NOTIFY changed)
    Q_PROPERTY(QColor color READ color NOTIFY changed)
    Q_PROPERTY(bool dark READ dark NOTIFY changed)
    Q_PROPERTY(double glassIntensity READ glassIntensity NOTIFY changed)
    // The colour of the names under the icons ("titleColorOverride").
    Q_PROPERTY(QColor titleColor READ titleColor NOTIFY changed)
    // The glass over the picture (its alpha is its strength; none when the
    // glass is off); "filledBackgroundEnabled": the plain colour only;
    // "cellBackgroundEnabled": a plate behind each app's icon.
    Q_PROPERTY(QColor glassTint READ glassTint NOTIFY changed)
    Q_PROPERTY(bool filled READ filled NOTIFY changed)
    Q_PROPERTY(bool cellPlates READ cellPlates NOTIFY changed)
public:
    // The settings that change what is drawn.
    static const QStringList kSettingsKeys;

    explicit BackdropPresenter(QObject *parent = nullptr);
    ~BackdropPresenter() override;

    struct Services {
        WallpaperRepository *wallpapers = nullptr;
        AppearanceRepository *appearance = nullptr;
        std::shared_ptr<UserDefaultsStoreType> profileStore; // "blurEnabled"
        std::shared_ptr<DesktopWallpaperSource> desktop;     // may be null
        QString cacheFolder;                                  // empty: memory only
    };
    // Until attached it shows the default colour. Prepares the first image.
    void attach(Services services);
    std::shared_ptr<const BackdropFrame> frame() const { return m_frame; }

    bool hasImage() const { return m_hasImage; }
    int revision() const { return m_revision; }
    QColor color() const { return m_resolved.color; }
    bool dark() const { return m_dark; }
    double glassIntensity() const { return m_glassIntensity; }
    QColor titleColor() const { return m_titleColor; }
    QColor glassTint() const { return m_look.tint; }
    bool filled() const { return m_look.filled; }
    bool cellPlates() const { return m_look.cellPlates; }
    QString notice() const { return m_resolved.notice; }
    bool desktopWallpaperAvailable() const;
    const WallpaperResolver::Result &resolved() const { return m_resolved; }

    // Reads the choice again and starts making a new image when it differs
    // from the one shown. Cheap when nothing changed.
    void refresh();
    void setScreenSize(const QSize &deviceSize);
    // Blocks until the image being made is shown (tests, the benchmark).
    bool waitUntilPrepared(int timeoutMs);

Q_SIGNALS:
    void changed();
    void noticeChanged(const QString &notice);
    void prepared();

private:
    struct GlassLook {
        QColor tint;
        bool filled = false;
        bool cellPlates = false;
        int sunHour = -1; // the hour the tint was made for; -1 without one
        bool operator==(const GlassLook &) const = default;
    };
    GlassLook glassLook(bool dark, double glass) const;
    void show(const QString &key, const QImage &image, quint64 generation);

    Services m_services;
    WallpaperResolver m_resolver;
    QColor m_titleColor = Qt::white;
    GlassLook m_look;
    QTimer m_sunTimer;
    WallpaperResolver::Result m_resolved;
    std::shared_ptr<BackdropCache> m_cache;
    std::shared_ptr<BackdropFrame> m_frame;
    QThreadPool m_pool; // one worker: a newer request waits behind the older
    QSize m_screenSize;
    QString m_shownKey;   // the image shown (or being made)
    quint64 m_generation = 0;
    bool m_pending = false;
    bool m_hasImage = false;
    int m_revision = 0;
    bool m_dark = true;
    double m_glassIntensity = 0.85;
};
