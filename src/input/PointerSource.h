#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <functional>

// The global pointer and the screens, in the desktop's own coordinates:
// logical pixels, y growing downward.
class PointerSource {
public:
    virtual ~PointerSource() = default;

    virtual QPoint cursorPosition() const = 0;
    // In the desktop's screen-list order; the main screen first.
    virtual QList<QRect> screenGeometries() const = 0;
    // Whether a pointer-motion listener may be installed at all.
    virtual bool isMotionListenerAllowed() = 0;
    // Calls onMotion on the main thread for every pointer movement, until
    // stopMotionListener. Returns false when no listener could be installed.
    virtual bool startMotionListener(std::function<void()> onMotion) = 0;
    virtual void stopMotionListener() = 0;
};
