#include "cli/ThemeCommands.h"

#include "app/CompositionRoot.h"
#include "cli/CommandContext.h"
#include "cli/SpaceCommands.h"
#include "cli/Verbs.h"
#include "foundation/Uuids.h"
#include "layout/LaunchpadViewModel.h"
#include "spaces/SpacesThemeCatalogService.h"
#include "spaces/SpacesViewModel.h"
#include "spaces/ThemeExporter.h"
#include "spaces/ThemeImporter.h"
#include "storage/UserDefaultsStore.h"

#include <QDir>
#include <QEventLoop>
#include <QJsonArray>
#include <QUrl>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace ThemeCommands {

namespace {

ThemeImporter importer(const CompositionRoot &c)
{
    return ThemeImporter(c.fileSystemStore, c.spacesSnapshotService, c.spaceStorageProvider);
}

CommandResult exportSpace(const QStringList &args, CommandContext &context)
{
    if (args.isEmpty() || args.size() > 2)
        return CommandResult::usage(QStringLiteral("expected 'theme export ID|NAME [FILE]'"));
    SpacesViewModel &spaces = *context.composition.spacesViewModel;
    QString error;
    const auto space = SpaceCommands::findSpace(spaces, args.first(), &error);
    if (!space)
        return CommandResult::usage(error);
    // The Space in use may have changes its snapshot has not caught yet.
    spaces.persist();
    QString destination = args.value(1, QString());
    const QString defaultName = ThemePackageLayout::packageFileName(space->name);
    if (destination.isEmpty())
        destination = QDir::current().filePath(defaultName);
    else if (QFileInfo(destination).isDir())
        destination = QDir(destination).filePath(defaultName);
    destination = QFileInfo(destination).absoluteFilePath();
    const auto summary = ThemeExporter(context.composition.fileSystemStore, context.composition.spacesSnapshotService,
                                       context.composition.spaceStorageProvider)
                             .exportSpace(*space, destination, context.layout.apps(), &error);
    if (!summary)
        return CommandResult::failure(QStringLiteral("the theme could not be exported: %1").arg(error));
    return CommandResult::ok(QStringLiteral("%1\t%2 bytes\n").arg(summary->fileURL).arg(summary->byteSize));
}

// The package, unpacked and read, or the refusal as the user reads it.
std::variant<ThemeImporter::Inspection, CommandResult> inspectFile(const QString &file, CommandContext &context)
{
    if (!QFileInfo(file).isFile())
        return CommandResult::failure(QStringLiteral("no file '%1'").arg(file));
    auto inspected = importer(context.composition).inspect(QFileInfo(file).absoluteFilePath(), context.layout.apps());
    if (const auto *failure = std::get_if<ThemeImporter::Failure>(&inspected))
        return CommandResult::failure(failure->message());
    return std::get<ThemeImporter::Inspection>(std::move(inspected));
}

CommandResult inspect(const QStringList &args, CommandContext &context)
{
    const bool json = args.contains(QLatin1String("--json"));
    QStringList rest = args;
    rest.removeAll(QStringLiteral("--json"));
    if (rest.size() != 1)
        return CommandResult::usage(QStringLiteral("expected 'theme inspect FILE [--json]'"));
    auto inspected = inspectFile(rest.first(), context);
    if (auto *refused = std::get_if<CommandResult>(&inspected))
        return *refused;
    const auto &inspection = std::get<ThemeImporter::Inspection>(inspected);
    if (json) {
        const QJsonObject out{{"manifest", inspection.manifest.toJson()},
                              {"themeAppCount", inspection.themeAppCount},
                              {"matchedAppCount", inspection.matchedAppCount},
                              {"alreadyImported", inspection.alreadyImported},
                              {"foldersDiffer", inspection.foldersDiffer}};
        return CommandResult::ok(QString::fromUtf8(QJsonDocument(out).toJson(QJsonDocument::Indented)));
    }
    const ThemeManifest &m = inspection.manifest;
    QString out = QStringLiteral("%1 %2\n").arg(m.emoji, m.name);
    out += QStringLiteral("theme id:   %1\n").arg(Uuids::toText(m.themeId));
    out += QStringLiteral("made with:  Tillmora %1 on %2\n").arg(m.appVersion, m.createdAt.toString(Qt::ISODate));
    out += QStringLiteral("apps:       %1 of %2 are installed here\n")
               .arg(inspection.matchedAppCount)
               .arg(inspection.themeAppCount);
    if (inspection.alreadyImported)
        out += QStringLiteral("note:       this theme was imported here before\n");
    if (inspection.foldersDiffer)
        out += QStringLiteral("note:       its folders differ from yours (see --folders)\n");
    return CommandResult::ok(out);
}

CommandResult import(const QStringList &args, CommandContext &context)
{
    QString file;
    bool switchNow = false;
    bool again = false;
    std::optional<ThemeImporter::FolderChoice> folders;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString &a = args.at(i);
        if (a == QLatin1String("--switch")) {
            switchNow = true;
        } else if (a == QLatin1String("--again")) {
            again = true;
        } else if (a == QLatin1String("--folders") && i + 1 < args.size()) {
            const QString choice = args.at(++i);
            if (choice == QLatin1String("keep-mine"))
                folders = ThemeImporter::FolderChoice::keepMine;
            else if (choice == QLatin1String("use-theme"))
                folders = ThemeImporter::FolderChoice::useTheme;
            else
                return CommandResult::usage(QStringLiteral("--folders takes keep-mine or use-theme"));
        } else if (!a.startsWith(QLatin1String("--")) && file.isNull()) {
            file = a;
        } else {
            return CommandResult::usage(
                QStringLiteral("expected 'theme import FILE [--folders keep-mine|use-theme] [--switch] [--again]'"));
        }
    }
    if (file.isEmpty())
        return CommandResult::usage(QStringLiteral("theme import needs a FILE"));
    auto inspected = inspectFile(file, context);
    if (auto *refused = std::get_if<CommandResult>(&inspected))
        return *refused;
    const auto &inspection = std::get<ThemeImporter::Inspection>(inspected);
    if (inspection.alreadyImported && !again)
        return CommandResult::failure(
            QStringLiteral("the theme '%1' was imported here before; add --again to import it once more")
                .arg(inspection.manifest.name));
    SpacesViewModel &spaces = *context.composition.spacesViewModel;
    QString error;
    const auto result = importer(context.composition)
                            .importTheme(inspection, folders.value_or(ThemeImporter::FolderChoice::useTheme),
                                         context.layout.apps(), spaces, &error);
    if (!result)
        return CommandResult::failure(QStringLiteral("the theme could not be imported: %1").arg(error));
    if (switchNow)
        spaces.switchTo(result->space.id, true);
    Q_EMIT spaces.themeImported(QStringLiteral("“%1” is a new Space: %2 of %3 apps are installed here.")
                                    .arg(result->space.name)
                                    .arg(result->matchedAppCount)
                                    .arg(result->themeAppCount));
    return {0, Uuids::toText(result->space.id) + u'\n',
            QStringLiteral("%1 of %2 apps are installed here; %3 icons wait for their apps\n")
                .arg(result->matchedAppCount)
                .arg(result->themeAppCount)
                .arg(result->pendingIconCount)};
}

}

