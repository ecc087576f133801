#pragma once

#include "cli/CommandResult.h"

#include <QStringList>

class SpacesViewModel;

// `tillmora space ...`: the Spaces list, switching and editing. Runs in the
// launcher when one is up (so its grid switches at once), else headless.
namespace SpaceCommands {
// args follow the word "space".
CommandResult run(const QStringList &args, SpacesViewModel &spaces);
// Whether the sub-command only reads.
bool readsOnly(const QStringList &args);
}
