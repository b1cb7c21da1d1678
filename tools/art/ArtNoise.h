#pragma once
// Smooth value noise that repeats with a given period, so textures made from it tile without seams.
#include <cstdint>

class ArtNoise {
public:
    // Noise in 0..1 at pixel (x, y) with lattice cells of cellSize pixels, repeating every period
    // pixels in both directions (period must be a multiple of cellSize).
    static float Value(float x, float y, int cellSize, int period, uint64_t seed);
    // Several octaves of Value, halving the cell each time (down to 1 pixel), weights halving.
    static float Fractal(float x, float y, int cellSize, int period, int octaves, uint64_t seed);
    // 0..1 threshold of the 4x4 ordered dither matrix at (x, y).
    static float Bayer(int x, int y);
};
