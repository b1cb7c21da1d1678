#include "Screen/VeOverlayComposer.h"

#include "Screen/Surface/VeSurface.h"

#include <algorithm>
#include <cstring>

int32_t VeOverlayComposer::VisibleRows(int32_t height, float displaySize) {
    float rows = static_cast<float>(height) * displaySize;
    if (!(rows > 0.0f)) {
        return 0;
    }
    return rows >= static_cast<float>(height) ? height : static_cast<int32_t>(rows);
}

uint32_t VeOverlayComposer::ComposePixel(uint32_t pixel, int32_t multiplier256, bool grey) {
    if (pixel == kColourKey) {
        return 0xFF000000u;
    }
    uint32_t alpha = pixel >> 24;
    uint32_t r = (pixel >> 16) & 0xFF;
    uint32_t g = (pixel >> 8) & 0xFF;
    uint32_t b = pixel & 0xFF;
    if (alpha != 0 && alpha != 255) {
        r = r * alpha / 255;
        g = g * alpha / 255;
        b = b * alpha / 255;
    }
    if (multiplier256 != 256) {
        auto scale = [&](uint32_t c) {
            return static_cast<uint32_t>(std::min<int64_t>(255, int64_t{c} * multiplier256 >> 8));
        };
        r = scale(r);
        g = scale(g);
        b = scale(b);
    }
    if (grey) {
        uint32_t y = (77 * r + 150 * g + 29 * b) >> 8;
        r = g = b = y;
    }
    return 0xFF000000u | r << 16 | g << 8 | b;
}

void VeOverlayComposer::Compose(const VeSurface& overlay, uint32_t* out, int32_t outRowLength,
                                float displaySize, float colourMultiplier, bool grey) {
    const int32_t w = overlay.width;
    const int32_t rows = VisibleRows(overlay.height, displaySize);
    float scaled = std::clamp(colourMultiplier, 0.0f, 64.0f) * 256.0f;
    const int32_t multiplier256 = static_cast<int32_t>(scaled + 0.5f);
    for (int32_t y = 0; y < overlay.height; ++y) {
        uint32_t* to = out + static_cast<size_t>(outRowLength) * y;
        if (y >= rows || multiplier256 == 0) {
            std::fill(to, to + w, 0xFF000000u);
            continue;
        }
        const uint32_t* from = overlay.Pixels() + static_cast<size_t>(overlay.RowLength()) * y;
        if (multiplier256 == 256 && !grey) {
            // The common frame: opaque pixels pass straight through.
            for (int32_t x = 0; x < w; ++x) {
                uint32_t p = from[x];
                uint32_t alpha = p >> 24;
                to[x] = (alpha == 0 && p != kColourKey) || alpha == 255 ? (p | 0xFF000000u)
                                                                        : ComposePixel(p, 256, false);
            }
        } else {
            for (int32_t x = 0; x < w; ++x) {
                to[x] = ComposePixel(from[x], multiplier256, grey);
            }
        }
    }
}
