#include "cli/CommandLine.h"

#include "app/InstanceChannel.h"
#include "cli/CommandResult.h"
#include "cli/DefaultsCommand.h"
#include "cli/HeadlessSession.h"
#include "cli/LayoutCommands.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QLoggingCategory>
#include <QProcess>
#include <cstdio>

namespace CommandLine {

namespace {

// A command waits this long for the running launcher (it may be loading).
constexpr int kInstanceTimeoutMs = 120000;

void print(FILE *stream, const QString &text)
{
    std::fputs(text.toUtf8().constData(), stream);
    std::fflush(stream);
}

int finish(const CommandResult &result)
{
    print(stdout, result.out);
    print(stderr, result.err);
    return result.exitCode;
}

bool launcherRunning()
{
    return InstanceChannel::send(InstanceChannel::defaultSocketPath(), {{"command", "hello"}}, 2000).has_value();
}

std::optional<CommandResult> forward(const QStringList &args)
{
    const auto reply = InstanceChannel::send(InstanceChannel::defaultSocketPath(),
                                             {{"command", "cli"}, {"args", QJsonArray::fromStringList(args)}},
                                             kInstanceTimeoutMs);
    if (!reply || reply->contains(QLatin1String("error")))
        return std::nullopt;
    return CommandResult{reply->value(QLatin1String("exitCode")).toInt(), reply->value(QLatin1String("out")).toString(),
                         reply->value(QLatin1String("err")).toString()};
}

bool isOverlayCommand(const QStringList &args)
{
    static const QStringList verbs{QStringLiteral("toggle"), QStringLiteral("show"), QStringLiteral("hide")};
    return args.size() == 1 && verbs.contains(args.first());
}

CommandResult overlayCommand(const QStringList &args)
{
    if (launcherRunning()) {
        if (const auto result = forward(args))
            return *result;
        return CommandResult::failure(QStringLiteral("the running launcher did not answer"));
    }
    if (args.first() == QLatin1String("hide"))
        return CommandResult::ok(); // nothing is shown
    // Started without arguments, the launcher shows its overlay.
    if (!QProcess::startDetached(QCoreApplication::applicationFilePath(), {}))
        return CommandResult::failure(QStringLiteral("could not start the launcher"));
    return CommandResult::ok();
}

CommandResult layoutCommand(const QStringList &args, const CataloguePlatform &catalogue)
{
    if (launcherRunning()) {
        if (const auto result = forward(args))
            return *result;
        return CommandResult::failure(QStringLiteral("the running launcher did not answer"));
    }
    HeadlessSession session(StorageLocations::fromEnvironment(), catalogue);
    const CommandResult result = LayoutCommands::run(args, session.loadedModel());
    session.flush();
    return result;
}

}

bool startsLauncher(const QStringList &arguments)
{
    for (const QString &a : arguments.mid(1))
        if (a != QLatin1String("--login-item"))
            return false;
    return true;
}

QString helpText()
{
    return QStringLiteral(
        "Usage: tillmora [--login-item]\n"
        "       tillmora COMMAND [ARGUMENTS]\n"
        "\n"
        "With no command, starts the launcher (or shows the one already running).\n"
        "A command is carried out by the running launcher, so its grid updates at once;\n"
        "when none runs, the stored layout is loaded here, changed and saved.\n"
        "\n"
        "Options:\n"
        "  --help, -h                 Show this help and exit.\n"
        "  --version                  Show the version and exit.\n"
        "  --login-item               Start in the background without opening the overlay.\n"
        "\n"
        "Overlay:\n"
        "  toggle | show | hide       Toggle, show or hide the overlay (toggle and show\n"
        "                             start the launcher when none runs).\n"
        "\n"
        "Reading the layout:\n"
        "  apps [--json]              Installed applications: path and name per line.\n"
        "  layout [--json]            The grid: one line per page, cells separated by\n"
        "                             tabs, '-' for an empty cell. --json adds folders,\n"
        "                             widgets, workflows, hidden apps and the revision.\n"
        "\n"
        "Changing the grid (KEY is A:/path, F:<uuid> or WF:<uuid>; a bare path is an app):\n"
        "  place KEY                  Put KEY in the first empty cell (or at the end).\n"
        "  remove KEY                 Empty the cell holding KEY.\n"
        "  move KEY INDEX             Move KEY to cell INDEX as a drag and drop would.\n"
        "  hide PATH | unhide PATH    Hide an application, or show it again.\n"
        "\n"
        "Folders:\n"
        "  folder create NAME [--slot N] [--system-folder PATH]... PATH...\n"
        "                             Make a folder of the apps; prints its id.\n"
        "  folder move FOLDER_ID KEY INDEX [--grid RAW]\n"
        "                             Move KEY inside the folder; RAW is a folder grid\n"
        "                             such as 4x5 (rows x columns), else the stored one.\n"
        "  folder rename FOLDER_ID NAME\n"
        "  folder delete FOLDER_ID    Its apps go back to the grid.\n"
        "\n"
        "Widgets:\n"
        "  widget add KIND SIZE [--slot N]   SIZE is 2x2, 3x2, 2x3 or 3x3; prints its id.\n"
        "  widget move ID SLOT\n"
        "  widget remove ID\n"
        "\n"
        "Settings (raw, without loading the layout):\n"
        "  defaults read [--suite NAME] [KEY]\n"
        "  defaults write [--suite NAME] KEY TYPE VALUE...\n"
        "                             TYPE: -string -int -float -bool -date (ISO 8601)\n"
        "                             -data (hex) -array (values as strings) -json\n"
        "  defaults delete [--suite NAME] KEY\n"
        "\n"
        "Exit status: 0 success, 1 the operation failed, 2 the command line was wrong\n"
        "(nothing is changed then).\n");
}

int run(const QStringList &arguments, const CataloguePlatform &catalogue)
{
    // Only warnings reach the terminal; the layout's debug trail stays out of scripts' output.
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.info=false"));

    const QStringList args = arguments.mid(1);
    const QString command = args.value(0);
    if (command == QLatin1String("--help") || command == QLatin1String("-h") || command == QLatin1String("help"))
        return finish(CommandResult::ok(helpText()));
    if (command == QLatin1String("--version"))
        return finish(CommandResult::ok(QStringLiteral("tillmora %1\n").arg(QLatin1String(TILLMORA_VERSION))));
    if (command == QLatin1String("defaults"))
        return finish(DefaultsCommand::run(args.mid(1)));
    if (isOverlayCommand(args))
        return finish(overlayCommand(args));
    if (LayoutCommands::handles(command))
        return finish(layoutCommand(args, catalogue));
    return finish(CommandResult::usage(QStringLiteral("unknown command or option '%1'; see 'tillmora --help'").arg(command)));
}

}
