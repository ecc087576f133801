#include "cli/SettingsCommands.h"

#include "app/CompositionRoot.h"
#include "app/LaunchpadWindowController.h"
#include "cli/CommandContext.h"
#include "cli/LayoutCommands.h"
#include "cli/Verbs.h"
#include "foundation/SlotKey.h"
#include "input/HotCornersManager.h"
#include "input/HotKeyManager.h"
#include "input/InputPlatform.h"
#include "input/ShortcutNames.h"
#include "layout/FolderAppsGrid.h"
#include "layout/LaunchpadViewModel.h"
#include "storage/AppNameRepository.h"
#include "storage/AppearanceRepository.h"
#include "storage/WallpaperRepository.h"
#include "storage/AppsCustomizationRepository.h"
#include "storage/UserDefaultsStore.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <functional>

namespace SettingsCommands {

namespace {

// One appearance key as the command line reads and writes it.
struct Setting {
    enum class Kind { Integer, Number, Boolean, Choice };
    QString key;
    bool perDisplay = false;
    Kind kind = Kind::Boolean;
    double min = 0, max = 0;
    QStringList choices;
    std::function<QJsonValue()> read;
    std::function<void(const QJsonValue &)> write;

    // "columns must be an integer from 3 to 12", the rule a value breaks.
    QString rule() const
    {
        switch (kind) {
        case Kind::Integer: return QStringLiteral("%1 must be an integer from %2 to %3").arg(key).arg(min).arg(max);
        case Kind::Number: return QStringLiteral("%1 must be a number from %2 to %3").arg(key).arg(min).arg(max);
        case Kind::Boolean: return QStringLiteral("%1 must be true or false").arg(key);
        case Kind::Choice: return QStringLiteral("%1 must be one of %2").arg(key, choices.join(QStringLiteral(", ")));
        }
        return {};
    }

