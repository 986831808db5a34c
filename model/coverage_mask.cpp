#include "model/coverage_mask.h"

#include <algorithm>
#include <limits>
#include <new>

namespace {

// The bits [from, to) of one 64-bit word.
std::uint64_t span(int from, int to)
{
    const std::uint64_t high = to >= 64 ? ~std::uint64_t(0) : (std::uint64_t(1) << to) - 1;
    return high & ~((std::uint64_t(1) << from) - 1);
}

// The length of [low, high), worked out without overflow and capped at the largest int.
int side(int low, int high)
{
    const long long length = static_cast<long long>(high) - low;
    return static_cast<int>(std::clamp<long long>(length, 0, std::numeric_limits<int>::max()));
}

int popcount(std::uint64_t v)
{
    return __builtin_popcountll(v);
}

}  // namespace

CoverageMask::CoverageMask(int left, int top, int right, int bottom)
    : originX(left), originY(top), width(side(left, right)), height(side(top, bottom)),
      wordsPerRow(static_cast<int>((static_cast<long long>(width) + 63) / 64)),
      uncovered(static_cast<long long>(width) * height)
{
    // Sized in 64 bits: a rectangle too large for this process is refused, never wrapped.
    const std::uint64_t words = static_cast<std::uint64_t>(wordsPerRow) * height;
    if (words > bits.max_size())
        throw std::bad_alloc();
    bits.assign(static_cast<size_t>(words), 0);
}

bool CoverageMask::clip(int& left, int& top, int& right, int& bottom) const
{
    left = std::max(left - originX, 0);
    top = std::max(top - originY, 0);
    right = std::min(right - originX, width);
    bottom = std::min(bottom - originY, height);
    return left < right && top < bottom;
}

bool CoverageMask::covered(int left, int top, int right, int bottom) const
{
    if (!clip(left, top, right, bottom))
        return true;
    const int first = left >> 6, last = (right - 1) >> 6;
    for (int y = top; y < bottom; ++y) {
        const std::uint64_t* row = &bits[static_cast<size_t>(y) * wordsPerRow];
        for (int w = first; w <= last; ++w) {
            const std::uint64_t want =
                span(w == first ? left & 63 : 0, w == last ? ((right - 1) & 63) + 1 : 64);
            if ((row[w] & want) != want)
                return false;
        }
    }
    return true;
}

bool CoverageMask::uncoveredBox(int left, int top, int right, int bottom, int box[4]) const
{
    if (!clip(left, top, right, bottom))
        return false;
    const int first = left >> 6, last = (right - 1) >> 6;
    int minX = width, maxX = -1, minY = -1, maxY = -1;
    auto note = [&](int y, int w, std::uint64_t open) {
        minX = std::min(minX, w * 64 + __builtin_ctzll(open));
        maxX = std::max(maxX, w * 64 + 63 - __builtin_clzll(open));
        if (minY < 0)
            minY = y;
        maxY = y;
    };
    if (first == last) {
        // Most boxes are a piece wide and lie in one word of each row.
        const std::uint64_t want = span(left & 63, ((right - 1) & 63) + 1);
        const std::uint64_t* row = &bits[static_cast<size_t>(top) * wordsPerRow + first];
        for (int y = top; y < bottom; ++y, row += wordsPerRow) {
            if (const std::uint64_t open = ~*row & want)
                note(y, first, open);
        }
    } else {
        for (int y = top; y < bottom; ++y) {
            const std::uint64_t* row = &bits[static_cast<size_t>(y) * wordsPerRow];
            for (int w = first; w <= last; ++w) {
                const std::uint64_t open = ~row[w] & span(w == first ? left & 63 : 0,
                                                          w == last ? ((right - 1) & 63) + 1 : 64);
                if (open)
                    note(y, w, open);
            }
        }
    }
    if (maxX < 0)
        return false;
    box[0] = originX + minX;
    box[1] = originY + minY;
    box[2] = originX + maxX + 1;
    box[3] = originY + maxY + 1;
    return true;
}

long long CoverageMask::cover(int left, int top, int right, int bottom)
{
    if (!clip(left, top, right, bottom))
        return 0;
    const long long before = uncovered;
    const int first = left >> 6, last = (right - 1) >> 6;
    for (int y = top; y < bottom; ++y) {
        std::uint64_t* row = &bits[static_cast<size_t>(y) * wordsPerRow];
        for (int w = first; w <= last; ++w) {
            const std::uint64_t add =
                span(w == first ? left & 63 : 0, w == last ? ((right - 1) & 63) + 1 : 64);
            uncovered -= popcount(add & ~row[w]);
            row[w] |= add;
        }
    }
    return before - uncovered;
}
