// Repainting windows back to front from the background and the pieces, drawing groups, the
// images used while dragging, and the pattern of piece outlines in the puzzle area.
#include <algorithm>
#include <new>
#include <vector>

#include "model/coverage_mask.h"
#include "model/gdi_objects.h"
#include "model/masked_drawing.h"
#include "model/memory_dc.h"
#include "model/pixel_runs.h"
#include "model/puzzle.h"
#include "play/piece_group.h"
#include "play/tray.h"

namespace {

bool intersect(RECT& out, const RECT& a, const RECT& b)
{
    return IntersectRect(&out, &a, &b) != FALSE;
}

}  // namespace

bool Puzzle::neighbourIsSet(int neighbour) const
{
    return neighbour >= 0 && pieces[neighbour].isSet;
}

void Puzzle::drawGroup(const RECT& clip, int p)
{
    if (!findGroup(pieces[p].groupId, false))
        return;
    const PieceGroup& group = *foundGroup;
    drawThroughOutline(pieces[p].targetDC, clip, group.region, group.x, group.y, pictureDC,
                       group.sourceX, group.sourceY, drawOutline);
}

RECT Puzzle::occlusionPass(const RECT& rect, int trayId, std::vector<int>& list,
                           std::vector<RECT>* parts) const
{
    syncPlaces();
    CoverageMask hidden(rect.left, rect.top, rect.right, rect.bottom);
    struct Found {
        int zIndex;
        int piece;
        RECT shows;  // the box of what shows of it
    };
    std::vector<Found> found;
    bool backgroundShows = false;
    places.beginMarks();
    // Cell by cell, each walked down from its top piece until the cell's part of rect is
    // hidden. What a piece hides in one cell says nothing of another, so each cell keeps to
    // its own part of the mask, and a piece seen in several cells shows the union of its
    // boxes there.
    const PlaceBox area{rect.left, rect.top, rect.right, rect.bottom};
    places.forEachCell(
        trayId, area, [&](const PlaceBox& cell, const std::vector<PlaceEntry>& stack) {
            const int left = std::max<int>(cell.left, rect.left);
            const int top = std::max<int>(cell.top, rect.top);
            const int right = std::min<int>(cell.right, rect.right);
            const int bottom = std::min<int>(cell.bottom, rect.bottom);
            long long open = static_cast<long long>(right - left) * (bottom - top);
            for (auto at = stack.rbegin(); at != stack.rend() && open > 0; ++at) {
                const PlaceBox& box = at->box;
                int shows[4];
                if (!hidden.uncoveredBox(std::max(box.left, left), std::max(box.top, top),
                                         std::min(box.right, right), std::min(box.bottom, bottom),
                                         shows) ||
                    !pieces[at->piece].isVisible)
                    continue;
                const RECT shown{shows[0], shows[1], shows[2], shows[3]};
                const int seen = places.mark(at->piece);
                if (seen < 0) {
                    places.give(at->piece, static_cast<int>(found.size()));
                    found.push_back(Found{pieces[at->piece].zIndex, at->piece, shown});
                } else {
                    UnionRect(&found[seen].shows, &found[seen].shows, &shown);
                }
                // Inside its core a piece is opaque whatever its knobs.
                const PlaceBox& core = at->core;
                open -= hidden.cover(std::max(core.left, left), std::max(core.top, top),
                                     std::min(core.right, right), std::min(core.bottom, bottom));
            }
            backgroundShows = backgroundShows || open > 0;
        });

    // Top first, as a walk of the whole stacking order would list them: sorted when few,
    // read off the stacking order when they are a good part of the puzzle.
    list.clear();
    list.reserve(found.size());
    if (parts) {
        parts->clear();
        parts->reserve(found.size());
    }
    auto take = [&](const Found& f) {
        list.push_back(f.piece);
        if (parts)
            parts->push_back(f.shows);
    };
    if (found.size() < static_cast<size_t>(pieceCount) / 16) {
        std::sort(found.begin(), found.end(),
                  [](const Found& a, const Found& b) { return a.zIndex > b.zIndex; });
        for (const Found& f : found)
            take(f);
    } else {
        for (int z = pieceCount - 1; z >= 0; --z) {
            const int seen = places.mark(zOrder[z]);
            if (seen >= 0)
                take(found[seen]);
        }
    }
    return backgroundShows ? rect : RECT{0, 0, 0, 0};
}

