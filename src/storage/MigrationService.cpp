#include "storage/MigrationService.h"

#include "foundation/Logging.h"
#include "foundation/LogTexts.h"
#include "foundation/GridRecords.h"
#include "foundation/RecordList.h"
#include "foundation/Uuids.h"
#include "storage/FileSystemStore.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"

#include <QBuffer>
#include <QDir>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace {
using SettingsKeys::kSpacesActiveSpaceId;
using SettingsKeys::kSpacesItems;

QString key(const char *name) { return QLatin1String(name); }
}

MigrationService::MigrationService(std::shared_ptr<UserDefaultsStoreType> defaults, std::shared_ptr<FileSystemStore> fs)
    : m_defaults(std::move(defaults))
    , m_fs(std::move(fs))
    , m_logger(lcPersistence())
{
}

void MigrationService::runAll()
{
    migrateTheme();
    migrateTitleColor();
    migrateGlassMaterial();
    migrateGlassEnabled();
    migratePinchGesture();
    migrateShowOverFullscreen();
    migrateHideButton();
    migrateSunBackground();
    migrateWeatherBackground();
    migrateBackgroundImageToFile();
    migrateFoldersToSlots();
    clearDanglingActiveSpace();
}

bool MigrationService::isAbsent(const char *name) const
{
    return !m_defaults->persistedObject(key(name)).isValid();
}

bool MigrationService::fillAbsent(const char *name, const QVariant &value)
{
    if (!isAbsent(name))
        return false;
    m_defaults->set(value, key(name));
    return true;
}

void MigrationService::once(const char *flag, const std::function<void()> &step)
{
    if (m_defaults->boolValue(key(flag)))
        return;
    step();
    m_defaults->set(true, key(flag));
}

void MigrationService::migrateTheme()
{
    if (fillAbsent(SettingsKeys::kTheme, QStringLiteral("auto")))
        m_defaults->synchronize(); // theme writes are flushed at once
}

void MigrationService::migrateTitleColor()
{
    fillAbsent(SettingsKeys::kTitleColorOverride, QStringLiteral("auto"));
}

void MigrationService::migrateGlassMaterial()
{
    if (fillAbsent(SettingsKeys::kLiquidGlassMaterialStyle, QStringLiteral("tinted")))
        qCInfo(m_logger, LogTexts::kMigratedGlassStyle);
}

void MigrationService::migrateGlassEnabled()
{
    once(kLiquidGlassDoneFlag, [this] {
        // A user who switched the glass off on purpose keeps it off.
        if (!m_defaults->boolValue(QLatin1String(SettingsKeys::kLiquidGlassExplicitlyDisabledByUser)))
            m_defaults->set(true, QLatin1String(SettingsKeys::kLiquidGlassEnabled));
    });
}

// Steps 5 to 7 override what the user may have set before their flag existed,
// once, and never again.
void MigrationService::migratePinchGesture()
{
    once(kGesturePinchDoneFlag, [this] {
        m_defaults->set(true, QLatin1String(SettingsKeys::kGesturePinchEnabled));
        fillAbsent(SettingsKeys::kGesturePinchFingerCount, 4); // a count the user chose is kept
        qCDebug(m_logger, LogTexts::kMigratedPinch);
    });
}

void MigrationService::migrateShowOverFullscreen()
{
    once(kShowOverFullscreenDoneFlag, [this] { m_defaults->set(true, QLatin1String(SettingsKeys::kShowOverFullscreenEnabled)); });
}

void MigrationService::migrateHideButton()
{
    once(kHideButtonDoneFlag, [this] { m_defaults->set(false, QLatin1String(SettingsKeys::kShowHideButtonEnabled)); });
}

void MigrationService::migrateSunBackground()
{
    bool wrote = fillAbsent(SettingsKeys::kSunBackgroundEnabled, false);
    wrote |= fillAbsent(SettingsKeys::kSunBackgroundAutoEnabled, true);
    wrote |= fillAbsent(SettingsKeys::kSunBackgroundManualTime, 12.0);
    if (wrote)
        qCInfo(m_logger, LogTexts::kMigratedSunBackground);
}

void MigrationService::migrateWeatherBackground()
{
    fillAbsent(SettingsKeys::kWeatherBackgroundEnabled, false);
    fillAbsent(SettingsKeys::kWeatherBackgroundAutoEnabled, true);
    fillAbsent(SettingsKeys::kWeatherBackgroundCity, QStringLiteral("London"));
    fillAbsent(SettingsKeys::kWeatherBackgroundManualType, QStringLiteral("clear"));
    fillAbsent(SettingsKeys::kWeatherBackgroundManualTime, 12.0);
}

void MigrationService::migrateBackgroundImageToFile()
{
    const QString legacyKey = key(SettingsKeys::kLegacyCustomBackgroundImageData);
    const auto bytes = m_defaults->data(legacyKey);
    if (!bytes)
        return;
    const auto fail = [this](const QString &error) {
        // The bytes stay stored: nothing of the user's is lost, and a later
        // launch tries again.
        qCWarning(m_logger, LogTexts::kMigrationFailed, qUtf8Printable(error));
    };

    QBuffer buffer;
    buffer.setData(*bytes);
    buffer.open(QIODevice::ReadOnly);
    QByteArray format = QImageReader::imageFormat(&buffer);
    if (format.isEmpty())
        return fail(QStringLiteral("the stored background image is not in a known image format"));
    if (format == "jpeg")
        format = "jpg";

    const QString folder = m_fs->pathFor(QLatin1String(kWallpapersFolder));
    QString error;
    if (!m_fs->ensureDirectory(folder, &error))
        return fail(error);
    const QString path = QDir(folder).filePath(Uuids::newText() + u'.' + QString::fromLatin1(format));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(*bytes) != bytes->size() || !file.commit())
        return fail(QStringLiteral("%1: %2").arg(path, file.errorString()));

    m_defaults->set(path, key(SettingsKeys::kCustomBackgroundImagePath));
    m_defaults->removeObject(legacyKey); // only now that the file is safely written
    qCInfo(m_logger, LogTexts::kMigratedBackgroundImage, qUtf8Printable(path));
}

void MigrationService::migrateFoldersToSlots()
{
    const QString foldersKey = key(SettingsKeys::kFolders);
    const auto bytes = m_defaults->data(foldersKey);
    if (!bytes)
        return;
    const QJsonDocument document = QJsonDocument::fromJson(*bytes);
    bool allHaveSlots = document.isArray();
    for (const QJsonValue &folder : document.array())
        allHaveSlots = allHaveSlots && folder.toObject().value(QLatin1String("slots")).isArray();
    if (allHaveSlots)
        return;

    // Decoding gives a folder without slots a copy of its appPaths.
    QString error;
    const auto folders = RecordList::decode<FolderItem>(*bytes, &error);
    if (!folders) {
        qCWarning(m_logger, LogTexts::kMigrationFoldersDecodeFailed, qUtf8Printable(error));
        return; // the stored value stays as it is
    }
    qCInfo(m_logger, LogTexts::kMigratingFolders);
    m_defaults->set(RecordList::encode(*folders), foldersKey);
    qCInfo(m_logger, LogTexts::kMigratedFolders, long(folders->size()));
}

void MigrationService::clearDanglingActiveSpace()
{
    if (!isAbsent(kSpacesItems) || isAbsent(kSpacesActiveSpaceId))
        return;
    m_defaults->removeObject(key(kSpacesActiveSpaceId));
    qCInfo(m_logger, LogTexts::kMigrationClearedActiveSpace);
}
