#include "cli/InstanceCommands.h"

#include "app/LaunchpadWindowController.h"
#include "cli/CommandResult.h"
#include "cli/LayoutCommands.h"
#include "layout/LaunchpadViewModel.h"

#include <QJsonArray>
#include <QPointer>

namespace InstanceCommands {

namespace {

QJsonObject toJson(const CommandResult &result)
{
    return {{"exitCode", result.exitCode}, {"out", result.out}, {"err", result.err}};
}

void runWhenLoaded(const QStringList &args, LaunchpadWindowController &controller, const InstanceChannel::Reply &reply)
{
    LaunchpadViewModel *model = controller.layout();
    if (!model->isLoading()) {
        reply(toJson(LayoutCommands::run(args, *model)));
        return;
    }
    // Commands act on the reconciled layout, never on a half-loaded one.
    auto connection = std::make_shared<QMetaObject::Connection>();
    *connection = QObject::connect(model, &LaunchpadViewModel::loadFinished, model, [=] {
        if (model->isLoading())
            return;
        QObject::disconnect(*connection);
        reply(toJson(LayoutCommands::run(args, *model)));
    });
}

}

void handle(const QJsonObject &request, LaunchpadWindowController &controller, InstanceChannel::Reply reply)
{
    const QString command = request.value(QLatin1String("command")).toString();
    if (command == QLatin1String("activate")) {
        controller.showOverlay();
        reply({{"ok", true}});
        return;
    }
    if (command != QLatin1String("cli")) {
        reply({{"error", "unknown request"}});
        return;
    }
    QStringList args;
    for (const QJsonValue &v : request.value(QLatin1String("args")).toArray())
        args.append(v.toString());
    const QString verb = args.value(0);
    if (args.size() == 1 && verb == QLatin1String("toggle")) {
        controller.toggleOverlay();
        reply(toJson(CommandResult::ok()));
    } else if (args.size() == 1 && verb == QLatin1String("show")) {
        controller.showOverlay();
        reply(toJson(CommandResult::ok()));
    } else if (args.size() == 1 && verb == QLatin1String("hide")) {
        controller.hideOverlay();
        reply(toJson(CommandResult::ok()));
    } else if (LayoutCommands::handles(verb)) {
        runWhenLoaded(args, controller, reply);
    } else {
        reply(toJson(CommandResult::usage(QStringLiteral("unknown command '%1'; see 'tillmora --help'").arg(verb))));
    }
}

}
