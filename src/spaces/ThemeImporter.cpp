#include "spaces/ThemeImporter.h"

#include "foundation/LogTexts.h"
#include "foundation/Logging.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"
#include "spaces/SpaceStorageProvider.h"
#include "spaces/SpacesSnapshotService.h"
#include "spaces/SpacesViewModel.h"
#include "spaces/ThemeAppMatcher.h"
#include "spaces/ThemePathRewriter.h"
#include "storage/FileSystemStore.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStore.h"

#include <QCollator>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <QScopeGuard>
#include <QSet>

namespace {

namespace P = ThemePackageLayout;

std::optional<QJsonObject> readObject(const QString &file)
{
    QFile in(file);
    // Only a regular file: extraction makes nothing else, but the root is
    // checked rather than assumed.
    if (!QFileInfo(file).isFile() || QFileInfo(file).isSymLink() || !in.open(QIODevice::ReadOnly))
        return std::nullopt;
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(in.readAll(), &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    return document.object();
}

// What a folder holds, for telling two sets of folders apart.
QSet<QString> folderSignatures(const QJsonArray &folders)
{
    QSet<QString> signatures;
    for (const QJsonValue &value : folders) {
        const auto folder = FolderItem::fromJson(value.toObject());
        if (!folder)
            continue;
        QStringList apps = folder->appPaths;
        apps.sort();
        signatures.insert(folder->name + u'\n' + apps.join(u'\n'));
    }
    return signatures;
}

ThemeImporter::Failure invalid(const QString &detail)
{
    return {ThemeImporter::ImportError::invalidPackage, QString(), detail};
}

}

QString themeAlertName(ThemeAlertKind kind)
{
    switch (kind) {
    case ThemeAlertKind::exportConfirm: return QStringLiteral("exportConfirm");
    case ThemeAlertKind::outdated: return QStringLiteral("outdated");
    case ThemeAlertKind::duplicate: return QStringLiteral("duplicate");
    case ThemeAlertKind::folderChoice: return QStringLiteral("folderChoice");
    case ThemeAlertKind::imported: return QStringLiteral("imported");
    case ThemeAlertKind::invalidPackage: return QStringLiteral("invalidPackage");
    case ThemeAlertKind::exportFailed: return QStringLiteral("exportFailed");
    }
    return {};
}

QString ThemeImporter::outdatedText(const QString &appVersion)
{
    return QStringLiteral("This theme was created in Tillmora ") + appVersion + u'.';
}

QString ThemeImporter::Failure::message() const
{
    return error == ImportError::requiresNewerApp ? outdatedText(appVersion) : QLatin1String(kInvalidPackageText);
}

ThemeImporter::ThemeImporter(std::shared_ptr<FileSystemStore> fs, std::shared_ptr<SpacesSnapshotService> snapshotService,
                             std::shared_ptr<SpaceStorageProvider> provider)
    : m_files(std::move(fs))
    , m_snapshots(std::move(snapshotService))
    , m_provider(std::move(provider))
{
}

QJsonArray ThemeImporter::ownFolders() const
{
    const QByteArray bytes = m_provider->activeStore()->data(QLatin1String(SettingsKeys::kFolders)).value_or(QByteArray());
    return QJsonDocument::fromJson(bytes).array();
}

std::variant<ThemeImporter::Inspection, ThemeImporter::Failure>
ThemeImporter::inspect(const QString &package, const QList<AppItem> &installed, const P::Limits &limits) const
{
    Inspection inspection;
    QString error;
    inspection.staging = P::makeStagingFolder(QStringLiteral("TillmoraThemeImport-"), &inspection.packageRoot, &error);
    if (!inspection.staging || !P::extractArchive(package, inspection.packageRoot, &error, limits)) {
        qCWarning(lcSpaces, LogTexts::kThemeUnzipFailed, qUtf8Printable(error));
        return invalid(error);
    }
    const QDir root(inspection.packageRoot);
    const auto manifestJson = readObject(root.filePath(QLatin1String(P::kManifestFile)));
    const auto manifest = manifestJson ? ThemeManifest::fromJson(*manifestJson, &error) : std::nullopt;
    if (!manifest)
        return invalid(manifestJson ? error : QStringLiteral("no readable manifest.json"));
    if (manifest->schemaVersion > ThemeManifest::kSchemaVersion)
        return Failure{ImportError::requiresNewerApp, manifest->appVersion, QString()};
    const auto snapshot = readObject(root.filePath(QLatin1String(P::kSnapshotFile)));
    if (!snapshot)
        return invalid(QStringLiteral("no readable snapshot.json"));

    inspection.manifest = *manifest;
    inspection.snapshot = *snapshot;
    inspection.apps = readObject(root.filePath(QLatin1String(P::kAppsFile))).value_or(QJsonObject());
    const QStringList placed = ThemeAppMatcher::placedAppPaths(*snapshot);
    const ThemeAppMatcher matcher(installed, ThemeAppMatcher::allAppPaths(*snapshot), inspection.apps);
    inspection.themeAppCount = int(placed.size());
    inspection.matchedAppCount = matcher.matchedCount(placed);
    inspection.alreadyImported = m_provider->mainStore()
                                     ->stringList(QLatin1String(SettingsKeys::kImportedThemeIds))
                                     .contains(Uuids::toText(manifest->themeId));
    // Only a question when there is something of the user's to keep.
    const QJsonArray own = ownFolders();
    const auto map = [&](const QString &path) { return matcher.localPath(path); };
    const FolderReconciliation theirs =
        reconcileFolders(ThemePathRewriter::dataField(*snapshot, "foldersData").array(), map);
    inspection.foldersDiffer = !own.isEmpty() && folderSignatures(own) != folderSignatures(theirs.data);
    return inspection;
}

ThemeImporter::FolderReconciliation
ThemeImporter::reconcileFolders(const QJsonArray &themeFolders,
                                const std::function<std::optional<QString>(const QString &)> &map)
{
    FolderReconciliation result;
    for (const QJsonValue &value : themeFolders) {
        const auto folder = FolderItem::fromJson(value.toObject());
        if (!folder)
            continue;
        FolderItem kept = *folder;
        kept.appPaths.clear();
        for (const QString &path : folder->appPaths) {
            result.allThemeAppPaths.append(path);
            if (const auto local = map(path)) {
                kept.appPaths.append(*local);
                result.keptAppPaths.append(path);
            }
        }
        kept.slots.clear();
        for (const QString &key : folder->slots) {
            const QString path = SlotKey::appPath(key);
            if (!path.startsWith(u'/'))
                kept.slots.append(key);
            else if (const auto local = map(path))
                kept.slots.append(key.startsWith(SlotKey::kAppPrefix) ? SlotKey::app(*local) : *local);
        }
        kept.originalGridSlots.clear();
        for (auto it = folder->originalGridSlots.cbegin(); it != folder->originalGridSlots.cend(); ++it)
            if (const auto local = map(it.key()))
                kept.originalGridSlots.insert(*local, it.value());
        // Another machine's folders (Documents, Downloads) only where they
        // exist here too.
        kept.systemFolderPaths.removeIf([](const QString &path) { return !QFileInfo(path).isDir(); });
        const bool holdsWorkflow = std::any_of(kept.slots.cbegin(), kept.slots.cend(), [](const QString &key) {
            return SlotKey::kindOf(key) == SlotKey::Kind::Workflow;
        });
        if (kept.appPaths.isEmpty() && kept.systemFolderPaths.isEmpty() && !holdsWorkflow) {
            result.removedFolderIds.append(folder->id);
            continue;
        }
        result.data.append(kept.toJson());
    }
    return result;
}

std::optional<ThemeImporter::Result> ThemeImporter::importTheme(const Inspection &inspection, FolderChoice choice,
                                                                const QList<AppItem> &installed,
                                                                SpacesViewModel &spaces, QString *error)
{
    const ThemeManifest &manifest = inspection.manifest;
    SpaceItem space;
    space.id = QUuid::createUuid();
    space.snapshotId = space.id;
    space.name = manifest.name;
    space.emoji = manifest.emoji;
    space.iconBackgroundColor = manifest.iconBackgroundColor;
    space.specialSpaceKind = manifest.specialSpaceKind;
    space.specialOptions = manifest.specialOptions;
    space.createdAt = QDateTime::currentDateTimeUtc();

    const QString assets = m_snapshots->assetFolder(space.id);
    bool done = false;
    // Nothing of a failed import stays behind.
    const auto cleanUp = qScopeGuard([&] {
        if (!done)
            QDir(assets).removeRecursively();
    });
    if (!m_files->ensureDirectory(assets, error))
        return std::nullopt;
    int missingAssets = 0;
    const auto resolved = ThemePathRewriter::importAssets(inspection.snapshot, inspection.packageRoot, assets,
                                                          &missingAssets, error);
    if (!resolved)
        return std::nullopt;

    const QStringList placed = ThemeAppMatcher::placedAppPaths(*resolved);
    const ThemeAppMatcher matcher(installed, ThemeAppMatcher::allAppPaths(*resolved), inspection.apps);
    const auto map = [&](const QString &path) { return matcher.localPath(path); };

    // Icons of apps that are not here wait for them.
    QJsonObject icons = ThemePathRewriter::dataField(*resolved, "customAppIconsData").object();
    QJsonObject pending;
    for (auto it = icons.begin(); it != icons.end();) {
        if (it.value().toObject().value(QLatin1String("imagePath")).toString().isEmpty()) {
            it = icons.erase(it); // its image did not come with the package
        } else if (!matcher.localPath(it.key())) {
            QJsonObject entry = inspection.apps.value(it.key()).toObject();
            entry.insert(QLatin1String("icon"), it.value());
            pending.insert(it.key(), entry);
            it = icons.erase(it);
        } else {
            ++it;
        }
    }
    QJsonObject snapshot = *resolved;
    if (snapshot.contains(QLatin1String("customAppIconsData")))
        ThemePathRewriter::setDataField(snapshot, "customAppIconsData", QJsonDocument(icons));
    snapshot = ThemeAppMatcher::mapAppPaths(snapshot, map);
    if (!pending.isEmpty()) {
        QSaveFile out(QDir(assets).filePath(QLatin1String(kPendingIconsFile)));
        if (!out.open(QIODevice::WriteOnly) || out.write(QJsonDocument(pending).toJson()) < 0 || !out.commit()) {
            if (error)
                *error = out.errorString();
            return std::nullopt;
        }
    }
    // The extra application folders are the other machine's.
    snapshot.remove(QLatin1String("additionalAppSourceFoldersData"));

    // Folders: the theme's with the apps found here, or the user's own.
    const FolderReconciliation theirs =
        reconcileFolders(ThemePathRewriter::dataField(*resolved, "foldersData").array(), map);
    const QJsonArray folders = choice == FolderChoice::keepMine ? ownFolders() : theirs.data;
    ThemePathRewriter::setDataField(snapshot, "foldersData", QJsonDocument(folders));

    QList<FolderItem> folderItems;
    QSet<QString> folderIds;
    QSet<QString> inFolders;
    QList<ThemeSlotFiller::PlacementEntry> entries;
    for (const QJsonValue &value : folders) {
        const auto folder = FolderItem::fromJson(value.toObject());
        if (!folder)
            continue;
        folderItems.append(*folder);
        folderIds.insert(folder->key());
        for (const QString &path : folder->appPaths)
            inFolders.insert(path);
    }
    QJsonArray slots = snapshot.value(QLatin1String("slots")).toArray();
    QSet<QString> onGrid;
    for (qsizetype i = 0; i < slots.size(); ++i) {
        const QString key = slots.at(i).toString();
        const QString path = SlotKey::appPath(key);
        const bool goneFolder = SlotKey::kindOf(key) == SlotKey::Kind::Folder && !folderIds.contains(key);
        if (goneFolder || (path.startsWith(u'/') && (inFolders.contains(path) || onGrid.contains(path))))
            slots[i] = QString();
        else if (SlotKey::kindOf(key) == SlotKey::Kind::Folder)
            onGrid.insert(key);
        else if (path.startsWith(u'/'))
            onGrid.insert(path);
    }
    for (const FolderItem &folder : std::as_const(folderItems))
        if (!onGrid.contains(folder.key()))
            entries.append({folder.name, folder.key()});
    QSet<QString> hidden;
    for (const QJsonValue &value : snapshot.value(QLatin1String("hiddenApps")).toArray())
        hidden.insert(value.toString());
    for (const AppItem &app : installed)
        if (!onGrid.contains(app.path) && !inFolders.contains(app.path) && !hidden.contains(app.path))
            entries.append({app.displayName, SlotKey::app(app.path)});
    QJsonArray filled = ThemeSlotFiller::fill(slots, entries);
    // Cells of apps that are not here close up, unless a widget's cells
    // would shift out of their shape.
    const QJsonArray themeSlots = inspection.snapshot.value(QLatin1String("slots")).toArray();
    const bool hasWidgets = std::any_of(filled.cbegin(), filled.cend(),
                                        [](const QJsonValue &key) { return SlotKey::isWidgetMarker(key.toString()); });
    if (!hasWidgets)
        for (qsizetype i = std::min(themeSlots.size(), slots.size()) - 1; i >= 0; --i)
            if (filled.at(i).toString().isEmpty() && SlotKey::appPath(themeSlots.at(i).toString()).startsWith(u'/'))
                filled.removeAt(i);
    snapshot.insert(QLatin1String("slots"), filled);

    Result result;
    result.snapshot = snapshot;
    result.themeAppCount = int(placed.size());
    result.matchedAppCount = matcher.matchedCount(placed);
    result.pendingIconCount = int(pending.size());
    result.space = spaces.addSpace(space, snapshot);
    done = true;

    ThemeManifest::rememberThemeId(*m_provider->mainStore(), SettingsKeys::kImportedThemeIds, manifest.themeId);
    qCInfo(lcSpaces, LogTexts::kImportedTheme, qUtf8Printable(manifest.name), long(result.matchedAppCount),
           long(result.themeAppCount), long(result.pendingIconCount));
    return result;
}

int ThemeImporter::applyPendingIcons(const QString &assetFolder, UserDefaultsStoreType &suite,
                                     const QList<AppItem> &installed)
{
    const QString file = QDir(assetFolder).filePath(QLatin1String(kPendingIconsFile));
    if (!QFileInfo::exists(file))
        return 0;
    const auto pending = readObject(file);
    if (!pending)
        return 0;
    const ThemeAppMatcher matcher(installed, pending->keys(), *pending);
    const QString key = QLatin1String(SettingsKeys::kCustomAppIcons);
    QJsonObject icons = QJsonDocument::fromJson(suite.data(key).value_or(QByteArray())).object();
    QJsonObject waiting;
    int applied = 0;
    for (auto it = pending->begin(); it != pending->end(); ++it) {
        const auto local = matcher.localPath(it.key());
        // An icon the user chose here since wins over the theme's.
        if (local && !icons.contains(*local)) {
            icons.insert(*local, it.value().toObject().value(QLatin1String("icon")));
            ++applied;
        } else if (!local) {
            waiting.insert(it.key(), it.value());
        }
    }
    if (applied == 0)
        return 0;
    suite.set(QJsonDocument(icons).toJson(QJsonDocument::Compact), key);
    if (waiting.isEmpty()) {
        QFile::remove(file);
    } else {
        QSaveFile out(file);
        if (out.open(QIODevice::WriteOnly)) {
            out.write(QJsonDocument(waiting).toJson());
            out.commit();
        }
    }
    return applied;
}

QJsonArray ThemeSlotFiller::fill(const QJsonArray &slots, QList<PlacementEntry> entries)
{
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(entries.begin(), entries.end(), [&](const PlacementEntry &a, const PlacementEntry &b) {
        const int order = collator.compare(a.sortName, b.sortName);
        return order != 0 ? order < 0 : a.token < b.token;
    });
    QJsonArray filled = slots;
    qsizetype next = 0;
    for (qsizetype i = 0; i < filled.size() && next < entries.size(); ++i)
        if (filled.at(i).toString().isEmpty())
            filled[i] = entries.at(next++).token;
    for (; next < entries.size(); ++next)
        filled.append(entries.at(next).token);
    return filled;
}
