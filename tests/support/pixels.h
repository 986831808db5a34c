#pragma once
// Pixels of surfaces, and the test picture whose every pixel has a colour of its own.
#include <vector>
#include <windows.h>

// The colour of the pattern picture's pixel (x, y), for x < 1024 and y < 1024.
COLORREF patternColour(int x, int y);

class Snapshot {
public:
    Snapshot(HDC source, int left, int top, int w, int h);
    // (x, y) in the source's coordinates.
    COLORREF at(int x, int y) const;
    bool operator==(const Snapshot& other) const { return pixels == other.pixels; }

    int left, top, width, height;
    std::vector<COLORREF> pixels;
};
