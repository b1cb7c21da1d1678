#include "NoiseSource.h"

NoiseSource::NoiseSource(uint64_t seed) : state(seed * 0x9E3779B97F4A7C15ull + 0x2545F4914F6CDD1Dull) {
    if (state == 0) {
        state = 0x2545F4914F6CDD1Dull;
    }
    for (int i = 0; i < 4; ++i) {
        Unit();
    }
}

double NoiseSource::Unit() {
    state ^= state >> 12;
    state ^= state << 25;
    state ^= state >> 27;
    uint64_t value = state * 0x2545F4914F6CDD1Dull;
    return static_cast<double>(value >> 11) * (1.0 / 9007199254740992.0);
}

float NoiseSource::Next() {
    return static_cast<float>(Unit() * 2.0 - 1.0);
}
