#include "random.h"

namespace {
std::uint32_t state = 1;
}

void seedRandom(std::uint32_t seed)
{
    state = seed;
}

int nextRandom()
{
    state = state * 214013u + 2531011u;
    return static_cast<int>((state >> 16) & 0x7FFFu);
}
