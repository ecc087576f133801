#include "cli/LayoutCommands.h"

#include "cli/CommandContext.h"
#include "cli/Verbs.h"
#include "layout/FolderAppsGrid.h"
#include "layout/FolderSlotManager.h"
#include "layout/LaunchpadViewModel.h"
#include "layout/LayoutRefusal.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"
#include "foundation/WidgetItem.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

namespace LayoutCommands {

namespace {

using Args = QStringList;

QString json(const QJsonValue &value)
{
    const QJsonDocument doc = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    return QString::fromUtf8(doc.toJson(QJsonDocument::Indented));
}

// Takes "--name VALUE" out of args; nothing when absent, error when VALUE is missing.
std::optional<QString> takeOption(Args &args, const QString &name, QString *error)
{
    const qsizetype at = args.indexOf(name);
    if (at < 0)
        return std::nullopt;
    if (at + 1 >= args.size()) {
        *error = QStringLiteral("%1 needs a value").arg(name);
        return std::nullopt;
    }
    const QString value = args.at(at + 1);
    args.remove(at, 2);
    return value;
}

std::optional<qsizetype> parseIndex(const QString &text)
{
    bool ok = false;
    const qlonglong n = text.toLongLong(&ok);
    if (!ok || n < 0)
        return std::nullopt;
    return qsizetype(n);
}

// The last cell a command may name on the grid: the end of the page after
// the last occupied cell. Anything further would only add empty pages.
qsizetype lastGridIndex(const LaunchpadViewModel &model)
{
    const QStringList &slots = model.slots();
    qsizetype last = slots.size() - 1;
    while (last >= 0 && slots.at(last).isEmpty())
        --last;
    const PageGeometry grid = model.geometry();
    const int lastPage = last < 0 ? 0 : grid.pageOf(int(std::min<qsizetype>(last, std::numeric_limits<int>::max())));
    return qsizetype(grid.pageStart(lastPage + 2)) - 1;
}

// A cell of the grid given on the command line, checked before anything
// changes; *error says what is valid.
std::optional<qsizetype> parseGridIndex(const QString &text, const LaunchpadViewModel &model, const char *what,
                                        QString *error)
{
    const qsizetype last = lastGridIndex(model);
    const auto index = parseIndex(text);
    if (!index || *index > last) {
        *error = QStringLiteral("%1 must be a cell number from 0 to %2, got '%3'")
                     .arg(QLatin1String(what)).arg(last).arg(text);
        return std::nullopt;
    }
    return index;
}

bool hasUnknownOption(const Args &args, QString *error)
{
    for (const QString &a : args)
        if (a.startsWith(QLatin1String("--"))) {
            *error = QStringLiteral("unknown option '%1'").arg(a);
            return true;
        }
    return false;
}

// A bare path is taken as an app key.
QString normalisedKey(const QString &key)
{
    return SlotKey::kindOf(key) == SlotKey::Kind::App ? SlotKey::app(SlotKey::appPath(key)) : key;
}

bool isInstalled(const LaunchpadViewModel &model, const QString &path)
{
    const GridEntryOrEmpty entry = model.resolve(SlotKey::app(path));
    return entry && std::holds_alternative<AppItem>(*entry);
}

QString unknownKey(const QString &key, LayoutRefusal why)
{
    return QStringLiteral("unknown key '%1': %2").arg(key, describe(why));
}

QString unknownApp(const QString &path)
{
    return QStringLiteral("unknown app '%1': %2").arg(path, describe(LayoutRefusal::UnknownApp));
}

// "SUBJECT was not VERB: reason", the one-line form of every refusal.
CommandResult refused(const QString &subject, const char *verb, LayoutRefusal why)
{
    return CommandResult::failure(QStringLiteral("%1 was not %2: %3").arg(subject, QLatin1String(verb), describe(why)));
}

// The key names something that exists and may stand on the grid as an icon.
QString checkIconKey(const LaunchpadViewModel &model, const QString &key)
{
    switch (SlotKey::kindOf(key)) {
    case SlotKey::Kind::Empty: return QStringLiteral("KEY must not be empty");
    case SlotKey::Kind::WidgetAnchor:
    case SlotKey::Kind::WidgetBlock:
        return QStringLiteral("widget keys are moved with 'tillmora widget move ID SLOT'");
    case SlotKey::Kind::App:
        if (SlotKey::isEmptyOrMalformed(key))
            return QStringLiteral("malformed key '%1'; expected A:/path/to/app").arg(key);
        return isInstalled(model, SlotKey::appPath(key)) ? QString() : unknownKey(key, LayoutRefusal::UnknownApp);
    case SlotKey::Kind::Folder:
        return model.resolve(key) ? QString() : unknownKey(key, LayoutRefusal::UnknownFolder);
    case SlotKey::Kind::Workflow:
        return model.resolve(key) ? QString() : unknownKey(key, LayoutRefusal::UnknownWorkflow);
    }
    return {};
}

std::optional<QUuid> findFolder(const LaunchpadViewModel &model, const QString &text)
{
    const auto id = Uuids::fromText(text);
    if (!id || !model.folder(*id))
        return std::nullopt;
    return id;
}

}

// One field of plain output: tabs and newlines separate fields and lines,
// so a name containing them (a desktop entry may) must not forge either.
// Backslash escapes, as C writes them.
QString plainField(const QString &text)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        switch (c.unicode()) {
        case u'\\': out += QLatin1String("\\\\"); break;
        case u'\t': out += QLatin1String("\\t"); break;
        case u'\n': out += QLatin1String("\\n"); break;
        case u'\r': out += QLatin1String("\\r"); break;
        default:
            if (c.unicode() < 0x20 || c.unicode() == 0x7f)
                out += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
            else
                out += c;
        }
    }
    return out;
}

