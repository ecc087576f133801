#pragma once

#include "input/ContactFrameSource.h"

#include <QString>
#include <memory>
#include <vector>

// Contact frames of every multitouch touchpad under /dev/input, read with
// libevdev on the main thread. Reading an event device needs membership of
// its group (usually "input"); without it the source is unavailable.
class EvdevTouchpadSource final : public ContactFrameSource {
public:
    explicit EvdevTouchpadSource(QString directory = QStringLiteral("/dev/input"));
    ~EvdevTouchpadSource() override;

    StartResult start(FrameHandler handler) override;
    void stop() override;

private:
    class Device;
    QString m_directory;
    std::vector<std::unique_ptr<Device>> m_devices;
};
