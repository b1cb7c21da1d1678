#pragma once
// The software path's picture: the overlay over black, the way the basic shader composes it on
// the OpenGL path. The key is transparent, other pixels with alpha byte 0 are opaque and any other
// alpha byte blends; only the top screenDisplaySize part of the overlay is shown; the colours are
// scaled by the colour multiplier and, with grey set, turned to grey by their luminance.
#include <cstdint>

class VeSurface;

class VeOverlayComposer {
public:
    // Writes overlay.width by overlay.height 0xFFRRGGBB pixels to out (outRowLength pixels a row).
    static void Compose(const VeSurface& overlay, uint32_t* out, int32_t outRowLength, float displaySize,
                        float colourMultiplier, bool grey);
    // The number of overlay rows shown for a display size (truncated, within 0 and height).
    static int32_t VisibleRows(int32_t height, float displaySize);
    // One overlay pixel over black with the colour effects.
    static uint32_t ComposePixel(uint32_t pixel, int32_t multiplier256, bool grey);
};
