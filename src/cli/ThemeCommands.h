#pragma once

#include "cli/CommandResult.h"

#include <QStringList>
#include <functional>

struct CommandContext;

// `tillmora theme ...`: exporting a Space as a package, reading and
// importing packages, and the themes catalogue.
namespace ThemeCommands {
// args follow the word "theme".
CommandResult run(const QStringList &args, CommandContext &context);
bool readsOnly(const QStringList &args);
// The catalogue sub-commands run in the calling process (downloads do not
// hold up the launcher); a downloaded package is imported through
// importPackage, which takes `theme import` arguments.
bool isCatalogCommand(const QStringList &args);
CommandResult runCatalog(const QStringList &args, const std::function<CommandResult(const QStringList &)> &importPackage);
}
