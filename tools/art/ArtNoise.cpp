#include "ArtNoise.h"

#include "ArtRandom.h"

#include <cmath>

namespace {

float Lattice(int ix, int iy, int cells, uint64_t seed) {
    ix = ((ix % cells) + cells) % cells;
    iy = ((iy % cells) + cells) % cells;
    return float(ArtRandom::Hash(seed, ix, iy) >> 40) / float(1ull << 24);
}

float Smooth(float t) {
    return t * t * (3.0f - 2.0f * t);
}

} // namespace

float ArtNoise::Value(float x, float y, int cellSize, int period, uint64_t seed) {
    int cells = period / cellSize;
    if (cells < 1) {
        cells = 1;
    }
    float fx = x / float(cellSize);
    float fy = y / float(cellSize);
    int ix = int(std::floor(fx));
    int iy = int(std::floor(fy));
    float tx = Smooth(fx - float(ix));
    float ty = Smooth(fy - float(iy));
    float a = Lattice(ix, iy, cells, seed);
    float b = Lattice(ix + 1, iy, cells, seed);
    float c = Lattice(ix, iy + 1, cells, seed);
    float d = Lattice(ix + 1, iy + 1, cells, seed);
    return (a + (b - a) * tx) * (1.0f - ty) + (c + (d - c) * tx) * ty;
}

float ArtNoise::Fractal(float x, float y, int cellSize, int period, int octaves, uint64_t seed) {
    float sum = 0.0f;
    float weight = 1.0f;
    float total = 0.0f;
    for (int o = 0; o < octaves && cellSize >= 1; ++o) {
        sum += Value(x, y, cellSize, period, seed + uint64_t(o) * 7919u) * weight;
        total += weight;
        weight *= 0.5f;
        cellSize /= 2;
    }
    return total > 0 ? sum / total : 0.0f;
}

float ArtNoise::Bayer(int x, int y) {
    static const int m[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
    return (float(m[y & 3][x & 3]) + 0.5f) / 16.0f;
}
