#pragma once

#include "cli/CommandResult.h"

#include <QStringList>

class LaunchpadViewModel;
class SpacesViewModel;
struct CommandContext;

// Every word the `tillmora` command line understands, in one table: the
// parser looks verbs up here, the forwarding to a running launcher asks the
// table whether and how a verb is carried out there, and --help is printed
// from it, so a verb cannot be added to one of them and forgotten in another.
namespace Verbs {

// The --help sections, in the order they are printed.
enum class Section { Options, Overlay, Reading, Grid, Folders, Widgets, Workflows, Spaces, Look, Settings };

// What an overlay verb asks of the running launcher's window.
enum class OverlayAction { None, Toggle, Show, Hide, Settings };

// Reads or edits the loaded layout; args follow the verb. Runs headless, or
// inside the running launcher on its own model.
using LayoutHandler = CommandResult (*)(const QStringList &args, LaunchpadViewModel &model);
// Works on the Spaces; args follow the verb. Runs headless, or inside the
// running launcher.
using SpacesHandler = CommandResult (*)(const QStringList &args, SpacesViewModel &spaces);
// Runs in this process, never forwarded; args follow the verb.
using LocalHandler = CommandResult (*)(const QStringList &args);
// Like a layout handler, for commands that also need the workflow model or
// the services (launching, opening folders).
using ContextHandler = CommandResult (*)(const QStringList &args, CommandContext &context);

struct Verb {
    const char *name;
    const char *aliases;    // further spellings, space-separated
    Section section;
    const char *synopsis;   // the arguments as usage errors quote them
    const char *help;       // the --help lines, formatted; empty when a neighbour's lines cover it
    bool changesLayout;     // writes the grid, folders or widgets
    bool forwarded;         // carried out by the running launcher when one runs
    bool bare;              // only without arguments (so "hide" alone is not "hide PATH")
    OverlayAction overlay;
    LayoutHandler layout;
    LocalHandler local;
    ContextHandler withContext = nullptr;
    SpacesHandler spaces = nullptr;
    // For verbs whose sub-commands differ: whether these (after the verb) only read.
    bool (*readsOnly)(const QStringList &args) = nullptr;
    // Sub-commands (after the verb) that run in the calling process even
    // when a launcher runs (downloads that must not hold the launcher up).
    bool (*runsInCaller)(const QStringList &args) = nullptr;
};

const QList<Verb> &all();
// Whether these arguments change stored data (a verb may have sub-commands
// that only read).
bool changes(const Verb &verb, const QStringList &args);
// The verb args (starting with the verb word) invoke, or nullptr.
const Verb *find(const QStringList &args);
QString helpText();
// "expected 'SYNOPSIS'", the usage error of a verb given the wrong arguments.
QString expected(const Verb &verb);
QString expected(const char *name);

}
