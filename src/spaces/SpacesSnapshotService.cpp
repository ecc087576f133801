#include "spaces/SpacesSnapshotService.h"

#include "foundation/LogTexts.h"
#include "foundation/Logging.h"
#include "storage/FileSystemStore.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

namespace {

using F = SpacesSnapshotService::Field;

QJsonValue toJson(const QVariant &value)
{
    if (value.typeId() == QMetaType::QByteArray)
        return QString::fromLatin1(value.toByteArray().toBase64());
    if (value.typeId() == QMetaType::QDateTime)
        return value.toDateTime().toUTC().toString(Qt::ISODateWithMs);
    return QJsonValue::fromVariant(value);
}

QVariant fromJson(const QJsonValue &value, F::Kind kind)
{
    if (kind == F::Data && value.isString())
        return QByteArray::fromBase64(value.toString().toLatin1());
    if (kind == F::Date && value.isString())
        return QDateTime::fromString(value.toString(), Qt::ISODateWithMs);
    return value.toVariant();
}

QString copyInto(const FileSystemStore &files, const QString &source, const QString &folder, const QString &baseName,
                 QString *error)
{
    if (!files.ensureDirectory(folder, error))
        return {};
    const QString suffix = QFileInfo(source).suffix();
    const QString target = folder + u'/' + baseName + (suffix.isEmpty() ? QString() : u'.' + suffix);
    if (QFileInfo(target).canonicalFilePath() == QFileInfo(source).canonicalFilePath())
        return target;
    if (!files.removeItemIfExists(target, error) || !files.copyItem(source, target, error))
        return {};
    return target;
}

}

const QList<SpacesSnapshotService::Field> &SpacesSnapshotService::fields()
{
    namespace K = SettingsKeys;
    static const QList<Field> list{
        {"slots", K::kSlots, F::Plain},
        {"foldersData", K::kFolders, F::Data},
        {"appOrder", K::kAppOrder, F::Plain},
        {"folderOrder", K::kFolderOrder, F::Plain},
        {"combinedOrder", K::kCombinedOrder, F::Plain},
        {"hiddenApps", K::kHiddenApps, F::Plain},
        {"customBackgroundImagePath", K::kCustomBackgroundImagePath, F::Plain},
        {"blurEnabled", K::kBlurEnabled, F::Plain},
        {"iconSize", K::kIconSize, F::PerDisplay},
        {"showLabels", K::kShowLabels, F::PerDisplay},
        {"columns", K::kColumns, F::PerDisplay},
        {"rows", K::kRows, F::PerDisplay},
        {"glassIntensity", K::kGlassIntensity, F::Plain},
        {"theme", K::kTheme, F::Plain},
        {"titleColorOverride", K::kTitleColorOverride, F::Plain},
        {"liquidGlassEnabled", K::kLiquidGlassEnabled, F::Plain},
        {"liquidGlassMaterialStyle", K::kLiquidGlassMaterialStyle, F::Plain},
        {"liquidGlassTintStandard", K::kLiquidGlassTintStandard, F::Plain},
        {"liquidGlassTintHue", K::kLiquidGlassTintHue, F::Plain},
        {"liquidGlassTintIntensity", K::kLiquidGlassTintIntensity, F::Plain},
        {"categoriesPageTintedGlass", "categoriesPageTintedGlass", F::Plain},
        {"cellBackgroundEnabled", K::kCellBackgroundEnabled, F::Plain},
        {"filledBackgroundEnabled", K::kFilledBackgroundEnabled, F::Plain},
        {"sunBackgroundEnabled", K::kSunBackgroundEnabled, F::Plain},
        {"sunBackgroundAutoEnabled", K::kSunBackgroundAutoEnabled, F::Plain},
        {"sunBackgroundManualTime", K::kSunBackgroundManualTime, F::Date},
        {"weatherBackgroundEnabled", K::kWeatherBackgroundEnabled, F::Plain},
        {"weatherBackgroundAutoEnabled", K::kWeatherBackgroundAutoEnabled, F::Plain},
        {"weatherBackgroundCity", K::kWeatherBackgroundCity, F::Plain},
        {"weatherBackgroundManualType", K::kWeatherBackgroundManualType, F::Plain},
        {"weatherBackgroundManualTimeEnabled", "weatherBackgroundManualTimeEnabled", F::Plain},
        {"weatherBackgroundManualTime", K::kWeatherBackgroundManualTime, F::Date},
        {"widgetsData", K::kWidgets, F::Data},
        {"customAppIconsData", K::kCustomAppIcons, F::Data},
        {"folderIconStylesData", K::kFolderIconStyles, F::Data},
        {"workflowsData", K::kWorkflows, F::Data},
        {"notchWidgetsData", "notchWidgetsData", F::Data},
        {"notchBlockOrderData", "notchBlockOrderData", F::Data},
        {"notchBackgroundStyle", "notchBackgroundStyle", F::Plain},
        {"notchGlassVariant", "notchGlassVariant", F::Plain},
        {"notchGlassFrosted", "notchGlassFrosted", F::Plain},
        {"notchBackgroundImage", "notchBackgroundImage", F::Plain},
        {"searchLocation", K::kSearchLocation, F::Plain},
        {"selectedCategoriesPage", "selectedCategoriesPage", F::Plain},
        {"additionalAppSourceFoldersData", K::kAdditionalAppSourceFolders, F::Data},
        {"recentApps", K::kRecentApps, F::Plain},
        {"classicViewEnabled", K::kClassicViewEnabled, F::Plain},
        {"categoriesPageEnabled", "categoriesPageEnabled", F::Plain},
        {"showCategoriesAsMainPage", K::kShowCategoriesAsMainPage, F::Plain},
        {"snowAnimationEnabled", "snowAnimationEnabled", F::Plain},
        {"reduceAnimationsBeta", "reduceAnimationsBeta", F::Plain},
    };
    return list;
}

