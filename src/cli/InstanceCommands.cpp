#include "cli/InstanceCommands.h"

#include "app/LaunchpadWindowController.h"
#include "cli/CommandContext.h"
#include "cli/CommandResult.h"
#include "cli/LayoutCommands.h"
#include "cli/Verbs.h"
#include "layout/LaunchpadViewModel.h"
#include "spaces/SpaceStorageProvider.h"
#include "spaces/SpacesViewModel.h"
#include "storage/UserDefaultsStore.h"

#include <QDir>
#include <QJsonArray>
#include <QScopeGuard>
#include <QPointer>

namespace InstanceCommands {

namespace {

QJsonObject toJson(const CommandResult &result)
{
    return {{"exitCode", result.exitCode}, {"out", result.out}, {"err", result.err}};
}

// The reply is sent only once the change is on disk, with the save's outcome;
// the overlay goes on meanwhile, however long the disk or a lock takes.
void runAndSave(const Invocation &invocation, LaunchpadWindowController &controller, const InstanceChannel::Reply &reply)
{
    // The command runs here in one go on the main thread, so borrowing the
    // client's folder for its duration changes nothing else.
    const QString ownFolder = QDir::currentPath();
    const bool borrowed = !invocation.workingDirectory.isEmpty() && QDir::setCurrent(invocation.workingDirectory);
    const auto restore = qScopeGuard([&] {
        if (borrowed)
            QDir::setCurrent(ownFolder);
    });
    const CommandResult result = invocation.kind == Invocation::Kind::Spaces
                                     ? Verbs::find(invocation.args)->spaces(invocation.args.mid(1), controller.spaces())
                                     : [&] {
                                           CommandContext context{*controller.layout(), *controller.workflows(),
                                                                  controller.composition(), false, &controller};
                                           return LayoutCommands::run(invocation.args, context);
                                       }();
    // A reading command's answer never waits for, or fails with, the
    // overlay's own pending saves.
    if (!invocation.changesLayout) {
        reply(toJson(result));
        return;
    }
    controller.composition().spaceStorageProvider->synchronizeAllInBackground(
        &controller, [result, reply](bool saved, const QString &error) {
            // The launcher keeps the change and retries the save; the exit
            // status still says it is not on disk now.
            reply(toJson(saved || result.exitCode != 0
                             ? result
                             : CommandResult::failure(
                                 QStringLiteral("the change is made but could not be saved yet: %1; Tillmora keeps "
                                                "trying")
                                     .arg(error))));
        });
}

void runWhenLoaded(const Invocation &invocation, LaunchpadWindowController &controller,
                   const InstanceChannel::Reply &reply)
{
    LaunchpadViewModel *model = controller.layout();
    if (!model->isLoading()) {
        runAndSave(invocation, controller, reply);
        return;
    }
    // Commands act on the reconciled layout, never on a half-loaded one.
    LaunchpadWindowController *owner = &controller;
    auto connection = std::make_shared<QMetaObject::Connection>();
    *connection = QObject::connect(model, &LaunchpadViewModel::loadFinished, model, [=] {
        if (model->isLoading())
            return;
        QObject::disconnect(*connection);
        runAndSave(invocation, *owner, reply);
    });
}

}

Invocation interpret(const QJsonObject &request)
{
    Invocation invocation;
    const QString command = request.value(QLatin1String("command")).toString();
    if (command == QLatin1String("activate")) {
        invocation.kind = Invocation::Kind::Activate;
        return invocation;
    }
    if (command != QLatin1String("cli")) {
        invocation.reply = {{"error", "unknown request"}};
        return invocation;
    }
    QStringList args;
    for (const QJsonValue &v : request.value(QLatin1String("args")).toArray()) {
        // A number or an object read as "" would run a command the client
        // never wrote ("move KEY" with an empty INDEX, a folder of "").
        if (!v.isString()) {
            invocation.reply = toJson(CommandResult::usage(QStringLiteral("arguments must be strings")));
            return invocation;
        }
        args.append(v.toString());
    }
    const Verbs::Verb *verb = Verbs::find(args);
    const bool runsHere = verb && verb->forwarded && !(verb->runsInCaller && verb->runsInCaller(args.mid(1)));
    // The small `tillmora` front end asks first and lets the full program
    // do whatever the launcher does not take (it prints the usage errors).
    if (!runsHere && request.value(QLatin1String("fallback")).toBool()) {
        invocation.reply = {{"error", "not forwarded"}};
        return invocation;
    }
    if (!verb || !verb->forwarded) {
        invocation.reply = toJson(CommandResult::usage(
            QStringLiteral("unknown command '%1'; see 'tillmora --help'").arg(args.value(0))));
        return invocation;
    }
    invocation.args = args;
    invocation.changesLayout = Verbs::changes(*verb, args);
    invocation.overlay = verb->overlay;
    invocation.kind = verb->overlay != Verbs::OverlayAction::None ? Invocation::Kind::Overlay
                      : verb->spaces                             ? Invocation::Kind::Spaces
                                                                 : Invocation::Kind::Layout;
    invocation.workingDirectory = request.value(QLatin1String("cwd")).toString();
    return invocation;
}

void handle(const QJsonObject &request, LaunchpadWindowController &controller, InstanceChannel::Reply reply)
{
    const Invocation invocation = interpret(request);
    switch (invocation.kind) {
    case Invocation::Kind::Refused: reply(invocation.reply); return;
    case Invocation::Kind::Activate:
        controller.showOverlay();
        reply({{"ok", true}});
        return;
    case Invocation::Kind::Layout:
    case Invocation::Kind::Spaces: runWhenLoaded(invocation, controller, reply); return;
    case Invocation::Kind::Overlay: break;
    }
    switch (invocation.overlay) {
    case Verbs::OverlayAction::Toggle: controller.toggleOverlay(); break;
    case Verbs::OverlayAction::Show: controller.showOverlay(); break;
    case Verbs::OverlayAction::Hide: controller.hideOverlay(); break;
    case Verbs::OverlayAction::Settings: controller.openSettings(); break;
    case Verbs::OverlayAction::None: break;
    }
    reply(toJson(CommandResult::ok()));
}

}
