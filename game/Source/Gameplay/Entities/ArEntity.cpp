#include "Gameplay/Entities/ArEntity.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/Entities/ArEnemy.h"
#include "Gameplay/Entities/ArEntityHost.h"
#include "Gameplay/Entities/ArPlayer.h"
#include "Gameplay/QmRaceAudio.h"
#include "Platform/VeLog.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {
constexpr int kDiscoConfusion = 246;
constexpr int kRedGateKey = 248;
constexpr int kFlipVision = 249;
constexpr int kSpeedUp = 250;
constexpr int kJumpImpulse = 251;
constexpr int kFire = 253;
constexpr int kFinish = 254;
constexpr uint32_t kColourKey = 0xFF00FF;

bool Overlaps(float ax, float ay, float aw, float ah, float bx, float by, float bw, float bh) {
    return ax < bx + bw && bx < ax + aw && ay < by + bh && by < ay + ah;
}

// The cells [first, last] that a span of pixels [low, high) can touch on one axis, widened by a
// cell on each side; the exact strict test is made per cell.
void CellSpan(float low, float high, int blockSize, int mapSize, int& first, int& last) {
    const float lowCell = std::floor(low / static_cast<float>(blockSize)) - 1.0f;
    const float highCell = std::floor(high / static_cast<float>(blockSize)) + 1.0f;
    first = lowCell < 0.0f ? 0 : lowCell > static_cast<float>(mapSize) ? mapSize : static_cast<int>(lowCell);
    last = highCell < -1.0f                             ? -1
           : highCell > static_cast<float>(mapSize - 1) ? mapSize - 1
                                                        : static_cast<int>(highCell);
}

int Truncate(float value) {
    // Positions stay inside the play field; anything else (NaN, huge) reads as 0.
    return std::isfinite(value) && std::fabs(value) < 1.0e9f ? static_cast<int>(value) : 0;
}
} // namespace

ArEntity::ArEntity(ArEntityHost* owner) : host(owner) {}

void ArEntity::Kill() {
    active = 0;
}

int ArEntity::BlockSize() const {
    return host->World().blockSize;
}

float ArEntity::GridSpeed() const {
    return BlockSize() == 32 ? speed * 0.5f : speed;
}

void ArEntity::PlaySound(const char* name) const {
    if (physical) {
        host->Audio().PlayAt(name, x, y);
    }
}

float ArEntity::ApplyGravity() {
    const float blockSize = static_cast<float>(BlockSize());
    const float dt = host->FrameTime();
    gravity = BlockSize() == 64 ? 1500.0f : 750.0f;
    verticalSpeed += gravity * dt;
    float dy = verticalSpeed * dt;
    if (dy <= -blockSize) {
        dy = 0.001f - blockSize;
    } else if (dy >= blockSize) {
        dy = blockSize - 0.001f;
    }
    return dy;
}

