#include "cli/Verbs.h"

#include "cli/DefaultsCommand.h"
#include "cli/LayoutCommands.h"
#include "cli/SettingsCommands.h"
#include "cli/SpaceCommands.h"
#include "cli/ThemeCommands.h"
#include "cli/WorkflowCommands.h"

namespace Verbs {

namespace {

CommandResult help(const QStringList &) { return CommandResult::ok(helpText()); }
CommandResult version(const QStringList &)
{
    return CommandResult::ok(QStringLiteral("tillmora %1\n").arg(QLatin1String(TILLMORA_VERSION)));
}
CommandResult defaults(const QStringList &args) { return DefaultsCommand::run(args); }

const char *title(Section section)
{
    switch (section) {
    case Section::Options: return "Options:\n";
    case Section::Overlay: return "Overlay:\n";
    case Section::Reading: return "Reading the layout:\n";
    case Section::Grid: return "Changing the grid (KEY is A:/path, F:<uuid> or WF:<uuid>; a bare path is an app):\n";
    case Section::Folders: return "Folders:\n";
    case Section::Widgets: return "Widgets:\n";
    case Section::Workflows: return "Workflows and system folders:\n";
    case Section::Spaces: return "Spaces (profiles; every command above acts on the active one):\n";
    case Section::Look: return "Look, names, icons and shortcuts (the running launcher follows at once):\n";
    case Section::Settings: return "Settings (raw, without loading the layout):\n";
    }
    return "";
}

using S = Section;
using O = OverlayAction;
namespace L = LayoutCommands;
namespace W = WorkflowCommands;
namespace C = SettingsCommands;

// Order matters twice: --help prints rows in this order, and a bare row is
// tried before a row of the same name that takes arguments.
const QList<Verb> kVerbs{
    {"--help", "-h help", S::Options, "--help", "  --help, -h                 Show this help and exit.\n", false, false,
     false, O::None, nullptr, help},
    {"--version", "", S::Options, "--version", "  --version                  Show the version and exit.\n", false,
     false, false, O::None, nullptr, version},
    // Handled before any command is looked up: it starts the launcher.
    {"--login-item", "", S::Options, "--login-item",
     "  --login-item               Start in the background without opening the overlay.\n", false, false, false,
     O::None, nullptr, nullptr},

    {"toggle", "", S::Overlay, "toggle",
     "  toggle | show | hide       Toggle, show or hide the overlay (toggle and show\n"
     "                             start the launcher when none runs).\n",
     false, true, true, O::Toggle, nullptr, nullptr},
    {"show", "", S::Overlay, "show", "", false, true, true, O::Show, nullptr, nullptr},
    {"hide", "", S::Overlay, "hide", "", false, true, true, O::Hide, nullptr, nullptr},
    {"settings", "", S::Overlay, "settings",
     "  settings                   Open the settings window (starting the launcher\n"
     "                             in the background when none runs).\n",
     false, true, true, O::Settings, nullptr, nullptr},

    {"apps", "", S::Reading, "apps [--json]",
     "  apps [--json]              Installed applications: path and name per line.\n", false, true, false, O::None,
     L::apps, nullptr},
    {"layout", "", S::Reading, "layout [--json]",
     "  layout [--json]            The grid: one line per page, cells separated by\n"
     "                             tabs, '-' for an empty cell. --json adds folders,\n"
     "                             widgets, workflows, hidden apps and the revision.\n",
     false, true, false, O::None, L::layout, nullptr},

    {"place", "", S::Grid, "place KEY", "  place KEY                  Put KEY in the first empty cell (or at the end).\n",
     true, true, false, O::None, L::place, nullptr},
    {"remove", "", S::Grid, "remove KEY", "  remove KEY                 Empty the cell holding KEY.\n", true, true, false,
     O::None, L::remove, nullptr},
    {"move", "", S::Grid, "move KEY INDEX",
     "  move KEY INDEX             Move KEY to cell INDEX as a drag and drop would.\n", true, true, false, O::None,
     L::move, nullptr},
    {"hide", "", S::Grid, "hide PATH", "  hide PATH | unhide PATH    Hide an application, or show it again.\n", true,
     true, false, O::None, L::hide, nullptr},
    {"unhide", "", S::Grid, "unhide PATH", "", true, true, false, O::None, L::unhide, nullptr},

    {"folder", "", S::Folders, "folder create|move|rename|delete|add-system|remove-system ...",
     "  folder create NAME [--slot N] [--system-folder PATH]... PATH...\n"
     "                             Make a folder of the apps; prints its id.\n"
     "  folder move FOLDER_ID KEY INDEX [--grid RAW]\n"
     "                             Move KEY inside the folder; RAW is a folder grid\n"
     "                             such as 4x5 (rows x columns), else the stored one.\n"
     "  folder rename FOLDER_ID NAME\n"
     "  folder delete FOLDER_ID    Its apps go back to the grid.\n"
     "  folder add-system FOLDER_ID PATH | folder remove-system FOLDER_ID PATH\n"
     "                             Put a file-system folder in the folder, or take it out.\n",
     true, true, false, O::None, nullptr, nullptr, W::folder},

    {"widget", "", S::Widgets, "widget add|move|remove ...",
     "  widget add KIND SIZE [--slot N]   SIZE is 2x2, 3x2, 2x3 or 3x3; prints its id.\n"
     "  widget move ID SLOT\n"
     "  widget remove ID\n",
     true, true, false, O::None, L::widget, nullptr},

    {"workflow", "", S::Workflows, "workflow list|create|edit|delete|launch ...",
     "  workflow list [--json]\n"
     "  workflow create NAME [--emoji E] [--color HEX] [--image FILE] [--interval SECONDS]\n"
     "                  [--app PATH]... [--folder PATH]...\n"
     "                             A workflow opens its apps, then its folders, in order,\n"
     "                             SECONDS apart; it goes on every grid. Prints its id.\n"
     "  workflow edit ID [--name NAME] [the options of create]\n"
     "                             --app and --folder, when given, replace the lists.\n"
     "  workflow delete ID         Also from every grid and folder.\n"
     "  workflow launch ID         Returns after the last item when no launcher runs.\n",
     true, true, false, O::None, nullptr, nullptr, W::workflow},
    {"open-folder", "", S::Workflows, "open-folder PATH",
     "  open-folder PATH           Open a folder in the file manager.\n", false, true, false, O::None, nullptr,
     nullptr, W::openFolder},

    {"space", "", S::Spaces, "space list|create|switch|edit|delete|auto-switch ...",
     "  space list [--json]        The Spaces; '*' marks the active one, 'standard'\n"
     "                             is the profile outside every Space.\n"
     "  space create NAME [--emoji E] [--color HEX] [--default-layout]\n"
     "                             A copy of the current profile (or the default\n"
     "                             layout); prints its id.\n"
     "  space switch ID|NAME|standard\n"
     "  space edit ID [--name N] [--emoji E] [--color HEX] [--hotkey COMBO|none]\n"
     "             [--auto-switch on|off] [--clear-triggers] [--trigger RULE]...\n"
     "                             COMBO like ctrl+super+1; RULE: 'time 09:00-17:30',\n"
     "                             'days mon,tue', 'days sat,sun 10:00-14:00', 'focus'.\n"
     "  space delete ID            Its settings and files go with it.\n"
     "  space auto-switch --at 2026-11-23T09:30 [--json]\n"
     "                             The Space the rules would pick then, or 'none'.\n",
     true, true, false, O::None, nullptr, nullptr, nullptr, SpaceCommands::run, SpaceCommands::readsOnly},
    {"theme", "", S::Spaces, "theme export|inspect|import|catalog|install ...",
     "  theme export ID|NAME [FILE] A Space as one .tillmoratheme file (default: its\n"
     "                             name in this folder); prints the path and size.\n"
     "  theme inspect FILE [--json] What a package holds; changes nothing.\n"
     "  theme import FILE [--folders keep-mine|use-theme] [--switch] [--again]\n"
     "                             Adds the package as a new Space; prints its id.\n"
     "  theme catalog [--url URL] [--json]\n"
     "                             The ready-made themes of the online catalogue.\n"
     "  theme install ENTRY_ID [--url URL]\n"
     "                             Download, verify and import one; prints the Space's id.\n",
     true, true, false, O::None, nullptr, nullptr, ThemeCommands::run, nullptr, ThemeCommands::readsOnly,
     ThemeCommands::isCatalogCommand},

    {"appearance", "", S::Look, "appearance [--json] | appearance set KEY VALUE [--display KEY]",
     "  appearance [--json]        The look on the display the overlay last used:\n"
     "                             icon size (and its range there), grid, labels,\n"
     "                             glass, theme, backgrounds, the folder grid.\n"
     "  appearance set KEY VALUE [--display KEY]\n"
     "                             Change one; KEY as 'appearance' prints it. iconSize,\n"
     "                             columns, rows and showLabels are kept per display.\n",
     true, true, false, O::None, nullptr, nullptr, C::appearance, nullptr, C::appearanceReadsOnly},
    {"icon", "", S::Look, "icon set APP FILE | icon reset APP",
     "  icon set APP FILE          Give an app the image FILE as its icon.\n"
     "  icon reset APP             Its own icon again.\n",
     true, true, false, O::None, nullptr, nullptr, C::icon},
    {"rename", "", S::Look, "rename APP NAME",
     "  rename APP NAME            Show the app as NAME; an empty NAME ('') gives it\n"
     "                             its own name back. APP is the app's path, its\n"
     "                             desktop-file id or the name it shows.\n",
     true, true, false, O::None, nullptr, nullptr, C::rename},
    {"hotkey", "", S::Look, "hotkey [set COMBO]",
     "  hotkey [set COMBO]         The shortcut that shows and hides the launcher, or\n"
     "                             set it: super+4, ctrl+alt+l, shift+f5, f12 (keys as\n"
     "                             printed on the keyboard: F1-F24, Space, Enter, Page Up...).\n",
     true, true, false, O::None, nullptr, nullptr, C::hotkey, nullptr, C::readsOnlyWithoutArguments},
    {"hotcorner", "", S::Look, "hotcorner [set top-left|top-right|bottom-left|bottom-right|none]",
     "  hotcorner [set CORNER]     The screen corner that shows and hides the launcher:\n"
     "                             top-left, top-right, bottom-left, bottom-right or none.\n",
     true, true, false, O::None, nullptr, nullptr, C::hotcorner, nullptr, C::readsOnlyWithoutArguments},
    {"wallpaper", "", S::Look, "wallpaper [set FILE|desktop|none|color #RRGGBB]",
     "  wallpaper [set WHAT]       What shows behind the grid: an image FILE (copied in,\n"
     "                             for the current Space), the desktop's wallpaper, or\n"
     "                             none (a plain colour; 'color #RRGGBB' picks it).\n",
     true, true, false, O::None, nullptr, nullptr, C::wallpaper, nullptr, C::readsOnlyWithoutArguments},

    // Raw settings: works on the stored values without loading the layout,
    // so it is never forwarded.
    {"defaults", "", S::Settings, "defaults read|write|delete ...",
     "  defaults read [--suite NAME] [KEY]\n"
     "  defaults write [--suite NAME] KEY TYPE VALUE...\n"
     "                             TYPE: -string -int -float -bool -date (ISO 8601)\n"
     "                             -data (hex) -array (values as strings) -json\n"
     "  defaults delete [--suite NAME] KEY\n",
     false, false, false, O::None, nullptr, defaults},
};

bool named(const Verb &verb, const QString &word)
{
    if (word == QLatin1String(verb.name))
        return true;
    const QStringList aliases = QString::fromLatin1(verb.aliases).split(u' ', Qt::SkipEmptyParts);
    return aliases.contains(word);
}

}

const QList<Verb> &all() { return kVerbs; }

bool changes(const Verb &verb, const QStringList &args)
{
    if (verb.readsOnly)
        return !verb.readsOnly(args.mid(1));
    return verb.changesLayout;
}

const Verb *find(const QStringList &args)
{
    if (args.isEmpty())
        return nullptr;
    for (const Verb &verb : kVerbs)
        if (named(verb, args.first()) && (!verb.bare || args.size() == 1))
            return &verb;
    return nullptr;
}

QString helpText()
{
    QString text = QStringLiteral("Usage: tillmora [--login-item]\n"
                                  "       tillmora COMMAND [ARGUMENTS]\n"
                                  "\n"
                                  "With no command, starts the launcher (or shows the one already running).\n"
                                  "A command is carried out by the running launcher, so its grid updates at once;\n"
                                  "when none runs, the stored layout is loaded here, changed and saved.\n");
    std::optional<Section> section;
    for (const Verb &verb : kVerbs) {
        if (verb.section != section) {
            section = verb.section;
            text += u'\n' + QLatin1String(title(verb.section));
        }
        text += QString::fromUtf8(verb.help);
    }
    text += QStringLiteral("\n"
                           "Exit status: 0 success, 1 the operation failed, 2 the command line was wrong\n"
                           "(nothing is changed then).\n");
    return text;
}

QString expected(const Verb &verb) { return QStringLiteral("expected '%1'").arg(QLatin1String(verb.synopsis)); }

QString expected(const char *name)
{
    for (const Verb &verb : kVerbs)
        if (qstrcmp(verb.name, name) == 0 && !verb.bare)
            return expected(verb);
    return QStringLiteral("expected '%1'").arg(QLatin1String(name));
}

}
