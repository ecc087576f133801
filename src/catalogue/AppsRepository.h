#pragma once

#include "foundation/GridRecords.h"

#include <QList>

// The installed applications. fetch() scans the file system and is called
// from a worker thread, so implementations keep no unguarded mutable state.
class AppsRepository {
public:
    virtual ~AppsRepository() = default;
    virtual QList<AppItem> fetch() const = 0;
};
