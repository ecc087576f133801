#pragma once

#include "catalogue/CataloguePlatform.h"

#include <QStringList>

// The `tillmora` executable's arguments: none (or --login-item) starts the
// launcher; anything else is a command that runs and exits. A command is
// carried out by the running launcher when there is one, else headless here.
namespace CommandLine {
bool startsLauncher(const QStringList &arguments);
// Runs a command; returns the process exit status.
int run(const QStringList &arguments, const CataloguePlatform &catalogue);
QString helpText();
}
