#include "input/InputPlatform.h"

#include "input/ApplicationActivity.h"
#include "foundation/Clock.h"
#include "input/ContactFrameSource.h"
#include "input/HotKeyService.h"
#include "input/PointerSource.h"

namespace {

class AbsentHotKeys final : public HotKeyService {
public:
    Handle installHandler(PressHandler) override { return 1; }
    Registration registerHotKey(quint32, quint32, HotKeyId) override { return {kHotKeyInvalidErr, 0}; }
    qint32 unregisterHotKey(Handle) override { return kNoErr; }
};

class AbsentPointer final : public PointerSource {
public:
    QPoint cursorPosition() const override { return {}; }
    QList<QRect> screenGeometries() const override { return {}; }
    bool isMotionListenerAllowed() override { return false; }
    bool startMotionListener(std::function<void()>) override { return false; }
    void stopMotionListener() override {}
};

class AbsentTouchpads final : public ContactFrameSource {
public:
    StartResult start(FrameHandler) override { return {Status::NoDevices, 0}; }
    void stop() override {}
};

}

InputPlatform InputPlatform::completed() const
{
    InputPlatform out = *this;
    if (!out.hotKeys)
        out.hotKeys = std::make_shared<AbsentHotKeys>();
    if (!out.pointer)
        out.pointer = std::make_shared<AbsentPointer>();
    if (!out.touchpads)
        out.touchpads = std::make_shared<AbsentTouchpads>();
    if (!out.activity)
        out.activity = std::make_shared<QtApplicationActivity>();
    if (!out.clock)
        out.clock = std::make_shared<QtClock>();
    return out;
}
