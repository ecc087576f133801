#pragma once

#include <QList>

// What start-up needs of the platform: whether this was a login-item launch,
// the other running copies, activating one, quitting, and the dock icon.
class ApplicationPlatform {
public:
    struct RunningInstance {
        qint64 processId = 0;
        bool isTerminated = false;
    };

    virtual ~ApplicationPlatform() = default;
    virtual bool launchedAsLoginItem() const = 0;
    virtual qint64 ownProcessId() const = 0;
    // Every running copy of this program the platform knows of (the own
    // process may be among them).
    virtual QList<RunningInstance> runningInstances() = 0;
    // Brings the given copy forward with all its windows.
    virtual void activate(qint64 processId) = 0;
    virtual void terminate() = 0;
    virtual void setDockIconVisible(bool visible) = 0;
    // The program's own font files, registered for this process.
    virtual void registerFonts() = 0;
};
