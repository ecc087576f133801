#pragma once

#include "catalogue/AppScan.h"

#include <QList>

// The installed applications. scan() reads the file system and is called
// from a worker thread, so implementations keep no unguarded mutable state.
class AppsRepository {
public:
    virtual ~AppsRepository() = default;
    // The applications and what the scan could see (see AppScan).
    virtual AppScan scan() const = 0;
    QList<AppItem> fetch() const { return scan().apps(); }
};