CommandResult apps(const Args &input, LaunchpadViewModel &model)
{
    Args args = input;
    const bool asJson = args.removeAll(QStringLiteral("--json")) > 0;
    QString error;
    if (hasUnknownOption(args, &error) || !args.isEmpty())
        return CommandResult::usage(error.isEmpty() ? Verbs::expected("apps") : error);
    if (asJson) {
        QJsonArray array;
        for (const AppItem &app : model.apps())
            array.append(app.toJson());
        return CommandResult::ok(json(array));
    }
    QString out;
    for (const AppItem &app : model.apps())
        out += plainField(app.path) + u'\t' + plainField(app.displayName) + u'\n';
    return CommandResult::ok(out);
}

CommandResult layout(const Args &input, LaunchpadViewModel &model)
{
    Args args = input;
    const bool asJson = args.removeAll(QStringLiteral("--json")) > 0;
    QString error;
    if (hasUnknownOption(args, &error) || !args.isEmpty())
        return CommandResult::usage(error.isEmpty() ? Verbs::expected("layout") : error);
    if (asJson) {
        QJsonArray folders, widgets, workflows, hidden;
        for (const FolderItem &f : model.folders())
            folders.append(f.toJson());
        for (const WidgetItem &w : model.widgets())
            widgets.append(w.toJson());
        for (const WorkflowItem &w : model.workflows())
            workflows.append(w.toJson());
        QStringList hiddenPaths = model.hiddenApps().values();
        hiddenPaths.sort();
        return CommandResult::ok(json(QJsonObject{{"slots", QJsonArray::fromStringList(model.slots())},
                                                  {"folders", folders},
                                                  {"widgets", widgets},
                                                  {"workflows", workflows},
                                                  {"hiddenApps", QJsonArray::fromStringList(hiddenPaths)},
                                                  {"layoutRevision", model.layoutRevision()}}));
    }
    QString out;
    for (int page = 0; page < model.pageCount(); ++page) {
        QStringList cells = model.pageKeys(page);
        for (QString &cell : cells)
            cell = cell.isEmpty() ? QStringLiteral("-") : plainField(cell);
        out += cells.join(u'\t') + u'\n';
    }
    return CommandResult::ok(out);
}

CommandResult place(const Args &args, LaunchpadViewModel &model)
{
    if (args.size() != 1)
        return CommandResult::usage(Verbs::expected("place"));
    const QString key = normalisedKey(args.first());
    if (const QString problem = checkIconKey(model, key); !problem.isEmpty())
        return CommandResult::usage(problem);
    const auto at = model.insertKey(key);
    if (!at)
        return refused(key, "placed", at.error());
    return CommandResult::ok(QString::number(*at) + u'\n');
}

CommandResult remove(const Args &args, LaunchpadViewModel &model)
{
    if (args.size() != 1)
        return CommandResult::usage(Verbs::expected("remove"));
    const QString key = normalisedKey(args.first());
    if (SlotKey::isWidgetMarker(key))
        return CommandResult::usage(QStringLiteral("widget keys are removed with 'tillmora widget remove ID'"));
    if (const auto removed = model.removeKey(key); !removed)
        return CommandResult::usage(unknownKey(key, removed.error())); // nothing changed
    return CommandResult::ok();
}

CommandResult move(const Args &args, LaunchpadViewModel &model)
{
    if (args.size() != 2)
        return CommandResult::usage(Verbs::expected("move"));
    const QString key = normalisedKey(args.at(0));
    if (const QString problem = checkIconKey(model, key); !problem.isEmpty())
        return CommandResult::usage(problem);
    QString error;
    const auto index = parseGridIndex(args.at(1), model, "INDEX", &error);
    if (!index)
        return CommandResult::usage(error);
    if (const auto moved = model.moveKey(key, *index); !moved)
        return refused(key, "moved", moved.error());
    return CommandResult::ok();
}

