#include "cli/WorkflowCommands.h"

#include "app/CompositionRoot.h"
#include "catalogue/SystemFoldersService.h"
#include "cli/CommandContext.h"
#include "cli/LayoutCommands.h"
#include "cli/Verbs.h"
#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"
#include "layout/LaunchpadViewModel.h"
#include "layout/WorkflowsViewModel.h"
#include "organise/WorkflowLaunchService.h"

#include <QColor>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

#include <cmath>

namespace WorkflowCommands {

namespace {

using Args = QStringList;

// Takes every "--name VALUE" out of args, in order. *error is set when a
// VALUE is missing.
QStringList takeAll(Args &args, const QString &name, QString *error)
{
    QStringList values;
    for (qsizetype at = args.indexOf(name); at >= 0; at = args.indexOf(name, at)) {
        if (at + 1 >= args.size()) {
            *error = QStringLiteral("%1 needs a value").arg(name);
            args.remove(at);
            break;
        }
        values.append(args.at(at + 1));
        args.remove(at, 2);
    }
    return values;
}

// The last "--name VALUE"; an option given twice keeps the later value, as shells users expect.
std::optional<QString> takeOne(Args &args, const QString &name, QString *error)
{
    const QStringList values = takeAll(args, name, error);
    return values.isEmpty() ? std::nullopt : std::optional(values.last());
}

QString absoluteFolder(const QString &path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

std::optional<WorkflowItem> findWorkflow(const LaunchpadViewModel &model, const QString &text)
{
    const auto id = Uuids::fromText(text);
    return id ? model.workflow(*id) : std::nullopt;
}

// Applies the options of create and edit to workflow; every value is checked
// first, so on an error workflow is left as it was. Returns the error.
QString applyOptions(Args &args, WorkflowItem &workflow, const LaunchpadViewModel &model)
{
    QString error;
    const auto name = takeOne(args, QStringLiteral("--name"), &error);
    const auto emoji = takeOne(args, QStringLiteral("--emoji"), &error);
    const auto color = takeOne(args, QStringLiteral("--color"), &error);
    const auto image = takeOne(args, QStringLiteral("--image"), &error);
    const auto interval = takeOne(args, QStringLiteral("--interval"), &error);
    const QStringList apps = takeAll(args, QStringLiteral("--app"), &error);
    const QStringList folders = takeAll(args, QStringLiteral("--folder"), &error);
    const bool appsGiven = !apps.isEmpty();
    const bool foldersGiven = !folders.isEmpty();
    if (!error.isEmpty())
        return error;
    for (const QString &a : args)
        if (a.startsWith(QLatin1String("--")))
            return QStringLiteral("unknown option '%1'").arg(a);

    WorkflowItem changed = workflow;
    if (name) {
        if (name->trimmed().isEmpty())
            return QStringLiteral("NAME must not be empty");
        changed.name = name->trimmed();
    }
    if (emoji) {
        if (emoji->trimmed().isEmpty())
            return QStringLiteral("--emoji must not be empty");
        changed.emoji = emoji->trimmed();
        changed.iconType = WorkflowIconType::emoji;
    }
    if (color) {
        static const QRegularExpression hex(QStringLiteral("^#?([0-9A-Fa-f]{6})$"));
        const auto match = hex.match(*color);
        if (!match.hasMatch())
            return QStringLiteral("--color must be a hexadecimal colour such as #3478F6, got '%1'").arg(*color);
        changed.backgroundColorHex = u'#' + match.captured(1).toUpper();
    }
    if (image) {
        const QFileInfo file(*image);
        if (!file.isFile() || !QImageReader(file.absoluteFilePath()).canRead())
            return QStringLiteral("--image must be an image file, got '%1'").arg(*image);
        changed.imagePath = file.absoluteFilePath();
        changed.iconType = WorkflowIconType::image;
    }
    if (interval) {
        bool ok = false;
        const double seconds = interval->toDouble(&ok);
        if (!ok || !std::isfinite(seconds))
            return QStringLiteral("--interval must be a number of seconds, got '%1'").arg(*interval);
        changed.launchIntervalSeconds = seconds;
    }
    if (appsGiven) {
        changed.appPaths.clear();
        for (const QString &arg : apps) {
            const QString path = SlotKey::appPath(arg);
            const GridEntryOrEmpty entry = model.resolve(SlotKey::app(path));
            if (path.isEmpty() || !entry || !std::holds_alternative<AppItem>(*entry))
                return QStringLiteral("unknown app '%1': %2").arg(arg, describe(LayoutRefusal::UnknownApp));
            if (!changed.appPaths.contains(path))
                changed.appPaths.append(path);
        }
    }
    if (foldersGiven) {
        changed.folderPaths.clear();
        for (const QString &arg : folders) {
            if (!QFileInfo(arg).isDir())
                return QStringLiteral("not a folder: '%1'").arg(arg);
            const QString path = absoluteFolder(arg);
            if (!changed.folderPaths.contains(path))
                changed.folderPaths.append(path);
        }
    }
    workflow = changed;
    return {};
}

QString describeWorkflow(const WorkflowItem &w)
{
    return LayoutCommands::plainField(Uuids::toText(w.id)) + u'\t' + LayoutCommands::plainField(w.name) + u'\t'
        + QString::number(w.appPaths.size()) + QStringLiteral(" apps, ") + QString::number(w.folderPaths.size())
        + QStringLiteral(" folders, ") + QString::number(w.effectiveLaunchInterval()) + QStringLiteral(" s apart\n");
}

CommandResult list(Args args, CommandContext &context)
{
    const bool asJson = args.removeAll(QStringLiteral("--json")) > 0;
    if (!args.isEmpty())
        return CommandResult::usage(QStringLiteral("expected 'workflow list [--json]'"));
    if (asJson) {
        QJsonArray array;
        for (const WorkflowItem &w : context.layout.workflows())
            array.append(w.toJson());
        return CommandResult::ok(QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Indented)));
    }
    QString out;
    for (const WorkflowItem &w : context.layout.workflows())
        out += describeWorkflow(w);
    return CommandResult::ok(out);
}

CommandResult saved(const LayoutResult<WorkflowItem> &result, const char *verb)
{
    if (!result)
        return CommandResult::failure(
            QStringLiteral("the workflow was not %1: %2").arg(QLatin1String(verb), describe(result.error())));
    return CommandResult::ok(Uuids::toText(result->id) + u'\n');
}

CommandResult create(Args args, CommandContext &context)
{
    WorkflowItem workflow;
    workflow.id = QUuid::createUuid();
    workflow.emoji = QString::fromUtf8(WorkflowEditViewModel::kDefaultEmoji);
    workflow.backgroundColorHex = QLatin1String(WorkflowEditViewModel::kDefaultColor);
    if (const QString error = applyOptions(args, workflow, context.layout); !error.isEmpty())
        return CommandResult::usage(error);
    if (args.size() != 1 || args.first().trimmed().isEmpty())
        return CommandResult::usage(QStringLiteral("expected 'workflow create NAME [OPTIONS]'"));
    workflow.name = args.first().trimmed();
    return saved(context.workflows.save(workflow), "created");
}

CommandResult edit(Args args, CommandContext &context)
{
    if (args.isEmpty())
        return CommandResult::usage(QStringLiteral("expected 'workflow edit ID [OPTIONS]'"));
    const QString idText = args.takeFirst();
    auto workflow = findWorkflow(context.layout, idText);
    if (!workflow)
        return CommandResult::usage(QStringLiteral("unknown workflow id '%1'").arg(idText));
    if (const QString error = applyOptions(args, *workflow, context.layout); !error.isEmpty())
        return CommandResult::usage(error);
    if (!args.isEmpty())
        return CommandResult::usage(QStringLiteral("unexpected argument '%1'; the name is changed with --name").arg(args.first()));
    const auto result = context.workflows.save(*workflow);
    return result ? CommandResult::ok() : saved(result, "changed");
}

CommandResult remove(const Args &args, CommandContext &context)
{
    if (args.size() != 1)
        return CommandResult::usage(QStringLiteral("expected 'workflow delete ID'"));
    const auto workflow = findWorkflow(context.layout, args.first());
    if (!workflow)
        return CommandResult::usage(QStringLiteral("unknown workflow id '%1'").arg(args.first()));
    const auto removed = context.workflows.remove(workflow->id);
    return removed ? CommandResult::ok()
                   : CommandResult::failure(QStringLiteral("the workflow was not deleted: %1").arg(describe(removed.error())));
}

CommandResult launch(const Args &args, CommandContext &context)
{
    if (args.size() != 1)
        return CommandResult::usage(QStringLiteral("expected 'workflow launch ID'"));
    const auto workflow = findWorkflow(context.layout, args.first());
    if (!workflow)
        return CommandResult::usage(QStringLiteral("unknown workflow id '%1'").arg(args.first()));
    QEventLoop loop;
    bool done = false;
    const bool started = context.composition.workflowLaunchService->launch(
        *workflow, context.layout.apps(), [&done, &loop, wait = context.waitForLaunches](WorkflowLaunchService::Overlay) {
            done = true;
            if (wait)
                loop.quit();
        });
    if (!started)
        return CommandResult::failure(QStringLiteral("the workflow '%1' has nothing to launch").arg(workflow->name));
    if (context.waitForLaunches && !done)
        loop.exec();
    return CommandResult::ok();
}

}

