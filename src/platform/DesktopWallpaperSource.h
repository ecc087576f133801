#pragma once

#include <QString>
#include <functional>

// The desktop's own wallpaper and its preferred colour scheme, as the
// desktop environment's settings say.
class DesktopWallpaperSource {
public:
    struct State {
        QString wallpaperPath; // a local file; empty when the desktop names none
        // Most desktops state no preference until the user picks one.
        enum class Scheme { NoPreference, Dark, Light };
        Scheme scheme = Scheme::NoPreference;
        bool operator==(const State &) const = default;
    };

    virtual ~DesktopWallpaperSource() = default;
    virtual State current() const = 0;
    // Runs on the main thread after the wallpaper or the colour scheme changed.
    virtual void setChangedHandler(std::function<void()> handler) = 0;
};
