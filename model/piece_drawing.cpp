// Drawing one piece through its outline, with the frame its state calls for.
#include "model/masked_drawing.h"
#include "model/piece.h"
#include "model/pixel_runs.h"

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

}  // namespace

void Piece::draw(const RECT& clip, int offsetX, int offsetY, bool upSet, bool downSet, bool leftSet,
                 bool rightSet)
{
    RECT target = clip;
    OffsetRect(&target, -offsetX, -offsetY);
    const int left = x - offsetX, top = y - offsetY;
    const Frame frame = frameOf(*this);
    drawThroughOutline(targetDC, target, region, left, top, sourceDC, sourceX, sourceY,
                       frame != Frame::None, frameRegion);
    if (frame != Frame::Partial)
        return;

    // Along each side with a set neighbour the frame is taken out again, knob zone and all;
    // it survives at the strip's ends where the crossing side keeps its frame.
    const int w = width, h = height, k2 = 2 * knobSize;
    const int notUp = upSet ? 0 : 1, notDown = downSet ? 0 : 1;
    const int notLeft = leftSet ? 0 : 1, notRight = rightSet ? 0 : 1;
    const int x0 = notLeft + (knobLeft == Out ? k2 : 0);
    const int x1 = (knobRight == Out ? w - k2 : w) - notRight;
    const int y0 = notUp + (knobTop == Out ? k2 : 0);
    const int y1 = (knobBottom == Out ? h - k2 : h) - notDown;
    auto unframe = [&](int l, int t, int r, int b) {
        RECT strip{left + l, top + t, left + r, top + b};
        if (IntersectRect(&strip, &strip, &target))
            drawThroughOutline(targetDC, strip, region, left, top, sourceDC, sourceX, sourceY,
                               false);
    };
    if (upSet)
        unframe(x0, 0, x1, knobTop == Flat ? 1 : k2 + 1);
    if (downSet)
        unframe(x0, h - 1 - (knobBottom != Flat ? k2 : 0), x1, h);
    if (leftSet)
        unframe(0, y0, knobLeft == Flat ? 1 : k2 + 1, y1);
    if (rightSet)
        unframe(w - 1 - (knobRight != Flat ? k2 : 0), y0, w, y1);
}

bool Piece::drawDirect(const PixelSurface& dest, const PixelSurface& source, const RECT& clip,
                       int offsetX, int offsetY, bool upSet, bool downSet, bool leftSet,
                       bool rightSet) const
{
    const Frame frame = frameOf(*this);
    // Taking the frame out along set neighbours is left to the GDI.
    if (!runs || (frame == Frame::Partial && (upSet || downSet || leftSet || rightSet)))
        return false;
    RECT target = clip;
    OffsetRect(&target, -offsetX, -offsetY);
    drawThroughRuns(dest, target, *runs, x - offsetX, y - offsetY, source, sourceX, sourceY,
                    frame != Frame::None);
    return true;
}
