#include "ui/BackdropPresenter.h"

#include "foundation/Logging.h"
#include "storage/AppearanceRepository.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"
#include "storage/WallpaperRepository.h"
#include "ui/BackdropCache.h"
#include "ui/BackdropProvider.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTime>
#include <QTimer>
#include <cmath>

const QStringList BackdropPresenter::kSettingsKeys = {
    QLatin1String(SettingsKeys::kCustomBackgroundImagePath), QLatin1String(SettingsKeys::kBackgroundStyle),
    QLatin1String(SettingsKeys::kBackgroundColor),           QLatin1String(SettingsKeys::kBlurEnabled),
    QLatin1String(SettingsKeys::kGlassIntensity),            QLatin1String(SettingsKeys::kTheme),
    QLatin1String(SettingsKeys::kTitleColorOverride),       QLatin1String(SettingsKeys::kLiquidGlassEnabled),
    QLatin1String(SettingsKeys::kLiquidGlassMaterialStyle), QLatin1String(SettingsKeys::kLiquidGlassTintStandard),
    QLatin1String(SettingsKeys::kLiquidGlassTintHue),       QLatin1String(SettingsKeys::kLiquidGlassTintIntensity),
    QLatin1String(SettingsKeys::kFilledBackgroundEnabled),  QLatin1String(SettingsKeys::kCellBackgroundEnabled),
    QLatin1String(SettingsKeys::kSunBackgroundEnabled),     QLatin1String(SettingsKeys::kSunBackgroundAutoEnabled),
    QLatin1String(SettingsKeys::kSunBackgroundManualTime)};

BackdropPresenter::BackdropPresenter(QObject *parent)
    : QObject(parent), m_cache(std::make_shared<BackdropCache>(QString())), m_frame(std::make_shared<BackdropFrame>())
{
    m_resolved.color = QColor::fromString(QLatin1String(WallpaperRepositoryImpl::kDefaultColor));
    m_pool.setMaxThreadCount(1);
    m_sunTimer.setInterval(5 * 60 * 1000);
    connect(&m_sunTimer, &QTimer::timeout, this, &BackdropPresenter::refresh);
}

BackdropPresenter::~BackdropPresenter()
{
    if (m_services.desktop)
        m_services.desktop->setChangedHandler({});
    m_pool.clear();
    m_pool.waitForDone();
}

void BackdropPresenter::attach(Services services)
{
    m_services = std::move(services);
    m_cache = std::make_shared<BackdropCache>(m_services.cacheFolder);
    if (m_services.desktop)
        m_services.desktop->setChangedHandler([this] { refresh(); });
    refresh();
}

bool BackdropPresenter::desktopWallpaperAvailable() const
{
    return m_services.desktop && !m_services.desktop->current().wallpaperPath.isEmpty();
}

void BackdropPresenter::setScreenSize(const QSize &deviceSize)
{
    if (deviceSize == m_screenSize)
        return;
    m_screenSize = deviceSize;
    refresh();
}

BackdropPresenter::GlassLook BackdropPresenter::glassLook(bool dark, double glass) const
{
    GlassLook look;
    const AppearanceRepository *appearance = m_services.appearance;
    const double strength = 0.25 + 0.35 * glass;
    const QColor darkGlass = QColor::fromRgbF(0.06f, 0.08f, 0.14f);
    const QColor lightGlass = QColor::fromRgbF(0.93f, 0.95f, 0.98f);
    QColor tint = dark ? darkGlass : lightGlass;
    double alpha = dark ? strength : strength * 0.6;
    if (appearance && !appearance->liquidGlassEnabled()) {
        alpha = 0; // the picture as it is, no glass over it
    } else if (appearance && appearance->liquidGlassMaterialStyle() == QLatin1String("clear")) {
        alpha *= 0.45; // clear glass: the picture shows through more
    } else if (appearance && !appearance->liquidGlassTintStandard()) {
        // A tint of the user's hue instead of the look's grey-blue.
        tint = QColor::fromHslF(float(std::clamp(appearance->liquidGlassTintHue(), 0.0, 1.0)), 0.6f, dark ? 0.22f : 0.82f);
        alpha = std::clamp(appearance->liquidGlassTintIntensity(), 0.0, 0.8);
    }
    if (appearance && appearance->sunBackgroundEnabled() && alpha > 0) {
        // The glass takes the colour of the sky at that hour: deep blue at
        // night, warm at dawn and dusk, as it is at midday.
        const QTime now = QTime::currentTime();
        const double hour = appearance->sunBackgroundAutoEnabled() ? now.hour() + now.minute() / 60.0
                                                                  : appearance->sunBackgroundManualTime();
        const auto sky = [&tint](double h) -> std::pair<QColor, double> {
            if (h < 5 || h >= 21)
                return {QColor(0x14, 0x1e, 0x4a), 0.55};
            if (h < 8)
                return {QColor(0xf0, 0x8a, 0x5d), 0.4 * (1 - std::abs(h - 6.5) / 1.5) + 0.15};
            if (h < 17)
                return {tint, 0.0};
            return {QColor(0xd9, 0x6a, 0x4a), 0.4 * (1 - std::abs(h - 19) / 2) + 0.15};
        };
        const auto [color, weight] = sky(hour);
        tint = QColor::fromRgbF(float(tint.redF() * (1 - weight) + color.redF() * weight),
                                float(tint.greenF() * (1 - weight) + color.greenF() * weight),
                                float(tint.blueF() * (1 - weight) + color.blueF() * weight));
        look.sunHour = int(hour);
    }
    tint.setAlphaF(float(alpha));
    look.tint = tint;
    look.filled = appearance && appearance->filledBackgroundEnabled();
    look.cellPlates = appearance && appearance->cellBackgroundEnabled();
    return look;
}

