#pragma once
// A racer: the one the player steers (physical) or the ghost that replays a recorded run (not
// physical: it passes cows, opens gates only for itself and leaves the map as it is). Its three
// input flags are written before each update and cleared after it.
#include "Gameplay/Entities/ArEntity.h"

class ArPlayer : public ArEntity {
public:
    static constexpr float kJumpImpulse = 534.0f;

    ArPlayer(ArEntityHost* host, bool physical, float x, float y, float speed);

    // Stops the race clock and dies.
    void Kill() override;
    // Back to the start of a run: size, impulse, alive, no input, both contacts set. Speed stays.
    void Reset();
    void Jump();
    // Once per frame: walks and jumps from the input flags while the race runs, falls always.
    void UpdateRacer();
    bool AnyInput() const { return jumpHeld || leftHeld || rightHeld; }
    void ClearInput() { jumpHeld = leftHeld = rightHeld = 0; }

    uint8_t jumpHeld = 0;
    uint8_t leftHeld = 0;
    uint8_t rightHeld = 0;
};
