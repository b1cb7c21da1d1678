#pragma once
// A drawing helper for sprites sized by a cell: coordinates are fractions of the cell (0 to 1,
// y down), so one description draws the 16, 32 and 64 pixel versions, with line widths and
// shading bands that grow with the size. Parts are drawn on separate layers, shaded, then stacked.
#include "ArtImage.h"

#include <vector>

class Layer {
public:
    explicit Layer(int size) : image(size, size), size(size) {}

    // Pixels per cell fraction, and a sixteenth of the cell (at least one pixel).
    float S() const { return float(size); }
    float Unit() const { return size / 16.0f; }
    // A line width in sixteenths of the cell, never below one pixel.
    float Width(float sixteenths) const;

    void Ellipse(float cx, float cy, float rx, float ry, uint32_t colour);
    void Polygon(std::vector<ArtPoint> points, uint32_t colour);
    void Line(float x0, float y0, float x1, float y1, float sixteenths, uint32_t colour);
    void Rect(float x, float y, float w, float h, uint32_t colour);
    // A tapering blade from a base centred at (x, y) with the given base width to a tip.
    void Blade(float x, float y, float baseWidth, float tipX, float tipY, uint32_t colour);
    // A smooth curve through three points drawn as a line.
    void Curve(float x0, float y0, float cx, float cy, float x1, float y1, float sixteenths, uint32_t colour);

    ArtImage image;
    int size;
};
