#pragma once

#include <QString>

// "Start at login" on a freedesktop desktop: an entry in
// $XDG_CONFIG_HOME/autostart that launches the program with --login-item.
namespace AutostartEntry {
QString path();
bool isEnabled();
bool setEnabled(bool enabled, const QString &executable, QString *error = nullptr);
}
