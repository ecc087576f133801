#pragma once

#include "foundation/GridRecords.h"

#include <QList>
#include <QString>

// The catalogue of the last run, kept in the application-support folder so
// the overlay's first frame can draw the stored grid before this run's scan
// has finished. Only a speed-up: a missing or damaged file reads as empty.
namespace CatalogueCache {
inline constexpr const char *kFileName = "catalogue-cache.json";
QList<AppItem> load(const QString &path);
// Written atomically; returns false (and leaves the old file) on failure.
bool save(const QString &path, const QList<AppItem> &apps);
}
