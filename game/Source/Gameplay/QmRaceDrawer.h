#pragma once
// How the race shows itself: the entities, the texts and badges over the world, and the few
// screen-wide effects (fade-in, the upside-down view, the grey frame of death). The world
// renderer implements it; the base class draws nothing, which is what the simulator uses.
#include <cstdint>
#include <string>

class ArEntity;

class QmRaceDrawer {
public:
    enum EntityKind { EnemyEntity = 0, RacerEntity = 1, GhostEntity = 2 };
    // Badges of the head-up display.
    enum Badge { NoBadge = -1, GoldBadge = 0, SilverBadge = 1, BronzeBadge = 2, PlainBadge = 3 };
    static constexpr int kScreenSize = 640;

    virtual ~QmRaceDrawer() = default;

    // The race's drawing for a frame begins (before anything else of the race is drawn).
    virtual void BeginFrame() {}

    // The screen's fade multiplier (0 black, 1 full picture).
    virtual void SetFade(float /*multiplier*/) {}
    // Turns the frame image by 180 degrees (the flip pickup).
    virtual void ReversePixelOrder() {}
    // Turns the frame image grey (the racer is dead).
    virtual void GreyFrame() {}
    // A line of text centred across the screen at height y, over a one-pixel black shadow.
    virtual void DrawText(const std::string& /*text*/, int /*y*/) {}
    // The countdown number, centred on the screen.
    virtual void DrawCountdown(const std::string& /*number*/) {}
    // The panel with the map's name and the badge the current time still holds.
    virtual void DrawHud(const std::string& /*mapName*/, int /*badge*/) {}
    virtual void DrawEntity(const ArEntity& /*entity*/, EntityKind /*kind*/, float /*alpha*/) {}

    // The racer's face: eyes looking by (eyeDX, eyeDY), body frame of the character animation.
    virtual int BodyFrameCount() const { return 1; }
    virtual void SetRacerFace(int /*eyeDX*/, int /*eyeDY*/, int /*bodyFrame*/) {}
    // The character number chosen by the player (selects the racer's images).
    virtual void SetCharacter(int /*character*/) {}

    // World renderer state the race sets: the intro zoom and the confusion effect.
    virtual void SetIntro(float /*zoom*/) {}
    virtual void SetConfusion(bool /*on*/) {}
    // The current fire animation image for a cell, blockSize x blockSize pixels; null when the
    // renderer has none (the race then treats the whole cell as flame).
    virtual const uint32_t* FireImage(int /*index*/, int /*blockSize*/) { return nullptr; }
};
