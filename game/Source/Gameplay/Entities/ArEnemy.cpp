#include "Gameplay/Entities/ArEnemy.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/Entities/ArEntityHost.h"
#include "Gameplay/Entities/ArPlayer.h"
#include "Platform/VeRandom.h"

#include <algorithm>

ArEnemy::ArEnemy(ArEntityHost* owner, float startX, float startY, float startSpeed, float startWidth,
                 float startHeight)
    : ArEntity(owner) {
    x = startX;
    y = startY;
    speed = startSpeed;
    width = startWidth;
    height = startHeight;
    physical = 1;
    direction = Rand() & 1;
    width = height = static_cast<float>(BlockSize());
}

void ArEnemy::Reset() {
    width = height = static_cast<float>(BlockSize());
    verticalContact = 1;
    horizontalContact = 1;
    direction = Rand() & 1;
}

void ArEnemy::UpdateEnemy() {
    const ArPlayer* steered = host->SteeredRacer();
    if (host->Paused() || steered == nullptr || !steered->active) {
        return;
    }
    movedX = movedY = 0.0f;
    const float step = GridSpeed() * host->FrameTime();
    float newX = x;
    if (host->RaceRunning()) {
        if (horizontalContact) {
            direction = direction == 0 ? 1 : 0;
        }
        newX = direction == 0 ? x - step : x + step;
    }
    const float dy = ApplyGravity();
    width = height = static_cast<float>(BlockSize());
    const float oldX = x;
    const float oldY = y;
    Move(newX, y + dy, dy, false);

    std::vector<const ArEnemy*> nowTouching;
    for (const auto& other : host->Enemies()) {
        if (other.get() == this) {
            continue;
        }
        bool hitX = false;
        bool hitY = false;
        if (!Collides(other->x, other->y, other->width, other->height, nullptr, hitX, hitY)) {
            continue;
        }
        const bool already = std::find(touching.begin(), touching.end(), other.get()) != touching.end();
        nowTouching.push_back(other.get());
        horizontalContact = 1;
        x = oldX;
        y = oldY;
        if ((CanMoveTo(-1.0f, 0.0f) || CanMoveTo(1.0f, 0.0f) || CanMoveTo(0.0f, 1.0f)) && !already) {
            PlaySound("Cow");
        }
    }
    touching = std::move(nowTouching);
}
