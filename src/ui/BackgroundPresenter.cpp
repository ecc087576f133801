#include "ui/BackgroundPresenter.h"

#include "storage/WallpaperRepository.h"
#include "ui/BackdropPresenter.h"

BackgroundPresenter::BackgroundPresenter(BackdropPresenter &backdrop, QObject *parent)
    : QObject(parent), m_backdrop(backdrop)
{
    // A Space switch, a change from the command line or the desktop all
    // reach the backdrop first; what it shows is what this reports.
    connect(&m_backdrop, &BackdropPresenter::changed, this, &BackgroundPresenter::changed);
    connect(&m_backdrop, &BackdropPresenter::noticeChanged, this, &BackgroundPresenter::changed);
}

void BackgroundPresenter::attach(WallpaperRepository *wallpapers)
{
    m_wallpapers = wallpapers;
    Q_EMIT changed();
}

QString BackgroundPresenter::style() const
{
    const bool color = m_wallpapers && m_wallpapers->choice().style == WallpaperChoice::Style::Color;
    return QLatin1String(color ? WallpaperRepositoryImpl::kStyleColor : WallpaperRepositoryImpl::kStyleDesktop);
}

QString BackgroundPresenter::imagePath() const
{
    return m_wallpapers ? m_wallpapers->choice().imagePath : QString();
}

QColor BackgroundPresenter::color() const
{
    return m_wallpapers ? m_wallpapers->choice().color : m_backdrop.color();
}

bool BackgroundPresenter::desktopWallpaperAvailable() const
{
    return m_backdrop.desktopWallpaperAvailable();
}

QString BackgroundPresenter::notice() const
{
    return m_backdrop.notice();
}

QString BackgroundPresenter::chooseImage(const QUrl &file)
{
    if (!m_wallpapers)
        return tr("The wallpaper cannot be changed yet.");
    QString error;
    if (!m_wallpapers->chooseImage(file.isLocalFile() ? file.toLocalFile() : file.toString(), &error))
        return error;
    applied();
    return {};
}

void BackgroundPresenter::useDesktop()
{
    if (!m_wallpapers)
        return;
    m_wallpapers->useDesktop();
    applied();
}

void BackgroundPresenter::useColor(const QColor &color)
{
    if (!m_wallpapers || !color.isValid())
        return;
    m_wallpapers->useColor(color);
    applied();
}

void BackgroundPresenter::applied()
{
    m_backdrop.refresh();
    Q_EMIT changed();
}
