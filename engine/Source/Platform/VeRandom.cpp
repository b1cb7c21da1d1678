#include "Platform/VeRandom.h"

#include <array>
#include <mutex>

namespace {
constexpr uint64_t kMultiplier = 6364136223846793005ULL;
constexpr uint64_t kIncrement = 1442695040888963407ULL;
constexpr uint64_t kUnseeded = 0x853C49E6748FEA9BULL;

struct RandomState {
    std::mutex mutex;
    std::array<uint64_t, 3> states{kUnseeded, kUnseeded ^ 0x9E3779B97F4A7C15ULL,
                                   kUnseeded ^ 0xC2B2AE3D27D4EB4FULL};
};

RandomState& State() {
    static RandomState state;
    return state;
}

size_t Index(VeRandomStream stream) {
    return static_cast<size_t>(stream);
}
} // namespace

void SeedRand(uint32_t seed) {
    SeedRand(VeRandomStream::Race, seed);
    SeedRand(VeRandomStream::Cosmetic, seed ^ 0x5BD1E995u);
    SeedRand(VeRandomStream::Filler, seed ^ 0x27D4EB2Fu);
}

void SeedRand(VeRandomStream stream, uint32_t seed) {
    RandomState& random = State();
    std::lock_guard<std::mutex> lock(random.mutex);
    uint64_t& state = random.states[Index(stream)];
    state = 0;
    state = state * kMultiplier + kIncrement;
    state += seed;
    state = state * kMultiplier + kIncrement;
}

int Rand() {
    return Rand(VeRandomStream::Race);
}

int Rand(VeRandomStream stream) {
    RandomState& random = State();
    std::lock_guard<std::mutex> lock(random.mutex);
    uint64_t& state = random.states[Index(stream)];
    const uint64_t old = state;
    state = old * kMultiplier + kIncrement;
    // Permuted output (xorshift, then a rotation chosen by the top bits), 31 bits wide.
    const uint32_t xorshifted = static_cast<uint32_t>(((old >> 18u) ^ old) >> 27u);
    const uint32_t rotation = static_cast<uint32_t>(old >> 59u);
    const uint32_t value = (xorshifted >> rotation) | (xorshifted << ((32u - rotation) & 31u));
    return static_cast<int>(value >> 1u);
}
