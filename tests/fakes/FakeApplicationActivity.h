#pragma once

#include "input/ApplicationActivity.h"

// Tillmora in front or not, as the test says.
class FakeApplicationActivity final : public ApplicationActivity {
public:
    bool active = false;
    bool isActive() const override { return active; }
    // The application comes to the front.
    void activate()
    {
        active = true;
        Q_EMIT becameActive();
    }
};
