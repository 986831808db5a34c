#include "play/drag.h"

#include <algorithm>
#include <vector>

#include "app/app_state.h"
#include "app/tooltip.h"
#include "files/message.h"
#include "model/masked_drawing.h"
#include "model/memory_dc.h"
#include "model/puzzle.h"
#include "play/piece_group.h"
#include "play/sounds.h"
#include "play/tray.h"
#include "resources/resource.h"

DragState dragState{false, -1};

namespace {

// The item of a piece: the piece alone, or its whole group.
struct Item {
    std::vector<int> members;
    RECT rect{};
    PieceGroup* group = nullptr;
    int width() const { return rect.right - rect.left; }
    int height() const { return rect.bottom - rect.top; }
};

bool itemOf(Puzzle& puzzle, int p, Item& item)
{
    const Piece& piece = puzzle.pieces[p];
    if (!piece.isGrouped) {
        item.members.assign(1, p);
        item.rect = piece.getBounds(true, false, false);
        item.group = nullptr;
        return true;
    }
    if (!puzzle.findGroup(piece.groupId, true))
        return false;
    item.group = puzzle.currentGroup;
    item.rect = item.group->bounds;
    item.members.resize(item.group->members.count);
    item.group->members.copyTo(item.members.data());
    return true;
}

// Members already on top of the stacking order in list order need no raising; a carried
// group then costs nothing per pointer move.
bool onTopInOrder(const Puzzle& puzzle, const std::vector<int>& members)
{
    const int base = puzzle.pieceCount - static_cast<int>(members.size());
    for (size_t i = 0; i < members.size(); ++i) {
        if (puzzle.pieces[members[i]].zIndex != base + static_cast<int>(i))
            return false;
    }
    return true;
}

// Another window the item may be over: every tray in list order, then the main window.
struct OtherWindow {
    HWND window;
    int trayId;
    HDC screenDC;
    HDC imageDC;
};

std::vector<OtherWindow> otherWindows(const Puzzle& puzzle, HWND own)
{
    std::vector<OtherWindow> windows;
    for (const Tray* tray = puzzle.firstTray; tray; tray = tray->next) {
        if (tray->window != own)
            windows.push_back({tray->window, tray->id, tray->windowDC, tray->imageDC});
    }
    if (puzzle.mainWindow != own)
        windows.push_back({puzzle.mainWindow, 0, puzzle.windowDC, puzzle.boardDC});
    return windows;
}

// The part of rect (in own's coordinates) that lies over window W, in W's coordinates.
bool overlapIn(const Puzzle& puzzle, HWND own, const RECT& rect, HWND w, RECT& overlap)
{
    RECT screenRect;
    GetWindowRect(w, &screenRect);
    MapWindowPoints(nullptr, puzzle.mainWindow, reinterpret_cast<POINT*>(&screenRect), 2);
    RECT item = rect;
    MapWindowPoints(own, puzzle.mainWindow, reinterpret_cast<POINT*>(&item), 2);
    if (!IntersectRect(&overlap, &screenRect, &item))
        return false;
    MapWindowPoints(puzzle.mainWindow, w, reinterpret_cast<POINT*>(&overlap), 2);
    return true;
}

void setCursorFor(const Puzzle& puzzle)
{
    SetCursor(puzzle.made ? appState.handCursor : appState.arrowCursor);
}

}  // namespace

