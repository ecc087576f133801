#pragma once

#include "cli/CommandResult.h"

#include <QStringList>

#include "spaces/SpaceItem.h"

#include <optional>

class SpacesViewModel;

// `tillmora space ...`: the Spaces list, switching and editing. Runs in the
// launcher when one is up (so its grid switches at once), else headless.
namespace SpaceCommands {
// args follow the word "space".
CommandResult run(const QStringList &args, SpacesViewModel &spaces);
// A Space by id or by its exact name; a name two Spaces share is refused.
std::optional<SpaceItem> findSpace(const SpacesViewModel &spaces, const QString &text, QString *error);
// Whether the sub-command only reads.
bool readsOnly(const QStringList &args);
}
