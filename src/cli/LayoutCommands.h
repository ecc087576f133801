#pragma once

#include "cli/CommandResult.h"

#include <QStringList>

class LaunchpadViewModel;
struct CommandContext;

// The commands that read or change the layout. Every argument is checked
// before anything changes, so a rejected command leaves the stored data as
// it was. The same code runs headless and inside the running launcher; the
// verb table (cli/Verbs.h) names them. Each takes the arguments after its
// verb; the model has finished loading.
namespace LayoutCommands {
CommandResult apps(const QStringList &args, LaunchpadViewModel &model);
CommandResult layout(const QStringList &args, LaunchpadViewModel &model);
CommandResult place(const QStringList &args, LaunchpadViewModel &model);
CommandResult remove(const QStringList &args, LaunchpadViewModel &model);
CommandResult move(const QStringList &args, LaunchpadViewModel &model);
CommandResult hide(const QStringList &args, LaunchpadViewModel &model);
CommandResult unhide(const QStringList &args, LaunchpadViewModel &model);
CommandResult folder(const QStringList &args, LaunchpadViewModel &model);
CommandResult widget(const QStringList &args, LaunchpadViewModel &model);

// args start with the verb, which must be one of the above.
CommandResult run(const QStringList &args, LaunchpadViewModel &model);
// The same for any verb that runs on a loaded layout, with or without the context.
CommandResult run(const QStringList &args, CommandContext &context);

// One field of plain output, with tabs, newlines and control characters escaped.
QString plainField(const QString &text);
}
