#pragma once
// The Finish block's cycling colour. Its art carries pixels of the current colour, which walks
// around the colour wheel one channel at a time, 250 units per second:
//   phase 0 blue down to 0xFE0000, 1 green up to 0xFEFF00, 2 red down to 0x00FF00,
//   3 blue up to 0x00FFFF, 4 green down to 0x0000FF, 5 red up to 0xFE00FF, then phase 0 again.
// The colour never equals the transparent key 0xFF00FF: the cycle passes 0xFE00FF instead.
#include <cstdint>

class QmFinishColour {
public:
    static constexpr uint32_t kStart = 0xFE0000;
    static constexpr int kStartPhase = 1;
    static constexpr float kSpeed = 250.0f;

    // Moves the colour by frameTime seconds; returns the colour before the step.
    uint32_t Step(float frameTime);

    uint32_t colour = kStart;
    int phase = kStartPhase;

private:
    float carry = 0.0f;
};