void Puzzle::moveItem(int p, int x, int y, bool raise, bool rebuild, bool toHome,
                      bool acrossWindows)
{
    Piece& piece = pieces[p];
    HDC surface = nullptr;
    int surfaceWidth = 0, surfaceHeight = 0;
    if (!windowImage(piece.trayId, surface, surfaceWidth, surfaceHeight))
        return;
    Item item;
    if (!itemOf(*this, p, item))
        return;
    if (toHome) {
        x -= scrollX;
        y -= scrollY;
    }

    // R covers the item's old and new places.
    RECT r = item.rect;
    const int dx = x - dragLastX, dy = y - dragLastY;
    (x < dragLastX ? r.left : r.right) += dx;
    (y < dragLastY ? r.top : r.bottom) += dy;

    if (rebuild) {
        for (int m : item.members)
            pieces[m].isVisible = false;
        repaintRect(r, piece.trayId, nullptr);
        for (int m : item.members)
            pieces[m].isVisible = true;
    } else {
        BitBlt(surface, r.left, r.top, r.right - r.left, r.bottom - r.top, compositionDC, r.left,
               r.top, SRCCOPY);
    }

    const RECT visible = getPuzzleArea(true);
    const bool raiseMembers = raise && !onTopInOrder(*this, item.members);
    for (int m : item.members) {
        Piece& member = pieces[m];
        if (toHome) {
            member.moveTo(member.homeX, member.homeY, false);
            RECT shown;
            const RECT box = member.getBounds(true, false, false);
            if (IntersectRect(&shown, &box, &visible))
                member.draw(shown, scrollX, scrollY, false, false, false, false);
        } else if (item.group) {
            member.moveTo(member.x + dx, member.y + dy, false);
        } else {
            member.moveTo(x - grabOffsetX, y - grabOffsetY, false);
        }
        if (raiseMembers)
            raiseToTop(m);
    }

    const int left = x - grabOffsetX, top = y - grabOffsetY;
    if (!toHome) {
        blitMasked(surface, left, top, item.width(), item.height(), dragMaskDC, dragImageDC, 0, 0);
        if (item.group)
            item.group->setPosition(left, top);
    }

    InvalidateRect(piece.window, &r, FALSE);
    UpdateWindow(piece.window);

    if (acrossWindows && trayCount != 0) {
        for (const OtherWindow& other : otherWindows(*this, piece.window)) {
            RECT overlap;
            if (!overlapIn(*this, piece.window, r, other.window, overlap))
                continue;
            if (toHome) {
                repaintRect(overlap, other.trayId, other.window);
            } else {
                POINT at{left, top};
                MapWindowPoints(piece.window, other.window, &at, 1);
                drawDragImage(overlap, at.x, at.y, item.width(), item.height(), dragMaskDC,
                              dragImageDC, other.screenDC, other.imageDC);
            }
        }
    }
    dragLastX = x;
    dragLastY = y;
}

void Puzzle::moveToWindow(int p, HWND window, HDC newTargetDC, int newTrayId)
{
    Piece& piece = pieces[p];
    const int oldTray = piece.trayId;
    HWND oldWindow = piece.window;
    Item item;
    if (!itemOf(*this, p, item))
        return;

    if (item.group) {
        RECT moved = item.rect;
        MapWindowPoints(oldWindow, window, reinterpret_cast<POINT*>(&moved), 2);
        item.group->setPosition(moved.left, moved.top);
        item.group->trayId = newTrayId;
    }
    RECT arrived;
    SetRectEmpty(&arrived);
    for (int m : item.members) {
        Piece& member = pieces[m];
        RECT box = member.getBounds(true, false, false);
        member.assignWindow(window, newTargetDC, newTrayId);
        MapWindowPoints(oldWindow, window, reinterpret_cast<POINT*>(&box), 2);
        member.moveTo(box.left, box.top, false);
        // The tray's image may grow for an earlier member, which makes the surface passed
        // in stale: each member draws into the tray's image as it is now.
        if (newTrayId != 0) {
            putInTray(newTrayId, m);
            if (findTray(newTrayId, false))
                member.targetDC = foundTray->imageDC;
        }
        takeFromTray(oldTray, m);
        member.isVisible = true;
        if (!item.group)
            member.draw(member.getBounds(true, false, false), 0, 0, false, false, false, false);
        UnionRect(&arrived, &arrived, &box);
    }
    // A group is drawn whole once every member is in, with the one outline round it all.
    if (item.group)
        drawGroup(arrived, p);
    repaintRect(item.rect, oldTray, window);
    // The item keeps its place on the screen; make sure the new window shows it there.
    InvalidateRect(window, &arrived, FALSE);
    UpdateWindow(window);
}

void Puzzle::endDrag(int p)
{
    deleteMemoryDC(dragImageDC, dragImageBitmap);
    deleteMemoryDC(dragMaskDC, dragMaskBitmap);
    if (trayCount == 0)
        return;
    growTrayToFit(p);
    Item item;
    if (!itemOf(*this, p, item))
        return;
    HWND own = pieces[p].window;
    // Other windows repaint from their images, which wipes what was painted over them.
    for (const OtherWindow& other : otherWindows(*this, own)) {
        RECT overlap;
        if (!overlapIn(*this, own, item.rect, other.window, overlap))
            continue;
        InvalidateRect(other.window, &overlap, FALSE);
        UpdateWindow(other.window);
    }
}

