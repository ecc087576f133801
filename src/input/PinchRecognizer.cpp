#include "input/PinchRecognizer.h"

#include <algorithm>
#include <cmath>

void PinchRecognizer::setRequiredFingers(int fingers)
{
    requiredFingers = fingers;
    reset();
}

void PinchRecognizer::reset()
{
    tracking = false;
    baselineSamples = 0;
    referenceSpread = 0;
    minSpread = 0;
    startCentroidX = startCentroidY = 0;
    gestureStartTime = 0;
}

std::optional<PinchDirection> PinchRecognizer::process(const QList<Contact> &contacts, double t)
{
    if (contacts.isEmpty() || contacts.size() != requiredFingers) {
        reset();
        return std::nullopt;
    }
    if (t - lastTriggerTime < cooldown)
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

    if (!tracking) {
        tracking = true;
        baselineSamples = 1;
        referenceSpread = minSpread = spread;
        startCentroidX = cx;
        startCentroidY = cy;
        gestureStartTime = t;
        return std::nullopt;
    }
    referenceSpread = std::max(referenceSpread, spread);
    minSpread = std::min(minSpread, spread);
    if (baselineSamples <= 2) {
        // Let the fingers settle: the start point is the third frame's centroid.
        ++baselineSamples;
        startCentroidX = cx;
        startCentroidY = cy;
        return std::nullopt;
    }
    if (t - gestureStartTime > gestureWindow)
        return std::nullopt;

    const float travel = std::hypot(cx - startCentroidX, cy - startCentroidY);
    const float shrink = referenceSpread - spread;
    const float growth = spread - minSpread;

    std::optional<PinchDirection> direction;
    if (growth <= shrink) {
        if (referenceSpread > 0 && shrink >= minAbsShrink && referenceSpread >= minStartSpread
            && shrink / referenceSpread >= pinchShrinkRatio && travel <= maxCentroidTravelRatio * referenceSpread)
            direction = PinchDirection::pinchIn;
    } else if (spread > 0 && growth >= minAbsShrink && spread >= minStartSpread && growth / spread >= pinchShrinkRatio
               && travel <= maxCentroidTravelRatio * spread) {
        direction = PinchDirection::pinchOut;
    }
    if (!direction || isSwipe(contacts))
        return std::nullopt;

    lastTriggerTime = t;
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
