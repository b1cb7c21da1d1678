#pragma once
// The game's clock in a scripted run (--fixed-dt): it stands still within a frame and moves by
// exactly the frame time from one frame to the next, so everything timed in milliseconds (the
// countdown, the race clock, recorded inputs, blinking, the fire) replays the same on any machine
// and at any speed. Installed, it is the program's time source (GetTimeMs) until uninstalled or
// destroyed; it starts at the real time of installing.
#include <atomic>
#include <cstdint>

class QmFrameClock {
public:
    QmFrameClock() = default;
    ~QmFrameClock();
    QmFrameClock(const QmFrameClock&) = delete;
    QmFrameClock& operator=(const QmFrameClock&) = delete;

    void Install(float frameSeconds);
    void Uninstall();
    bool Installed() const { return installed; }
    // The next frame begins.
    void Advance();
    // Milliseconds, as GetTimeMs reports them while installed.
    int64_t NowMs() const { return microseconds.load() / 1000; }

private:
    std::atomic<int64_t> microseconds{0};
    int64_t stepMicroseconds = 0;
    bool installed = false;
};
