#include "ui/BackdropCache.h"

#include "foundation/LogTexts.h"
#include "foundation/Logging.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QSaveFile>
#include <QStandardPaths>

BackdropCache::BackdropCache(QString folder) : m_folder(std::move(folder)) {}

QString BackdropCache::defaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QStringLiteral("/tillmora/backdrops");
}

QString BackdropCache::keyFor(const BackdropSource &source)
{
    const QFileInfo info(source.imagePath);
    if (source.imagePath.isEmpty() || !info.isFile())
        return {};
    return QStringLiteral("%1|%2|%3|%4x%5|%6")
        .arg(info.absoluteFilePath())
        .arg(info.lastModified().toMSecsSinceEpoch())
        .arg(info.size())
        .arg(source.screenSize.width())
        .arg(source.screenSize.height())
        .arg(source.blur ? QStringLiteral("blur") : QStringLiteral("sharp"));
}

QString BackdropCache::fileFor(const QString &key) const
{
    if (m_folder.isEmpty() || key.isEmpty())
        return {};
    const QByteArray hash = QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QDir(m_folder).filePath(QString::fromLatin1(hash) + QStringLiteral(".jpg"));
}

QImage BackdropCache::image(const BackdropSource &source)
{
    const QString key = keyFor(source);
    if (key.isEmpty())
        return {};
    {
        QMutexLocker lock(&m_mutex);
        const auto found = m_memory.constFind(key);
        if (found != m_memory.constEnd()) {
            m_recent.removeOne(key);
            m_recent.append(key);
            return *found;
        }
    }
    const QString file = fileFor(key);
    QImage image;
    if (!file.isEmpty() && QFileInfo::exists(file))
        image = QImage(file);
    if (image.isNull()) {
        image = render(source);
        if (image.isNull())
            return {};
        if (!file.isEmpty() && QDir().mkpath(m_folder)) {
            // A cache: a failed write only means making it again next run.
            QSaveFile out(file);
            if (out.open(QIODevice::WriteOnly) && image.save(&out, "JPG", 92))
                out.commit();
        }
    }
    QMutexLocker lock(&m_mutex);
    m_memory.insert(key, image);
    m_recent.removeOne(key);
    m_recent.append(key);
    while (m_recent.size() > kKeptInMemory)
        m_memory.remove(m_recent.takeFirst());
    return image;
}

QImage BackdropCache::render(const BackdropSource &source)
{
    QImageReader reader(source.imagePath);
    reader.setAutoTransform(true);
    QSize full = reader.size();
    if (!full.isValid() || full.isEmpty()) {
        qCWarning(lcServices, LogTexts::kBackdropUnreadable, qUtf8Printable(source.imagePath));
        return {};
    }
    // The reader scales before it turns the picture upright.
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    if (turned)
        full.transpose();
    QSize screen = source.screenSize.isValid() && !source.screenSize.isEmpty() ? source.screenSize : full;
    // A blurred backdrop loses its detail anyway: decode it small.
    if (source.blur)
        screen = (screen / 4).expandedTo(QSize(1, 1));
    QSize target = full.scaled(screen, Qt::KeepAspectRatioByExpanding);
    if (target.width() > full.width() || target.height() > full.height())
        target = full; // never decoded larger than it is
    if (turned)
        target.transpose();
    if (target != reader.size())
        reader.setScaledSize(target);
    QImage image = reader.read();
    if (image.isNull()) {
        qCWarning(lcServices, LogTexts::kBackdropUnreadable,
                  qUtf8Printable(source.imagePath + QStringLiteral(": ") + reader.errorString()));
        return {};
    }
    image = image.convertToFormat(QImage::Format_RGB32);
    // Fill the screen's shape: the middle of the picture, like a desktop's "zoom".
    const QSize cut = screen.scaled(image.size(), Qt::KeepAspectRatio);
    image = image.copy(QRect(QPoint((image.width() - cut.width()) / 2, (image.height() - cut.height()) / 2), cut));
    return source.blur ? blurred(image, 6) : image;
}

QImage BackdropCache::blurred(const QImage &image, int factor)
{
    if (image.isNull())
        return image;
    const QSize small(std::max(1, image.width() / factor), std::max(1, image.height() / factor));
    // Two smooth passes down avoid the blockiness of a single large step.
    const QImage half = image.scaled((image.size() / 4).expandedTo(QSize(1, 1)), Qt::IgnoreAspectRatio,
                                     Qt::SmoothTransformation);
    const QImage tiny = half.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return tiny.scaled(small * 4, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}
