#pragma once

#include "input/ContactFrameSource.h"

// Sleep and wake from systemd-logind's PrepareForSleep signal on the
// system bus; silent where there is no logind.
class LogindSleepWatcher final : public SleepWakeSource {
    Q_OBJECT
public:
    explicit LogindSleepWatcher(QObject *parent = nullptr);

private Q_SLOTS:
    void prepareForSleep(bool start);
};
