#include "Platform/VeRandom.h"

#include <mutex>

namespace {
struct RandomState {
    std::mutex mutex;
    uint64_t state = 0x853C49E6748FEA9BULL;
};
RandomState& State() {
    static RandomState state;
    return state;
}
constexpr uint64_t kMultiplier = 6364136223846793005ULL;
constexpr uint64_t kIncrement = 1442695040888963407ULL;
} // namespace

void SeedRand(uint32_t seed) {
    RandomState& random = State();
    std::lock_guard<std::mutex> lock(random.mutex);
    random.state = 0;
    random.state = random.state * kMultiplier + kIncrement;
    random.state += seed;
    random.state = random.state * kMultiplier + kIncrement;
}

int Rand() {
    RandomState& random = State();
    std::lock_guard<std::mutex> lock(random.mutex);
    const uint64_t old = random.state;
    random.state = old * kMultiplier + kIncrement;
    // Permuted output (xorshift, then a rotation chosen by the top bits), 31 bits wide.
    const uint32_t xorshifted = static_cast<uint32_t>(((old >> 18u) ^ old) >> 27u);
    const uint32_t rotation = static_cast<uint32_t>(old >> 59u);
    const uint32_t value = (xorshifted >> rotation) | (xorshifted << ((32u - rotation) & 31u));
    return static_cast<int>(value >> 1u);
}
