#pragma once
// A small seeded noise generator (xorshift64*): the same seed gives the same noise on every run,
// so every sound the tool writes is reproducible byte for byte.
#include <cstdint>

class NoiseSource {
public:
    explicit NoiseSource(uint64_t seed);

    // Uniform in [-1, 1).
    float Next();
    // Uniform in [0, 1).
    double Unit();

private:
    uint64_t state;
};
