#pragma once

#include "input/ContactFrameSource.h"

#include <QPointF>
#include <optional>

enum class PinchDirection { pinchIn = 0, pinchOut = 1 };

// Recognises one pinch per gesture of exactly requiredFingers contacts and
// rejects swipes. Fed frame by frame.
class PinchRecognizer {
public:
    static constexpr float minStartSpread = 0.04f;
    static constexpr float pinchShrinkRatio = 0.3f;
    static constexpr float minAbsShrink = 0.02f;
    static constexpr float maxCentroidTravelRatio = 0.6f;
    static constexpr float swipeFingerSpeed = 0.012f;
    static constexpr double gestureWindow = 1.5;
    static constexpr double cooldown = 1.0;

    explicit PinchRecognizer(int requiredFingers = 4) : m_requiredFingers(requiredFingers) {}

    void setRequiredFingers(int fingers);
    int required() const { return m_requiredFingers; }
    // Returns the direction when this frame completes a pinch.
    std::optional<PinchDirection> process(const QList<Contact> &contacts, double t);
    void reset();

    // Three or more fast contacts moving the same way.
    static bool isSwipe(const QList<Contact> &contacts);

private:
    int m_requiredFingers;
    bool m_tracking = false;
    int m_baselineSamples = 0;
    float m_referenceSpread = 0;
    float m_minSpread = 0;
    float m_startCentroidX = 0, m_startCentroidY = 0;
    double m_gestureStartTime = 0;
    double m_lastTriggerTime = 0;
};
