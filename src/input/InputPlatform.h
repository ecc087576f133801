#pragma once

#include <memory>

class ApplicationActivity;
class Clock;
class ContactFrameSource;
class HotKeyService;
class PointerSource;
class SleepWakeSource;

// The platform adaptors the activation inputs run on, handed to the window
// controller: the Linux ones by main(), fakes by the tests.
struct InputPlatform {
    std::shared_ptr<HotKeyService> hotKeys;
    std::shared_ptr<PointerSource> pointer;
    std::shared_ptr<ContactFrameSource> touchpads;
    std::shared_ptr<SleepWakeSource> power; // may stay empty: no re-arming after sleep
    std::shared_ptr<ApplicationActivity> activity;
    std::shared_ptr<Clock> clock;

    // Fills each missing adaptor with one that reports its facility absent
    // (no global shortcuts, no pointer, no touchpad), with Qt's application
    // state and clock.
    InputPlatform completed() const;
};
