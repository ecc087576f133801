#pragma once

#include "input/ContactFrameSource.h"

#include <QList>
#include <optional>

// Builds contact frames from one touchpad's multitouch events (protocol B:
// slots with tracking ids). Positions are normalised by the axis ranges;
// velocities come from a slot's position in the previous frame.
class EvdevFrameAssembler {
public:
    struct Axis {
        int minimum = 0;
        int maximum = 1;
    };

    EvdevFrameAssembler(int slotCount, Axis x, Axis y, int currentSlot = 0);

    // The state of one slot at the moment the device was opened.
    void setSlot(int slot, int trackingId, int x, int y);
    // One input event; returns the frame that a SYN_REPORT completes.
    std::optional<ContactFrame> feed(quint16 type, quint16 code, qint32 value, double timestamp);

private:
    struct Slot {
        bool active = false;
        int x = 0, y = 0;
        bool hasPrevious = false; // the contact was in the previous frame
        float previousX = 0, previousY = 0;
    };

    float normalised(int value, const Axis &axis) const;
    ContactFrame frame(double timestamp);

    QList<Slot> m_slots;
    Axis m_x, m_y;
    int m_current;
    double m_previousTime = 0;
};
