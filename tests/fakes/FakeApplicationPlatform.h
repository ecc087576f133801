#pragma once

#include "app/ApplicationPlatform.h"

#include <optional>

// A scripted platform for start-up tests: it reports what it was told and
// records what it was asked to do.
class FakeApplicationPlatform final : public ApplicationPlatform {
public:
    bool loginItem = false;
    qint64 pid = 1000;
    QList<RunningInstance> instances;

    QList<qint64> activated;
    int terminateCalls = 0;
    int registerFontsCalls = 0;
    std::optional<bool> dockIconVisible;

    bool launchedAsLoginItem() const override { return loginItem; }
    qint64 ownProcessId() const override { return pid; }
    QList<RunningInstance> runningInstances() override { return instances; }
    void activate(qint64 processId) override { activated.append(processId); }
    void terminate() override { ++terminateCalls; }
    void setDockIconVisible(bool visible) override { dockIconVisible = visible; }
    void registerFonts() override { ++registerFontsCalls; }
};
