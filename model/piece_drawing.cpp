// Drawing one piece through its outline, with the frame its state calls for.
#include "model/masked_drawing.h"
#include "model/piece.h"

namespace {

enum class Frame { None, Whole, Partial };

// Grouped free pieces are framed as a whole group; set pieces lose the line between two
// set neighbours unless every set piece keeps its full outline.
Frame frameOf(const Piece& piece)
{
    if (!piece.isSet)
        return !piece.isGrouped && piece.drawOutline ? Frame::Whole : Frame::None;
    if (piece.drawSetOutline)
        return Frame::Whole;
    return piece.drawOutline ? Frame::Partial : Frame::None;
}

void restoreStrip(HDC image, HDC unframed, int left, int top, int right, int bottom)
{
    BitBlt(image, left, top, right - left, bottom - top, unframed, left, top, SRCCOPY);
}

}  // namespace

void Piece::draw(const RECT& clip, int offsetX, int offsetY, bool upSet, bool downSet, bool leftSet,
                 bool rightSet)
{
    const int w = width, h = height, k2 = 2 * knobSize;
    HDC image = scratchSurface(ScratchImage, w, h);
    HDC mask = scratchSurface(ScratchMask, w, h);
    if (!image || !mask)
        return;
    fillMaskedPair(image, mask, w, h, region, sourceDC, sourceX, sourceY);

    switch (frameOf(*this)) {
    case Frame::None:
        break;
    case Frame::Whole:
        frameOutline(image, region);
        break;
    case Frame::Partial: {
        HDC unframed = scratchSurface(ScratchSpare, w, h);
        if (!unframed)
            break;
        BitBlt(unframed, 0, 0, w, h, image, 0, 0, SRCCOPY);
        frameOutline(image, region);
        // Along each side with a set neighbour the frame is taken out again, knob zone and
        // all; it survives at the strip's ends where the crossing side keeps its frame.
        const int notUp = upSet ? 0 : 1, notDown = downSet ? 0 : 1;
        const int notLeft = leftSet ? 0 : 1, notRight = rightSet ? 0 : 1;
        const int x0 = notLeft + (knobLeft == Out ? k2 : 0);
        const int x1 = (knobRight == Out ? w - k2 : w) - notRight;
        const int y0 = notUp + (knobTop == Out ? k2 : 0);
        const int y1 = (knobBottom == Out ? h - k2 : h) - notDown;
        if (upSet)
            restoreStrip(image, unframed, x0, 0, x1, knobTop == Flat ? 1 : k2 + 1);
        if (downSet)
            restoreStrip(image, unframed, x0, h - 1 - (knobBottom != Flat ? k2 : 0), x1, h);
        if (leftSet)
            restoreStrip(image, unframed, 0, y0, knobLeft == Flat ? 1 : k2 + 1, y1);
        if (rightSet)
            restoreStrip(image, unframed, w - 1 - (knobRight != Flat ? k2 : 0), y0, w, y1);
        break;
    }
    }

    blitMasked(targetDC, clip.left - offsetX, clip.top - offsetY, clip.right - clip.left,
               clip.bottom - clip.top, mask, image, clip.left - x, clip.top - y);
}
