#include "play/drag.h"

#include <algorithm>
#include <windowsx.h>

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

// The item of a piece: the piece alone, or its whole group. Nothing is allocated, so that
// carrying never fails for want of memory.
struct Item {
    int piece = -1;
    RECT rect{};
    PieceGroup* group = nullptr;
    int width() const { return rect.right - rect.left; }
    int height() const { return rect.bottom - rect.top; }
    int count() const { return group ? group->members.count : 1; }
    template <class Visit> void forEach(Visit visit) const { forEachMember(piece, group, visit); }
};

bool itemOf(Puzzle& puzzle, int p, Item& item)
{
    const Piece& piece = puzzle.pieces[p];
    item.piece = p;
    if (!piece.isGrouped) {
        item.rect = piece.getBounds(true, false, false);
        item.group = nullptr;
        return true;
    }
    if (!puzzle.findGroup(piece.groupId, true))
        return false;
    item.group = puzzle.currentGroup;
    item.rect = item.group->bounds;
    return true;
}

// Members already on top of the stacking order in list order need no raising; a carried
// group then costs nothing per pointer move.
bool onTopInOrder(const Puzzle& puzzle, const Item& item)
{
    int z = puzzle.pieceCount - item.count();
    bool inOrder = true;
    item.forEach([&](int m) { inOrder = inOrder && puzzle.pieces[m].zIndex == z++; });
    return inOrder;
}

// Another window the item may be over: every tray in list order, then the main window.
struct OtherWindow {
    HWND window;
    int trayId;
    HDC screenDC;
    HDC imageDC;
};

template <class Visit> void forEachOtherWindow(const Puzzle& puzzle, HWND own, Visit visit)
{
    for (const Tray* tray = puzzle.firstTray; tray; tray = tray->next) {
        if (tray->window != own)
            visit(OtherWindow{tray->window, tray->id, tray->windowDC, tray->imageDC});
    }
    if (puzzle.mainWindow != own)
        visit(OtherWindow{puzzle.mainWindow, 0, puzzle.windowDC, puzzle.boardDC});
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
        item.forEach([&](int m) { pieces[m].isVisible = false; });
        repaintRect(r, piece.trayId, nullptr);
        item.forEach([&](int m) { pieces[m].isVisible = true; });
    } else {
        BitBlt(surface, r.left, r.top, r.right - r.left, r.bottom - r.top, compositionDC, r.left,
               r.top, SRCCOPY);
    }

    const RECT visible = getPuzzleArea(true);
    const bool raiseMembers = raise && !onTopInOrder(*this, item);
    item.forEach([&](int m) {
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
    });

    const int left = x - grabOffsetX, top = y - grabOffsetY;
    if (!toHome) {
        blitMasked(surface, left, top, item.width(), item.height(), dragMaskDC, dragImageDC, 0, 0);
        if (item.group)
            item.group->setPosition(left, top);
    }

    InvalidateRect(piece.window, &r, FALSE);
    UpdateWindow(piece.window);

    if (acrossWindows && trayCount != 0) {
        forEachOtherWindow(*this, piece.window, [&](const OtherWindow& other) {
            RECT overlap;
            if (!overlapIn(*this, piece.window, r, other.window, overlap))
                return;
            if (toHome) {
                repaintRect(overlap, other.trayId, other.window);
            } else {
                POINT at{left, top};
                MapWindowPoints(piece.window, other.window, &at, 1);
                drawDragImage(overlap, at.x, at.y, item.width(), item.height(), dragMaskDC,
                              dragImageDC, other.screenDC, other.imageDC);
            }
        });
    }
    dragLastX = x;
    dragLastY = y;
    noteChange();
}