void ArEntity::Move(float newX, float newY, float dy, bool withEffects) {
    QmCoreEnvironmentManager& world = host->World();
    const int blockSize = world.blockSize;
    const int mapSize = world.mapSize;
    const float cell = static_cast<float>(blockSize);
    const bool goingDown = newY > y;

    // A racer touching a cow dies, whether the race runs or is still counting down.
    if (withEffects && physical) {
        const int w = Truncate(width);
        const int h = Truncate(height);
        for (const auto& enemy : host->Enemies()) {
            const float ew = static_cast<float>(Truncate(enemy->width));
            const float eh = static_cast<float>(Truncate(enemy->height));
            if (Overlaps(x, y, static_cast<float>(w), static_cast<float>(h), enemy->x, enemy->y, ew, eh)) {
                PlaySound("CowHitPlayer");
                PlaySound("EnemyHit");
                host->StopClock();
                if (ArPlayer* steered = host->SteeredRacer()) {
                    steered->active = 0;
                }
            }
        }
    }

    // The wall scan, column by column: the first solid cell of a column that the horizontally
    // moved box overlaps blocks the horizontal move, else the first one the vertically moved box
    // overlaps blocks the vertical move (and may mark a roof). Only cells near the two boxes can
    // overlap them, so the scan is limited to those.
    bool roof = newY < 0.0f;
    bool hitX = false;
    bool hitY = false;
    int firstColumn = 0;
    int lastColumn = 0;
    int firstRow = 0;
    int lastRow = 0;
    CellSpan(std::min(x, newX), std::max(x, newX) + width, blockSize, mapSize, firstColumn, lastColumn);
    CellSpan(std::min(y, newY), std::max(y, newY) + height, blockSize, mapSize, firstRow, lastRow);
    for (int c = firstColumn; c <= lastColumn && !(hitX && hitY); ++c) {
        const float cx = static_cast<float>(c * blockSize);
        for (int r = firstRow; r <= lastRow; ++r) {
            const float cy = static_cast<float>(r * blockSize);
            const bool overlapX = Overlaps(newX, y, width, height, cx, cy, cell, cell);
            const bool overlapY = !overlapX && Overlaps(x, newY, width, height, cx, cy, cell, cell);
            if ((!overlapX && !overlapY) || world.IsPassable(c, r, physical != 0)) {
                continue;
            }
            if (overlapX) {
                hitX = true;
                break;
            }
            hitY = true;
            const int remY = Truncate(newY + 0.5f) % blockSize;
            const int last = mapSize - 1;
            const int colA = std::clamp(Truncate(x / cell + 0.5f), 0, last);
            const int colB = std::clamp(Truncate(x + 0.5f) % blockSize > 0 ? colA + 1 : colA, 0, last);
            const int rowY = std::clamp(Truncate(newY / cell + 0.5f), 0, last);
            if (static_cast<float>(remY) > cell * 0.5f &&
                (world.GetBlock(colA, rowY) > 1 || world.GetBlock(colB, rowY) > 1)) {
                roof = true;
            }
            if (dy < 0.0f) {
                roof = true;
            }
            break;
        }
    }

    const float limit = kFieldSize - cell;
    if (!hitX && newX >= 0.0f && newX < limit) {
        horizontalContact = 0;
        movedX = newX - x;
        x = newX;
    } else {
        if (!horizontalContact) {
            PlaySound("Hit");
        }
        horizontalContact = 1;
        x = static_cast<float>(Truncate(x / cell + 0.5f) * blockSize);
    }

    if (!hitY && newY >= 0.0f && newY < limit) {
        verticalContact = 0;
        movedY = newY - y;
        y = newY;
    } else {
        y = static_cast<float>(Truncate(y / cell + 0.5f) * blockSize);
        if (!verticalContact) {
            PlaySound(roof ? "RoofHit" : "Hit");
        }
        if (!roof) {
            verticalSpeed = 0.0f;
            inAir = 0;
        }
        verticalContact = 1;
    }

    groundBlock = 0;
    if (verticalContact && !roof) {
        const int rowBelow = Truncate(y / cell + 1.0f);
        if (rowBelow < mapSize) {
            const int column = std::clamp(static_cast<int>(std::floor(x / cell)), 0, mapSize - 1);
            groundBlock = world.GetBlock(column, rowBelow);
            if (groundBlock == 0 && column + 1 < mapSize) {
                groundBlock = world.GetBlock(column + 1, rowBelow);
            }
        }
    }

    falling = goingDown && !verticalContact;

    if (withEffects) {
        ApplyEffects();
    }
}

void ArEntity::ApplyEffects() {
    QmCoreEnvironmentManager& world = host->World();
    const int blockSize = world.blockSize;
    const float cell = static_cast<float>(blockSize);
    int firstColumn = 0;
    int lastColumn = 0;
    int firstRow = 0;
    int lastRow = 0;
    CellSpan(x, x + width, blockSize, world.mapSize, firstColumn, lastColumn);
    CellSpan(y, y + height, blockSize, world.mapSize, firstRow, lastRow);
    for (int c = firstColumn; c <= lastColumn; ++c) {
        for (int r = firstRow; r <= lastRow; ++r) {
            const int id = world.GetBlock(c, r);
            if (id < kDiscoConfusion || id > kFinish) {
                continue;
            }
            if (Overlaps(x, y, width, height, static_cast<float>(c * blockSize),
                         static_cast<float>(r * blockSize), cell, cell)) {
                TouchCell(c, r, id);
            }
        }
    }
}