void Puzzle::drawShownPart(int p, const RECT& shows, PieceCanvas& canvas)
{
    Piece& piece = pieces[p];
    RECT bounds = piece.getBounds(true, false, false);
    RECT clip = shows;
    int offsetX = 0, offsetY = 0;
    if (piece.isSet) {
        if (!intersect(bounds, bounds, canvas.visible))
            return;
        OffsetRect(&clip, scrollX, scrollY);
        offsetX = scrollX;
        offsetY = scrollY;
    }
    RECT part;
    if (!intersect(part, bounds, clip))
        return;
    const bool up = neighbourIsSet(piece.neighbourUp);
    const bool down = neighbourIsSet(piece.neighbourDown);
    const bool left = neighbourIsSet(piece.neighbourLeft);
    const bool right = neighbourIsSet(piece.neighbourRight);
    if (canvas.direct && !piece.isGrouped && piece.targetDC == canvas.target) {
        if (!canvas.flushed)
            GdiFlush();
        canvas.flushed = piece.drawDirect(canvas.targetPixels, canvas.picturePixels, part, offsetX,
                                          offsetY, up, down, left, right);
        if (canvas.flushed)
            return;
    }
    canvas.flushed = false;
    // Well inside the piece, clear of its outline and frame, the picture is copied as is.
    RECT solid = piece.getBounds(true, false, true), inside;
    InflateRect(&solid, -1, -1);
    if (intersect(inside, part, solid) && EqualRect(&inside, &part)) {
        BitBlt(piece.targetDC, part.left - offsetX, part.top - offsetY, part.right - part.left,
               part.bottom - part.top, pictureDC, piece.sourceX + part.left - piece.x,
               piece.sourceY + part.top - piece.y, SRCCOPY);
        return;
    }
    if (piece.isGrouped)
        drawGroup(part, p);
    else
        piece.draw(part, offsetX, offsetY, up, down, left, right);
}

bool Puzzle::windowImage(int trayId, HDC& image, int& w, int& h)
{
    if (trayId == 0) {
        image = boardDC;
        w = boardImageWidth;
        h = boardImageHeight;
        return true;
    }
    if (!(currentTray && currentTray->id == trayId) && !findTray(trayId, true))
        return false;
    // A view larger than an image that could not grow is drawn only as far as the image.
    image = currentTray->imageDC;
    w = std::min(currentTray->viewWidth, currentTray->contentWidth);
    h = std::min(currentTray->viewHeight, currentTray->contentHeight);
    return true;
}

bool Puzzle::keepComposition(int w, int h)
{
    // Shared by the board and the trays, so it only ever grows.
    if (compositionDC && compositionBitmap && compositionWidth >= w && compositionHeight >= h)
        return true;
    w = std::max(compositionWidth, w);
    h = std::max(compositionHeight, h);
    createMemoryDC(compositionDC, pictureDC, compositionBitmap, w, h, true);
    const bool ready = compositionDC && compositionBitmap;
    compositionWidth = ready ? w : 0;
    compositionHeight = ready ? h : 0;
    compositionOf = NoWindow;
    return ready;
}

void Puzzle::repaintRect(const RECT& asked, int trayId, HWND window)
{
    HDC target = nullptr;
    int targetWidth = 0, targetHeight = 0;
    if (!made || !windowImage(trayId, target, targetWidth, targetHeight))
        return;
    // Nothing is drawn, or sized, beyond the image: an item far outside it costs nothing.
    RECT rect;
    if (!intersect(rect, asked, RECT{0, 0, targetWidth, targetHeight}))
        return;

    const RECT visible = getPuzzleArea(true);

    std::vector<int> list;
    std::vector<RECT> parts;
    RECT remaining = rect;
    bool listed = true;
    try {
        remaining = occlusionPass(rect, trayId, list, &parts);
    } catch (const std::bad_alloc&) {
        listed = false;
    }

    if (!IsRectEmpty(&remaining)) {
        BitBlt(target, remaining.left, remaining.top, remaining.right - remaining.left,
               remaining.bottom - remaining.top, nullptr, 0, 0, WHITENESS);
        // The board as Make builds it: the framed puzzle area, then the preview over it.
        RECT part;
        const RECT preview{previewX, previewY, previewX + previewWidth, previewY + previewHeight};
        const RECT area{originX, originY, originX + visibleWidth, originY + visibleHeight};
        if (trayId == 0 && intersect(part, area, remaining))
            BitBlt(target, part.left, part.top, part.right - part.left, part.bottom - part.top,
                   backgroundDC, part.left, part.top, SRCCOPY);
        if (trayId == 0 && intersect(part, preview, remaining))
            BitBlt(target, part.left, part.top, part.right - part.left, part.bottom - part.top,
                   previewDC, part.left - previewX, part.top - previewY, SRCCOPY);
    }

    // Lowest first, so that higher pieces cover lower ones; each where it still shows.
    // Pieces are copied into the surface's pixels directly where they can be; what the GDI
    // may still hold back is flushed before each such run of copies.
    PieceCanvas canvas{target, visible, {}, {}, false, false};
    canvas.direct =
        pixelsOf(target, canvas.targetPixels) && pixelsOf(pictureDC, canvas.picturePixels);
    if (listed) {
        for (size_t i = list.size(); i-- > 0;)
            drawShownPart(list[i], parts[i], canvas);
    } else {
        // Without the memory for the lookup, every piece of the window is drawn in turn.
        for (int z = 0; z < pieceCount; ++z) {
            const Piece& piece = pieces[zOrder[z]];
            if (piece.isVisible && (piece.isSet ? trayId == 0 : piece.trayId == trayId))
                drawShownPart(zOrder[z], rect, canvas);
        }
    }

    // Dragging restores what lay under the item from this copy of the window's image. While
    // one window after another repaints into the same surface, only what changed is copied.
    if (keepComposition(targetWidth, targetHeight)) {
        RECT changed{0, 0, targetWidth, targetHeight};
        if (compositionOf == trayId)
            intersect(changed, changed, rect);
        compositionOf = trayId;
        BitBlt(compositionDC, changed.left, changed.top, changed.right - changed.left,
               changed.bottom - changed.top, target, changed.left, changed.top, SRCCOPY);
    }

    if (window) {
        InvalidateRect(window, &rect, FALSE);
        UpdateWindow(window);
    }
}