void handleClick(HWND window, LPARAM point)
{
    Puzzle& puzzle = thePuzzle;
    const int px = LOWORD(point), py = HIWORD(point);
    puzzle.dragLastX = px;
    puzzle.dragLastY = py;

    if (!dragState.dragging) {
        int piece = -1;
        if (!puzzle.made || !puzzle.pieceAt(window, px, py, piece))
            return;
        if (!puzzle.prepareDragImage(piece, px, py)) {
            showMessage(appState.instance, appState.mainWindow, IDS_LOW_RESOURCES, IDS_SYSTEM_ERROR,
                        MB_OK);
            return;
        }
        dragState.draggedPiece = piece;
        dragState.dragging = true;
        playSound(IDW_CLICK);
        SetCursor(appState.crossCursor);
        return;
    }

    const int piece = dragState.draggedPiece;
    if (puzzle.pieces[piece].window != window) {
        if (window == puzzle.mainWindow) {
            puzzle.moveToWindow(piece, window, puzzle.boardDC, 0);
        } else {
            const int trayId = puzzle.trayIdOfWindow(window, true);
            if (trayId != 0)
                puzzle.moveToWindow(piece, window, puzzle.currentTray->imageDC, trayId);
        }
    }
    const bool fits = puzzle.setIfNearHome(piece) || puzzle.joinNeighbours(piece);
    playSound(fits ? IDW_SNAP : IDW_CLICK);
    dragState.dragging = false;
    puzzle.endDrag(piece);
    setCursorFor(puzzle);
}

void handleMouseMove(HWND window, LPARAM point)
{
    Puzzle& puzzle = thePuzzle;
    if (appState.tip.visible)
        HideTip(true);
    appState.tip.quick = false;
    appState.tip.shown = false;
    appState.tip.currentButton = nullptr;

    RECT toolbar{0, 0, 0, 0};
    if (appState.toolbar)
        GetWindowRect(appState.toolbar, &toolbar);
    if (!dragState.dragging) {
        setCursorFor(puzzle);
        return;
    }

    const Piece& piece = puzzle.pieces[dragState.draggedPiece];
    if (appState.toolbar)
        MapWindowPoints(nullptr, piece.window, reinterpret_cast<POINT*>(&toolbar), 2);
    POINT p{LOWORD(point), HIWORD(point)};
    if (window != piece.window)
        MapWindowPoints(window, piece.window, &p, 1);

    // The item may go anywhere below the toolbar, beyond its own window too.
    if (!PtInRect(&toolbar, p) && p.y - puzzle.grabOffsetY > toolbar.bottom) {
        puzzle.moveItem(dragState.draggedPiece, p.x, p.y, true, false, false, true);
        if (GetCursor() != appState.crossCursor)
            SetCursor(appState.crossCursor);
    } else {
        SetCursor(appState.noCursor);
    }
}

void endDragInPlace()
{
    if (!dragState.dragging)
        return;
    dragState.dragging = false;
    if (thePuzzle.made)
        thePuzzle.endDrag(dragState.draggedPiece);
    setCursorFor(thePuzzle);
}

POINT draggedItemPlace()
{
    Item item;
    if (!dragState.dragging || !itemOf(thePuzzle, dragState.draggedPiece, item))
        return POINT{0, 0};
    return POINT{item.rect.left, item.rect.top};
}

void followDraggedItem(int dx, int dy)
{
    thePuzzle.dragLastX += dx;
    thePuzzle.dragLastY += dy;
}

void repaintBeneathDrag(const RECT& rect, int trayId, HWND window)
{
    Puzzle& puzzle = thePuzzle;
    Item item;
    if (!dragState.dragging || !itemOf(puzzle, dragState.draggedPiece, item)) {
        puzzle.repaintRect(rect, trayId, window);
        return;
    }
    // The next pointer move restores what lies beneath the item from the composition copy,
    // which must show the item's own window without the item. Another window is repainted
    // first; the item's window is then rebuilt over the item (and over rect when it is that
    // window) with the item hidden, and the item drawn back on top.
    const int itemTray = puzzle.pieces[dragState.draggedPiece].trayId;
    const bool here = itemTray == trayId;
    if (!here)
        puzzle.repaintRect(rect, trayId, window);
    RECT area = item.rect;
    if (here)
        UnionRect(&area, &rect, &item.rect);
    for (int m : item.members)
        puzzle.pieces[m].isVisible = false;
    puzzle.repaintRect(area, itemTray, nullptr);
    for (int m : item.members)
        puzzle.pieces[m].isVisible = true;
    HDC surface = nullptr;
    int surfaceWidth = 0, surfaceHeight = 0;
    if (puzzle.windowImage(itemTray, surface, surfaceWidth, surfaceHeight)) {
        blitMasked(surface, item.rect.left, item.rect.top, item.width(), item.height(),
                   puzzle.dragMaskDC, puzzle.dragImageDC, 0, 0);
    }
    if (here && window) {
        InvalidateRect(window, &area, FALSE);
        UpdateWindow(window);
    }
}
