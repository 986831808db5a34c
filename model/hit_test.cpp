#include "model/puzzle.h"

bool Piece::hitTest(HWND inWindow, int px, int py) const
{
    // Set pieces can never be hit, so they cannot be picked up.
    if (isSet || inWindow != window || !region)
        return false;
    if (px < x || px > x + width || py < y || py > y + height)
        return false;
    return PtInRegion(region, px - x, py - y) != FALSE;
}

bool Puzzle::pieceAt(HWND window, int px, int py, int& piece) const
{
    if (!made)
        return false;
    for (int z = pieceCount - 1; z >= 0; --z) {
        if (pieces[zOrder[z]].hitTest(window, px, py)) {
            piece = zOrder[z];
            return true;
        }
    }
    return false;
}
