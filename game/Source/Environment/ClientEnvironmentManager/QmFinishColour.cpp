#include "Environment/ClientEnvironmentManager/QmFinishColour.h"

#include "Screen/Surface/VeSurface.h"

#include <algorithm>
#include <array>

namespace {

struct Phase {
    int shift;    // the moving channel: 16 red, 8 green, 0 blue
    bool up;      // direction
    uint32_t end; // the colour at which the phase ends
};

constexpr std::array<Phase, 6> kPhases = {{
    {0, false, 0xFE0000},
    {8, true, 0xFEFF00},
    {16, false, 0x00FF00},
    {0, true, 0x00FFFF},
    {8, false, 0x0000FF},
    {16, true, 0xFE00FF},
}};

} // namespace

uint32_t QmFinishColour::Step(float frameTime) {
    const uint32_t old = colour;
    const Phase& current = kPhases[static_cast<size_t>(phase % 6)];
    const int value = static_cast<int>((colour >> current.shift) & 0xFF);
    const int target = static_cast<int>((current.end >> current.shift) & 0xFF);
    // Fractions of a unit carry over, so very short frames still move the colour.
    const float exact = kSpeed * std::max(frameTime, 0.0f) + carry;
    const int step = static_cast<int>(std::min(exact, 255.0f));
    carry = exact >= 255.0f ? 0.0f : exact - static_cast<float>(step);
    int moved = current.up ? value + step : value - step;
    moved = std::clamp(moved, 0, 255);
    bool ended = current.up ? moved >= target : moved <= target;
    if (ended) {
        moved = target;
    }
    colour = (colour & ~(0xFFu << current.shift)) | static_cast<uint32_t>(moved) << current.shift;
    if (ended) {
        colour = current.end;
        phase = (phase + 1) % 6;
    }
    if (colour == kColourKey) {
        colour = 0xFE00FF;
    }
    return old;
}
