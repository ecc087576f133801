#pragma once

#include <QStringList>

// The freedesktop base directories, read from the environment on every call
// (a running session may be handed new ones, and tests point them at
// temporary folders).
namespace XdgDirectories {

// $XDG_DATA_HOME, else ~/.local/share.
QString dataHome();
// $XDG_DATA_DIRS, else /usr/local/share and /usr/share. Relative entries are
// ignored, as the base-directory rules require.
QStringList dataDirs();
// The system-wide Flatpak and Snap export folders. Both package managers
// normally add them to $XDG_DATA_DIRS, but a session started without their
// profile scripts lacks them.
QStringList systemExportDirs();
// Data folders in precedence order: the data home, the data dirs, then the
// Flatpak export folder of the user and the given export folders, each once.
QStringList dataDirsWithExports(const QStringList &exportDirs);

}
