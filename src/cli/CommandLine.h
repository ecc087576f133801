#pragma once

#include <QStringList>

// The `tillmora` executable's arguments: none (or --login-item) starts the
// launcher; anything else is a command that runs and exits.
namespace CommandLine {
bool startsLauncher(const QStringList &arguments);
// Runs a command; returns the process exit status.
int run(const QStringList &arguments);
QString helpText();
}