SpacesSnapshotService::SpacesSnapshotService(std::shared_ptr<UserDefaultsStoreType> mainStore,
                                             std::shared_ptr<FileSystemStore> files)
    : m_store(std::move(mainStore))
    , m_files(std::move(files))
{
}

QString SpacesSnapshotService::assetFolder(const QUuid &space) const
{
    return m_files->pathFor(QStringLiteral("Spaces/") + space.toString(QUuid::WithoutBraces).toUpper());
}

QString SpacesSnapshotService::displayKey(const char *base) const
{
    // The grid is remembered per monitor; a snapshot carries the one the
    // overlay used last, which is a fact of this machine, not of a profile.
    QString display = m_store->string(QLatin1String(SettingsKeys::kLastOverlayDisplay)).value_or(QString());
    if (display.isEmpty())
        display = QStringLiteral("default");
    return QLatin1String(base) + SettingsKeys::kDisplaySeparator + display;
}

QJsonObject SpacesSnapshotService::capture(const UserDefaultsStoreType &store) const
{
    QJsonObject snapshot;
    for (const Field &field : fields()) {
        const QString key = field.kind == F::PerDisplay ? displayKey(field.key) : QLatin1String(field.key);
        const QVariant value = store.persistedObject(key);
        if (value.isValid())
            snapshot.insert(QLatin1String(field.name), toJson(value));
    }
    return snapshot;
}

void SpacesSnapshotService::apply(const QJsonObject &snapshot, UserDefaultsStoreType &store,
                                  const QString &assetFolder) const
{
    for (const Field &field : fields()) {
        const QJsonValue value = snapshot.value(QLatin1String(field.name));
        if (value.isUndefined())
            continue;
        const QString key = field.kind == F::PerDisplay ? displayKey(field.key) : QLatin1String(field.key);
        QVariant stored = fromJson(value, field.kind);
        if (qstrcmp(field.key, SettingsKeys::kCustomBackgroundImagePath) == 0 && value.isString()
            && !value.toString().isEmpty() && QDir::isRelativePath(value.toString()))
            stored = QDir(assetFolder).filePath(value.toString());
        if (value.isNull())
            store.removeObject(key);
        else if (store.persistedObject(key) != stored)
            store.set(stored, key);
    }
}

void SpacesSnapshotService::adoptFiles(QJsonObject &snapshot, const QString &assetFolder) const
{
    const QString wallpaper = snapshot.value(QLatin1String("customBackgroundImagePath")).toString();
    if (!wallpaper.isEmpty() && QFileInfo(wallpaper).isFile()) {
        QString error;
        const QString copy = copyInto(*m_files, wallpaper, assetFolder, QStringLiteral("wallpaper"), &error);
        if (!copy.isEmpty())
            snapshot.insert(QLatin1String("customBackgroundImagePath"), copy);
        else
            qCWarning(lcSpaces, "Wallpaper %s stays shared with the profile it came from: %s",
                      qUtf8Printable(wallpaper), qUtf8Printable(error));
    }

    const QJsonValue iconsValue = snapshot.value(QLatin1String("customAppIconsData"));
    if (!iconsValue.isString())
        return;
    QJsonObject icons = QJsonDocument::fromJson(QByteArray::fromBase64(iconsValue.toString().toLatin1())).object();
    bool changed = false;
    for (auto it = icons.begin(); it != icons.end(); ++it) {
        QJsonObject icon = it.value().toObject();
        const QString path = icon.value(QLatin1String("imagePath")).toString();
        if (path.isEmpty() || path.startsWith(QLatin1String("asset:")) || !QFileInfo(path).isFile())
            continue;
        QString error;
        const QString copy = copyInto(*m_files, path, assetFolder + QStringLiteral("/CustomIcons"),
                                      QFileInfo(path).completeBaseName(), &error);
        if (copy.isEmpty())
            continue;
        icon.insert(QLatin1String("imagePath"), copy);
        it.value() = icon;
        changed = true;
    }
    if (changed)
        snapshot.insert(QLatin1String("customAppIconsData"),
                        QString::fromLatin1(QJsonDocument(icons).toJson(QJsonDocument::Compact).toBase64()));
}

