#pragma once

#include <QVariantMap>

// Defaults registered at launch: they answer reads of keys the user never set
// and are never written to disk.
namespace RegisteredDefaults {
QVariantMap firstBatch();
QVariantMap secondBatch();
void registerAll();
}