CommandResult hide(const Args &args, LaunchpadViewModel &model)
{
    if (args.size() != 1)
        return CommandResult::usage(Verbs::expected("hide"));
    const QString path = SlotKey::appPath(args.first());
    if (!isInstalled(model, path))
        return CommandResult::usage(unknownApp(path));
    if (model.hiddenApps().contains(path))
        return refused(path, "hidden", LayoutRefusal::AlreadyHidden);
    model.hideApp(path);
    return CommandResult::ok();
}

CommandResult unhide(const Args &args, LaunchpadViewModel &model)
{
    if (args.size() != 1)
        return CommandResult::usage(Verbs::expected("unhide"));
    const QString path = SlotKey::appPath(args.first());
    if (const auto shown = model.unhideApp(path); !shown)
        return CommandResult::usage(QStringLiteral("'%1': %2").arg(path, describe(shown.error())));
    return CommandResult::ok();
}

CommandResult folder(const Args &input, LaunchpadViewModel &model)
{
    Args args = input;
    const QString verb = args.isEmpty() ? QString() : args.takeFirst();
    QString error;
    if (verb == QLatin1String("create")) {
        const auto slot = takeOption(args, QStringLiteral("--slot"), &error);
        QStringList systemFolders;
        while (const auto folderPath = takeOption(args, QStringLiteral("--system-folder"), &error))
            systemFolders.append(*folderPath);
        if (!error.isEmpty() || hasUnknownOption(args, &error))
            return CommandResult::usage(error);
        if (args.isEmpty() || args.first().trimmed().isEmpty())
            return CommandResult::usage(QStringLiteral("expected 'folder create NAME [--slot N] [--system-folder PATH]... PATH...'"));
        const QString name = args.takeFirst().trimmed();
        std::optional<qsizetype> preferred;
        if (slot) {
            preferred = parseGridIndex(*slot, model, "--slot", &error);
            if (!preferred)
                return CommandResult::usage(error);
        }
        QStringList paths;
        for (const QString &arg : args) {
            const QString path = SlotKey::appPath(arg);
            if (!isInstalled(model, path))
                return CommandResult::usage(unknownApp(arg));
            if (!paths.contains(path))
                paths.append(path);
        }
        if (paths.isEmpty() && systemFolders.isEmpty())
            return CommandResult::usage(QStringLiteral("a folder needs at least one app PATH or --system-folder"));
        const auto created = model.createFolder(name, paths, systemFolders, preferred);
        if (!created)
            return refused(QStringLiteral("the folder"), "created", created.error());
        return CommandResult::ok(Uuids::toText(created->id) + u'\n');
    }
    if (verb == QLatin1String("move")) {
        const auto raw = takeOption(args, QStringLiteral("--grid"), &error);
        if (!error.isEmpty() || hasUnknownOption(args, &error) || args.size() != 3)
            return CommandResult::usage(error.isEmpty() ? QStringLiteral("expected 'folder move FOLDER_ID KEY INDEX [--grid RAW]'") : error);
        const auto id = findFolder(model, args.at(0));
        if (!id)
            return CommandResult::usage(QStringLiteral("unknown folder id '%1'").arg(args.at(0)));
        std::optional<FolderAppsGrid> shape;
        if (raw) {
            shape = FolderAppsGrids::fromRawValue(*raw);
            if (!shape)
                return CommandResult::usage(QStringLiteral("unknown folder grid '%1'; expected rows x columns such as 4x5").arg(*raw));
        }
        const QStringList shown = model.shownFolderSlots(*id);
        // A folder's cells: its members' pages and one page more.
        const qsizetype lastCell = shown.size() - 1 + FolderAppsGrids::cellsPerPage(shape.value_or(model.folderAppsGrid()));
        const auto index = parseIndex(args.at(2));
        if (!index || *index > lastCell)
            return CommandResult::usage(QStringLiteral("INDEX must be a cell number from 0 to %1, got '%2'").arg(lastCell).arg(args.at(2)));
        QString key = args.at(1);
        if (!shown.contains(key)) {
            // Members may be stored with or without the "A:" prefix.
            const QString path = SlotKey::appPath(key);
            const QString other = shown.contains(path) ? path : SlotKey::app(path);
            if (path.isEmpty() || !shown.contains(other))
                return CommandResult::usage(QStringLiteral("'%1' is not in folder %2").arg(key, args.at(0)));
            key = other;
        }
        std::unique_ptr<FolderSlotManager> manager(model.makeFolderSlotManager(*id));
        if (shape)
            manager->setGrid(*shape);
        manager->moveKey(key, int(*index));
        return CommandResult::ok();
    }
    if (verb == QLatin1String("rename")) {
        if (args.size() != 2 || args.at(1).trimmed().isEmpty())
            return CommandResult::usage(QStringLiteral("expected 'folder rename FOLDER_ID NAME'"));
        const auto id = findFolder(model, args.at(0));
        if (!id)
            return CommandResult::usage(QStringLiteral("unknown folder id '%1'").arg(args.at(0)));
        const auto renamed = model.renameFolder(*id, args.at(1).trimmed());
        return renamed ? CommandResult::ok() : refused(QStringLiteral("the folder"), "renamed", renamed.error());
    }
    if (verb == QLatin1String("delete")) {
        if (args.size() != 1)
            return CommandResult::usage(QStringLiteral("expected 'folder delete FOLDER_ID'"));
        const auto id = findFolder(model, args.at(0));
        if (!id)
            return CommandResult::usage(QStringLiteral("unknown folder id '%1'").arg(args.at(0)));
        const auto dissolved = model.dissolveFolder(*id);
        return dissolved ? CommandResult::ok() : refused(QStringLiteral("the folder"), "deleted", dissolved.error());
    }
    return CommandResult::usage(Verbs::expected("folder"));
}

