#pragma once

#include <QStringView>

// Names that mark a launcher: this program and other launchers never appear
// in the catalogue.
namespace ExclusionRules {
// True when the text contains "tillmora", "launchpad" or "launcher", in any case.
bool mentionsLauncher(QStringView text);
}
