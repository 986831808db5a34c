#include "model/puzzle.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "app/controls.h"
#include "files/picture.h"
#include "model/gdi_objects.h"
#include "model/masked_drawing.h"
#include "model/memory_budget.h"
#include "model/memory_dc.h"
#include "play/piece_group.h"
#include "play/tray.h"

Puzzle::Puzzle()
    : compositionBitmap(nullptr), compositionWidth(0), compositionHeight(0),
      dragMaskBitmap(nullptr), dragImageBitmap(nullptr), pieceCount(0), columns(0), rows(0),
      width(0), height(0), boardWidth(0), boardHeight(0), boardImageWidth(0), boardImageHeight(0),
      boardLeft(0), boardTop(0), originX(0), originY(0), naturalWidth(0), naturalHeight(0),
      visibleWidth(0), visibleHeight(0), scrollX(0), scrollY(0), previewX(0), previewY(0),
      previewWidth(0), previewHeight(0), zOrder(nullptr), shapeMode(Rectangular), dragLastX(0),
      dragLastY(0), grabOffsetX(0), grabOffsetY(0), groupCount(0), lastGroupId(0), trayCount(0),
      lastTrayId(0), placesScrollX(0), placesScrollY(0), puzzlePath{}, picturePath{}, made(false),
      drawOutline(false), patternShown(false), drawSetOutline(false), mainWindow(nullptr),
      instance(nullptr), pictureDC(nullptr), boardDC(nullptr), compositionDC(nullptr),
      backgroundDC(nullptr), previewDC(nullptr), dragMaskDC(nullptr), dragImageDC(nullptr),
      windowDC(nullptr), pieces(nullptr), currentGroup(nullptr), firstGroup(nullptr),
      lastGroup(nullptr), foundGroup(nullptr), currentTray(nullptr), firstTray(nullptr),
      lastTray(nullptr), foundTray(nullptr)
{
}

Puzzle::~Puzzle()
{
    clear();
}

namespace {

// Shows the puzzle area's scroll bar when the puzzle is larger than the area and returns
// the part of the puzzle that stays visible.
int fitScrollBar(HWND bar, int puzzleSize, int areaSize, int barThickness)
{
    if (puzzleSize <= areaSize) {
        ShowScrollBar(bar, SB_CTL, FALSE);
        return puzzleSize;
    }
    const int visible = areaSize - barThickness;
    ShowScrollBar(bar, SB_CTL, TRUE);
    SetScrollBarRange(bar, SB_CTL, puzzleSize, visible, 0);
    return visible;
}

}  // namespace

MakeResult Puzzle::makePuzzle(const MakeInputs& in)
{
    RECT client{};
    GetClientRect(in.mainWindow, &client);

    // Everything that can fail is had before the puzzle on hand is given up.
    const int count = in.columns * in.rows;
    const int imageWidth = std::max<int>(in.boardImageWidth, client.right);
    const int imageHeight = std::max<int>(in.boardImageHeight, client.bottom);
    if (!processCanHold(makeFootprint(in.width, in.height, count, imageWidth, imageHeight)))
        return MakeResult::TooLarge;
    std::unique_ptr<Piece[]> newPieces(count > 0 ? new (std::nothrow) Piece[count] : nullptr);
    std::unique_ptr<int[]> newOrder(count > 0 ? new (std::nothrow) int[count] : nullptr);
    if ((count > 0 && (!newPieces || !newOrder)) || !in.picture->renderAtSize(in.width, in.height))
        return MakeResult::TooLarge;

    if (made)
        clear();

    // A puzzle made again from the same picture keeps its file; a new picture has none yet.
    if (strcmp(in.picturePath, picturePath) != 0) {
        strncpy(picturePath, in.picturePath, sizeof picturePath - 1);
        picturePath[sizeof picturePath - 1] = '\0';
        puzzlePath[0] = '\0';
    }

    columns = in.columns;
    rows = in.rows;
    pieceCount = count;
    naturalWidth = in.picture->naturalWidth;
    naturalHeight = in.picture->naturalHeight;
    previewX = in.picture->previewX;
    previewY = in.picture->previewY;
    previewWidth = in.picture->previewWidth;
    previewHeight = in.picture->previewHeight;
    originX = in.originX;
    originY = in.originY;
    width = in.width;
    height = in.height;

    boardWidth = client.right;
    boardHeight = client.bottom;
    boardImageWidth = imageWidth;
    boardImageHeight = imageHeight;
    boardLeft = in.boardLeft;
    boardTop = in.boardTop;

    visibleWidth = fitScrollBar(in.hScrollBar, width, in.areaWidth, GetSystemMetrics(SM_CXVSCROLL));
    visibleHeight =
        fitScrollBar(in.vScrollBar, height, in.areaHeight, GetSystemMetrics(SM_CYHSCROLL));

    // The white background with the frame of the puzzle area (default pen and brush).
    BitBlt(in.backgroundDC, 0, 0, boardImageWidth, boardImageHeight, nullptr, 0, 0, WHITENESS);
    Rectangle(in.backgroundDC, originX, originY, originX + visibleWidth, originY + visibleHeight);

    const int boardW = boardImageWidth - boardLeft;
    const int boardH = boardImageHeight - boardTop;
    BitBlt(in.boardDC, boardLeft, boardTop, boardW, boardH, in.backgroundDC, boardLeft, boardTop,
           SRCCOPY);
    BitBlt(in.boardDC, previewX, previewY, previewWidth, previewHeight, in.picture->previewDC, 0, 0,
           SRCCOPY);
    BitBlt(in.windowDC, boardLeft, boardTop, boardW, boardH, in.backgroundDC, boardLeft, boardTop,
           SRCCOPY);

    pictureDC = in.picture->pictureDC;
    previewDC = in.picture->previewDC;
    boardDC = in.boardDC;
    windowDC = in.windowDC;
    backgroundDC = in.backgroundDC;
    mainWindow = in.mainWindow;
    instance = in.instance;
    shapeMode = in.shapeMode;
    drawOutline = in.drawOutline;
    drawSetOutline = in.drawSetOutline;

    pieces = newPieces.release();
    zOrder = newOrder.release();
    const bool cut = in.seed ? generate(*in.seed) : generate();
    // Outlines the platform could not make leave no puzzle rather than pieces without one.
    RECT board{boardLeft, boardTop, boardImageWidth, boardImageHeight};
    if (!cut) {
        clear();
    } else {
        if (patternShown)
            drawPattern();               // the option stays as the menu shows it
        repaintRect(board, 0, nullptr);  // pieces hidden under others are never drawn
    }

    RedrawWindow(mainWindow, &board, nullptr, RDW_INVALIDATE);
    noteChange();
    return cut ? MakeResult::Made : MakeResult::LowResources;
}

