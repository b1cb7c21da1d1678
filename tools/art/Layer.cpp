#include "Layer.h"

#include <algorithm>

float Layer::Width(float sixteenths) const {
    return std::max(1.0f, sixteenths * Unit());
}

void Layer::Ellipse(float cx, float cy, float rx, float ry, uint32_t colour) {
    image.FillEllipse(cx * S(), cy * S(), std::max(0.5f, rx * S()), std::max(0.5f, ry * S()), colour);
}

void Layer::Polygon(std::vector<ArtPoint> points, uint32_t colour) {
    for (ArtPoint& p : points) {
        p.x *= S();
        p.y *= S();
    }
    image.FillPolygon(points, colour);
}

void Layer::Line(float x0, float y0, float x1, float y1, float sixteenths, uint32_t colour) {
    image.ThickLine(x0 * S(), y0 * S(), x1 * S(), y1 * S(), Width(sixteenths), colour);
}

void Layer::Rect(float x, float y, float w, float h, uint32_t colour) {
    image.FillPolygon({{x * S(), y * S()},
                       {(x + w) * S(), y * S()},
                       {(x + w) * S(), (y + h) * S()},
                       {x * S(), (y + h) * S()}},
                      colour);
}

void Layer::Blade(float x, float y, float baseWidth, float tipX, float tipY, uint32_t colour) {
    float half = std::max(baseWidth * S(), 1.0f) * 0.5f;
    image.FillPolygon({{x * S() - half, y * S()}, {x * S() + half, y * S()}, {tipX * S() + 0.5f, tipY * S()}},
                      colour);
    image.ThickLine(x * S(), y * S() - 0.5f, tipX * S(), tipY * S(), 1.0f, colour);
}

void Layer::Curve(float x0, float y0, float cx, float cy, float x1, float y1, float sixteenths,
                  uint32_t colour) {
    const int steps = 24;
    float px = x0;
    float py = y0;
    for (int i = 1; i <= steps; ++i) {
        float t = float(i) / steps;
        float a = (1 - t) * (1 - t);
        float b = 2 * (1 - t) * t;
        float c = t * t;
        float x = a * x0 + b * cx + c * x1;
        float y = a * y0 + b * cy + c * y1;
        Line(px, py, x, y, sixteenths, colour);
        px = x;
        py = y;
    }
}
