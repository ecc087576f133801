#include "ui/BackdropProvider.h"

#include <QPixmap>
#include <QScreen>

BackdropProvider::BackdropProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage BackdropProvider::blurred(const QImage &image, int factor)
{
    if (image.isNull())
        return image;
    const QSize small(std::max(1, image.width() / factor), std::max(1, image.height() / factor));
    // Two smooth passes down avoid the blockiness of a single large step.
    const QImage half = image.scaled(image.size() / 4, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage tiny = half.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return tiny.scaled(small * 4, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

bool BackdropProvider::capture(QScreen *screen)
{
    if (!screen)
        return false;
    const QPixmap grab = screen->grabWindow(0);
    if (grab.isNull())
        return false;
    QImage image = blurred(grab.toImage().convertToFormat(QImage::Format_RGB32));
    QMutexLocker lock(&m_mutex);
    m_image = std::move(image);
    return true;
}

QImage BackdropProvider::requestImage(const QString &, QSize *size, const QSize &)
{
    QMutexLocker lock(&m_mutex);
    if (size)
        *size = m_image.size();
    return m_image;
}
