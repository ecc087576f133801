#include "ui/BackdropProvider.h"

void BackdropFrame::set(QImage image)
{
    QMutexLocker lock(&m_mutex);
    m_image = std::move(image);
}

QImage BackdropFrame::image() const
{
    QMutexLocker lock(&m_mutex);
    return m_image;
}

BackdropProvider::BackdropProvider(std::shared_ptr<const BackdropFrame> frame)
    : QQuickImageProvider(QQuickImageProvider::Image), m_frame(std::move(frame))
{
}

QImage BackdropProvider::requestImage(const QString &, QSize *size, const QSize &)
{
    const QImage image = m_frame->image();
    if (size)
        *size = image.size();
    return image;
}
