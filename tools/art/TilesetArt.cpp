#include "TilesetArt.h"

#include "ArtNoise.h"
#include "ArtPalette.h"
#include "ArtRandom.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

using P = ArtPalette;

namespace {

enum Face { Front = 0, Back, Left, Right, Bottom, Top };

// Drawing context of one tile: its size, the unit (a sixteenth of the size) and its seed.
struct Tile {
    ArtImage& image;
    int size;
    int u;
    uint64_t seed;
};

float Noise(const Tile& t, float x, float y, int cell, int octaves, uint64_t salt) {
    cell = std::max(1, std::min(cell, t.size));
    return ArtNoise::Fractal(x, y, cell, t.size, octaves, t.seed * 1315423911u + salt);
}

int Wrap(int v, int n) {
    return ((v % n) + n) % n;
}

// Draws an ellipse that wraps around the tile's edges, so repeated tiles join.
void WrappedEllipse(Tile& t, float cx, float cy, float rx, float ry, uint32_t colour) {
    for (int oy = -1; oy <= 1; ++oy) {
        for (int ox = -1; ox <= 1; ++ox) {
            t.image.FillEllipse(cx + ox * t.size, cy + oy * t.size, rx, ry, colour);
        }
    }
}

// Lights each region (pixels sharing an id) from the top left: pixels next to another region above
// or to the left get lighter, below or to the right darker. Ids below 0 are left alone.
void BevelRegions(Tile& t, const std::vector<int>& ids, int width) {
    ArtImage before = t.image;
    int s = t.size;
    for (int y = 0; y < s; ++y) {
        for (int x = 0; x < s; ++x) {
            int id = ids[y * s + x];
            if (id < 0) {
                continue;
            }
            bool lit = false;
            bool shaded = false;
            for (int k = 1; k <= width; ++k) {
                lit = lit || ids[Wrap(y - k, s) * s + x] != id || ids[y * s + Wrap(x - k, s)] != id;
                shaded = shaded || ids[Wrap(y + k, s) * s + x] != id || ids[y * s + Wrap(x + k, s)] != id;
            }
            uint32_t c = before.Get(x, y);
            if (lit) {
                t.image.Set(x, y, P::Lighter(c));
            } else if (shaded) {
                t.image.Set(x, y, P::Darker(c));
            }
        }
    }
}

void Earth(Tile& t, int fromY) {
    ArtRandom rng(t.seed ^ 0xEA57);
    for (int y = fromY; y < t.size; ++y) {
        for (int x = 0; x < t.size; ++x) {
            float v = Noise(t, float(x), float(y), t.size / 4, 3, 1);
            float fine = Noise(t, float(x), float(y), std::max(2, t.size / 16), 2, 2);
            uint32_t c = P::K1;
            if (v > 0.66f && fine > 0.4f) {
                c = P::K2;
            } else if (v < 0.28f && ArtNoise::Bayer(x, y) < 0.25f) {
                c = P::K0;
            } else if (fine > 0.78f && ArtNoise::Bayer(x, y) < 0.3f) {
                c = P::K2;
            }
            t.image.Set(x, y, c);
        }
    }
    // Pebbles.
    int pebbles = t.size == 16 ? 2 : t.size == 32 ? 4 : 7;
    for (int i = 0; i < pebbles; ++i) {
        int px = rng.Below(t.size);
        int py = fromY + 2 * t.u + rng.Below(std::max(1, t.size - fromY - 3 * t.u));
        if (t.size == 16) {
            t.image.Set(px, py, P::S2);
            continue;
        }
        float r = float(t.u) * (0.8f + rng.Unit() * 0.7f);
        ArtImage stone(t.size, t.size);
        stone.FillEllipse(px + 0.5f, py + 0.5f, r * 1.3f, r, P::S2);
        for (int y = 0; y < t.size; ++y) {
            for (int x = 0; x < t.size; ++x) {
                if (stone.IsKey(x, y)) {
                    continue;
                }
                uint32_t c = P::S2;
                if (stone.IsKey(x - 1, y - 1)) {
                    c = P::S3;
                } else if (stone.IsKey(x + 1, y + 1)) {
                    c = P::S1;
                }
                t.image.Set(x, y, c);
                if (stone.IsKey(x, y + 1) && y + 1 < t.size) {
                    t.image.Set(x, y + 1, P::K0);
                }
            }
        }
    }
}

void GrassCap(Tile& t, int depth) {
    ArtRandom rng(t.seed ^ 0x6A55);
    std::vector<int> reach(size_t(t.size));
    for (int x = 0; x < t.size; ++x) {
        int d = depth + rng.Range(-(t.u + 1) / 2, t.u);
        if (rng.Chance(0.22f)) {
            d += t.u + 1;
        }
        reach[size_t(x)] = std::min(t.size - 2, d);
    }
    for (int x = 0; x < t.size; ++x) {
        int d = reach[size_t(x)];
        for (int y = 0; y < d; ++y) {
            uint32_t c = P::M2;
            float v = Noise(t, float(x), float(y), std::max(2, t.size / 8), 2, 7);
            if (y < std::max(1, t.u / 2) || (y < t.u * 2 && v > 0.6f)) {
                c = P::M3;
            } else if (y >= d - std::max(1, t.u / 2)) {
                c = P::M1;
            } else if (v < 0.3f) {
                c = P::M1;
            }
            t.image.Set(x, y, c);
        }
        // The cap's shadow on the earth below it.
        t.image.Set(x, d, P::K0);
        if (t.size >= 64) {
            t.image.Set(x, d + 1, P::Darker(t.image.Get(x, d + 1)));
        }
    }
}

void GrassTop(Tile& t) {
    ArtRandom rng(t.seed ^ 0x7099);
    t.image.Fill(P::M2);
    int strokes = t.size * t.size / 10;
    for (int i = 0; i < strokes; ++i) {
        int x = rng.Below(t.size);
        int y = rng.Below(t.size);
        int len = rng.Range(1, std::max(1, t.u + 1));
        uint32_t c = rng.Chance(0.5f) ? P::M3 : P::M1;
        for (int k = 0; k < len; ++k) {
            t.image.Set(x, Wrap(y + k, t.size), c);
        }
    }
    if (t.size >= 32) {
        for (int i = 0; i < t.size / 16; ++i) {
            int x = rng.Below(t.size);
            int y = rng.Below(t.size);
            t.image.Set(x, y, rng.Chance(0.5f) ? P::Y3 : P::White);
        }
    }
}

void Bricks(Tile& t, bool mossy, float mossAmount) {
    int rows = t.size == 16 ? 2 : 4;
    int brickH = t.size / rows;
    int brickLen = t.size / 2;
    if (t.size == 16) {
        brickLen = 8;
    }
    std::vector<int> ids(size_t(t.size * t.size), -1);
    for (int y = 0; y < t.size; ++y) {
        int row = y / brickH;
        int offset = (row % 2) * brickLen / 2;
        for (int x = 0; x < t.size; ++x) {
            int bx = Wrap(x + offset, t.size);
            bool mortar = (y % brickH == brickH - 1) || (bx % brickLen == brickLen - 1);
            if (mortar) {
                t.image.Set(x, y, P::S0);
                continue;
            }
            int id = row * 16 + bx / brickLen;
            ids[size_t(y * t.size + x)] = id;
            uint32_t c = (ArtRandom::Hash(t.seed, id, 3) % 4 == 0) ? P::S1 : P::S2;
            float v = Noise(t, float(x), float(y), std::max(2, t.size / 8), 2, 11);
            if (v > 0.7f && ArtNoise::Bayer(x, y) < 0.5f) {
                c = P::Lighter(c);
            } else if (v < 0.28f && ArtNoise::Bayer(x, y) < 0.5f) {
                c = P::Darker(c);
            }
            t.image.Set(x, y, c);
        }
    }
    BevelRegions(t, ids, t.size >= 64 ? 2 : 1);
    if (!mossy) {
        return;
    }
    for (int y = 0; y < t.size; ++y) {
        for (int x = 0; x < t.size; ++x) {
            float v = Noise(t, float(x), float(y), t.size / 4, 3, 23);
            float bias = (1.0f - float(y) / float(t.size)) * 0.35f * mossAmount;
            bool inMortar = ids[size_t(y * t.size + x)] < 0;
            float m = v + bias + (inMortar ? 0.12f : 0.0f);
            if (m > 0.75f) {
                t.image.Set(x, y, P::M2);
            } else if (m > 0.70f) {
                t.image.Set(x, y, P::M1);
            }
        }
    }
    // Light catches the moss's upper edges.
    ArtImage before = t.image;
    for (int y = 0; y < t.size; ++y) {
        for (int x = 0; x < t.size; ++x) {
            uint32_t above = before.Get(x, Wrap(y - 1, t.size));
            if (before.Get(x, y) == P::M2 && above != P::M2 && above != P::M3) {
                t.image.Set(x, y, P::M3);
            }
        }
    }
}

void Cobble(Tile& t) {
    ArtRandom rng(t.seed ^ 0xC0BB);
    // One stone per cell of a grid, placed at random inside its cell, so stones come out even.
    int grid = t.size == 16 ? 2 : t.size == 32 ? 3 : 4;
    int count = grid * grid;
    float cell = float(t.size) / grid;
    std::vector<std::pair<float, float>> points;
    for (int gy = 0; gy < grid; ++gy) {
        for (int gx = 0; gx < grid; ++gx) {
            float ox = (gy % 2) * cell * 0.5f;
            points.push_back({std::fmod(gx * cell + ox + cell * (0.25f + rng.Unit() * 0.5f), float(t.size)),
                              gy * cell + cell * (0.25f + rng.Unit() * 0.5f)});
        }
    }
    std::vector<int> ids(size_t(t.size * t.size), -1);
    float gap = t.size == 16 ? 0.9f : t.size == 32 ? 1.4f : 2.2f;
    for (int y = 0; y < t.size; ++y) {
        for (int x = 0; x < t.size; ++x) {
            float d1 = 1e9f;
            float d2 = 1e9f;
            int best = 0;
            for (int i = 0; i < count; ++i) {
                float dx = std::fabs(x + 0.5f - points[size_t(i)].first);
                float dy = std::fabs(y + 0.5f - points[size_t(i)].second);
                dx = std::min(dx, t.size - dx);
                dy = std::min(dy, t.size - dy);
                float d = std::sqrt(dx * dx + dy * dy);
                if (d < d1) {
                    d2 = d1;
                    d1 = d;
                    best = i;
                } else if (d < d2) {
                    d2 = d;
                }
            }
            if (d2 - d1 < gap) {
                t.image.Set(x, y, P::S0);
                continue;
            }
            ids[size_t(y * t.size + x)] = best;
            uint32_t c = best % 3 == 0 ? P::S1 : P::S2;
            float v = Noise(t, float(x), float(y), std::max(2, t.size / 8), 2, 31);
            if (v > 0.72f && ArtNoise::Bayer(x, y) < 0.5f) {
                c = P::Lighter(c);
            }
            t.image.Set(x, y, c);
        }
    }
    BevelRegions(t, ids, t.size >= 64 ? 2 : 1);
}

void Planks(Tile& t) {
    ArtRandom rng(t.seed ^ 0x9A4C);
    int boards = t.size == 16 ? 2 : 4;
    int h = t.size / boards;
    for (int b = 0; b < boards; ++b) {
        int joint = rng.Below(t.size);
        float phase = rng.Unit() * 6.28f;
        for (int ly = 0; ly < h; ++ly) {
            int y = b * h + ly;
            for (int x = 0; x < t.size; ++x) {
                uint32_t c = P::K2;
                if (ly == 0) {
                    c = P::K3;
                } else if (ly == h - 1) {
                    c = P::K0;
                } else {
                    // Grain: gently waving lines along the board.
                    int spacing = std::max(3, h / 3);
                    int wave = int(std::lround(std::sin(x * 6.28318f / t.size * 2.0f + phase) * t.u * 0.8f));
                    if (Wrap(ly + wave, spacing) == 0 && ly > 1) {
                        c = P::K1;
                    }
                }
                int jx = Wrap(x - joint, t.size);
                if (jx == 0 && ly < h - 1) {
                    c = P::K0;
                } else if (jx == 1 && ly > 0 && ly < h - 1) {
                    c = P::K3;
                }
                t.image.Set(x, y, c);
            }
            // Nails beside the joint.
            if (t.size >= 32 && (ly == h / 2 || (t.size >= 64 && ly == h / 2 - 1))) {
                for (int side : {-1 - t.u / 2, 2 + t.u / 2}) {
                    int nx = Wrap(joint + side, t.size);
                    t.image.Set(nx, y, ly == h / 2 ? P::S1 : P::S3);
                    if (t.size >= 64) {
                        t.image.Set(Wrap(nx + 1, t.size), y, ly == h / 2 ? P::S0 : P::S2);
                    }
                }
            }
        }
        if (t.size >= 64) {
            // A knot.
            int kx = Wrap(joint + t.size / 2, t.size);
            int ky = b * h + h / 2;
            t.image.FillEllipse(kx + 0.5f, ky + 0.5f, 3.0f, 2.0f, P::K1);
            t.image.Set(kx, ky, P::K0);
        }
    }
}

void Bark(Tile& t, bool birch) {
    ArtRandom rng(t.seed ^ 0xBA4C);
    int s = t.size;
    if (birch) {
        // Pale bark with fine horizontal streaks and dark marks.
        t.image.Fill(P::White);
        int streaks = s * s / 24;
        for (int i = 0; i < streaks; ++i) {
            int x = rng.Below(s);
            int y = rng.Below(s);
            int len = rng.Range(t.u, t.u * 3);
            for (int k = 0; k < len; ++k) {
                t.image.Set(Wrap(x + k, s), y, P::S3);
            }
        }
        int marks = s == 16 ? 4 : s == 32 ? 7 : 12;
        for (int i = 0; i < marks; ++i) {
            int x = rng.Below(s);
            int y = rng.Below(s);
            int len = rng.Range(t.u * 2, t.u * 5);
            int thick = std::max(1, t.u / 2);
            for (int k = 0; k < len; ++k) {
                for (int j = 0; j < thick; ++j) {
                    bool middle = k > 0 && k < len - 1 && s >= 32;
                    t.image.Set(Wrap(x + k, s), Wrap(y + j, s), middle ? P::Ink : P::S1);
                }
            }
        }
        return;
    }
    // Deep vertical furrows that wander a little, with lit ridges on their left.
    int spacing = std::max(4, s / 4);
    std::vector<float> phase(size_t(s / spacing + 1));
    for (float& p : phase) {
        p = rng.Unit() * 6.28f;
    }
    t.image.Fill(P::K1);
    for (int y = 0; y < s; ++y) {
        for (int x = 0; x < s; ++x) {
            float v = Noise(t, float(x), float(y), std::max(2, s / 8), 2, 41);
            if (v > 0.68f && ArtNoise::Bayer(x, y) < 0.5f) {
                t.image.Set(x, y, P::K2);
            }
        }
    }
    for (int g = 0; g < s / spacing; ++g) {
        for (int y = 0; y < s; ++y) {
            float wave = std::sin(y * 6.28318f / s * 2.0f + phase[size_t(g)]) * t.u * 0.6f;
            int x = g * spacing + int(std::lround(wave));
            int w = std::max(1, t.u / 2);
            for (int k = 0; k < w; ++k) {
                t.image.Set(Wrap(x + k, s), y, P::K0);
            }
            t.image.Set(Wrap(x - 1, s), y, P::K2);
            if (s >= 64) {
                t.image.Set(Wrap(x - 2, s), y, P::K2);
                t.image.Set(Wrap(x + w, s), y, P::Darker(t.image.Get(Wrap(x + w, s), y)));
            }
        }
    }
    // Short cross cracks between the furrows.
    int cracks = s / 8;
    for (int i = 0; i < cracks; ++i) {
        int x = rng.Below(s);
        int y = rng.Below(s);
        for (int k = 0; k < t.u + 1; ++k) {
            t.image.Set(Wrap(x + k, s), y, P::K0);
        }
    }
    if (s >= 32) {
        // A little moss near the bottom.
        for (int y = s * 2 / 3; y < s; ++y) {
            for (int x = 0; x < s; ++x) {
                float v = Noise(t, float(x), float(y), s / 4, 3, 43) + float(y) / s * 0.25f;
                if (v > 0.88f) {
                    t.image.Set(x, y, P::M2);
                } else if (v > 0.84f) {
                    t.image.Set(x, y, P::M1);
                }
            }
        }
    }
}

void Rings(Tile& t, bool birch) {
    float c = t.size * 0.5f;
    float border = float(std::max(1, t.u)) + (t.size >= 32 ? 1.0f : 0.0f);
    float ringW = std::max(2.0f, t.size / 10.0f);
    for (int y = 0; y < t.size; ++y) {
        for (int x = 0; x < t.size; ++x) {
            float dx = x + 0.5f - c;
            float dy = y + 0.5f - c;
            float d = std::sqrt(dx * dx + dy * dy) +
                      (Noise(t, float(x), float(y), std::max(2, t.size / 4), 2, 51) - 0.5f) * t.u;
            float edge = std::max(std::fabs(dx), std::fabs(dy));
            uint32_t col;
            if (edge > c - border) {
                col = birch ? (Wrap(x + y, 3) == 0 ? P::S3 : P::White)
                            : (Wrap(x * 3 + y, 4) == 0 ? P::K0 : P::K1);
            } else if (d < std::max(1.0f, t.u * 0.75f)) {
                col = P::K2;
            } else if (std::fmod(d, ringW) < 1.0f) {
                col = P::K2;
            } else {
                col = P::K3;
            }
            t.image.Set(x, y, col);
        }
    }
}

void Leaves(Tile& t) {
    ArtRandom rng(t.seed ^ 0x1EAF);
    t.image.Fill(P::M0);
    int blobs = t.size == 16 ? 10 : t.size == 32 ? 22 : 48;
    float base = t.size == 16 ? 2.6f : t.size == 32 ? 4.2f : 6.5f;
    for (int i = 0; i < blobs; ++i) {
        float x = rng.Unit() * t.size;
        float y = rng.Unit() * t.size;
        float r = base * (0.75f + rng.Unit() * 0.5f);
        WrappedEllipse(t, x, y, r, r * 0.85f, P::M1);
        WrappedEllipse(t, x - r * 0.2f, y - r * 0.2f, r * 0.72f, r * 0.6f, P::M2);
        if (t.size >= 32) {
            WrappedEllipse(t, x - r * 0.38f, y - r * 0.36f, r * 0.32f, r * 0.26f, P::M3);
        } else {
            t.image.Set(Wrap(int(x - 1), t.size), Wrap(int(y - 1), t.size), P::M3);
        }
    }
    if (t.size >= 32) {
        for (int i = 0; i < t.size / 16; ++i) {
            int x = rng.Below(t.size);
            int y = rng.Below(t.size);
            t.image.Set(x, y, P::R2);
            t.image.Set(Wrap(x + 1, t.size), y, P::R1);
            t.image.Set(x, Wrap(y - 1, t.size), P::R3);
        }
    }
}

void Crate(Tile& t) {
    int s = t.size;
    int bw = std::max(2, t.u * 2);
    // Boards behind the frame.
    for (int y = 0; y < s; ++y) {
        for (int x = 0; x < s; ++x) {
            int board = std::max(3, s / 4);
            uint32_t c = P::K2;
            if (x % board == board - 1) {
                c = P::K1;
            } else if (x % board == 0) {
                c = P::K3;
            }
            t.image.Set(x, y, c);
        }
    }
    // The diagonal brace from the bottom left to the top right.
    for (int k = -bw / 2; k <= bw / 2; ++k) {
        for (int i = 0; i < s; ++i) {
            int x = i;
            int y = s - 1 - i + k;
            uint32_t c = k == -bw / 2 ? P::K3 : (k == bw / 2 ? P::K0 : P::K2);
            t.image.Set(x, y, c);
        }
    }
    // The frame.
    for (int y = 0; y < s; ++y) {
        for (int x = 0; x < s; ++x) {
            int d = std::min(std::min(x, y), std::min(s - 1 - x, s - 1 - y));
            if (d < bw) {
                uint32_t c = P::K2;
                if (d == bw - 1) {
                    c = P::K0;
                } else if (x == d || y == d) {
                    c = (x <= y) ? P::K3 : P::K3;
                }
                if (d == 0 && (x == s - 1 || y == s - 1)) {
                    c = P::K1;
                }
                t.image.Set(x, y, c);
            }
        }
    }
    if (s >= 32) {
        int n = bw / 2;
        int pts[4][2] = {{n, n}, {s - 1 - n, n}, {n, s - 1 - n}, {s - 1 - n, s - 1 - n}};
        for (auto& p : pts) {
            t.image.Set(p[0], p[1], P::S3);
            if (s >= 64) {
                t.image.Set(p[0] + 1, p[1], P::S1);
                t.image.Set(p[0], p[1] + 1, P::S1);
                t.image.Set(p[0] + 1, p[1] + 1, P::S0);
            }
        }
    }
}

void MushroomCap(Tile& t) {
    ArtRandom rng(t.seed ^ 0x5EED);
    for (int y = 0; y < t.size; ++y) {
        for (int x = 0; x < t.size; ++x) {
            float v = Noise(t, float(x), float(y), t.size / 4, 2, 61);
            uint32_t c = P::R2;
            if (v < 0.30f && ArtNoise::Bayer(x, y) < 0.5f) {
                c = P::R1;
            } else if (v > 0.78f && ArtNoise::Bayer(x, y) < 0.5f) {
                c = P::R3;
            }
            t.image.Set(x, y, c);
        }
    }
    // Spots on a staggered grid, each somewhere inside its cell.
    int grid = t.size == 16 ? 2 : 3;
    float cell = float(t.size) / grid;
    for (int gy = 0; gy < grid; ++gy) {
        for (int gx = 0; gx < grid; ++gx) {
            float x = gx * cell + (gy % 2) * cell * 0.5f + cell * (0.3f + rng.Unit() * 0.4f);
            float y = gy * cell + cell * (0.3f + rng.Unit() * 0.4f);
            float r = cell * (0.18f + rng.Unit() * 0.1f);
            if (t.size == 16) {
                r = 1.6f;
            }
            WrappedEllipse(t, x + t.u * 0.5f, y + t.u * 0.5f, r, r * 0.85f, P::S3);
            WrappedEllipse(t, x, y, r, r * 0.85f, P::White);
        }
    }
}

void Gills(Tile& t) {
    float c = t.size * 0.5f;
    for (int y = 0; y < t.size; ++y) {
        for (int x = 0; x < t.size; ++x) {
            float a = std::atan2(y + 0.5f - c, x + 0.5f - c);
            int spokes = t.size == 16 ? 8 : 16;
            float f = std::fmod((a + 3.14159f) / 6.28318f * spokes, 1.0f);
            t.image.Set(x, y, f < 0.3f ? P::K2 : P::K3);
        }
    }
    t.image.FillEllipse(c, c, t.size * 0.17f, t.size * 0.17f, P::K2);
    t.image.FillEllipse(c, c, t.size * 0.13f, t.size * 0.13f, P::K3);
}

void Stone(Tile& t) {
    ArtRandom rng(t.seed ^ 0x570E);
    for (int y = 0; y < t.size; ++y) {
        for (int x = 0; x < t.size; ++x) {
            float v = Noise(t, float(x), float(y), std::max(2, t.size / 8), 3, 71);
            uint32_t c = P::S2;
            if (v < 0.30f && ArtNoise::Bayer(x, y) < 0.5f) {
                c = P::S1;
            } else if (v > 0.70f && ArtNoise::Bayer(x, y) < 0.4f) {
                c = P::S3;
            }
            t.image.Set(x, y, c);
        }
    }
    int cracks = t.size / 16;
    for (int i = 0; i < cracks; ++i) {
        int x = rng.Below(t.size);
        int y = t.size / 3 + rng.Below(t.size * 2 / 3);
        for (int k = 0; k < t.size / 6; ++k) {
            t.image.Set(Wrap(x, t.size), y, P::S1);
            t.image.Set(Wrap(x + 1, t.size), y, P::S3);
            x += rng.Range(-1, 1);
            y += rng.Chance(0.6f) ? 1 : 0;
            if (y >= t.size - 1) {
                break;
            }
        }
    }
}

// Lights the tile's own edges so that each block reads as a solid, separate block.
void EdgeBevel(Tile& t) {
    ArtImage before = t.image;
    int s = t.size;
    for (int i = 0; i < s; ++i) {
        t.image.Set(i, 0, P::Lighter(before.Get(i, 0)));
        t.image.Set(0, i, P::Lighter(before.Get(0, i)));
        t.image.Set(i, s - 1, P::Darker(P::Darker(before.Get(i, s - 1))));
        t.image.Set(s - 1, i, P::Darker(P::Darker(before.Get(s - 1, i))));
        if (s >= 64) {
            t.image.Set(i, s - 2, P::Darker(before.Get(i, s - 2)));
            t.image.Set(s - 2, i, P::Darker(before.Get(s - 2, i)));
        }
    }
}

} // namespace