CommandResult widget(const Args &input, LaunchpadViewModel &model)
{
    Args args = input;
    const QString verb = args.isEmpty() ? QString() : args.takeFirst();
    QString error;
    if (verb == QLatin1String("add")) {
        const auto slot = takeOption(args, QStringLiteral("--slot"), &error);
        if (!error.isEmpty() || hasUnknownOption(args, &error) || args.size() != 2)
            return CommandResult::usage(error.isEmpty() ? QStringLiteral("expected 'widget add KIND SIZE [--slot N]'") : error);
        if (!WidgetKinds::known().contains(args.at(0)))
            return CommandResult::usage(QStringLiteral("unknown widget kind '%1'; expected %2")
                                            .arg(args.at(0), WidgetKinds::known().join(QStringLiteral(" or "))));
        const auto size = WidgetSizes::fromDimensions(args.at(1));
        if (!size)
            return CommandResult::usage(QStringLiteral("unknown widget size '%1'; expected 2x2, 3x2, 2x3 or 3x3").arg(args.at(1)));
        std::optional<qsizetype> requested;
        if (slot) {
            requested = parseGridIndex(*slot, model, "--slot", &error);
            if (!requested)
                return CommandResult::usage(error);
        }
        const auto added = model.addWidget(args.at(0), *size, requested);
        if (!added)
            return refused(QStringLiteral("the %1 widget").arg(args.at(1)), "added", added.error());
        return CommandResult::ok(Uuids::toText(added->id) + u'\n');
    }
    if (verb == QLatin1String("move") || verb == QLatin1String("remove")) {
        const int expected = verb == QLatin1String("move") ? 2 : 1;
        if (args.size() != expected)
            return CommandResult::usage(verb == QLatin1String("move") ? QStringLiteral("expected 'widget move ID SLOT'")
                                                                      : QStringLiteral("expected 'widget remove ID'"));
        const auto id = Uuids::fromText(args.at(0));
        if (!id || !model.widget(*id))
            return CommandResult::usage(QStringLiteral("unknown widget id '%1'").arg(args.at(0)));
        if (verb == QLatin1String("remove")) {
            const auto removed = model.removeWidget(*id);
            return removed ? CommandResult::ok() : refused(QStringLiteral("the widget"), "removed", removed.error());
        }
        const auto slot = parseGridIndex(args.at(1), model, "SLOT", &error);
        if (!slot)
            return CommandResult::usage(error);
        const auto moved = model.moveWidget(*id, *slot);
        return moved ? CommandResult::ok() : refused(QStringLiteral("the widget"), "moved", moved.error());
    }
    return CommandResult::usage(Verbs::expected("widget"));
}

CommandResult run(const QStringList &args, LaunchpadViewModel &model)
{
    const Verbs::Verb *verb = Verbs::find(args);
    if (!verb || !verb->layout)
        return CommandResult::usage(QStringLiteral("unknown command '%1'; see 'tillmora --help'").arg(args.value(0)));
    return verb->layout(args.mid(1), model);
}

CommandResult run(const QStringList &args, CommandContext &context)
{
    const Verbs::Verb *verb = Verbs::find(args);
    if (verb && verb->withContext)
        return verb->withContext(args.mid(1), context);
    return run(args, context.layout);
}

}
