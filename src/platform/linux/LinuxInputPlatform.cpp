#include "platform/linux/LinuxInputPlatform.h"

#include "input/ApplicationActivity.h"
#include "input/Clock.h"
#include "platform/linux/EvdevTouchpadSource.h"
#include "platform/linux/LogindSleepWatcher.h"
#include "platform/linux/X11PointerSource.h"
#include "platform/linux/XcbHotKeyService.h"

namespace LinuxInputPlatform {

InputPlatform create()
{
    InputPlatform platform;
    platform.hotKeys = std::make_shared<XcbHotKeyService>();
    platform.pointer = std::make_shared<X11PointerSource>();
    platform.touchpads = std::make_shared<EvdevTouchpadSource>();
    platform.power = std::make_shared<LogindSleepWatcher>();
    platform.activity = std::make_shared<QtApplicationActivity>();
    platform.clock = std::make_shared<QtClock>();
    return platform;
}

}
