#pragma once
// How a puzzle is cut into cells and how tabs grow a piece's box. Plain C++, shared by the cut,
// the pieces' shapes and the file reader, which checks places before any piece exists.
#include <algorithm>
#include <cstdint>

// Where cell index of count cells along a side of total pixels starts, and its size: the
// first total % count cells are one pixel larger, so that the cells cover the side exactly.
struct CellSpan {
    int64_t offset, size;
};
inline CellSpan cellSpan(int64_t total, int64_t count, int64_t index)
{
    const int64_t base = total / count, extra = total - base * count;
    return {index * base + std::min(index, extra), base + (index < extra ? 1 : 0)};
}

// Every tab grows the box by its depth; those on the left and top move its origin.
template <typename T>
void growForTabs(T& x, T& y, T& width, T& height, T depth, bool left, bool right, bool top,
                 bool bottom)
{
    x -= left ? depth : 0;
    y -= top ? depth : 0;
    width += depth * ((left ? 1 : 0) + (right ? 1 : 0));
    height += depth * ((top ? 1 : 0) + (bottom ? 1 : 0));
}
