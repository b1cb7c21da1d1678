#include "Gameplay/QmOverlayRaceDrawer.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/Entities/ArEntity.h"
#include "Screen/Surface/VeSurface.h"

#include <cmath>
#include <cstdlib>

namespace {
constexpr uint32_t kSky = 0xFF8FA6B8u;
constexpr uint32_t kConfusedSky = 0xFFB88FB0u;
constexpr uint32_t kOutline = 0xFF1A1A22u;
constexpr uint32_t kColoured[5] = {0xE99209, 0x1678D6, 0x1ADE0C, 0xE6D514, 0xE1120C};

int Round(float value) {
    return static_cast<int>(std::floor(value + 0.5f));
}
} // namespace

QmOverlayRaceDrawer::QmOverlayRaceDrawer(VeSurface& target, QmCoreEnvironmentManager& environment)
    : overlay(target), world(environment) {}

int QmOverlayRaceDrawer::CellColour(int id) {
    if (id >= Block::FirstDefault && id <= Block::LastColoured) {
        return static_cast<int>(kColoured[id - 1]);
    }
    if (id > Block::LastColoured && id <= Block::LastDefault) {
        return 0x6B4A2B; // bark
    }
    switch (id) {
    case Block::DiscoConfusion:
        return 0xC04CD0;
    case Block::RedGate:
        return 0x8E1010;
    case Block::RedGateKey:
        return 0xFF4040;
    case Block::FlipVision:
        return 0x40C0C0;
    case Block::SpeedUp:
        return 0x30E060;
    case Block::JumpImpulse:
        return 0x4070FF;
    case Block::Fire:
        return 0xFF6A00;
    case Block::Finish:
        return 0xF4F4F4;
    default:
        return -1;
    }
}

void QmOverlayRaceDrawer::BeginFrame() {
    turned = false;
    const uint32_t sky = confused ? kConfusedSky : kSky;
    overlay.Fill(sky);
    const int cell = world.blockSize;
    for (int x = 0; x < world.mapSize; ++x) {
        for (int y = 0; y < world.mapSize; ++y) {
            const int id = world.GetBlock(x, y);
            const int colour = CellColour(id);
            if (colour < 0) {
                continue;
            }
            const bool pickup = id >= Block::DiscoConfusion && id != Block::RedGate && id != Block::Finish &&
                                id != Block::Fire;
            const int inset = pickup ? cell / 4 : 0;
            overlay.Rect(x * cell + inset, y * cell + inset, cell - 2 * inset, cell - 2 * inset,
                         0xFF000000u | static_cast<uint32_t>(colour), true, true);
            if (id == Block::Finish) {
                // A chequered flag.
                const int square = cell / 4;
                for (int i = 0; i < 16; ++i) {
                    if ((i / 4 + i % 4) % 2 == 0) {
                        overlay.Rect(x * cell + (i % 4) * square, y * cell + (i / 4) * square, square, square,
                                     kOutline, true, true);
                    }
                }
            } else if (!pickup) {
                overlay.Rect(x * cell, y * cell, cell, cell,
                             0xFF000000u | static_cast<uint32_t>(colour / 2 & 0x7F7F7F), false, true);
            }
        }
    }
}

void QmOverlayRaceDrawer::ReversePixelOrder() {
    overlay.Rotate180();
    turned = !turned;
}

void QmOverlayRaceDrawer::GreyFrame() {
    overlay.GreyRect(0, 0, overlay.width, overlay.height);
}

void QmOverlayRaceDrawer::DrawCountdown(const std::string& number) {
    const int seconds = std::atoi(number.c_str());
    const int width = seconds * 60;
    overlay.Rect(320 - width / 2, 300, width, 40, 0xFFFFFFFFu, true, true);
    overlay.Rect(320 - width / 2, 300, width, 40, kOutline, false, true);
}

void QmOverlayRaceDrawer::SetRacerFace(int eyeDX, int eyeDY, int bodyFrame) {
    eyeX = eyeDX;
    eyeY = eyeDY;
    eyesClosed = bodyFrame > 0;
}

void QmOverlayRaceDrawer::DrawEntity(const ArEntity& entity, EntityKind kind, float alpha) {
    const int size = static_cast<int>(entity.width);
    const int x = turned ? overlay.width - size - Round(entity.x) : Round(entity.x);
    const int y = turned ? overlay.height - size - Round(entity.y) : Round(entity.y);
    const float shown = alpha;
    if (kind == EnemyEntity) {
        overlay.Rect(x, y, size, size, 0xFFF2F2F2u, true, true, shown);
        overlay.Rect(x + size / 5, y + size / 4, size / 3, size / 4, kOutline, true, true, shown);
        overlay.Rect(x + size * 3 / 5, y + size / 2, size / 4, size / 3, kOutline, true, true, shown);
        overlay.Rect(x + size / 3, y + size * 3 / 4, size / 3, size / 5, 0xFFF0A0B0u, true, true, shown);
        overlay.Rect(x, y, size, size, kOutline, false, true, shown);
        return;
    }
    overlay.Rect(x, y, size, size, 0xFFFFFFFFu, true, true, shown);
    overlay.Rect(x, y, size, size, kOutline, false, true, shown);
    const int eye = size / 8;
    const int scale = size / 32 > 0 ? size / 32 : 1;
    const int eyeTop = y + size * 10 / 32 + eyeY * scale;
    const int eyeHeight = kind == RacerEntity && eyesClosed ? 1 : eye;
    for (const int eyeLeft : {x + size / 4, x + size * 11 / 16}) {
        overlay.Rect(eyeLeft + eyeX * scale, eyeTop, eye, eyeHeight, kOutline, true, true, shown);
    }
}