void ArEntity::TouchCell(int column, int row, int id) {
    QmCoreEnvironmentManager& world = host->World();
    const int blockSize = world.blockSize;
    const float cellX = static_cast<float>(column * blockSize);
    const float cellY = static_cast<float>(row * blockSize);
    if (!physical) {
        // The ghost takes only what changes itself; the map and the race stay as they are.
        switch (id) {
        case kRedGateKey:
            world.gatesOpen = true;
            break;
        case kSpeedUp:
            speed = 600.0f;
            break;
        case kJumpImpulse:
            jumpImpulse = 1004.0f;
            break;
        case kFinish:
            if (InsideFinish(cellX, cellY)) {
                finished = 1;
            }
            break;
        default:
            break;
        }
        return;
    }
    switch (id) {
    case kDiscoConfusion:
        world.SetBlock(column, row, 0);
        host->SetConfusion(true);
        PlaySound("Confusion");
        break;
    case kRedGateKey:
        world.SetBlock(column, row, 0);
        world.OpenGates();
        PlaySound("OpenGates");
        break;
    case kFlipVision:
        host->ToggleFlip();
        world.SetBlock(column, row, 0);
        PlaySound("FlipScreen");
        break;
    case kSpeedUp:
        speed = 600.0f;
        world.SetBlock(column, row, 0);
        PlaySound("SpeedUp");
        break;
    case kJumpImpulse:
        jumpImpulse = 1004.0f;
        world.SetBlock(column, row, 0);
        PlaySound("SuperJump");
        break;
    case kFire: {
        bool hitX = false;
        bool hitY = false;
        const int image = (world.mapSize * column + row) % 6;
        if (Collides(cellX, cellY, static_cast<float>(blockSize), static_cast<float>(blockSize),
                     host->FireImage(image, blockSize), hitX, hitY)) {
            PlaySound("Fire");
            host->StopClock();
            if (ArPlayer* steered = host->SteeredRacer()) {
                steered->active = 0;
            }
        }
        break;
    }
    case kFinish:
        if (InsideFinish(cellX, cellY)) {
            host->SetFinishReached();
        }
        break;
    default:
        break;
    }
}

bool ArEntity::InsideFinish(float cellX, float cellY) const {
    const int blockSize = BlockSize();
    const float inset = blockSize == 64 ? 20.0f : blockSize == 32 ? 10.0f : blockSize == 16 ? 5.0f : 20.0f;
    const float s = static_cast<float>(blockSize);
    return cellX + s - inset > x && x + s > cellX + inset && cellY + s - inset > y && y + s > cellY + inset;
}

bool ArEntity::Collides(float otherX, float otherY, float otherWidth, float otherHeight,
                        const uint32_t* pixels, bool& hitX, bool& hitY) const {
    hitX = false;
    hitY = false;
    const int w = Truncate(width);
    const int h = Truncate(height);
    if (!Overlaps(x, y, static_cast<float>(w), static_cast<float>(h), otherX, otherY,
                  static_cast<float>(Truncate(otherWidth)), static_cast<float>(Truncate(otherHeight)))) {
        return false;
    }
    hitX = true;
    hitY = true;
    if (pixels == nullptr) {
        return true;
    }
    int dx = Truncate(static_cast<float>(Truncate(otherX)) - x);
    int dy = Truncate(static_cast<float>(Truncate(otherY)) - y);
    if (std::abs(dx) >= w) {
        dx += dx > 0 ? -1 : 1;
    }
    if (std::abs(dy) >= h) {
        dy += dy > 0 ? -1 : 1;
    }
    if (std::abs(dx) >= w || std::abs(dy) >= h) {
        Log("Assertion failed: Source\\Gameplay\\Entities\\ArEntity line 91 (pixel offset %i, %i outside %i "
            "x %i)\n",
            dx, dy, w, h);
        return false;
    }
    const int firstColumn = dx < 0 ? -dx : 0;
    const int endColumn = dx < 0 ? w - 1 : w - dx - 1;
    const int firstRow = dy < 0 ? -dy : 0;
    const int endRow = dy < 0 ? h - 1 : h - dy - 1;
    for (int row = firstRow; row < endRow; ++row) {
        for (int column = firstColumn; column < endColumn; ++column) {
            if ((pixels[row * w + column] & 0xFFFFFFu) != kColourKey) {
                return true;
            }
        }
    }
    return false;
}

bool ArEntity::CanMoveTo(float dx, float dy) const {
    QmCoreEnvironmentManager& world = host->World();
    const int blockSize = world.blockSize;
    const float cell = static_cast<float>(blockSize);
    const float field = static_cast<float>(world.mapSize * blockSize);
    const float toX = x + dx;
    const float toY = y + dy;
    if (toX < 0.0f || toY < 0.0f || toX + cell > field || toY + cell > field) {
        return false;
    }
    int firstColumn = 0;
    int lastColumn = 0;
    int firstRow = 0;
    int lastRow = 0;
    CellSpan(toX, toX + cell, blockSize, world.mapSize, firstColumn, lastColumn);
    CellSpan(toY, toY + cell, blockSize, world.mapSize, firstRow, lastRow);
    for (int c = firstColumn; c <= lastColumn; ++c) {
        for (int r = firstRow; r <= lastRow; ++r) {
            if (!world.IsPassable(c, r, physical != 0) &&
                Overlaps(toX, toY, cell, cell, static_cast<float>(c * blockSize),
                         static_cast<float>(r * blockSize), cell, cell)) {
                return false;
            }
        }
    }
    for (const auto& enemy : host->Enemies()) {
        if (enemy.get() != this &&
            Overlaps(toX, toY, cell, cell, enemy->x, enemy->y, enemy->width, enemy->height)) {
            return false;
        }
    }
    return true;
}
