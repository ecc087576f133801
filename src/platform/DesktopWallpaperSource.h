#pragma once

#include <QString>
#include <functional>

// The desktop's own wallpaper and whether the desktop prefers dark colours,
// as the desktop environment's settings say.
class DesktopWallpaperSource {
public:
    struct State {
        QString wallpaperPath; // a local file; empty when the desktop names none
        bool prefersDark = false;
        bool operator==(const State &) const = default;
    };

    virtual ~DesktopWallpaperSource() = default;
    virtual State current() const = 0;
    // Runs on the main thread after the wallpaper or the colour scheme changed.
    virtual void setChangedHandler(std::function<void()> handler) = 0;
};
