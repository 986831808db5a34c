#pragma once
// A hidden window with the surfaces Make needs and a picture image in which every pixel
// has its own colour, so that tests can tell exactly which part of the picture a piece shows.
#include <vector>
#include <windows.h>

#include "files/picture.h"
#include "model/make_inputs.h"

// The colour of picture pixel (x, y): distinct for every pixel of a picture up to 4096 wide
// and 4096 high, and never black or white.
COLORREF patternColour(int x, int y);
COLORREF pixelAt(HDC dc, int x, int y);

// A copy of a rectangle of a surface, read pixel by pixel without a GDI call each.
class Snapshot {
public:
    Snapshot(HDC source, int left, int top, int w, int h);
    // (x, y) in the source's coordinates.
    COLORREF at(int x, int y) const;
    bool operator==(const Snapshot& other) const { return pixels == other.pixels; }

    int left, top, width, height;
    std::vector<COLORREF> pixels;
};

class TestBoard {
public:
    static constexpr int ClientWidth = 1000;
    static constexpr int ClientHeight = 700;
    static constexpr int BoardTop = 31;  // one pixel below a 30-pixel toolbar
    static constexpr int AreaWidth = 800;
    static constexpr int AreaHeight = 560;

    TestBoard();
    ~TestBoard();
    TestBoard(const TestBoard&) = delete;
    TestBoard& operator=(const TestBoard&) = delete;

    // Inputs for a puzzle of w x h pixels; the picture image is drawn at that size.
    MakeInputs inputs(int w, int h, int columns, int rows, int shapeMode, unsigned seed,
                      const char* picturePath = "Z:\\pictures\\test.bmp");

    HWND window;
    HDC windowDC;
    HDC boardDC = nullptr;
    HBITMAP boardBitmap = nullptr;
    HDC backgroundDC = nullptr;
    HBITMAP backgroundBitmap = nullptr;
    HWND hScrollBar;
    HWND vScrollBar;
    Picture picture;
};

// Fills the top-left w x h of dc with colour.
void fill(HDC dc, int w, int h, COLORREF colour);
