#include "storage/WallpaperRepository.h"

#include "foundation/LogTexts.h"
#include "foundation/Logging.h"
#include "foundation/Uuids.h"
#include "storage/FileSystemStore.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>

namespace {
QString key(const char *name) { return QLatin1String(name); }
}

WallpaperRepositoryImpl::WallpaperRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> profileStore,
                                                 std::shared_ptr<UserDefaultsStoreType> mainStore,
                                                 std::shared_ptr<FileSystemStore> files)
    : m_profile(std::move(profileStore)), m_main(std::move(mainStore)), m_files(std::move(files))
{
}

WallpaperChoice WallpaperRepositoryImpl::choice() const
{
    WallpaperChoice choice;
    choice.imagePath = m_profile->string(key(SettingsKeys::kCustomBackgroundImagePath)).value_or(QString());
    const QString style = m_main->string(key(SettingsKeys::kBackgroundStyle)).value_or(QString());
    choice.style = style == QLatin1String(kStyleColor) ? WallpaperChoice::Style::Color : WallpaperChoice::Style::Desktop;
    const QColor color = QColor::fromString(m_main->string(key(SettingsKeys::kBackgroundColor)).value_or(QString()));
    choice.color = color.isValid() ? color : QColor::fromString(QLatin1String(kDefaultColor));
    return choice;
}

bool WallpaperRepositoryImpl::chooseImage(const QString &file, QString *error)
{
    const auto fail = [error](const QString &reason) {
        if (error)
            *error = reason;
        return false;
    };
    const QFileInfo info(file);
    QImageReader reader(file);
    // Decoding a thumbnail proves the whole header and the first data are
    // readable without paying for a full 4K decode.
    const QSize size = reader.size();
    if (!info.isFile() || !size.isValid() || size.isEmpty())
        return fail(QLatin1String(kNotAnImage));
    reader.setScaledSize(size.scaled(64, 64, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    if (reader.read().isNull())
        return fail(QLatin1String(kNotAnImage));

    QString extension = info.suffix().toLower();
    if (extension.isEmpty())
        extension = QString::fromLatin1(reader.format() == "jpeg" ? QByteArray("jpg") : reader.format());
    const QString folder = m_files->pathFor(QLatin1String(kWallpapersFolder));
    QString reason;
    if (!m_files->ensureDirectory(folder, &reason))
        return fail(reason);
    const QString target = QDir(folder).filePath(Uuids::newText() + u'.' + extension);
    if (!m_files->copyItem(file, target, &reason))
        return fail(reason);
    m_profile->set(target, key(SettingsKeys::kCustomBackgroundImagePath));
    qCInfo(lcPersistence, LogTexts::kWallpaperChosen, qUtf8Printable(target));
    return true;
}

void WallpaperRepositoryImpl::useDesktop()
{
    setStyle(kStyleDesktop);
    clearImage();
}

void WallpaperRepositoryImpl::useColor(const QColor &color)
{
    if (!color.isValid())
        return;
    setStyle(kStyleColor);
    const QString text = color.name(QColor::HexRgb);
    if (m_main->string(key(SettingsKeys::kBackgroundColor)) != text)
        m_main->set(text, key(SettingsKeys::kBackgroundColor));
    clearImage();
}

void WallpaperRepositoryImpl::setStyle(const char *style)
{
    if (m_main->string(key(SettingsKeys::kBackgroundStyle)) != QLatin1String(style))
        m_main->set(QString::fromLatin1(style), key(SettingsKeys::kBackgroundStyle));
}

void WallpaperRepositoryImpl::clearImage()
{
    if (m_profile->persistedObject(key(SettingsKeys::kCustomBackgroundImagePath)).isValid())
        m_profile->removeObject(key(SettingsKeys::kCustomBackgroundImagePath));
}
