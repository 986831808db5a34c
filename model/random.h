#pragma once
// The classic 15-bit linear congruential generator (state * 214013 + 2531011, bits 16-30),
// implemented here so that puzzles are cut and scattered identically under every C runtime
// and tests can seed it.
#include <cstdint>

constexpr int RandomRange = 32768;  // values lie in 0 .. RandomRange - 1

void seedRandom(std::uint32_t seed);
int nextRandom();
