#pragma once
// What the world renderer asks of the application around it each frame: the display options,
// which scene is running, the race's racer and its flip, and the frame time. The coordinator
// implements it over its options, scenes and gameplay manager; the defaults describe a 2D view
// with no race (tools and tests override what they need).
#include <cstdint>

// The steered racer as the renderer sees it.
struct QmRacerView {
    bool exists = false;
    float x = 0.0f;
    float y = 0.0f;
    bool active = true;
    int32_t groundBlock = 0;
};

class QmWorldViewHost {
public:
    virtual ~QmWorldViewHost() = default;

    // Option "3DGraphics" is "1".
    virtual bool ThreeDEnabled() const { return false; }
    // Option "ShadowsEnabled" is "1".
    virtual bool ShadowsEnabled() const { return true; }
    // The scene is the map editor / a race.
    virtual bool InEditor() const { return false; }
    virtual bool InRace() const { return false; }
    // The race's flip flag is set and the race runs.
    virtual bool Flipped() const { return false; }
    // The gameplay manager's first racer, when there is one.
    virtual QmRacerView Racer() const { return QmRacerView(); }
    // This frame's time in seconds.
    virtual float FrameTime() const { return 0.0f; }
};
