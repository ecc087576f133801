#pragma once

#include "cli/CommandResult.h"

#include <QStringList>

// `tillmora defaults read|write|delete`: the settings store, raw. No
// migrations run and no layout is loaded.
namespace DefaultsCommand {
// args are the words after "defaults"; configDirectory empty = the default.
CommandResult run(const QStringList &args, const QString &configDirectory = {});
}