bool Puzzle::moveToWindow(int p, HWND window, int newTrayId)
{
    Piece& piece = pieces[p];
    const int oldTray = piece.trayId;
    HWND oldWindow = piece.window;
    Item item;
    if (!itemOf(*this, p, item))
        return false;

    // The item keeps its place on the screen. A tray makes room for it, and the nodes that
    // list it there are had, before anything moves: refused, the item stays where it was.
    RECT moved = item.rect;
    MapWindowPoints(oldWindow, window, reinterpret_cast<POINT*>(&moved), 2);
    if (newTrayId != 0 && !makeRoomInTray(newTrayId, moved))
        return false;
    IndexList arriving;
    if (newTrayId != 0 && oldTray == 0)
        item.forEach([&](int m) { arriving.append(m); });
    Tray* from = oldTray != 0 && findTray(oldTray, false) ? foundTray : nullptr;
    Tray* to = newTrayId != 0 && findTray(newTrayId, false) ? foundTray : nullptr;

    if (item.group) {
        item.group->setPosition(moved.left, moved.top);
        item.group->trayId = newTrayId;
    }
    RECT arrived;
    SetRectEmpty(&arrived);
    item.forEach([&](int m) {
        Piece& member = pieces[m];
        RECT box = member.getBounds(true, false, false);
        member.assignWindow(window, to ? to->imageDC : boardDC, newTrayId);
        MapWindowPoints(oldWindow, window, reinterpret_cast<POINT*>(&box), 2);
        member.moveTo(box.left, box.top, false);
        IndexNode* node = from ? from->pieces.take(m) : arriving.takeFirst();
        if (to && node)
            to->pieces.append(node);
        else
            delete node;
        member.isVisible = true;
        if (!item.group)
            member.draw(member.getBounds(true, false, false), 0, 0, false, false, false, false);
        UnionRect(&arrived, &arrived, &box);
    });
    // A group is drawn whole once every member is in, with the one outline round it all.
    if (item.group)
        drawGroup(arrived, p);
    repaintRect(item.rect, oldTray, window);
    InvalidateRect(window, &arrived, FALSE);
    UpdateWindow(window);
    noteChange();
    return true;
}

bool Puzzle::dropInto(int p, HWND window)
{
    const Piece& piece = pieces[p];
    if (piece.window == window)
        return growTrayToFit(p);
    if (window == mainWindow)
        return moveToWindow(p, window, 0);
    const int trayId = trayIdOfWindow(window, true);
    return trayId == 0 || moveToWindow(p, window, trayId);
}

void Puzzle::endDrag(int p)
{
    deleteMemoryDC(dragImageDC, dragImageBitmap);
    deleteMemoryDC(dragMaskDC, dragMaskBitmap);
    if (trayCount == 0)
        return;
    Item item;
    if (!itemOf(*this, p, item))
        return;
    // An item put down where it lies, by a command, is still given room where it can be.
    growTrayToFit(p);
    HWND own = pieces[p].window;
    // Other windows repaint from their images, which wipes what was painted over them.
    forEachOtherWindow(*this, own, [&](const OtherWindow& other) {
        RECT overlap;
        if (!overlapIn(*this, own, item.rect, other.window, overlap))
            return;
        InvalidateRect(other.window, &overlap, FALSE);
        UpdateWindow(other.window);
    });
}

void handleClick(HWND window, LPARAM point)
{
    Puzzle& puzzle = thePuzzle;
    const int px = GET_X_LPARAM(point), py = GET_Y_LPARAM(point);
    puzzle.dragLastX = px;
    puzzle.dragLastY = py;

    if (!dragState.dragging) {
        int piece = -1;
        if (!puzzle.made || !puzzle.pieceAt(window, px, py, piece))
            return;
        if (!puzzle.prepareDragImage(piece, px, py)) {
            reportLowResources();
            return;
        }
        dragState.draggedPiece = piece;
        dragState.dragging = true;
        playSound(IDW_CLICK);
        SetCursor(appState.crossCursor);
        return;
    }

    const int piece = dragState.draggedPiece;
    if (!puzzle.dropInto(piece, window)) {
        // A tray that cannot grow keeps what it holds; the item stays in hand.
        reportLowResources();
        return;
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
    POINT p{GET_X_LPARAM(point), GET_Y_LPARAM(point)};
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
    item.forEach([&](int m) { puzzle.pieces[m].isVisible = false; });
    puzzle.repaintRect(area, itemTray, nullptr);
    item.forEach([&](int m) { puzzle.pieces[m].isVisible = true; });
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
