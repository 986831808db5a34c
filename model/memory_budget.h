#pragma once
// What a Make newly holds in memory, and whether this process can give it that much. A
// 32-bit process has 2 GB of addresses (4 GB when large-address-aware on 64-bit Windows),
// and a bitmap needs its bytes in one block, so a puzzle is refused before anything of the
// puzzle on hand is given up.
#include <cstdint>

// One GDI bitmap's bits are addressed with 32-bit signed sizes.
constexpr std::uint64_t MaxBitmapBytes = 0x7FFFFFFF;

// The picture image at puzzle size, the piece records and the board-sized scratch surface.
std::uint64_t makeFootprint(int width, int height, int pieceCount, int boardWidth, int boardHeight);

// A bitmap of w x h pixels at the screen's 32 bits per pixel.
std::uint64_t bitmapBytes(int w, int h);

// Whether bytes fit into the address space and the commit limit left to this process, with
// room for the address space to be in pieces.
bool processCanHold(std::uint64_t bytes);

// Whether one block of bytes can be had: no larger than the largest stretch of free
// addresses this process has, nor than the commit limit left.
bool blockCanBeHad(std::uint64_t bytes);
