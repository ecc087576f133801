#pragma once

#include <QObject>
#include <functional>
#include <memory>

class LaunchpadWindowController;
class QMenu;
class QSystemTrayIcon;

// The tray item: Show, Settings and Quit, and a click toggles the overlay.
// Created only where the desktop has a tray.
class StatusBarController : public QObject {
    Q_OBJECT
public:
    static std::unique_ptr<QObject> createIfAvailable(LaunchpadWindowController &controller,
                                                      std::function<void()> openSettings);
    StatusBarController(LaunchpadWindowController &controller, std::function<void()> openSettings);
    ~StatusBarController() override;

private:
    std::unique_ptr<QMenu> m_menu;
    QSystemTrayIcon *m_tray = nullptr;
};
