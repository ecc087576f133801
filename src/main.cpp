#include "app/AppDelegate.h"
#include "app/BundleIdentity.h"
#include "app/InstanceChannel.h"
#include "app/LaunchpadWindowController.h"
#include "cli/CommandLine.h"
#include "platform/linux/DesktopEntrySource.h"
#include "platform/linux/GioAppLauncher.h"
#include "platform/linux/LinuxApplicationPlatform.h"
#include "platform/linux/LinuxInputPlatform.h"
#include "ui/StatusBarController.h"

#include <QApplication>

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (!CommandLine::startsLauncher(arguments)) {
        QCoreApplication app(argc, argv);
        return CommandLine::run(arguments);
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tillmora"));
    QApplication::setApplicationDisplayName(QLatin1String(BundleIdentity::kProgramName));
    QApplication::setOrganizationDomain(QStringLiteral("tillmora.com"));
    QApplication::setQuitOnLastWindowClosed(false);

    InstanceChannel channel;
    LinuxApplicationPlatform platform(channel, arguments);
    AppDelegate delegate(platform, StorageLocations::fromEnvironment());
    delegate.setStatusItemFactory(&StatusBarController::createIfAvailable);
    delegate.setCataloguePlatform({{std::make_shared<DesktopEntrySource>()}, std::make_shared<GioAppLauncher>()});
    delegate.setInputPlatformFactory(&LinuxInputPlatform::create);

    channel.setHandler([&delegate](const QJsonObject &request) -> QJsonObject {
        if (request.value(QLatin1String("command")).toString() == QLatin1String("activate")) {
            delegate.applicationShouldHandleReopen(false);
            return {{"ok", true}};
        }
        return {{"error", "unknown request"}};
    });
    QObject::connect(&app, &QCoreApplication::aboutToQuit, &app, [&] {
        channel.setTerminating(true);
        delegate.applicationWillTerminate();
    });

    delegate.applicationWillFinishLaunching();
    delegate.applicationDidFinishLaunching();
    return app.exec();
}
