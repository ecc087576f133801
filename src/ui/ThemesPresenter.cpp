#include "ui/ThemesPresenter.h"

#include "app/CompositionRoot.h"
#include "foundation/Uuids.h"
#include "layout/LaunchpadViewModel.h"
#include "spaces/SpaceTexts.h"
#include "spaces/SpacesViewModel.h"
#include "spaces/ThemeExporter.h"
#include "storage/UserDefaultsStore.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

ThemesPresenter::ThemesPresenter(QObject *parent) : QObject(parent) {}

ThemesPresenter::~ThemesPresenter() = default;

void ThemesPresenter::attach(SpacesViewModel *spaces, LaunchpadViewModel *layout, CompositionRoot *composition)
{
    m_spaces = spaces;
    m_layout = layout;
    m_composition = composition;
    connect(spaces, &SpacesViewModel::spacesChanged, this, &ThemesPresenter::mySpacesChanged);
    connect(spaces, &SpacesViewModel::themeFileOpened, this, &ThemesPresenter::openPackage);
    auto service = std::make_shared<SpacesThemeCatalogService>(composition->userDefaultsStore);
    // A theme installed from the catalogue was asked for by name: it is
    // imported with its own folders, and the user is then asked to switch.
    m_catalog = std::make_unique<SpacesThemeCatalogViewModel>(
        service, [this](const QString &file, QString *error) -> std::optional<QUuid> {
            auto inspected = importer().inspect(file, m_layout->apps());
            if (const auto *failure = std::get_if<ThemeImporter::Failure>(&inspected)) {
                *error = failure->message();
                return std::nullopt;
            }
            takeInspection(std::get<ThemeImporter::Inspection>(std::move(inspected)));
            importWith(ThemeImporter::FolderChoice::useTheme);
            return m_importedId.isEmpty() ? std::nullopt : Uuids::fromText(m_importedId);
        });
    Q_EMIT availableChanged();
    Q_EMIT mySpacesChanged();
}

ThemeImporter ThemesPresenter::importer() const
{
    return ThemeImporter(m_composition->fileSystemStore, m_composition->spacesSnapshotService,
                         m_composition->spaceStorageProvider);
}

QVariantList ThemesPresenter::mySpaces() const
{
    return m_spaces ? m_spaces->spacesForView() : QVariantList();
}

QString ThemesPresenter::text(const QString &messageId) const
{
    return SpaceTexts::text(messageId.toUtf8().constData());
}

void ThemesPresenter::raise(std::optional<ThemeAlertKind> alert)
{
    m_stage = alert ? themeAlertName(*alert) : QString();
    Q_EMIT importChanged();
}

void ThemesPresenter::openPackage(const QString &file)
{
    if (!m_spaces)
        return;
    m_inspection.reset();
    m_importedId.clear();
    m_package = {{"name", QFileInfo(file).completeBaseName()}, {"emoji", QString()}, {"color", QString()}};
    auto inspected = importer().inspect(file, m_layout->apps());
    if (const auto *failure = std::get_if<ThemeImporter::Failure>(&inspected)) {
        m_package.insert(QStringLiteral("error"), failure->message());
        raise(failure->error == ThemeImporter::ImportError::requiresNewerApp ? ThemeAlertKind::outdated
                                                                          : ThemeAlertKind::invalidPackage);
        return;
    }
    takeInspection(std::get<ThemeImporter::Inspection>(std::move(inspected)));
    if (m_inspection->alreadyImported)
        raise(ThemeAlertKind::duplicate);
    else
        importAgain();
}

QString ThemesPresenter::appsSummary(int matched, int total) const
{
    // A theme that places no apps (only a look) has nothing to count.
    return total == 0 ? QString() : tr("%1 of %2 apps are installed here.").arg(matched).arg(total);
}

void ThemesPresenter::takeInspection(ThemeImporter::Inspection inspection)
{
    m_inspection = std::move(inspection);
    const ThemeManifest &manifest = m_inspection->manifest;
    m_package = {{"name", manifest.name},
                 {"emoji", manifest.emoji},
                 {"color", manifest.iconBackgroundColor},
                 {"summary", appsSummary(m_inspection->matchedAppCount, m_inspection->themeAppCount)}};
}