CommandResult workflow(const QStringList &input, CommandContext &context)
{
    Args args = input;
    const QString verb = args.isEmpty() ? QString() : args.takeFirst();
    if (verb == QLatin1String("list"))
        return list(args, context);
    if (verb == QLatin1String("create"))
        return create(args, context);
    if (verb == QLatin1String("edit"))
        return edit(args, context);
    if (verb == QLatin1String("delete"))
        return remove(args, context);
    if (verb == QLatin1String("launch"))
        return launch(args, context);
    return CommandResult::usage(Verbs::expected("workflow"));
}

CommandResult folder(const QStringList &args, CommandContext &context)
{
    const QString verb = args.value(0);
    const bool adding = verb == QLatin1String("add-system");
    if (!adding && verb != QLatin1String("remove-system"))
        return LayoutCommands::folder(args, context.layout);
    if (args.size() != 3)
        return CommandResult::usage(QStringLiteral("expected 'folder %1 FOLDER_ID PATH'").arg(verb));
    const auto id = Uuids::fromText(args.at(1));
    auto folder = id ? context.layout.folder(*id) : std::nullopt;
    if (!folder)
        return CommandResult::usage(QStringLiteral("unknown folder id '%1'").arg(args.at(1)));
    const QString given = args.at(2);
    if (adding) {
        if (!QFileInfo(given).isDir())
            return CommandResult::usage(QStringLiteral("not a folder: '%1'").arg(given));
        const QString path = absoluteFolder(given);
        if (folder->systemFolderPaths.contains(path))
            return CommandResult::ok();
        folder->systemFolderPaths.append(path);
        context.composition.systemFoldersService->rememberFolder(path);
    } else {
        // A folder that no longer exists can still be taken out: match the path as stored, or as given.
        const QString path = folder->systemFolderPaths.contains(given) ? given : absoluteFolder(given);
        if (!folder->systemFolderPaths.contains(path))
            return CommandResult::usage(QStringLiteral("'%1' is not in folder %2").arg(given, args.at(1)));
        folder->systemFolderPaths.removeAll(path);
    }
    const auto updated = context.layout.updateFolder(*folder);
    return updated ? CommandResult::ok()
                   : CommandResult::failure(QStringLiteral("the folder was not changed: %1").arg(describe(updated.error())));
}

CommandResult openFolder(const QStringList &args, CommandContext &context)
{
    if (args.size() != 1)
        return CommandResult::usage(QStringLiteral("expected 'open-folder PATH'"));
    if (!QFileInfo(args.first()).isDir())
        return CommandResult::usage(QStringLiteral("not a folder: '%1'").arg(args.first()));
    const auto opened = context.composition.systemFoldersService->openFolder(absoluteFolder(args.first()));
    return opened ? CommandResult::ok() : CommandResult::failure(opened.error);
}

}
