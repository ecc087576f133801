#include "ui/StatusBarController.h"

#include "app/LaunchpadWindowController.h"
#include "foundation/Logging.h"

#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

std::unique_ptr<QObject> StatusBarController::createIfAvailable(LaunchpadWindowController &controller,
                                                                std::function<void()> openSettings)
{
    if (!QSystemTrayIcon::isSystemTrayAvailable()) {
        qCInfo(lcApp, "No system tray on this desktop; the status item is not shown");
        return nullptr;
    }
    return std::make_unique<StatusBarController>(controller, std::move(openSettings));
}

StatusBarController::StatusBarController(LaunchpadWindowController &controller, std::function<void()> openSettings)
    : m_menu(std::make_unique<QMenu>())
{
    m_tray = new QSystemTrayIcon(this);
    // The program's own icon; a theme's symbolic grid icon is too faint on
    // most panels to find.
    m_tray->setIcon(QApplication::windowIcon());
    m_tray->setToolTip(QStringLiteral("Tillmora"));
    m_menu->addAction(QStringLiteral("Show"), &controller, &LaunchpadWindowController::showOverlay);
    m_menu->addAction(QStringLiteral("Settings…"), this, [openSettings] {
        if (openSettings)
            openSettings();
    });
    m_menu->addSeparator();
    m_menu->addAction(QStringLiteral("Quit"), qApp, &QCoreApplication::quit);
    m_tray->setContextMenu(m_menu.get());
    connect(m_tray, &QSystemTrayIcon::activated, &controller, [&controller](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger)
            controller.toggleOverlay();
    });
    m_tray->show();
}

StatusBarController::~StatusBarController() = default;
