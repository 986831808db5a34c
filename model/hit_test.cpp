#include <new>

#include "model/puzzle.h"
#include "play/tray.h"

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
    int plane = window == mainWindow ? 0 : -1;
    for (const Tray* tray = trayCount ? firstTray : nullptr; tray && plane < 0; tray = tray->next) {
        if (tray->window == window)
            plane = tray->id;
    }
    if (plane < 0)
        return false;  // no piece lies in a window that is neither the board nor a tray
    try {
        syncPlaces();
    } catch (const std::bad_alloc&) {
        // Without the memory for the lookup, the pieces are tried top down one by one.
        for (int z = pieceCount - 1; z >= 0; --z) {
            if (pieces[zOrder[z]].hitTest(window, px, py)) {
                piece = zOrder[z];
                return true;
            }
        }
        return false;
    }
    bool hit = false;
    places.forEachCell(plane, PlaceBox{px, py, px + 1, py + 1},
                       [&](const PlaceBox&, const std::vector<PlaceEntry>& stack) {
                           for (auto at = stack.rbegin(); at != stack.rend() && !hit; ++at) {
                               if (pieces[at->piece].hitTest(window, px, py)) {
                                   piece = at->piece;
                                   hit = true;
                               }
                           }
                       });
    return hit;
}
