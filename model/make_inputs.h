#pragma once
// Everything the Make operation copies into the Puzzle, gathered from the picture, the
// size-and-pieces parameters and the main window by the caller.
#include <optional>
#include <windows.h>

class Picture;

struct MakeInputs {
    const char* picturePath;  // the picture last loaded
    int width, height;        // puzzle size in pixels
    int columns, rows;
    int shapeMode;
    bool drawOutline, drawSetOutline;

    HWND mainWindow;
    HINSTANCE instance;
    int boardLeft, boardTop;
    int boardImageWidth, boardImageHeight;  // zero: the client area's size
    int originX, originY;                   // the puzzle area's top-left
    int areaWidth, areaHeight;              // the puzzle area's largest size
    HWND hScrollBar, vScrollBar;            // the puzzle area's scroll bar controls
    HDC boardDC, backgroundDC, windowDC;

    Picture* picture;  // size, preview and the picture image, rendered at puzzle size by Make

    // Generation seeds the random generator from the clock unless a seed is given here.
    std::optional<unsigned> seed;
};