void Puzzle::clear()
{
    if (!made)
        return;
    delete[] pieces;
    pieces = nullptr;
    delete[] zOrder;
    zOrder = nullptr;
    deleteGroups();
    deleteTrays();
    shapes.clear();
    places.clear();
    deleteMemoryDC(compositionDC, compositionBitmap);
    compositionWidth = compositionHeight = 0;
    compositionOf = NoWindow;
    deleteMemoryDC(dragImageDC, dragImageBitmap);
    deleteMemoryDC(dragMaskDC, dragMaskBitmap);
    releaseScratchSurfaces();
    made = false;
    scrollX = 0;
    scrollY = 0;
    // A cleared board looks cleared.
    BitBlt(boardDC, 0, 0, boardImageWidth, boardImageHeight, nullptr, 0, 0, WHITENESS);
    if (mainWindow)
        RedrawWindow(mainWindow, nullptr, nullptr, RDW_INVALIDATE);
    noteChange();
    // For a debugger, or a long test run watching for leaks: what is left between puzzles.
    char level[64];
    wsprintfA(level, "ToviraPuzzle: %ld GDI objects after clearing\n", gdi::liveObjects());
    OutputDebugStringA(level);
}

void Puzzle::deleteGroups()
{
    // Ids start again at 1 with the next puzzle, also when its last groups went by being
    // set or merged.
    lastGroupId = 0;
    if (groupCount == 0)
        return;
    for (PieceGroup* group = firstGroup; group;) {
        PieceGroup* next = group->next;
        delete group;
        group = next;
    }
    firstGroup = lastGroup = currentGroup = foundGroup = nullptr;
    groupCount = 0;
}

void Puzzle::deleteTrays()
{
    lastTrayId = 0;
    if (trayCount == 0)
        return;
    // Each tray is unlinked before its window is destroyed, so that messages sent during the
    // destruction never find it.
    while (Tray* tray = firstTray) {
        firstTray = tray->next;
        currentTray = foundTray = nullptr;
        delete tray;
    }
    lastTray = nullptr;
    trayCount = 0;
}

void Puzzle::releaseBoard()
{
    for (int p = 0; made && p < pieceCount; ++p) {
        if (pieces[p].targetDC == boardDC)
            pieces[p].targetDC = nullptr;
    }
    boardDC = nullptr;
}

RECT Puzzle::getPuzzleArea(bool scrolled) const
{
    RECT area{originX, originY, 0, 0};
    if (scrolled) {
        area.left += scrollX;
        area.top += scrollY;
    }
    area.right = area.left + visibleWidth;
    area.bottom = area.top + visibleHeight;
    return area;
}

void Puzzle::placesChanged()
{
    places.touchAll();
}

bool Puzzle::placeOf(int p, int& plane, PlaceBox& box, PlaceBox& core) const
{
    const Piece& piece = pieces[p];
    RECT bounds = piece.getBounds(true, false, false);
    RECT solid = piece.getBounds(true, false, true);
    plane = piece.trayId;
    if (piece.isSet) {
        // Shown only inside the visible puzzle area, which scrolling moves over the puzzle.
        const RECT visible = getPuzzleArea(true);
        if (!IntersectRect(&bounds, &bounds, &visible))
            return false;
        if (!IntersectRect(&solid, &solid, &visible))
            SetRectEmpty(&solid);
        OffsetRect(&bounds, -scrollX, -scrollY);
        OffsetRect(&solid, -scrollX, -scrollY);
        plane = 0;
    }
    box = PlaceBox{bounds.left, bounds.top, bounds.right, bounds.bottom};
    core = PlaceBox{solid.left, solid.top, solid.right, solid.bottom};
    return true;
}

void Puzzle::syncPlaces() const
{
    if (scrollX != placesScrollX || scrollY != placesScrollY) {
        places.touchAll();
        placesScrollX = scrollX;
        placesScrollY = scrollY;
    }
    places.refresh([this](int p, int& plane, PlaceBox& box, PlaceBox& core) {
        return placeOf(p, plane, box, core);
    });
}

void Puzzle::raiseToTop(int p)
{
    places.raise(p);
    for (int i = pieces[p].zIndex; i <= pieceCount - 2; ++i) {
        zOrder[i] = zOrder[i + 1];
        pieces[zOrder[i]].zIndex = i;
    }
    zOrder[pieceCount - 1] = p;
    pieces[p].zIndex = pieceCount - 1;
}

void Puzzle::sendToBottom(int p)
{
    places.lower(p);
    for (int i = pieces[p].zIndex; i >= 1; --i) {
        zOrder[i] = zOrder[i - 1];
        pieces[zOrder[i]].zIndex = i;
    }
    zOrder[0] = p;
    pieces[p].zIndex = 0;
}
