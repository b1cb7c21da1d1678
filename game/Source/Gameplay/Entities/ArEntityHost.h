#pragma once
// What a moving entity needs from the race around it: the world's grid, the sounds, the frame
// time, the race's flags and entities, and the few race operations that block effects and
// contacts trigger. The race (QmCoreGameplayManager) implements it.
#include <cstdint>
#include <memory>
#include <vector>

class ArEnemy;
class ArPlayer;
class QmCoreEnvironmentManager;
class QmRaceAudio;

class ArEntityHost {
public:
    virtual ~ArEntityHost() = default;

    virtual QmCoreEnvironmentManager& World() = 0;
    virtual QmRaceAudio& Audio() = 0;
    // This frame's time in seconds.
    virtual float FrameTime() const = 0;
    virtual bool Paused() const = 0;
    virtual bool RaceRunning() const = 0;
    // The racer the player steers (the first racer), or null before the race has one.
    virtual ArPlayer* SteeredRacer() = 0;
    virtual const std::vector<std::unique_ptr<ArEnemy>>& Enemies() const = 0;

    // Freezes the race time.
    virtual void StopClock() = 0;
    virtual void ToggleFlip() = 0;
    virtual void SetFinishReached() = 0;
    virtual void SetConfusion(bool on) = 0;
    // The fire image for a cell (blockSize x blockSize pixels, 0xAARRGGBB, 0xFF00FF transparent).
    virtual const uint32_t* FireImage(int index, int blockSize) = 0;
};
