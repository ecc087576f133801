#pragma once

#include "input/PointerSource.h"

// A scripted pointer over scripted screens (y-down, main screen first).
class FakePointerSource final : public PointerSource {
public:
    QPoint position;
    QList<QRect> screens{QRect(0, 0, 1440, 900)};
    bool listenerAllowed = true;
    bool listenerWorks = true;
    int listenerStarts = 0;

    QPoint cursorPosition() const override { return position; }
    QList<QRect> screenGeometries() const override { return screens; }
    bool isMotionListenerAllowed() override { return listenerAllowed; }
    bool startMotionListener(std::function<void()> onMotion) override
    {
        ++listenerStarts;
        if (!listenerWorks)
            return false;
        m_onMotion = std::move(onMotion);
        return true;
    }
    void stopMotionListener() override { m_onMotion = nullptr; }

    bool isListening() const { return bool(m_onMotion); }
    // Moves the pointer; an installed listener hears of it.
    void moveTo(QPoint p)
    {
        position = p;
        if (m_onMotion)
            m_onMotion();
    }

private:
    std::function<void()> m_onMotion;
};
