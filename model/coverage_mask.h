#pragma once
// Which pixels of a rectangle are already hidden by opaque parts of pieces above, one bit a
// pixel. A repaint walks the pieces from the top down: a piece whose part in the rectangle is
// all hidden is not drawn, and the walk stops once nothing is left uncovered.
#include <cstdint>
#include <vector>

class CoverageMask {
public:
    // The rectangle [left, right) x [top, bottom) in the window's coordinates; one too large
    // to hold throws std::bad_alloc.
    CoverageMask(int left, int top, int right, int bottom);

    // Whether every pixel of the given rectangle inside the mask's is covered (true for a
    // rectangle that misses it).
    bool covered(int left, int top, int right, int bottom) const;
    // The smallest box holding every uncovered pixel of the given rectangle, in box (left,
    // top, right, bottom); false, with box untouched, when all of it is covered.
    bool uncoveredBox(int left, int top, int right, int bottom, int box[4]) const;
    // Returns how many pixels were uncovered before.
    long long cover(int left, int top, int right, int bottom);
    bool full() const { return uncovered == 0; }

private:
    // Clips to the mask and makes the coordinates relative; false when nothing is left.
    bool clip(int& left, int& top, int& right, int& bottom) const;

    int originX, originY, width, height;
    int wordsPerRow;
    long long uncovered;
    std::vector<std::uint64_t> bits;
};
