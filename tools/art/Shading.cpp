#include "Shading.h"

#include "ArtNoise.h"
#include "ArtPalette.h"

#include <cmath>

void Shading::Outline(ArtImage& image, uint32_t colour) {
    ArtImage before = image;
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            if (!before.IsKey(x, y)) {
                continue;
            }
            if (!before.IsKey(x - 1, y) || !before.IsKey(x + 1, y) || !before.IsKey(x, y - 1) ||
                !before.IsKey(x, y + 1)) {
                image.Set(x, y, colour);
            }
        }
    }
}

void Shading::OutlineOwnHue(ArtImage& image) {
    ArtImage before = image;
    const int dx[4] = {0, -1, 1, 0};
    const int dy[4] = {1, 0, 0, -1};
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            if (!before.IsKey(x, y)) {
                continue;
            }
            for (int k = 0; k < 4; ++k) {
                uint32_t n = before.Get(x + dx[k], y + dy[k]);
                if (n != kKey) {
                    image.Set(x, y, ArtPalette::Outline(n));
                    break;
                }
            }
        }
    }
}

void Shading::Bevel(ArtImage& image, int width) {
    ArtImage before = image;
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            uint32_t c = before.Get(x, y);
            if (c == kKey) {
                continue;
            }
            bool lit = false;
            bool shaded = false;
            for (int k = 1; k <= width; ++k) {
                lit = lit || before.IsKey(x - k, y) || before.IsKey(x, y - k);
                shaded = shaded || before.IsKey(x + k, y) || before.IsKey(x, y + k);
            }
            if (lit) {
                image.Set(x, y, ArtPalette::Lighter(c));
            } else if (shaded) {
                image.Set(x, y, ArtPalette::Darker(c));
            }
        }
    }
}

void Shading::Sphere(ArtImage& image, float cx, float cy, float rx, float ry, bool dither) {
    ArtImage before = image;
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            uint32_t c = before.Get(x, y);
            if (c == kKey) {
                continue;
            }
            float nx = (x + 0.5f - cx) / rx;
            float ny = (y + 0.5f - cy) / ry;
            // Brightness falls off from a light spot up and to the left of the centre.
            float lx = nx + 0.38f;
            float ly = ny + 0.42f;
            float d = std::sqrt(lx * lx + ly * ly);
            float t = dither ? (ArtNoise::Bayer(x, y) - 0.5f) * 0.16f : 0.0f;
            d += t;
            if (d < 0.38f) {
                image.Set(x, y, ArtPalette::Lighter(c));
            } else if (d > 1.3f) {
                image.Set(x, y, ArtPalette::Darker(ArtPalette::Darker(c)));
            } else if (d > 0.98f) {
                image.Set(x, y, ArtPalette::Darker(c));
            }
        }
    }
}

void Shading::Sparkle(ArtImage& image, int x, int y, int arm, uint32_t colour) {
    image.Set(x, y, colour);
    for (int k = 1; k <= arm; ++k) {
        image.Set(x - k, y, colour);
        image.Set(x + k, y, colour);
        image.Set(x, y - k, colour);
        image.Set(x, y + k, colour);
    }
}
