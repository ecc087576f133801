#pragma once

#include <QWidget>
#include <functional>

class HotCornersManager;
class HotKeyManager;
class QPushButton;

// The settings the activation inputs need, until the full settings panel:
// the toggle shortcut (captured by pressing it), the hot corner and start at
// login.
class SettingsWindow : public QWidget {
    Q_OBJECT
public:
    struct StartAtLogin {
        std::function<bool()> isEnabled;
        std::function<bool(bool)> setEnabled;
    };

    SettingsWindow(HotKeyManager &hotKeys, HotCornersManager &corners, StartAtLogin startAtLogin,
                   QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void refreshShortcut();

    HotKeyManager &m_hotKeys;
    QPushButton *m_shortcut = nullptr;
    bool m_capturing = false;
};