ArtImage TilesetArt::Tile(int row, int face, int size) {
    ArtImage image(size, size, P::K1);
    ::Tile t{image, size, std::max(1, size / 16), uint64_t(row * 97 + face * 13 + size)};
    bool top = face == Top;
    bool bottom = face == Bottom;
    int cap = size / 4 + size / 16;
    switch (row) {
    case 0: // grass on earth
        if (top) {
            GrassTop(t);
        } else {
            Earth(t, 0);
            if (!bottom) {
                GrassCap(t, cap);
            }
        }
        break;
    case 1: // earth
        Earth(t, 0);
        break;
    case 2: // mossy stone bricks
        Bricks(t, !bottom, top ? 1.6f : 1.0f);
        break;
    case 3: // stone bricks
        Bricks(t, false, 0.0f);
        break;
    case 4: // cobblestones
        Cobble(t);
        break;
    case 5: // wooden planks
        Planks(t);
        break;
    case 6: // tree trunk
        if (top || bottom) {
            Rings(t, false);
        } else {
            Bark(t, false);
        }
        break;
    case 7: // leaves
        Leaves(t);
        break;
    case 8: // crate
        Crate(t);
        break;
    case 9: // mushroom cap
        if (bottom) {
            Gills(t);
        } else {
            MushroomCap(t);
        }
        break;
    case 10: // grass on stone
        if (top) {
            GrassTop(t);
        } else {
            Stone(t);
            if (!bottom) {
                GrassCap(t, cap);
            }
        }
        break;
    default: // birch trunk
        if (top || bottom) {
            Rings(t, true);
        } else {
            Bark(t, true);
        }
        break;
    }
    EdgeBevel(t);
    return image;
}

ArtImage TilesetArt::Sheet(int size) {
    ArtImage sheet(size * FacesPerRow, size * Rows);
    for (int row = 0; row < Rows; ++row) {
        for (int face = 0; face < FacesPerRow; ++face) {
            sheet.BlitOpaque(Tile(row, face, size), face * size, row * size);
        }
    }
    return sheet;
}

void TilesetArt::Paint(AssetSet& set) {
    for (int size : {16, 32, 64}) {
        set.Add(AssetSet::Sized("Assets/Blocks/Tileset_Forest", size), Sheet(size), "Forest tileset");
    }
}