void ThemesPresenter::importAgain()
{
    if (!m_inspection)
        return;
    if (m_inspection->foldersDiffer)
        raise(ThemeAlertKind::folderChoice);
    else
        importWith(ThemeImporter::FolderChoice::useTheme);
}

void ThemesPresenter::chooseFolders(bool keepMine)
{
    importWith(keepMine ? ThemeImporter::FolderChoice::keepMine : ThemeImporter::FolderChoice::useTheme);
}

void ThemesPresenter::importWith(ThemeImporter::FolderChoice choice)
{
    if (!m_inspection || !m_spaces)
        return;
    QString error;
    const auto result = importer().importTheme(*m_inspection, choice, m_layout->apps(), *m_spaces, &error);
    m_inspection.reset(); // the unpacked package goes now
    if (!result) {
        m_package.insert(QStringLiteral("error"), tr("The theme could not be imported: %1").arg(error));
        raise(ThemeAlertKind::invalidPackage);
        return;
    }
    m_importedId = Uuids::toText(result->space.id);
    m_package.insert(QStringLiteral("summary"), appsSummary(result->matchedAppCount, result->themeAppCount));
    raise(ThemeAlertKind::imported);
}

void ThemesPresenter::switchToImported()
{
    if (m_spaces && !m_importedId.isEmpty())
        m_spaces->switchToSpace(m_importedId);
    closeImport();
}

void ThemesPresenter::closeImport()
{
    m_inspection.reset();
    m_importedId.clear();
    m_exportingId.clear();
    raise(std::nullopt);
}

QString ThemesPresenter::exportFolder() const
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return documents.isEmpty() || !QDir().mkpath(documents) ? QDir::homePath() : documents;
}

void ThemesPresenter::exportSpace(const QString &id)
{
    const auto spaceId = Uuids::fromText(id);
    const auto space = spaceId && m_spaces ? m_spaces->space(*spaceId) : std::nullopt;
    if (!space)
        return;
    m_exportingId = id;
    m_package = {{"name", space->name},
                 {"emoji", space->emoji},
                 {"color", space->iconBackgroundColor},
                 {"summary", tr("The package holds its grid, folders, look, wallpaper and icons, and is saved in %1.")
                                 .arg(QDir::toNativeSeparators(exportFolder()))}};
    raise(ThemeAlertKind::exportConfirm);
}

void ThemesPresenter::confirmExport()
{
    const auto spaceId = Uuids::fromText(m_exportingId);
    const auto space = spaceId && m_spaces ? m_spaces->space(*spaceId) : std::nullopt;
    m_exportingId.clear();
    if (!space)
        return closeImport();
    const QString folder = exportFolder();
    // Never over an earlier export the user may have shared already.
    const QFileInfo base(QDir(folder).filePath(ThemePackageLayout::packageFileName(space->name)));
    QString destination = base.filePath();
    for (int n = 2; QFileInfo::exists(destination); ++n)
        destination = QDir(folder).filePath(QStringLiteral("%1 %2.%3").arg(base.completeBaseName()).arg(n).arg(base.suffix()));
    m_spaces->persist();
    QString error;
    const auto summary = ThemeExporter(m_composition->fileSystemStore, m_composition->spacesSnapshotService,
                                       m_composition->spaceStorageProvider)
                             .exportSpace(*space, destination, m_layout->apps(), &error);
    if (!summary) {
        m_package.insert(QStringLiteral("error"), tr("“%1” could not be exported: %2").arg(space->name, error));
        raise(ThemeAlertKind::exportFailed);
        return;
    }
    raise(std::nullopt);
    Q_EMIT notice(tr("Saved “%1” in %2 (%3 KB).")
                      .arg(QFileInfo(summary->fileURL).fileName(), QDir::toNativeSeparators(folder))
                      .arg((summary->byteSize + 1023) / 1024));
}