bool Puzzle::prepareDragImage(int p, int mouseX, int mouseY)
{
    const Piece& piece = pieces[p];
    int w = piece.width, h = piece.height;
    HRGN outline = piece.region;
    int pictureX = piece.sourceX, pictureY = piece.sourceY;
    if (!piece.isGrouped) {
        grabOffsetX = mouseX - piece.x;
        grabOffsetY = mouseY - piece.y;
    } else {
        if (!findGroup(piece.groupId, true))
            return false;
        const PieceGroup& group = *currentGroup;
        grabOffsetX = mouseX - group.x;
        grabOffsetY = mouseY - group.y;
        w = group.width;
        h = group.height;
        outline = group.region;
        pictureX = group.sourceX;
        pictureY = group.sourceY;
    }
    createMemoryDC(dragImageDC, pictureDC, dragImageBitmap, w, h, true);
    createMemoryDC(dragMaskDC, pictureDC, dragMaskBitmap, w, h, true);
    // What lies beneath the item is restored from the copy of its window as it moves.
    HDC image = nullptr;
    int imageWidth = 0, imageHeight = 0;
    const bool beneath = windowImage(piece.trayId, image, imageWidth, imageHeight) &&
                         keepComposition(imageWidth, imageHeight);
    if (!dragImageBitmap || !dragMaskBitmap || !beneath) {
        deleteMemoryDC(dragImageDC, dragImageBitmap);
        deleteMemoryDC(dragMaskDC, dragMaskBitmap);
        return false;
    }
    fillMaskedPair(dragImageDC, dragMaskDC, w, h, outline, pictureDC, pictureX, pictureY);
    if (drawOutline)
        frameOutline(dragImageDC, outline);
    // Drops, slides and new windows draw without a repaint; what is carried now must find the
    // whole window beneath it in the copy.
    compositionOf = NoWindow;
    moveItem(p, mouseX, mouseY, true, true, false, false);
    return true;
}

void drawDragImage(const RECT& rect, int posX, int posY, int w, int h, HDC maskDC, HDC imageDC,
                   HDC destDC, HDC backDC)
{
    const int rw = rect.right - rect.left, rh = rect.bottom - rect.top;
    HDC pass = scratchSurface(ScratchPass, rw, rh);
    if (!pass)
        return;
    BitBlt(pass, 0, 0, rw, rh, nullptr, 0, 0, WHITENESS);
    BitBlt(pass, 0, 0, rw, rh, backDC, rect.left, rect.top, SRCCOPY);
    blitMasked(pass, posX - rect.left, posY - rect.top, w, h, maskDC, imageDC, 0, 0);
    BitBlt(destDC, rect.left, rect.top, rw, rh, pass, 0, 0, SRCCOPY);
}

void Puzzle::refreshPattern(bool toggle)
{
    if (toggle)
        patternShown = !patternShown;
    drawPattern();
    repaintRect(getPuzzleArea(false), 0, mainWindow);
}

void Puzzle::drawPattern()
{
    BitBlt(backgroundDC, originX, originY, visibleWidth, visibleHeight, nullptr, 0, 0, WHITENESS);
    Rectangle(backgroundDC, originX, originY, originX + visibleWidth, originY + visibleHeight);
    if (patternShown && made) {
        HRGN outline = gdi::createRectRgn(0, 0, 0, 0);
        for (int p = 0; p < pieceCount; ++p) {
            CombineRgn(outline, pieces[p].region, nullptr, RGN_COPY);
            OffsetRgn(outline, pieces[p].homeX - scrollX, pieces[p].homeY - scrollY);
            frameOutline(backgroundDC, outline);
        }
        gdi::deleteObject(outline);
    }
}

void Puzzle::applyOutlineOptions(bool outline, bool setOutline)
{
    drawOutline = outline;
    drawSetOutline = setOutline;
    for (int p = 0; p < pieceCount && made; ++p) {
        pieces[p].drawOutline = outline;
        pieces[p].drawSetOutline = setOutline;
    }
    repaintRect(RECT{boardLeft, boardTop, boardImageWidth, boardImageHeight}, 0, mainWindow);
    for (Tray* tray = firstTray; tray; tray = tray->next) {
        RECT client;
        GetClientRect(tray->window, &client);
        repaintRect(client, tray->id, tray->window);
    }
}
