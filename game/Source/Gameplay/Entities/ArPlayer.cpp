#include "Gameplay/Entities/ArPlayer.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/Entities/ArEntityHost.h"

ArPlayer::ArPlayer(ArEntityHost* owner, bool isPhysical, float startX, float startY, float startSpeed)
    : ArEntity(owner) {
    x = startX;
    y = startY;
    speed = startSpeed;
    physical = isPhysical ? 1 : 0;
    width = height = static_cast<float>(BlockSize());
    jumpImpulse = kJumpImpulse;
}

void ArPlayer::Kill() {
    host->StopClock();
    active = 0;
}

void ArPlayer::Reset() {
    width = height = static_cast<float>(BlockSize());
    jumpImpulse = kJumpImpulse;
    active = 1;
    ClearInput();
    verticalContact = 1;
    horizontalContact = 1;
}

void ArPlayer::Jump() {
    inAir = 1;
    verticalSpeed = -(BlockSize() == 64 ? jumpImpulse : jumpImpulse * 0.5f);
    PlaySound("Jump");
}

void ArPlayer::UpdateRacer() {
    if (host->Paused()) {
        return;
    }
    movedX = movedY = 0.0f;
    float newX = x;
    if (!active) {
        return;
    }
    if (host->RaceRunning()) {
        if (jumpHeld && !inAir && verticalSpeed == 0.0f) {
            Jump();
        }
        const float step = GridSpeed() * host->FrameTime();
        if (leftHeld) {
            newX -= step;
        }
        if (rightHeld) {
            newX += step;
        }
    }
    const float dy = ApplyGravity();
    Move(newX, y + dy, dy, true);
}
