#pragma once

#include "cli/CommandResult.h"

#include <QStringList>

struct CommandContext;

// The commands of workflows and of file-system folders inside folders. As
// with the layout commands, every argument is checked before anything
// changes; each takes the arguments after its verb.
namespace WorkflowCommands {
CommandResult workflow(const QStringList &args, CommandContext &context);
// add-system and remove-system here; the other folder commands are the layout's.
CommandResult folder(const QStringList &args, CommandContext &context);
CommandResult openFolder(const QStringList &args, CommandContext &context);
}