namespace {

// The standard profile's settings a Space may not leave as it found them,
// by their name in the backup.
struct Backed {
    const char *name;
    const char *key;
};
const Backed kBackedBackground[] = {
    {"sunEnabled", SettingsKeys::kSunBackgroundEnabled},
    {"sunAutoEnabled", SettingsKeys::kSunBackgroundAutoEnabled},
    {"sunManualTime", SettingsKeys::kSunBackgroundManualTime},
    {"weatherEnabled", SettingsKeys::kWeatherBackgroundEnabled},
    {"weatherAutoEnabled", SettingsKeys::kWeatherBackgroundAutoEnabled},
    {"weatherManualType", SettingsKeys::kWeatherBackgroundManualType},
    {"weatherManualTimeEnabled", "weatherBackgroundManualTimeEnabled"},
    {"weatherManualTime", SettingsKeys::kWeatherBackgroundManualTime},
    {"weatherCity", SettingsKeys::kWeatherBackgroundCity}};
const Backed kBackedGlass[] = {
    {"materialStyle", SettingsKeys::kLiquidGlassMaterialStyle},
    {"tintStandard", SettingsKeys::kLiquidGlassTintStandard},
    {"tintHue", SettingsKeys::kLiquidGlassTintHue},
    {"tintIntensity", SettingsKeys::kLiquidGlassTintIntensity},
    {"categoriesPageTintedGlass", "categoriesPageTintedGlass"}};

}

void SpacesSnapshotService::backUpStandard()
{
    // The background backup is complete: flags read as off, the weather as
    // a clear sky over London, unless set.
    QVariantMap background;
    for (const auto &[name, key] : kBackedBackground) {
        const QVariant value = m_store->persistedObject(QLatin1String(key));
        if (value.isValid())
            background.insert(QLatin1String(name), value);
        else if (QByteArray(name).endsWith("Enabled"))
            background.insert(QLatin1String(name), false);
    }
    if (!background.contains(QStringLiteral("weatherManualType")))
        background.insert(QStringLiteral("weatherManualType"), QStringLiteral("clear"));
    if (!background.contains(QStringLiteral("weatherCity")))
        background.insert(QStringLiteral("weatherCity"), QStringLiteral("London"));
    m_store->set(background, QLatin1String(kStandardBackgroundBackupKey));

    // Absent glass values stay absent in the backup, so restoring removes them.
    QVariantMap glass;
    for (const auto &[name, key] : kBackedGlass)
        if (const QVariant v = m_store->persistedObject(QLatin1String(key)); v.isValid())
            glass.insert(QLatin1String(name), v);
    m_store->set(glass, QLatin1String(kStandardGlassBackupKey));
}

void SpacesSnapshotService::restoreStandard()
{
    if (const auto background = m_store->dictionary(QLatin1String(kStandardBackgroundBackupKey))) {
        for (const auto &[name, key] : kBackedBackground)
            if (background->contains(QLatin1String(name)))
                m_store->set(background->value(QLatin1String(name)), QLatin1String(key));
        m_store->removeObject(QLatin1String(kStandardBackgroundBackupKey));
    }
    if (const auto glass = m_store->dictionary(QLatin1String(kStandardGlassBackupKey))) {
        for (const auto &[name, key] : kBackedGlass) {
            if (glass->contains(QLatin1String(name)))
                m_store->set(glass->value(QLatin1String(name)), QLatin1String(key));
            else
                m_store->removeObject(QLatin1String(key));
        }
        m_store->removeObject(QLatin1String(kStandardGlassBackupKey));
    }
}

long SpacesSnapshotService::recoverHiddenApps(QJsonObject &snapshot, const UserDefaultsStoreType &liveSuite) const
{
    const QStringList live = liveSuite.stringList(QLatin1String(SettingsKeys::kHiddenApps));
    QJsonArray hidden = snapshot.value(QLatin1String("hiddenApps")).toArray();
    long recovered = 0;
    for (const QString &app : live) {
        if (!hidden.contains(app)) {
            hidden.append(app);
            ++recovered;
        }
    }
    if (recovered == 0)
        return 0;
    snapshot.insert(QLatin1String("hiddenApps"), hidden);
    qCInfo(lcSpaces, LogTexts::kRecoveredHiddenApps, recovered);
    return recovered;
}

void SpacesSnapshotService::recoverActiveWallpaper(UserDefaultsStoreType &spaceStore, const QString &assetFolder) const
{
    const QString key = QLatin1String(SettingsKeys::kCustomBackgroundImagePath);
    const QString own = spaceStore.string(key).value_or(QString());
    const QString standard = m_store->string(key).value_or(QString());
    if (own.isEmpty() || QFileInfo::exists(own) || standard.isEmpty() || !QFileInfo(standard).isFile())
        return;
    QString error;
    const QString copy = copyInto(*m_files, standard, assetFolder, QStringLiteral("wallpaper"), &error);
    if (copy.isEmpty()) {
        qCWarning(lcSpaces, LogTexts::kRecoverWallpaperFailed, qUtf8Printable(error));
        return;
    }
    spaceStore.set(copy, key);
    qCInfo(lcSpaces, LogTexts::kRecoveredWallpaper);
}
