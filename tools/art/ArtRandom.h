#pragma once
// The generator's own seeded random sequence (splitmix64), so every run draws the same images.
#include <cstdint>

class ArtRandom {
public:
    explicit ArtRandom(uint64_t seed) : state(seed) {}

    uint64_t Next() {
        uint64_t z = (state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    // 0 to n - 1.
    int Below(int n) { return n <= 0 ? 0 : int(Next() % uint64_t(n)); }
    // lo to hi inclusive.
    int Range(int lo, int hi) { return lo + Below(hi - lo + 1); }
    // 0 to 1.
    float Unit() { return float(Next() >> 40) / float(1ull << 24); }
    bool Chance(float p) { return Unit() < p; }

    // A value that depends only on the seed and the inputs, for noise lattices.
    static uint64_t Hash(uint64_t seed, int64_t a, int64_t b) {
        ArtRandom r(seed ^ (uint64_t(a) * 0x632BE59BD9B4E019ull) ^ (uint64_t(b) * 0x85157AF5ull));
        return r.Next();
    }

private:
    uint64_t state;
};
