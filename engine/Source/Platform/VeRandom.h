#pragma once
// The program's pseudo-random generators: one stream for what decides a race (the cows, generated
// levels, new map ids), one for what only looks alive (flames, the menu's falling blocks) and one
// for the filler bytes of enciphered files. Each stream gives the same sequence for the same seed
// on every platform, and drawing from one never moves another: a race with the same seed and the
// same inputs plays out the same whatever is drawn or saved meanwhile.
#include <cstdint>

constexpr int kRandMax = 0x7FFFFFFF;

enum class VeRandomStream { Race, Cosmetic, Filler };

// Seeds every stream from one seed (each its own sequence), so a seeded run also draws the same.
void SeedRand(uint32_t seed);
void SeedRand(VeRandomStream stream, uint32_t seed);
// 0 to kRandMax, from the race stream.
int Rand();
int Rand(VeRandomStream stream);
