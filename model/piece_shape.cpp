// Outlines of pieces: the grid cell with a round-ended tab added on every side of kind Out
// and the same shape cut out of every side of kind In, so that a tab fills its neighbour's
// socket exactly.
#include "model/cell_geometry.h"
#include "model/gdi_objects.h"
#include "model/piece.h"
#include "model/shape_cache.h"

namespace {

struct KnobPart {
    bool applies;
    RECT rect;     // the half of the knob's 2k x 2k box next to the side
    RECT ellipse;  // the box whose inscribed circle gives the rounded end
    int mode;      // RGN_OR adds a tab, RGN_DIFF cuts a socket
};

void applyKnob(HRGN body, const KnobPart& knob)
{
    // Knobs without size are empty shapes; the platform would still make a sliver of an
    // ellipse with an empty box.
    if (IsRectEmpty(&knob.ellipse))
        return;
    HRGN shape =
        gdi::createRectRgn(knob.rect.left, knob.rect.top, knob.rect.right, knob.rect.bottom);
    HRGN round = gdi::createEllipticRgn(knob.ellipse.left, knob.ellipse.top, knob.ellipse.right,
                                        knob.ellipse.bottom);
    CombineRgn(shape, shape, round, RGN_OR);
    CombineRgn(body, body, shape, knob.mode);
    gdi::deleteObject(shape);
    gdi::deleteObject(round);
}

}  // namespace

HRGN buildOutline(const ShapeKey& key)
{
    const int k = key.knobSize;
    int width = key.cellWidth;
    int height = key.cellHeight;
    int cx1 = width / 2 - k, cx2 = width / 2 + k;
    int cy1 = height / 2 - k, cy2 = height / 2 + k;
    int left = 0, top = 0, right = width, bottom = height;

    HRGN region = gdi::createRectRgn(0, 0, width, height);
    if (!region)
        return nullptr;

    // The cell inside the bounding box, which tabs on the left and top push inward.
    if (key.left == Out) {
        left = 2 * k;
        cx1 += 2 * k;
        cx2 += 2 * k;
        width += 2 * k;
        right = width;
    }
    if (key.right == Out) {
        right = width;
        width += 2 * k;
    }
    if (key.top == Out) {
        top = 2 * k;
        cy1 += 2 * k;
        cy2 += 2 * k;
        height += 2 * k;
        bottom = height;
    }
    if (key.bottom == Out) {
        bottom = height;
        height += 2 * k;
    }

    HRGN body = gdi::createRectRgn(left, top, right, bottom);
    // The order matters only where knobs overlap, in cells barely larger than their knobs.
    const KnobPart knobs[] = {
        {key.left == Out, {k, cy1, left, cy2}, {0, cy1, left, cy2}, RGN_OR},
        {key.right == Out, {right, cy1, width - k, cy2}, {right, cy1, width, cy2}, RGN_OR},
        {key.top == In, {cx1, top, cx2, top + k}, {cx1, top, cx2, top + 2 * k}, RGN_DIFF},
        {key.bottom == In,
         {cx1, bottom - k, cx2, bottom},
         {cx1, bottom - 2 * k, cx2, bottom},
         RGN_DIFF},
        {key.left == In, {left, cy1, left + k, cy2}, {left, cy1, left + 2 * k, cy2}, RGN_DIFF},
        {key.right == In, {right - k, cy1, right, cy2}, {right - 2 * k, cy1, right, cy2}, RGN_DIFF},
        {key.top == Out, {cx1, k, cx2, top}, {cx1, 0, cx2, top}, RGN_OR},
        {key.bottom == Out, {cx1, bottom, cx2, bottom + k}, {cx1, bottom, cx2, height}, RGN_OR},
    };
    for (const KnobPart& knob : knobs) {
        if (knob.applies)
            applyKnob(body, knob);
    }
    CombineRgn(region, body, nullptr, RGN_COPY);
    gdi::deleteObject(body);
    return region;
}

ShapeCache::~ShapeCache()
{
    clear();
}

HRGN buildFrame(HRGN outline)
{
    HRGN frame = gdi::createRectRgn(0, 0, 0, 0);
    HRGN inner = gdi::createRectRgn(0, 0, 0, 0);
    HRGN moved = gdi::createRectRgn(0, 0, 0, 0);
    if (frame && inner && moved && outline) {
        CombineRgn(inner, outline, nullptr, RGN_COPY);
        const POINT shifts[] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
        for (const POINT& shift : shifts) {
            CombineRgn(moved, outline, nullptr, RGN_COPY);
            OffsetRgn(moved, shift.x, shift.y);
            CombineRgn(inner, inner, moved, RGN_AND);
        }
        CombineRgn(frame, outline, inner, RGN_DIFF);
    } else {
        gdi::deleteObject(frame);
        frame = nullptr;
    }
    gdi::deleteObject(inner);
    gdi::deleteObject(moved);
    return frame;
}

HRGN ShapeCache::outline(const ShapeKey& key)
{
    auto found = regions.find(key);
    if (found != regions.end())
        return found->second.outline;
    // The entry is had before the region, so that running out of memory leaks no region.
    Shape& shape = regions[key];
    HRGN region = buildOutline(key);
    if (!region) {
        regions.erase(key);
        return nullptr;
    }
    shape.outline = region;
    shape.frame = buildFrame(region);
    shape.hasRuns =
        shape.frame && shape.runs.outline.build(region) && shape.runs.frame.build(shape.frame);
    return region;
}

const ShapeRuns* ShapeCache::runs(const ShapeKey& key) const
{
    auto found = regions.find(key);
    return found != regions.end() && found->second.hasRuns ? &found->second.runs : nullptr;
}

HRGN ShapeCache::frame(const ShapeKey& key)
{
    auto found = regions.find(key);
    return found != regions.end() ? found->second.frame : nullptr;
}

void ShapeCache::clear()
{
    for (auto& entry : regions) {
        gdi::deleteObject(entry.second.outline);
        gdi::deleteObject(entry.second.frame);
    }
    regions.clear();
}

void Piece::buildShape(int originX, int originY)
{
    const ShapeKey key{width, height, knobSize, knobTop, knobBottom, knobRight, knobLeft};
    releaseRegion();
    if (shapes) {
        region = shapes->outline(key);
        frameRegion = shapes->frame(key);
        runs = shapes->runs(key);
    } else {
        region = buildOutline(key);
        ownsRegion = region != nullptr;
    }

    growForTabs(x, y, width, height, 2 * knobSize, knobLeft == Out, knobRight == Out,
                knobTop == Out, knobBottom == Out);

    // A tab shows the picture where it reaches into the neighbour's cell.
    sourceX = x;
    sourceY = y;
    homeX = originX + x;
    homeY = originY + y;
}

RECT Piece::getBounds(bool atPosition, bool withoutTabs, bool withoutKnobs) const
{
    RECT bounds{0, 0, width, height};
    if (atPosition)
        OffsetRect(&bounds, x, y);
    const int depth = 2 * knobSize;
    auto inward = [&](KnobKind kind) {
        return (withoutTabs && kind == Out) || (withoutKnobs && kind != Flat);
    };
    if (inward(knobTop))
        bounds.top += depth;
    if (inward(knobBottom))
        bounds.bottom -= depth;
    if (inward(knobLeft))
        bounds.left += depth;
    if (inward(knobRight))
        bounds.right -= depth;
    return bounds;
}
