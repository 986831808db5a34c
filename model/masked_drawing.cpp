#include "model/masked_drawing.h"

#include <algorithm>

#include "model/memory_dc.h"

namespace {

// Plain data, released by releaseScratchSurfaces (the puzzle's clear), so that no static
// destructor runs in an unknown order at exit.
struct ScratchSurface {
    HDC dc;
    HBITMAP bitmap;
    int width;
    int height;
};

ScratchSurface scratch[ScratchSlotCount];

}  // namespace

void fillMaskedPair(HDC image, HDC mask, int w, int h, HRGN outline, HDC source, int sourceX,
                    int sourceY)
{
    const RECT box{0, 0, w, h};
    FillRect(image, &box, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    FillRect(mask, &box, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    if (outline) {
        FillRgn(image, outline, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        FillRgn(mask, outline, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    }
    BitBlt(image, 0, 0, w, h, source, sourceX, sourceY, SRCAND);
}

void drawThroughOutline(HDC dest, const RECT& clip, HRGN outline, int x, int y, HDC source,
                        int sourceX, int sourceY, bool framed, HRGN frame)
{
    if (!outline || IsRectEmpty(&clip))
        return;
    // The clip is a copy of the shared outline, moved into place; the outline never moves.
    SelectClipRgn(dest, outline);
    OffsetClipRgn(dest, x, y);
    // A blit paints its own rectangle only; the frame needs clip too.
    if (framed)
        IntersectClipRect(dest, clip.left, clip.top, clip.right, clip.bottom);
    BitBlt(dest, clip.left, clip.top, clip.right - clip.left, clip.bottom - clip.top, source,
           sourceX + clip.left - x, sourceY + clip.top - y, SRCCOPY);
    if (framed && frame) {
        OffsetRgn(frame, x, y);
        FillRgn(dest, frame, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        OffsetRgn(frame, -x, -y);
    } else if (framed) {
        OffsetRgn(outline, x, y);
        frameOutline(dest, outline);
        OffsetRgn(outline, -x, -y);
    }
    SelectClipRgn(dest, nullptr);
}

void frameOutline(HDC dc, HRGN outline)
{
    if (outline)
        FrameRgn(dc, outline, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)), 1, 1);
}

void blitMasked(HDC dest, int destX, int destY, int w, int h, HDC mask, HDC image, int srcX,
                int srcY)
{
    BitBlt(dest, destX, destY, w, h, mask, srcX, srcY, SRCAND);
    BitBlt(dest, destX, destY, w, h, image, srcX, srcY, SRCINVERT);
}

HDC scratchSurface(ScratchSlot slot, int w, int h)
{
    ScratchSurface& surface = scratch[slot];
    w = std::max(w, 1);
    h = std::max(h, 1);
    if (!surface.dc || w > surface.width || h > surface.height) {
        const int newWidth = std::max(w, surface.width);
        const int newHeight = std::max(h, surface.height);
        HDC screen = GetDC(nullptr);
        createMemoryDC(surface.dc, screen, surface.bitmap, newWidth, newHeight, true);
        ReleaseDC(nullptr, screen);
        surface.width = surface.dc ? newWidth : 0;
        surface.height = surface.dc ? newHeight : 0;
    }
    return surface.dc;
}

void releaseScratchSurfaces()
{
    for (ScratchSurface& surface : scratch) {
        deleteMemoryDC(surface.dc, surface.bitmap);
        surface.width = surface.height = 0;
    }
}
