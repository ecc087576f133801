#pragma once

#include "cli/CommandResult.h"

#include <QStringList>

struct CommandContext;

// The look, the apps' own names and icons, and the activation shortcuts.
// Values are checked before anything is written and go through the
// repositories and managers that own them; in the running launcher the
// overlay and the inputs follow at once. Each takes the arguments after its verb.
namespace SettingsCommands {
CommandResult appearance(const QStringList &args, CommandContext &context);
CommandResult icon(const QStringList &args, CommandContext &context);
CommandResult rename(const QStringList &args, CommandContext &context);
CommandResult hotkey(const QStringList &args, CommandContext &context);
CommandResult hotcorner(const QStringList &args, CommandContext &context);
CommandResult wallpaper(const QStringList &args, CommandContext &context);

// The forms that only read: "appearance [--json]", "hotkey", "hotcorner".
bool appearanceReadsOnly(const QStringList &args);
bool readsOnlyWithoutArguments(const QStringList &args);
}
