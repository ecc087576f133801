#pragma once

#include "cli/CommandResult.h"

#include <QStringList>

class LaunchpadViewModel;

// The commands that read or change the layout: apps, layout, place, remove,
// move, hide, unhide, folder ..., widget .... Every argument is checked before
// anything changes, so a rejected command leaves the stored data as it was.
// The same code runs headless and inside the running launcher.
namespace LayoutCommands {
bool handles(const QString &command);
// args start with the command word; the model has finished loading.
CommandResult run(const QStringList &args, LaunchpadViewModel &model);
}
