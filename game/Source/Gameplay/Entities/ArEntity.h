#pragma once
// Everything that moves in a race: the racer, the ghost and the cows. Positions are float pixels
// of the 640 x 640 play field (origin top-left, y down); an entity is one cell in size. Speeds are
// pixels per second, tuned for 64-pixel cells: on a 32-pixel grid the horizontal speed and the
// jump impulse are halved and gravity is 750 instead of 1500, so a 20 x 20 map plays like a
// 10 x 10 map at half scale. Move is the one collision step against the grid and the border; it
// also handles the racer's contact with cows and, with effects, the special blocks.
#include <cstdint>

class ArEntityHost;

class ArEntity {
public:
    static constexpr float kFieldSize = 640.0f;

    explicit ArEntity(ArEntityHost* host);
    virtual ~ArEntity() = default;
    ArEntity(const ArEntity&) = delete;
    ArEntity& operator=(const ArEntity&) = delete;

    virtual void Kill();

    // Gravity for this frame; returns the vertical displacement, limited to less than one cell.
    float ApplyGravity();
    void Move(float newX, float newY, float dy, bool withEffects);
    // Box overlap with another box (sizes truncated to whole pixels, strict comparisons). With
    // pixels (an image of the other box, 0xFF00FF transparent) the overlap must also hold a
    // visible pixel. hitX and hitY report the overlap of both axes.
    bool Collides(float otherX, float otherY, float otherWidth, float otherHeight, const uint32_t* pixels,
                  bool& hitX, bool& hitY) const;
    // Whether the box moved by (dx, dy) stays in the field, off walls and off every other cow.
    bool CanMoveTo(float dx, float dy) const;

    float x = 0.0f;
    float y = 0.0f;
    float width = 0.0f;
    float height = 0.0f;
    float gravity = 0.0f;
    float verticalSpeed = 0.0f;
    float speed = 0.0f;
    uint8_t active = 1;
    uint8_t inAir = 0;
    uint8_t falling = 0;
    uint8_t verticalContact = 1;
    uint8_t horizontalContact = 1;
    float movedX = 0.0f;
    float movedY = 0.0f;
    float jumpImpulse = 0.0f;
    uint8_t finished = 0;
    int32_t groundBlock = 0;
    uint8_t physical = 1;
    int32_t direction = 0;

protected:
    int BlockSize() const;
    // The horizontal speed for this grid (halved on 32-pixel cells).
    float GridSpeed() const;
    void PlaySound(const char* name) const;

    ArEntityHost* host;

private:
    void ApplyEffects();
    void TouchCell(int column, int row, int id);
    // The finish counts only past an inset from every side of its cell.
    bool InsideFinish(float cellX, float cellY) const;
};
