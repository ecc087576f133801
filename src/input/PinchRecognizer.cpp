#include "input/PinchRecognizer.h"

#include <algorithm>
#include <cmath>

void PinchRecognizer::setRequiredFingers(int fingers)
{
    m_requiredFingers = fingers;
    reset();
}

void PinchRecognizer::reset()
{
    m_tracking = false;
    m_baselineSamples = 0;
    m_referenceSpread = 0;
    m_minSpread = 0;
    m_startCentroidX = m_startCentroidY = 0;
    m_gestureStartTime = 0;
}

std::optional<PinchDirection> PinchRecognizer::process(const QList<Contact> &contacts, double t)
{
    if (contacts.isEmpty() || contacts.size() != m_requiredFingers) {
        reset();
        return std::nullopt;
    }
    if (t - m_lastTriggerTime < cooldown)
        return std::nullopt;

    const float n = float(contacts.size());
    float cx = 0, cy = 0;
    for (const Contact &c : contacts) {
        cx += c.x;
        cy += c.y;
    }
    cx /= n;
    cy /= n;
    float spread = 0;
    for (const Contact &c : contacts)
        spread += std::hypot(c.x - cx, c.y - cy);
    spread /= n;

    if (!m_tracking) {
        m_tracking = true;
        m_baselineSamples = 1;
        m_referenceSpread = m_minSpread = spread;
        m_startCentroidX = cx;
        m_startCentroidY = cy;
        m_gestureStartTime = t;
        return std::nullopt;
    }
    m_referenceSpread = std::max(m_referenceSpread, spread);
    m_minSpread = std::min(m_minSpread, spread);
    if (m_baselineSamples <= 2) {
        // Let the fingers settle: the start point is the third frame's centroid.
        ++m_baselineSamples;
        m_startCentroidX = cx;
        m_startCentroidY = cy;
        return std::nullopt;
    }
    if (t - m_gestureStartTime > gestureWindow)
        return std::nullopt;

    const float travel = std::hypot(cx - m_startCentroidX, cy - m_startCentroidY);
    const float shrink = m_referenceSpread - spread;
    const float growth = spread - m_minSpread;

    std::optional<PinchDirection> direction;
    if (growth <= shrink) {
        if (m_referenceSpread > 0 && shrink >= minAbsShrink && m_referenceSpread >= minStartSpread
            && shrink / m_referenceSpread >= pinchShrinkRatio && travel <= maxCentroidTravelRatio * m_referenceSpread)
            direction = PinchDirection::pinchIn;
    } else if (spread > 0 && growth >= minAbsShrink && spread >= minStartSpread && growth / spread >= pinchShrinkRatio
               && travel <= maxCentroidTravelRatio * spread) {
        direction = PinchDirection::pinchOut;
    }
    if (!direction || isSwipe(contacts))
        return std::nullopt;

    m_lastTriggerTime = t;
    reset();
    return direction;
}

bool PinchRecognizer::isSwipe(const QList<Contact> &contacts)
{
    int fast = 0;
    float sumX = 0, sumY = 0;
    for (const Contact &c : contacts) {
        if (std::hypot(c.vx, c.vy) > swipeFingerSpeed) {
            ++fast;
            sumX += c.vx;
            sumY += c.vy;
        }
    }
    if (fast < 3)
        return false;
    const float length = std::hypot(sumX, sumY);
    if (length <= 0.0005f)
        return false;
    const float ux = sumX / length, uy = sumY / length;
    int agreeing = 0;
    for (const Contact &c : contacts) {
        const float speed = std::hypot(c.vx, c.vy);
        if (speed > swipeFingerSpeed && (ux * c.vx + uy * c.vy) / speed > 0.9f)
            ++agreeing;
    }
    return agreeing >= 3;
}
