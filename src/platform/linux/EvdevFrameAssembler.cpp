#include "platform/linux/EvdevFrameAssembler.h"

#include <linux/input-event-codes.h>

EvdevFrameAssembler::EvdevFrameAssembler(int slotCount, Axis x, Axis y, int currentSlot)
    : m_slots(qMax(slotCount, 1))
    , m_x(x)
    , m_y(y)
    , m_current(currentSlot)
{
}

void EvdevFrameAssembler::setSlot(int slot, int trackingId, int x, int y)
{
    if (slot < 0 || slot >= m_slots.size())
        return;
    m_slots[slot].active = trackingId >= 0;
    m_slots[slot].x = x;
    m_slots[slot].y = y;
}

std::optional<ContactFrame> EvdevFrameAssembler::feed(quint16 type, quint16 code, qint32 value, double timestamp)
{
    if (type == EV_SYN && code == SYN_REPORT)
        return frame(timestamp);
    if (type != EV_ABS)
        return std::nullopt;
    if (code == ABS_MT_SLOT) {
        m_current = value;
        return std::nullopt;
    }
    if (m_current < 0 || m_current >= m_slots.size())
        return std::nullopt;
    Slot &slot = m_slots[m_current];
    switch (code) {
    case ABS_MT_TRACKING_ID:
        // A new id is a new finger, even in a reused slot: no velocity yet.
        slot.active = value >= 0;
        slot.hasPrevious = false;
        break;
    case ABS_MT_POSITION_X: slot.x = value; break;
    case ABS_MT_POSITION_Y: slot.y = value; break;
    default: break;
    }
    return std::nullopt;
}

float EvdevFrameAssembler::normalised(int value, const Axis &axis) const
{
    const int range = axis.maximum - axis.minimum;
    return range > 0 ? float(value - axis.minimum) / float(range) : 0.0f;
}

ContactFrame EvdevFrameAssembler::frame(double timestamp)
{
    ContactFrame out;
    out.timestamp = timestamp;
    const double dt = timestamp - m_previousTime;
    for (Slot &slot : m_slots) {
        if (!slot.active) {
            slot.hasPrevious = false;
            continue;
        }
        Contact c{normalised(slot.x, m_x), normalised(slot.y, m_y), 0, 0};
        if (slot.hasPrevious && dt > 0) {
            c.vx = float((c.x - slot.previousX) / dt);
            c.vy = float((c.y - slot.previousY) / dt);
        }
        slot.hasPrevious = true;
        slot.previousX = c.x;
        slot.previousY = c.y;
        out.contacts.append(c);
    }
    m_previousTime = timestamp;
    return out;
}
