#pragma once
// The program's pseudo-random generator, seeded once at start. It gives the same sequence for
// the same seed on every platform, so generated levels and fillers replay exactly.
#include <cstdint>

constexpr int kRandMax = 0x7FFFFFFF;

void SeedRand(uint32_t seed);
// 0 to kRandMax.
int Rand();
