#pragma once
// A tiny 3 x 5 pixel font of our own for labels on the contact sheet: upper-case letters (lower
// case is drawn as upper case), digits and a few marks. Each character advances 4 pixels.
#include "ArtImage.h"

#include <string>

class PixelFont {
public:
    static constexpr int Advance = 4;
    static constexpr int Height = 5;
    // Draws text at (x, y) scaled by scale; returns the x after the last character.
    static int Draw(ArtImage& image, int x, int y, const std::string& text, uint32_t colour, int scale = 1);
    static int Width(const std::string& text, int scale = 1);
};
