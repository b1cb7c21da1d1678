#include "Screen/VeFrameRate.h"

int32_t VeFrameRate::RateOf(float frameDelta) {
    // A zero or absurdly short frame (a driven clock) counts as a very fast one, not as a crash.
    if (!(frameDelta > 1e-6f)) {
        return 1000000;
    }
    // The small allowance keeps a frame of exactly 1/60 s (not exact in binary) at 60, not 59.
    double rate = 1.0 / static_cast<double>(frameDelta) + 1e-4;
    return rate >= 1000000.0 ? 1000000 : static_cast<int32_t>(rate);
}

void VeFrameRate::Restart(float frameDelta, int64_t nowMs) {
    fps = RateOf(frameDelta);
    accumulator = 0;
    frames = 0;
    lastTime = nowMs;
}

void VeFrameRate::Count(float frameDelta, int64_t nowMs) {
    frames += 1;
    accumulator += RateOf(frameDelta);
    if (nowMs - lastTime > 500) {
        fps = accumulator / frames;
        accumulator = 0;
        frames = 0;
        lastTime = nowMs;
    }
}
