#pragma once
// Test support for pictures (surfaces and read-back frames): the colours at chosen points checked
// in one comparison, and a colour counted over a region. Colours are compared without alpha.
#include "Screen/Surface/VeSurface.h"

#include "Support/Screenshot.h"

#include <initializer_list>
#include <sstream>
#include <string>

struct Probe {
    int32_t x;
    int32_t y;
    uint32_t colour;
};

inline uint32_t ColourAt(const VeSurface& picture, int32_t x, int32_t y) {
    return picture.GetXY(x, y) & 0xFFFFFF;
}
inline uint32_t ColourAt(const ScreenshotImage& picture, int32_t x, int32_t y) {
    return picture.At(x, y);
}

// One line per point whose colour is not the expected one; empty when all match.
template <typename Picture>
std::string Mismatches(const Picture& picture, std::initializer_list<Probe> probes) {
    std::ostringstream out;
    for (const Probe& probe : probes) {
        const uint32_t actual = ColourAt(picture, probe.x, probe.y);
        if (actual != probe.colour) {
            out << "(" << probe.x << "," << probe.y << ") is " << std::hex << actual << " instead of "
                << probe.colour << std::dec << "\n";
        }
    }
    return out.str();
}

// Pixels of the colour in columns left to right - 1 and rows top to bottom - 1 (-1: to the edge).
template <typename Picture>
int CountColour(const Picture& picture, uint32_t colour, int32_t left = 0, int32_t top = 0,
                int32_t right = -1, int32_t bottom = -1) {
    right = right < 0 ? picture.width : right;
    bottom = bottom < 0 ? picture.height : bottom;
    int count = 0;
    for (int32_t y = top; y < bottom; ++y) {
        for (int32_t x = left; x < right; ++x) {
            count += ColourAt(picture, x, y) == colour ? 1 : 0;
        }
    }
    return count;
}
