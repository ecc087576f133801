#pragma once

#include "cli/CommandResult.h"

#include <QStringList>

struct CommandContext;

// `tillmora theme ...`: exporting a Space as a package, reading and
// importing packages, and the themes catalogue.
namespace ThemeCommands {
// args follow the word "theme".
CommandResult run(const QStringList &args, CommandContext &context);
bool readsOnly(const QStringList &args);
}
