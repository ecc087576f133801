#include "app/AppDelegate.h"
#include "app/CompositionRoot.h"
#include "app/InstanceChannel.h"
#include "app/LaunchpadWindowController.h"
#include "catalogue/AppIconLookup.h"
#include "catalogue/SystemFoldersService.h"
#include "cli/CommandLine.h"
#include "cli/InstanceCommands.h"
#include "foundation/BundleIdentity.h"
#include "platform/DesktopWallpaperSource.h"
#include "platform/FileChooser.h"
#include "platform/Platform.h"
#include "storage/AppNameRepository.h"
#include "storage/AppsCustomizationRepository.h"
#include "storage/FolderIconStyleRepository.h"
#include "storage/AppearanceRepository.h"
#include "storage/WallpaperRepository.h"
#include "ui/BackdropCache.h"
#include "ui/GridPresenter.h"
#include "ui/OverlayWindow.h"
#include "ui/RenderingBackend.h"
#include "ui/SettingsWindow.h"
#include "ui/StatusBarController.h"

#include <QApplication>
#include <QIcon>
#include <QLocale>
#include <QLoggingCategory>
#include <QTranslator>

#include <cstdio>

namespace {

// Texts are message ids; the built-in English catalogue gives them words
// when the user's language has none.
void installTranslations(QCoreApplication &app)
{
    static QTranslator translator;
    if (translator.load(QLocale(), QStringLiteral("tillmora"), QStringLiteral("_"), QStringLiteral(":/i18n"))
        || translator.load(QStringLiteral(":/i18n/tillmora_en.qm")))
        app.installTranslator(&translator);
}

}

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (!CommandLine::startsLauncher(arguments)) {
        QCoreApplication app(argc, argv);
        installTranslations(app);
        const Platform platform;
        return CommandLine::run(arguments, platform.catalogue());
    }

    // Without a display Qt would abort; say why instead.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY")
        && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        std::fprintf(stderr, "tillmora: no display to show the overlay on (DISPLAY and WAYLAND_DISPLAY are unset);"
                             " commands such as 'tillmora layout' work without one\n");
        return 1;
    }
    // In normal use only warnings reach the terminal or the journal; the
    // layout's trail and the timings come with the usual Qt logging rules.
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        QLoggingCategory::setFilterRules(
            QStringLiteral("com.tillmora.Tillmora.*.debug=false\ncom.tillmora.Tillmora.*.info=false"));
    RenderingBackend::chooseBeforeApplication();
    QApplication app(argc, argv);
    installTranslations(app);
    QApplication::setApplicationName(QStringLiteral("tillmora"));
    QApplication::setApplicationDisplayName(QLatin1String(BundleIdentity::kProgramName));
    QApplication::setOrganizationDomain(QStringLiteral("tillmora.com"));
    QApplication::setDesktopFileName(QStringLiteral("tillmora"));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/tillmora.svg")));

    InstanceChannel channel;
    Platform platform;
    platform.logSession();
    AppDelegate delegate(platform.application(channel, arguments), StorageLocations::fromEnvironment());
    std::unique_ptr<SettingsWindow> settings;
    std::unique_ptr<GridPresenter> presenter;
    std::unique_ptr<OverlayWindow> overlay;
    const auto openSettings = [&settings, &presenter, &delegate, &platform] {
        LaunchpadWindowController *controller = delegate.windowController();
        if (!controller)
            return;
        if (!settings) {
            CompositionRoot &root = controller->composition();
            SettingsPresenter::Services services{&controller->hotKeyManager(), &controller->hotCornersManager(),
                                                 &controller->gesturesManager(), root.appearanceRepo.get(),
                                                 controller->layout(), presenter.get(),
                                                 &Platform::startsAtLogin, &Platform::setStartsAtLogin,
                                                 [&delegate] { return delegate.showsDockIcon(); },
                                                 [&delegate](bool show) { delegate.setShowsDockIcon(show); },
                                                 [controller] { return controller->extraAppFolders(); },
                                                 [controller](const QStringList &folders) {
                                                     controller->setExtraAppFolders(folders);
                                                 },
                                                 platform.fileChooser()};
            settings = std::make_unique<SettingsWindow>(services, [lookup = root.appIconLookup](const QString &path) {
                return lookup->icon(path);
            });
            // Written elsewhere: another process, or a command the launcher ran.
            for (auto signal : {&LaunchpadWindowController::appearanceChanged, &LaunchpadWindowController::appsCustomized})
                QObject::connect(controller, signal, settings.get(), [&settings] { settings->presenter()->reload(); });
            QObject::connect(controller, &LaunchpadWindowController::settingsChangedElsewhere, settings.get(),
                             [&settings] { settings->presenter()->reload(); });
        }
        // The overlay stays on top of everything; the window would open under it.
        controller->hideOverlay();
        settings->show();
    };
    delegate.setStatusItemFactory([openSettings](LaunchpadWindowController &controller) {
        return StatusBarController::createIfAvailable(controller, openSettings);
    });
    delegate.setCataloguePlatform(platform.catalogue());
    delegate.setInputPlatformFactory([&platform] { return platform.input(); });

    // The overlay exists before the first show, which start-up queues.
    QObject::connect(&delegate, &AppDelegate::windowControllerCreated, &app,
                     [&](LaunchpadWindowController *controller) {
                         CompositionRoot &root = controller->composition();
                         presenter = std::make_unique<GridPresenter>(*controller->layout(), *root.appNameRepository,
                                                                     *root.appearanceRepo, root.appLauncher);
                         QObject::connect(controller, &LaunchpadWindowController::settingsRequested, &app,
                                          openSettings);
                         presenter->setSpaces(&controller->spaces());
                         presenter->themes()->attach(&controller->spaces(), controller->layout(), &root);
                         presenter->attach({controller->workflows(), root.workflowLaunchService,
                                            root.systemFoldersService, root.systemFolderAssets,
                                            platform.fileChooser(), root.appsCustomizationRepository,
                                            root.folderIconStyleRepo});
                         QObject::connect(presenter.get(), &GridPresenter::settingsRequested, &app, openSettings);
                         // The first backdrop is made now, before the first show.
                         presenter->backdrop()->attach({root.wallpaperRepo.get(), root.appearanceRepo.get(),
                                                        root.layoutStore, platform.desktopWallpaper(),
                                                        BackdropCache::defaultFolder()});
                         presenter->background()->attach(root.wallpaperRepo.get());
                         overlay = std::make_unique<OverlayWindow>(
                             *controller, *presenter,
                             [lookup = root.appIconLookup](const QString &path) {
                                 // "theme:NAME" is an icon of the theme by name (system folders).
                                 if (path.startsWith(QLatin1String("theme:")))
                                     return QIcon::fromTheme(path.mid(6));
                                 return lookup->icon(path);
                             });
                     });

    channel.setHandler([&delegate](const QJsonObject &request, InstanceChannel::Reply reply) {
        if (LaunchpadWindowController *controller = delegate.windowController())
            InstanceCommands::handle(request, *controller, std::move(reply));
        else
            reply({{"error", "starting"}});
    });
    QObject::connect(&app, &QCoreApplication::aboutToQuit, &app, [&] {
        channel.setTerminating(true);
        delegate.applicationWillTerminate();
    });

    delegate.applicationWillFinishLaunching();
    if (delegate.applicationDidFinishLaunching() && overlay)
        overlay->setShowInTaskbar(platform.dockIconVisible());
    QObject::connect(&delegate, &AppDelegate::dockIconVisibilityChanged, &app, [&overlay](bool visible) {
        if (overlay)
            overlay->setShowInTaskbar(visible);
    });
    const int status = app.exec();
    settings.reset();
    overlay.reset();
    presenter.reset();
    return status;
}
