#pragma once

#include "input/ContactFrameSource.h"

// Scripted touchpads: start() answers with status/deviceCount; deliver()
// hands a frame to the running handler.
class FakeContactFrameSource final : public ContactFrameSource {
public:
    Status status = Status::Started;
    int deviceCount = 1;
    int starts = 0;
    int stops = 0;

    StartResult start(FrameHandler handler) override
    {
        ++starts;
        if (status == Status::Started)
            m_handler = std::move(handler);
        return {status, status == Status::Started ? deviceCount : 0};
    }
    void stop() override
    {
        ++stops;
        m_handler = nullptr;
    }

    bool isStarted() const { return bool(m_handler); }
    // Returns false when no device is started to carry the frame.
    bool deliver(const ContactFrame &frame)
    {
        if (!m_handler)
            return false;
        m_handler(frame);
        return true;
    }

private:
    FrameHandler m_handler;
};