    std::optional<QJsonValue> parse(const QString &text) const
    {
        bool ok = false;
        switch (kind) {
        case Kind::Integer: {
            const int n = text.trimmed().toInt(&ok);
            return ok && n >= min && n <= max ? std::optional<QJsonValue>(n) : std::nullopt;
        }
        case Kind::Number: {
            const double n = text.trimmed().toDouble(&ok);
            return ok && std::isfinite(n) && n >= min && n <= max ? std::optional<QJsonValue>(n) : std::nullopt;
        }
        case Kind::Boolean: {
            const QString word = text.trimmed().toLower();
            if (QStringList{"true", "on", "yes", "1"}.contains(word))
                return QJsonValue(true);
            if (QStringList{"false", "off", "no", "0"}.contains(word))
                return QJsonValue(false);
            return std::nullopt;
        }
        case Kind::Choice:
            return choices.contains(text.trimmed()) ? std::optional<QJsonValue>(text.trimmed()) : std::nullopt;
        }
        return std::nullopt;
    }
};

QStringList folderGridChoices()
{
    QStringList raw;
    for (FolderAppsGrid grid : FolderAppsGrids::all())
        raw.append(FolderAppsGrids::rawValue(grid));
    return raw;
}

// Every appearance key, in the order they are shown.
QList<Setting> settingsFor(AppearanceRepository &look, const DisplayProfile &display, LaunchpadViewModel &layout)
{
    using K = Setting::Kind;
    const auto flag = [](const char *key, std::function<bool()> get, std::function<void(bool)> set) {
        return Setting{QLatin1String(key), false, K::Boolean, 0, 0, {}, [get] { return QJsonValue(get()); },
                       [set](const QJsonValue &v) { set(v.toBool()); }};
    };
    const auto number = [](const char *key, double min, double max, std::function<double()> get,
                           std::function<void(double)> set) {
        return Setting{QLatin1String(key), false, K::Number, min, max, {}, [get] { return QJsonValue(get()); },
                       [set](const QJsonValue &v) { set(v.toDouble()); }};
    };
    const auto choice = [](const char *key, const QStringList &choices, std::function<QString()> get,
                           std::function<void(const QString &)> set) {
        return Setting{QLatin1String(key), false, K::Choice, 0, 0, choices, [get] { return QJsonValue(get()); },
                       [set](const QJsonValue &v) { set(v.toString()); }};
    };
    AppearanceRepository *r = &look;
    const DisplayProfile d = display;
    return {
        Setting{QStringLiteral("iconSize"), true, K::Number, d.minIconSize, std::max(d.minIconSize, d.maxIconSize), {},
                [r, d] { return QJsonValue(r->iconSize(d)); }, [r, d](const QJsonValue &v) { r->setIconSize(d, v.toDouble()); }},
        Setting{QStringLiteral("columns"), true, K::Integer, AppearanceRepositoryImpl::kMinColumns,
                AppearanceRepositoryImpl::kMaxColumns, {}, [r, d] { return QJsonValue(r->columns(d)); },
                [r, d](const QJsonValue &v) { r->setColumns(d, v.toInt()); }},
        Setting{QStringLiteral("rows"), true, K::Integer, AppearanceRepositoryImpl::kMinRows,
                AppearanceRepositoryImpl::kMaxRows, {}, [r, d] { return QJsonValue(r->rows(d)); },
                [r, d](const QJsonValue &v) { r->setRows(d, v.toInt()); }},
        Setting{QStringLiteral("showLabels"), true, K::Boolean, 0, 0, {}, [r, d] { return QJsonValue(r->showLabels(d)); },
                [r, d](const QJsonValue &v) { r->setShowLabels(d, v.toBool()); }},
        number("glassIntensity", 0, 1, [r] { return r->glassIntensity(); }, [r](double v) { r->setGlassIntensity(v); }),
        choice("theme", AppearanceRepositoryImpl::kTitleColorValues, [r] { return r->theme(); },
               [r](const QString &v) { r->setTheme(v); }),
        choice("titleColorOverride", AppearanceRepositoryImpl::kTitleColorValues, [r] { return r->titleColorOverride(); },
               [r](const QString &v) { r->setTitleColorOverride(v); }),
        flag("liquidGlassEnabled", [r] { return r->liquidGlassEnabled(); }, [r](bool v) { r->setLiquidGlassEnabled(v); }),
        choice("liquidGlassMaterialStyle", {QStringLiteral("clear"), QStringLiteral("tinted")},
               [r] { return r->liquidGlassMaterialStyle(); }, [r](const QString &v) { r->setLiquidGlassMaterialStyle(v); }),
        flag("liquidGlassTintStandard", [r] { return r->liquidGlassTintStandard(); },
             [r](bool v) { r->setLiquidGlassTintStandard(v); }),
        number("liquidGlassTintIntensity", 0, 0.8, [r] { return r->liquidGlassTintIntensity(); },
               [r](double v) { r->setLiquidGlassTintIntensity(v); }),
        number("liquidGlassTintHue", 0, 1, [r] { return r->liquidGlassTintHue(); },
               [r](double v) { r->setLiquidGlassTintHue(v); }),
        flag("blurEnabled", [r] { return r->blurEnabled(); }, [r](bool v) { r->setBlurEnabled(v); }),
        flag("cellBackgroundEnabled", [r] { return r->cellBackgroundEnabled(); },
             [r](bool v) { r->setCellBackgroundEnabled(v); }),
        flag("filledBackgroundEnabled", [r] { return r->filledBackgroundEnabled(); },
             [r](bool v) { r->setFilledBackgroundEnabled(v); }),
        flag("sunBackgroundEnabled", [r] { return r->sunBackgroundEnabled(); },
             [r](bool v) { r->setSunBackgroundEnabled(v); }),
        flag("sunBackgroundAutoEnabled", [r] { return r->sunBackgroundAutoEnabled(); },
             [r](bool v) { r->setSunBackgroundAutoEnabled(v); }),
        number("sunBackgroundManualTime", 0, 24, [r] { return r->sunBackgroundManualTime(); },
               [r](double v) { r->setSunBackgroundManualTime(v); }),
        // Kept by the layout model, which re-cuts an open folder at once.
        choice("folderAppsGrid", folderGridChoices(), [&layout] { return layout.folderAppsGridRawValue(); },
               [&layout](const QString &v) { layout.setFolderAppsGridRawValue(v); }),
    };
}

// The display a command means: the one the overlay last used, or the one named.
DisplayProfile displayFor(const AppearanceRepository &look, const std::optional<QString> &named)
{
    const DisplayProfile last = look.lastDisplayProfile();
    if (!named || *named == last.key)
        return last;
    return DisplayProfile{*named}; // a display never measured allows the general range
}

QString text(const QJsonValue &value)
{
    if (value.isBool())
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    if (value.isDouble())
        return QString::number(value.toDouble());
    return value.toString();
}

CommandResult showAppearance(const QList<Setting> &settings, const DisplayProfile &display, bool json)
{
    if (json) {
        QJsonObject out{{"display", display.key},
                        {"iconSizeRange", QJsonObject{{"min", display.minIconSize}, {"max", display.maxIconSize}}}};
        for (const Setting &s : settings)
            out.insert(s.key, s.read());
        return CommandResult::ok(QString::fromUtf8(QJsonDocument(out).toJson(QJsonDocument::Indented)));
    }
    QString out = QStringLiteral("display\t%1\n").arg(LayoutCommands::plainField(display.key));
    for (const Setting &s : settings) {
        out += s.key + u'\t' + LayoutCommands::plainField(text(s.read()));
        if (s.key == QLatin1String("iconSize"))
            out += QStringLiteral("\t(%1 to %2 on this display)").arg(s.min).arg(s.max);
        out += u'\n';
    }
    return CommandResult::ok(out);
}

// An app named by its path, its desktop-file id or the name it shows.
struct Found {
    QString path;
    QString error; // when nothing or more than one app matches
};

Found findApp(const QString &given, CommandContext &context)
{
    const QList<AppItem> apps = context.layout.apps() + context.layout.unavailableApps();
    const AppNameRepository &names = *context.composition.appNameRepository;
    const QString path = SlotKey::appPath(given);
    const QString id = given.endsWith(QLatin1String(".desktop")) ? given : given + QStringLiteral(".desktop");
    const QList<std::function<bool(const AppItem &)>> tests{
        [&](const AppItem &app) { return app.path == path; },
        [&](const AppItem &app) { return !app.identity.isEmpty() && (app.identity == given || app.identity == id); },
        [&](const AppItem &app) {
            return names.displayName(app.path, app.displayName).compare(given, Qt::CaseInsensitive) == 0;
        },
        [&](const AppItem &app) { return app.displayName.compare(given, Qt::CaseInsensitive) == 0; },
    };
    for (const auto &matches : tests) {
        QList<AppItem> found;
        for (const AppItem &app : apps)
            if (matches(app))
                found.append(app);
        if (found.size() == 1)
            return {found.first().path, {}};
        if (found.size() > 1) {
            QString list;
            for (const AppItem &app : found)
                list += QStringLiteral("\n  %1 (%2)").arg(app.path, names.displayName(app.path, app.displayName));
            return {{}, QStringLiteral("'%1' names several apps; give its path:%2").arg(given, list)};
        }
    }
    return {{}, QStringLiteral("no app is known as '%1' (give its path, desktop-file id or name; see 'tillmora apps')")
                    .arg(given)};
}

void appsCustomized(CommandContext &context)
{
    if (context.launcher)
        Q_EMIT context.launcher->appsCustomized();
}

const char *cornerName(HotCorner corner)
{
    switch (corner) {
    case HotCorner::topLeft: return "top-left";
    case HotCorner::topRight: return "top-right";
    case HotCorner::bottomLeft: return "bottom-left";
    case HotCorner::bottomRight: return "bottom-right";
    case HotCorner::none: break;
    }
    return "none";
}

// Headless, the managers still own their settings: they are made here over
// inputs that register nothing.
struct HeadlessInputs {
    InputPlatform platform = InputPlatform{}.completed();
};

}

bool appearanceReadsOnly(const QStringList &args)
{
    return args.isEmpty() || args == QStringList{QStringLiteral("--json")};
}

bool readsOnlyWithoutArguments(const QStringList &args)
{
    return args.isEmpty();
}

CommandResult appearance(const QStringList &args, CommandContext &context)
{
    AppearanceRepository &look = *context.composition.appearanceRepo;
    if (appearanceReadsOnly(args)) {
        const DisplayProfile display = displayFor(look, std::nullopt);
        return showAppearance(settingsFor(look, display, context.layout), display, !args.isEmpty());
    }
    QStringList rest = args;
    std::optional<QString> named;
    if (const qsizetype at = rest.indexOf(QStringLiteral("--display")); at >= 0) {
        if (at + 1 >= rest.size() || rest.at(at + 1).trimmed().isEmpty())
            return CommandResult::usage(QStringLiteral("--display needs a display key"));
        named = rest.at(at + 1);
        rest.remove(at, 2);
    }
    if (rest.size() != 3 || rest.first() != QLatin1String("set"))
        return CommandResult::usage(Verbs::expected("appearance"));
    const DisplayProfile display = displayFor(look, named);
    const QList<Setting> settings = settingsFor(look, display, context.layout);
    QStringList keys;
    for (const Setting &s : settings) {
        keys.append(s.key);
        if (s.key != rest.at(1))
            continue;
        const auto value = s.parse(rest.at(2));
        if (!value)
            return CommandResult::usage(QStringLiteral("%1, not '%2'").arg(s.rule(), rest.at(2)));
        s.write(*value);
        if (context.launcher)
            Q_EMIT context.launcher->appearanceChanged();
        return CommandResult::ok();
    }
    return CommandResult::usage(QStringLiteral("unknown appearance key '%1'; the keys are %2")
                                    .arg(rest.at(1), keys.join(QStringLiteral(", "))));
}

CommandResult icon(const QStringList &args, CommandContext &context)
{
    const bool set = args.size() == 3 && args.first() == QLatin1String("set");
    const bool reset = args.size() == 2 && args.first() == QLatin1String("reset");
    if (!set && !reset)
        return CommandResult::usage(Verbs::expected("icon"));
    const Found app = findApp(args.at(1), context);
    if (app.path.isEmpty())
        return CommandResult::usage(app.error);
    AppsCustomizationRepository &icons = *context.composition.appsCustomizationRepository;
    if (reset) {
        icons.removeIcon(app.path);
    } else {
        // The caller's folder: the launcher runs forwarded commands in it.
        const QString file = QFileInfo(args.at(2)).absoluteFilePath();
        if (!QFileInfo(file).isFile())
            return CommandResult::failure(QStringLiteral("there is no file '%1'").arg(args.at(2)));
        QString error;
        if (!icons.importImage(app.path, file, &error)) {
            const QString message = QLatin1String(AppsCustomizationRepositoryImpl::kImportErrorMessage);
            return CommandResult::failure(error.endsWith(message) ? message : error);
        }
    }
    appsCustomized(context);
    return CommandResult::ok();
}

CommandResult rename(const QStringList &args, CommandContext &context)
{
    if (args.size() != 2)
        return CommandResult::usage(Verbs::expected("rename"));
    const Found app = findApp(args.first(), context);
    if (app.path.isEmpty())
        return CommandResult::usage(app.error);
    // A blank name gives the app its own name back.
    context.composition.appNameRepository->setCustomName(app.path, args.at(1));
    appsCustomized(context);
    return CommandResult::ok();
}

CommandResult hotkey(const QStringList &args, CommandContext &context)
{
    if (!args.isEmpty() && (args.size() != 2 || args.first() != QLatin1String("set")))
        return CommandResult::usage(Verbs::expected("hotkey"));
    std::optional<ShortcutNames::Shortcut> wanted;
    if (!args.isEmpty()) {
        wanted = ShortcutNames::parse(args.at(1));
        if (!wanted)
            return CommandResult::usage(QStringLiteral("'%1' is not a shortcut; it is written like super+4 or "
                                                       "ctrl+alt+l, with %2")
                                            .arg(args.at(1), ShortcutNames::acceptedNames()));
        if (wanted->modifierFlags == 0 && !ShortcutNames::standsAlone(wanted->keyCode))
            return CommandResult::usage(
                QStringLiteral("%1 alone would be taken from every application; add Ctrl, Alt, Shift or Super, or use "
                               "a function key (F1-F24)")
                    .arg(ShortcutNames::format(wanted->keyCode, 0)));
    }
    const std::shared_ptr<UserDefaultsStoreType> store = context.composition.userDefaultsStore;
    if (const StoredKeyCode stored = HotKeyManager::storedKeyCode(*store); !stored.error.isEmpty())
        return CommandResult::failure(QStringLiteral("%1 (remove it with 'tillmora defaults delete %2')")
                                          .arg(stored.error, QLatin1String(HotKeyManager::kKeyCodeKey)));
    HeadlessInputs inputs;
    std::unique_ptr<HotKeyManager> own;
    HotKeyManager *manager = context.launcher ? &context.launcher->hotKeyManager() : nullptr;
    if (!manager) {
        own = std::make_unique<HotKeyManager>(store, *inputs.platform.hotKeys, *inputs.platform.activity);
        manager = own.get();
    }
    if (wanted)
        manager->updateHotKey(wanted->modifierFlags, wanted->keyCode);
    QString out = ShortcutNames::format(manager->currentKeyCode(), manager->currentModifiers());
    if (!manager->isEnabled())
        out += QStringLiteral(" (off)");
    return CommandResult::ok(out + u'\n');
}

CommandResult hotcorner(const QStringList &args, CommandContext &context)
{
    if (!args.isEmpty() && (args.size() != 2 || args.first() != QLatin1String("set")))
        return CommandResult::usage(Verbs::expected("hotcorner"));
    std::optional<HotCorner> wanted;
    if (!args.isEmpty()) {
        for (HotCorner corner : HotCornerGeometry::allCorners())
            if (args.at(1) == QLatin1String(cornerName(corner)) || args.at(1) == HotCornerGeometry::rawValue(corner))
                wanted = corner;
        if (!wanted)
            return CommandResult::usage(
                QStringLiteral("'%1' is not a corner; use top-left, top-right, bottom-left, bottom-right or none")
                    .arg(args.at(1)));
    }
    HeadlessInputs inputs;
    std::unique_ptr<HotCornersManager> own;
    HotCornersManager *manager = context.launcher ? &context.launcher->hotCornersManager() : nullptr;
    if (!manager) {
        own = std::make_unique<HotCornersManager>(context.composition.userDefaultsStore, *inputs.platform.pointer,
                                                  *inputs.platform.activity, *inputs.platform.clock);
        manager = own.get();
    }
    if (wanted) {
        // "none" is the corner switched off.
        manager->setSelectedCorner(*wanted);
        manager->setEnabled(*wanted != HotCorner::none);
    }
    const HotCorner shown = manager->isEnabled() ? manager->selectedCorner() : HotCorner::none;
    return CommandResult::ok(QLatin1String(cornerName(shown)) + u'\n');
}

CommandResult wallpaper(const QStringList &args, CommandContext &context)
{
    WallpaperRepository &wallpapers = *context.composition.wallpaperRepo;
    if (args.isEmpty()) {
        const WallpaperChoice choice = wallpapers.choice();
        if (!choice.imagePath.isEmpty())
            return CommandResult::ok(choice.imagePath
                                     + (QFileInfo::exists(choice.imagePath)
                                            ? QStringLiteral("\n")
                                            : QStringLiteral(" (missing: the desktop's wallpaper shows)\n")));
        return CommandResult::ok(choice.style == WallpaperChoice::Style::Color
                                     ? QStringLiteral("color ") + choice.color.name() + u'\n'
                                     : QStringLiteral("desktop\n"));
    }
    if (args.first() != QLatin1String("set") || args.size() < 2 || args.size() > 3)
        return CommandResult::usage(Verbs::expected("wallpaper"));
    const QString what = args.at(1);
    if (what == QLatin1String("desktop") && args.size() == 2) {
        wallpapers.useDesktop();
    } else if ((what == QLatin1String("none") && args.size() == 2) || (what == QLatin1String("color") && args.size() == 3)) {
        // "none": no picture, the plain colour chosen before (or the default one).
        const QColor color = args.size() == 3 ? QColor::fromString(args.at(2)) : wallpapers.choice().color;
        if (!color.isValid())
            return CommandResult::usage(QStringLiteral("'%1' is not a colour; give it as #RRGGBB").arg(args.at(2)));
        wallpapers.useColor(color);
    } else if (args.size() == 2) {
        // The caller's folder: the launcher runs forwarded commands in it.
        const QString file = QFileInfo(what).absoluteFilePath();
        if (!QFileInfo(file).isFile())
            return CommandResult::failure(QStringLiteral("there is no file '%1'").arg(what));
        QString error;
        if (!wallpapers.chooseImage(file, &error))
            return CommandResult::failure(error);
    } else {
        return CommandResult::usage(Verbs::expected("wallpaper"));
    }
    if (context.launcher)
        Q_EMIT context.launcher->appearanceChanged();
    return CommandResult::ok();
}

}
