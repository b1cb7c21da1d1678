#pragma once
// Shading steps shared by every painter: light comes from the top left, so top and left edges are
// lit and bottom and right edges shaded, and outlines take the darkest tone of the object's hue.
#include "ArtImage.h"

class Shading {
public:
    // Key pixels that touch a drawn pixel (sideways or up/down) become colour.
    static void Outline(ArtImage& image, uint32_t colour);
    // Key pixels that touch a drawn pixel become the outline tone of that pixel's hue.
    static void OutlineOwnHue(ArtImage& image);
    // Drawn pixels within width of a key pixel above or to the left become one tone lighter, those
    // within width of a key pixel below or to the right one tone darker.
    static void Bevel(ArtImage& image, int width);
    // Lights a round body (centre and radii in pixels) as a sphere lit from the top left: a lit cap,
    // a shaded crescent at the bottom right and, when dither is set, ordered dither between bands.
    static void Sphere(ArtImage& image, float cx, float cy, float rx, float ry, bool dither);
    // A small four-pointed white sparkle centred on (x, y); arm is 0 for a single pixel.
    static void Sparkle(ArtImage& image, int x, int y, int arm, uint32_t colour);
};
