#pragma once

#include <QList>
#include <QObject>
#include <functional>

// One finger on a touchpad: position 0 ... 1 across the pad and velocity in
// pad widths (heights) per second.
struct Contact {
    float x = 0, y = 0;
    float vx = 0, vy = 0;
};

// Every contact on one device at one moment; timestamp in seconds.
struct ContactFrame {
    QList<Contact> contacts;
    double timestamp = 0;
};

// The multitouch devices of the machine.
class ContactFrameSource {
public:
    using FrameHandler = std::function<void(const ContactFrame &)>;
    enum class Status {
        Unavailable, // the devices cannot be reached at all
        NoDevices,   // reachable, but no multitouch touchpad
        Started,
    };
    struct StartResult {
        Status status = Status::Unavailable;
        int deviceCount = 0;
    };

    virtual ~ContactFrameSource() = default;
    // Starts every device with the handler; frames arrive on the main thread.
    virtual StartResult start(FrameHandler handler) = 0;
    virtual void stop() = 0;
};

// The machine going to sleep and waking up.
class SleepWakeSource : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    void willSleep();
    void didWake();
};