void BackdropPresenter::refresh()
{
    if (!m_services.wallpapers)
        return;
    // Following the clock, the tint is looked at again every few minutes.
    const bool followClock = m_services.appearance && m_services.appearance->sunBackgroundEnabled()
        && m_services.appearance->sunBackgroundAutoEnabled();
    if (followClock && !m_sunTimer.isActive())
        m_sunTimer.start();
    else if (!followClock)
        m_sunTimer.stop();
    const DesktopWallpaperSource::State desktop =
        m_services.desktop ? m_services.desktop->current() : DesktopWallpaperSource::State();
    const WallpaperResolver::Result resolved = m_resolver.resolve(m_services.wallpapers->choice(), desktop.wallpaperPath);
    // The launcher's own look is dark glass; light only when asked for.
    bool dark = desktop.scheme != DesktopWallpaperSource::State::Scheme::Light;
    double glass = m_glassIntensity;
    QString title = QStringLiteral("auto");
    if (m_services.appearance) {
        title = m_services.appearance->titleColorOverride();
        const QString theme = m_services.appearance->theme();
        if (theme == QLatin1String("dark") || theme == QLatin1String("light"))
            dark = theme == QLatin1String("dark");
        glass = std::clamp(m_services.appearance->glassIntensity(), 0.0, 1.0);
    }
    const QVariant blurSetting = m_services.profileStore
        ? m_services.profileStore->object(QLatin1String(SettingsKeys::kBlurEnabled))
        : QVariant();
    const BackdropSource source{resolved.imagePath, m_screenSize, !blurSetting.isValid() || blurSetting.toBool()};

    // Names under icons: light on dark glass, dark on light glass, unless set.
    const bool lightTitles = title == QLatin1String("light") || (title != QLatin1String("dark") && dark);
    const QColor titleColor = lightTitles ? QColor(Qt::white) : QColor(0x1d, 0x1d, 0x1f);
    const GlassLook look = glassLook(dark, glass);
    const bool lookChanged = resolved.color != m_resolved.color || dark != m_dark || glass != m_glassIntensity
        || titleColor != m_titleColor || look != m_look;
    m_titleColor = titleColor;
    m_look = look;
    const bool noticeChanged = resolved.notice != m_resolved.notice;
    m_resolved = resolved;
    m_dark = dark;
    m_glassIntensity = glass;
    if (noticeChanged)
        Q_EMIT this->noticeChanged(m_resolved.notice);

    // Nothing is made before the screen is known: it sets the size.
    const QString key = m_screenSize.isEmpty() ? QString() : BackdropCache::keyFor(source);
    if (key == m_shownKey) {
        if (lookChanged)
            Q_EMIT changed();
        return;
    }
    m_shownKey = key;
    const quint64 generation = ++m_generation;
    if (key.isEmpty()) {
        show(key, QImage(), generation);
        return;
    }
    if (lookChanged)
        Q_EMIT changed();
    // What is shown stays until the new image is ready.
    m_pending = true;
    m_pool.start([this, cache = m_cache, source, key, generation] {
        QElapsedTimer timer;
        timer.start();
        const QImage image = cache->image(source);
        const double ms = timer.nsecsElapsed() / 1e6;
        QMetaObject::invokeMethod(
            this,
            [this, key, image, generation, ms] {
                if (!image.isNull())
                    qCInfo(lcApp, "Backdrop prepared in %.1f ms", ms);
                show(key, image, generation);
            },
            Qt::QueuedConnection);
    });
}

void BackdropPresenter::show(const QString &key, const QImage &image, quint64 generation)
{
    if (generation != m_generation)
        return; // a newer choice is on its way
    m_pending = false;
    if (image.isNull() && !key.isEmpty())
        m_shownKey.clear(); // unreadable: tried again on the next refresh
    m_frame->set(image);
    m_hasImage = !image.isNull();
    ++m_revision;
    Q_EMIT changed();
    Q_EMIT prepared();
}

bool BackdropPresenter::waitUntilPrepared(int timeoutMs)
{
    if (!m_pending)
        return true;
    QEventLoop loop;
    connect(this, &BackdropPresenter::prepared, &loop, &QEventLoop::quit);
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    loop.exec();
    return !m_pending;
}
