#pragma once

#include "platform/DesktopWallpaperSource.h"

// The desktop as a test sets it; change() tells the listener like a desktop
// whose wallpaper or colour scheme was changed.
class FakeDesktopWallpaperSource final : public DesktopWallpaperSource {
public:
    State state;

    State current() const override { return state; }
    void setChangedHandler(std::function<void()> handler) override { m_handler = std::move(handler); }
    void change(State next)
    {
        state = std::move(next);
        if (m_handler)
            m_handler();
    }

private:
    std::function<void()> m_handler;
};
