#include "ui/IconImageProvider.h"

#include <QCache>
#include <QIcon>
#include <QImageReader>
#include <QMutex>
#include <QRunnable>
#include <QUrl>

namespace {

// Decoded icons by (path, size); a few hundred icons at 128 px stay well
// under 100 MB.
QMutex g_cacheMutex;
QCache<QString, QImage> g_cache(64 * 1024 * 1024);

QImage placeholder(int size)
{
    QIcon generic = QIcon::fromTheme(QStringLiteral("application-x-executable"));
    if (!generic.isNull())
        return generic.pixmap(size, size).toImage();
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(120, 130, 150));
    return image;
}

QImage load(const QIcon &icon, int size)
{
    return icon.isNull() ? QImage() : icon.pixmap(size, size).toImage();
}

// A user's own image ("file:<path>#<modified>"), decoded straight at the size
// shown, its shape kept.
QImage loadFile(const QString &source, int size)
{
    QImageReader reader(source.mid(5).section(u'#', 0, -2));
    reader.setAutoTransform(true);
    const QSize full = reader.size();
    if (full.isValid())
        reader.setScaledSize(full.scaled(size, size, Qt::KeepAspectRatio));
    return reader.read();
}

class IconResponse : public QQuickImageResponse, public QRunnable {
public:
    IconResponse(QString appPath, int size, IconImageProvider::Resolver resolver)
        : m_appPath(std::move(appPath)), m_size(size), m_resolver(std::move(resolver))
    {
        setAutoDelete(false);
    }

    QQuickTextureFactory *textureFactory() const override
    {
        return QQuickTextureFactory::textureFactoryForImage(m_image);
    }

    void run() override
    {
        // Apps that share an icon (a theme name, or none) share one image.
        const bool ownImage = m_appPath.startsWith(QLatin1String("file:"));
        const QIcon icon = ownImage || !m_resolver ? QIcon() : m_resolver(m_appPath);
        const QString identity = ownImage          ? m_appPath
                                 : icon.isNull()   ? QStringLiteral("placeholder")
                                 : !icon.name().isEmpty() ? QStringLiteral("theme:") + icon.name()
                                                          : m_appPath;
        const QString cacheKey = identity + u'@' + QString::number(m_size);
        {
            QMutexLocker lock(&g_cacheMutex);
            if (const QImage *cached = g_cache.object(cacheKey))
                m_image = *cached;
        }
        if (m_image.isNull()) {
            m_image = ownImage ? loadFile(m_appPath, m_size) : load(icon, m_size);
            if (m_image.isNull())
                m_image = placeholder(m_size);
            QMutexLocker lock(&g_cacheMutex);
            g_cache.insert(cacheKey, new QImage(m_image), int(m_image.sizeInBytes()));
        }
        // Queued to the thread that asked: a cached icon is ready before the
        // engine has connected to finished(), and a signal sent that early is
        // lost, leaving the icon blank for good.
        QMetaObject::invokeMethod(this, &QQuickImageResponse::finished, Qt::QueuedConnection);
    }

private:
    QString m_appPath;
    int m_size;
    IconImageProvider::Resolver m_resolver;
    QImage m_image;
};

}

IconImageProvider::IconImageProvider(Resolver resolver)
    : m_resolver(std::move(resolver))
{
    m_pool.setMaxThreadCount(1);
}

IconImageProvider::~IconImageProvider()
{
    m_pool.waitForDone();
}

QQuickImageResponse *IconImageProvider::requestImageResponse(const QString &id, const QSize &requestedSize)
{
    const int size = std::max(16, std::max(requestedSize.width(), requestedSize.height()));
    auto *response = new IconResponse(QUrl::fromPercentEncoding(id.toUtf8()), size > 16 ? size : 128, m_resolver);
    m_pool.start(response);
    return response;
}