namespace {

// "--url URL" out of args.
std::optional<QUrl> takeUrl(QStringList &args, QString *error)
{
    const qsizetype at = args.indexOf(QStringLiteral("--url"));
    if (at < 0)
        return QUrl();
    if (at + 1 >= args.size()) {
        *error = QStringLiteral("--url needs an address");
        return std::nullopt;
    }
    const QUrl url(args.at(at + 1), QUrl::StrictMode);
    args.remove(at, 2);
    if (!url.isValid() || url.scheme().isEmpty()) {
        *error = QStringLiteral("'%1' is not an address").arg(url.toString());
        return std::nullopt;
    }
    return url;
}

std::optional<SpacesThemeCatalog> loadCatalog(SpacesThemeCatalogService &service, QString *error)
{
    std::optional<SpacesThemeCatalog> loaded;
    QEventLoop loop;
    service.load([&](const std::optional<SpacesThemeCatalog> &catalog, const QString &why) {
        loaded = catalog;
        *error = why;
        loop.quit();
    });
    loop.exec();
    return loaded;
}

QJsonObject entryJson(const SpacesCatalogTheme &theme, bool installed)
{
    return {{"id", theme.id},           {"themeId", theme.themeId},   {"name", theme.name},
            {"description", theme.description}, {"fileSize", theme.fileSize}, {"author", theme.author ? theme.author->name : QString()},
            {"installed", installed}};
}

}

bool isCatalogCommand(const QStringList &args)
{
    return args.value(0) == QLatin1String("catalog") || args.value(0) == QLatin1String("install");
}

