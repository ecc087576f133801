#include "spaces/ThemeExporter.h"

#include "foundation/LogTexts.h"
#include "foundation/Logging.h"
#include "foundation/Uuids.h"
#include "spaces/SpaceStorageProvider.h"
#include "spaces/SpacesSnapshotService.h"
#include "spaces/ThemeAppMatcher.h"
#include "spaces/ThemeManifest.h"
#include "spaces/ThemePackage.h"
#include "spaces/ThemePathRewriter.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStore.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>

namespace {

namespace P = ThemePackageLayout;

// Pretty-printed; QJsonObject keeps its keys sorted.
bool writeJson(const QString &file, const QJsonObject &object, QString *error)
{
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly) && out.write(QJsonDocument(object).toJson(QJsonDocument::Indented)) >= 0
        && out.commit())
        return true;
    if (error)
        *error = QStringLiteral("%1: %2").arg(file, out.errorString());
    return false;
}

}

ThemeExporter::ThemeExporter(std::shared_ptr<FileSystemStore> fs, std::shared_ptr<SpacesSnapshotService> snapshots,
                             std::shared_ptr<SpaceStorageProvider> provider)
    : m_files(std::move(fs))
    , m_snapshots(std::move(snapshots))
    , m_provider(std::move(provider))
{
}

QUuid ThemeExporter::themeIdFor(const QUuid &space)
{
    static const QUuid kNamespace(QStringLiteral("{6f1c2b1e-5d0a-4c8e-9b7a-3e2f1d4c5b6a}"));
    return QUuid::createUuidV5(kNamespace, space.toRfc4122());
}

std::optional<ThemeExporter::Summary> ThemeExporter::exportSpace(const SpaceItem &space, const QString &destination,
                                                                 const QList<AppItem> &installed, QString *error)
{
    QString staging;
    const auto handle = P::makeStagingFolder(QStringLiteral("TillmoraThemeExport-"), &staging, error);
    if (!handle)
        return std::nullopt;

    const QJsonObject snapshot = m_snapshots->capture(*m_provider->storeForSpace(space.id));
    const auto rewritten = ThemePathRewriter::exportAssets(snapshot, staging, error);
    if (!rewritten)
        return std::nullopt;
    const ThemeManifest manifest =
        ThemeManifest::forSpace(space, themeIdFor(space.id), QDateTime::currentDateTimeUtc());
    const QDir root(staging);
    if (!writeJson(root.filePath(QLatin1String(P::kManifestFile)), manifest.toJson(), error)
        || !writeJson(root.filePath(QLatin1String(P::kSnapshotFile)), rewritten->snapshot, error)
        || !writeJson(root.filePath(QLatin1String(P::kAppsFile)),
                      ThemeAppMatcher::describe(ThemeAppMatcher::allAppPaths(snapshot), installed), error))
        return std::nullopt;

    QString detail;
    if (const auto failed = P::writeArchive(staging, destination, &detail)) {
        if (error)
            *error = *failed == P::ArchiveError::archiveMissing
                         ? QStringLiteral("the package was not written to %1").arg(destination)
                         : detail;
        return std::nullopt;
    }
    Summary summary{QFileInfo(destination).absoluteFilePath(), QFileInfo(destination).size(), manifest.themeId};
    qCInfo(lcSpaces, LogTexts::kExportedTheme, qUtf8Printable(manifest.name), qlonglong(summary.byteSize));
    ThemeManifest::rememberThemeId(*m_provider->mainStore(), SettingsKeys::kExportedThemeIds, manifest.themeId);
    return summary;
}
