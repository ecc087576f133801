#pragma once

#include <QString>

// Removes the cache files that earlier versions left in the application-support
// folder and that nothing refers to any more. Runs once per installation.
namespace LegacyCachePurge {
// Names under the application-support folder that only held regenerable caches.
inline constexpr const char *kLegacyCacheFolders[] = {"IconCache", "ThumbnailCache"};
// Returns the number of items removed.
int run(const QString &appSupportDirectory);
}