CommandResult runCatalog(const QStringList &given, const std::function<CommandResult(const QStringList &)> &importPackage)
{
    QStringList args = given.mid(1);
    const bool json = given.first() == QLatin1String("catalog") && args.removeAll(QStringLiteral("--json")) > 0;
    QString error;
    const auto url = takeUrl(args, &error);
    if (!url)
        return CommandResult::usage(error);
    const bool listing = given.first() == QLatin1String("catalog");
    if (listing ? !args.isEmpty() : args.size() != 1)
        return CommandResult::usage(listing ? QStringLiteral("expected 'theme catalog [--url URL] [--json]'")
                                            : QStringLiteral("expected 'theme install ENTRY_ID [--url URL]'"));
    SpacesThemeCatalogService service(UserDefaultsStore::standard(), *url);
    const auto catalog = loadCatalog(service, &error);
    if (!catalog)
        return CommandResult::failure(SpacesThemeCatalogService::message(SpacesThemeCatalogService::CatalogError::invalidCatalog));

    if (listing) {
        if (json) {
            QJsonArray themes;
            for (const SpacesCatalogTheme &theme : catalog->themes)
                themes.append(entryJson(theme, service.isInstalled(theme)));
            return CommandResult::ok(QString::fromUtf8(QJsonDocument(QJsonObject{{"themes", themes}}).toJson()));
        }
        QString out;
        for (const SpacesCatalogTheme &theme : catalog->themes)
            out += QStringLiteral("%1\t%2\t%3 KB\t%4%5\n")
                       .arg(theme.id, theme.name)
                       .arg((theme.fileSize + 1023) / 1024)
                       .arg(theme.author ? theme.author->name : QString(), service.isInstalled(theme) ? QStringLiteral("\tinstalled") : QString());
        return CommandResult::ok(out);
    }

    const SpacesCatalogTheme *theme = catalog->theme(args.first());
    if (!theme)
        return CommandResult::usage(QStringLiteral("no theme '%1' in the catalogue; see 'tillmora theme catalog'").arg(args.first()));
    std::optional<SpacesThemeCatalogService::InstallResult> outcome;
    CommandResult imported;
    QEventLoop loop;
    service.install(
        *theme,
        [&](const QString &file, QString *why) -> std::optional<QUuid> {
            // Asked for by name: a theme installed before comes again.
            imported = importPackage({QStringLiteral("theme"), QStringLiteral("import"), file, QStringLiteral("--again")});
            if (imported.exitCode != 0) {
                *why = imported.err.trimmed();
                return std::nullopt;
            }
            return Uuids::fromText(imported.out.trimmed());
        },
        [](double) {},
        [&](const SpacesThemeCatalogService::InstallResult &result) {
            outcome = result;
            loop.quit();
        });
    if (!outcome)
        loop.exec();
    if (!outcome->spaceId) {
        // The importer's refusal is already worded for the user.
        if (!outcome->error)
            return {1, QString(), imported.err};
        return CommandResult::failure(outcome->message);
    }
    return {0, imported.out, imported.err};
}

// The launcher asks the user what to do with the package.
CommandResult openInLauncher(const QStringList &args, CommandContext &context)
{
    if (args.size() != 1)
        return CommandResult::usage(QStringLiteral("expected 'theme open FILE'"));
    if (context.waitForLaunches)
        return CommandResult::failure(QStringLiteral("no launcher runs to ask; use 'tillmora theme import FILE'"));
    if (!QFileInfo(args.first()).isFile())
        return CommandResult::failure(QStringLiteral("no file '%1'").arg(args.first()));
    Q_EMIT context.composition.spacesViewModel->themeFileOpened(QFileInfo(args.first()).absoluteFilePath());
    return CommandResult::ok();
}

bool readsOnly(const QStringList &args)
{
    const QString sub = args.value(0);
    return sub == QLatin1String("inspect") || sub == QLatin1String("catalog") || sub == QLatin1String("open");
}

CommandResult run(const QStringList &args, CommandContext &context)
{
    const QString sub = args.value(0);
    if (sub == QLatin1String("export"))
        return exportSpace(args.mid(1), context);
    if (sub == QLatin1String("inspect"))
        return inspect(args.mid(1), context);
    if (sub == QLatin1String("import"))
        return import(args.mid(1), context);
    if (sub == QLatin1String("open"))
        return openInLauncher(args.mid(1), context);
    return CommandResult::usage(Verbs::expected("theme"));
}

}
