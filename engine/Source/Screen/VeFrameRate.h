#pragma once
// The frame-rate measure behind the frame-rate display: every frame adds its rate (1 / frame
// delta, truncated) and, once more than 500 ms have passed since the last measurement, the shown
// value becomes the average of the frames counted since.
#include <cstdint>

class VeFrameRate {
public:
    // Starts over: the shown value is this frame's rate and nothing is counted yet.
    void Restart(float frameDelta, int64_t nowMs);
    void Count(float frameDelta, int64_t nowMs);
    static int32_t RateOf(float frameDelta);

    int32_t fps = 0;
    int32_t accumulator = 0;
    int32_t frames = 0;
    int64_t lastTime = 0;
};
