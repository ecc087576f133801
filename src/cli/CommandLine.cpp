#include "cli/CommandLine.h"

#include "app/InstanceChannel.h"
#include "cli/CommandContext.h"
#include "cli/CommandResult.h"
#include "cli/HeadlessSession.h"
#include "storage/UserDefaultsStore.h"
#include "cli/LayoutCommands.h"
#include "cli/ThemeCommands.h"
#include "cli/Verbs.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QLoggingCategory>
#include <QProcess>
#include <QThread>
#include <cstdio>

#include <csignal>

namespace CommandLine {

namespace {

// A command waits this long for the running launcher (it may be loading).
constexpr int kInstanceTimeoutMs = 120000;
constexpr int kLauncherStartTimeoutMs = 20000;

// A process that exited but nobody reaped (a zombie) is gone too.
bool processAlive(qint64 pid)
{
    if (::kill(pid_t(pid), 0) != 0)
        return false;
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return true;
    const QByteArray line = stat.readAll();
    const qsizetype close = line.lastIndexOf(')');
    return close < 0 || line.mid(close + 2, 1) != "Z";
}

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
                                             {{"command", "cli"},
                                              {"args", QJsonArray::fromStringList(args)},
                                              {"cwd", QDir::currentPath()}},
                                             kInstanceTimeoutMs);
    if (!reply || reply->contains(QLatin1String("error")))
        return std::nullopt;
    return CommandResult{reply->value(QLatin1String("exitCode")).toInt(), reply->value(QLatin1String("out")).toString(),
                         reply->value(QLatin1String("err")).toString()};
}

CommandResult overlayCommand(const Verbs::Verb &verb, const QStringList &args)
{
    if (launcherRunning()) {
        if (const auto result = forward(args))
            return *result;
        return CommandResult::failure(QStringLiteral("the running launcher did not answer"));
    }
    if (verb.overlay == Verbs::OverlayAction::Hide)
        return CommandResult::ok(); // nothing is shown
    // Started without arguments, the launcher shows its overlay; for the
    // settings window it starts in the background and is asked once up.
    // Success is said only once it answers: without a display it cannot
    // start at all.
    const bool settings = verb.overlay == Verbs::OverlayAction::Settings;
    const QStringList launchArguments = settings ? QStringList{QStringLiteral("--login-item")} : QStringList{};
    qint64 pid = 0;
    if (!QProcess::startDetached(QCoreApplication::applicationFilePath(), launchArguments, QString(), &pid))
        return CommandResult::failure(QStringLiteral("could not start the launcher"));
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < kLauncherStartTimeoutMs) {
        if (launcherRunning()) {
            if (!settings)
                return CommandResult::ok();
            const auto opened = forward(args);
            return opened ? *opened : CommandResult::failure(QStringLiteral("the running launcher did not answer"));
        }
        if (!processAlive(pid))
            return CommandResult::failure(QStringLiteral("the launcher could not start; run 'tillmora' to see why"));
        QThread::msleep(100);
    }
    return CommandResult::failure(QStringLiteral("the launcher did not answer within %1 s").arg(kLauncherStartTimeoutMs / 1000));
}

// A command on the stored layout or Spaces: carried out by the running
// launcher, else here on the stored data.
CommandResult dataCommand(const Verbs::Verb &verb, const QStringList &args, const CataloguePlatform &catalogue)
{
    if (launcherRunning()) {
        if (const auto result = forward(args))
            return *result;
        return CommandResult::failure(QStringLiteral("the running launcher did not answer"));
    }
    // A command that only reads writes nothing: not the migrations, not what
    // this process's (perhaps narrower) view of the installed apps would
    // reconcile away.
    if (!Verbs::changes(verb, args))
        UserDefaultsStore::setProcessReadOnly(true);
    HeadlessSession session(StorageLocations::fromEnvironment(), catalogue);
    // The Spaces need no grid: a headless switch only moves the profile.
    const CommandResult result = verb.spaces ? verb.spaces(args.mid(1), session.spaces()) : [&] {
        session.loadedModel();
        CommandContext context = session.context();
        return LayoutCommands::run(args, context);
    }();
    const bool saved = session.flush();
    return CommandResult::saved(result, saved, session.saveError());
}

CommandResult showLauncher()
{
    if (launcherRunning()) {
        InstanceChannel::send(InstanceChannel::defaultSocketPath(), {{"command", "activate"}}, 2000);
        return CommandResult::ok();
    }
    return overlayCommand(*Verbs::find({QStringLiteral("show")}), {QStringLiteral("show")});
}

// The launcher (started when it must be) asks the user about the package;
// without a display to ask on, the package is imported as it is.
int openPackage(const QString &file, const CataloguePlatform &catalogue)
{
    const CommandResult shown = showLauncher();
    if (shown.exitCode != 0 || !launcherRunning()) {
        const QStringList args{QStringLiteral("theme"), QStringLiteral("import"), file};
        return finish(dataCommand(*Verbs::find(args), args, catalogue));
    }
    const auto opened = forward({QStringLiteral("theme"), QStringLiteral("open"), file});
    return finish(opened ? *opened : CommandResult::failure(QStringLiteral("the running launcher did not answer")));
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
    return Verbs::helpText();
}

int run(const QStringList &arguments, const CataloguePlatform &catalogue)
{
    // Only warnings reach the terminal; the layout's debug trail stays out of scripts' output.
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.info=false"));

    QStringList args = arguments.mid(1);
    // What a file manager runs for a package: import it as a new Space and
    // show the launcher with the news.
    const bool openedPackage = args.size() == 1 && args.first().endsWith(QLatin1String(".tillmoratheme"), Qt::CaseInsensitive)
                               && QFileInfo(args.first()).isFile();
    if (openedPackage)
        return openPackage(QFileInfo(args.first()).absoluteFilePath(), catalogue);
    const Verbs::Verb *verb = Verbs::find(args);
    if (verb && verb->runsInCaller && verb->runsInCaller(args.mid(1)))
        return finish(ThemeCommands::runCatalog(args.mid(1), [&](const QStringList &importArgs) {
            return dataCommand(*verb, importArgs, catalogue);
        }));
    if (verb && verb->local)
        return finish(verb->local(args.mid(1)));
    if (verb && verb->overlay != Verbs::OverlayAction::None)
        return finish(overlayCommand(*verb, args));
    if (verb && (verb->layout || verb->withContext || verb->spaces))
        return finish(dataCommand(*verb, args, catalogue));
    const QString command = args.value(0);
    // A known verb with arguments it does not take says what it takes.
    for (const Verbs::Verb &known : Verbs::all())
        if (command == QLatin1String(known.name))
            return finish(CommandResult::usage(Verbs::expected(known)));
    return finish(CommandResult::usage(QStringLiteral("unknown command or option '%1'; see 'tillmora --help'").arg(command)));
}

}
