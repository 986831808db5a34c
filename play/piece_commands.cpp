// Commands that rearrange the pieces: shuffling the loose ones, bringing hidden ones up, and
// bringing back into view those a smaller window left outside it.
#include <algorithm>
#include <vector>

#include "model/puzzle.h"
#include "play/piece_group.h"
#include "play/tray.h"

namespace {

// How far box must move to lie inside view (its top-left inside when it is the larger).
POINT shiftInto(const RECT& box, const RECT& view)
{
    auto shift = [](LONG low, LONG high, LONG viewLow, LONG viewHigh) -> LONG {
        if (high > viewHigh)
            return std::max(viewHigh - high, viewLow - low);
        return low < viewLow ? viewLow - low : 0;
    };
    return POINT{shift(box.left, box.right, view.left, view.right),
                 shift(box.top, box.bottom, view.top, view.bottom)};
}

bool meets(const RECT& a, const RECT& b)
{
    RECT common;
    return IntersectRect(&common, &a, &b) != FALSE;
}

// How much of a tray's caption must show, beside the view's edges, to take hold of it.
constexpr int CaptionGrip = 32;

// A tray can be moved back while its whole caption lies below the view's top and above its
// bottom, with enough of it across.
bool captionInReach(const RECT& tray, const RECT& view)
{
    const int caption = GetSystemMetrics(SM_CYCAPTION);
    return tray.top >= view.top && tray.top + caption <= view.bottom &&
           std::min(tray.right, view.right) - std::max(tray.left, view.left) >= CaptionGrip;
}

}  // namespace

void Puzzle::shufflePieces()
{
    if (!made)
        return;
    // Set pieces, group members and pieces in trays keep their places. The generator goes
    // on from where generation left it, over the board the window shows now.
    followWindowSize();
    for (int p = 0; p < pieceCount; ++p) {
        Piece& piece = pieces[p];
        if (piece.isSet || piece.trayId != 0 || piece.isGrouped)
            continue;
        const POINT place = randomPosition(piece.width, piece.height);
        piece.moveTo(place.x, place.y, true);
    }
    repaintRect(RECT{boardLeft, boardTop, boardImageWidth, boardImageHeight}, 0, mainWindow);
    noteChange();
}

void Puzzle::showHiddenPieces()
{
    if (!made)
        return;
    // Every set piece goes below every free one; free pieces keep their order. Set pieces
    // end up as sending each to the bottom in piece order would leave them, in one pass.
    std::vector<int> order;
    order.reserve(pieceCount);
    for (int p = pieceCount - 1; p >= 0; --p) {
        if (pieces[p].isSet)
            order.push_back(p);
    }
    for (int z = 0; z < pieceCount; ++z) {
        if (!pieces[zOrder[z]].isSet)
            order.push_back(zOrder[z]);
    }
    for (int z = 0; z < pieceCount; ++z) {
        zOrder[z] = order[z];
        pieces[order[z]].zIndex = z;
    }
    placesChanged();
    repaintRect(getPuzzleArea(false), 0, mainWindow);
    // Pieces and trays out of view are hidden too: they come back.
    bringIntoView(boardView());
    noteChange();
}

void Puzzle::followWindowSize()
{
    RECT client{};
    if (GetClientRect(mainWindow, &client) && client.right > boardLeft &&
        client.bottom > boardTop) {
        boardWidth = client.right;
        boardHeight = client.bottom;
    }
}

void Puzzle::bringIntoView(const RECT& view)
{
    if (!made || IsRectEmpty(&view))
        return;
    bool moved = false;
    for (int p = 0; p < pieceCount; ++p) {
        Piece& piece = pieces[p];
        if (piece.isSet || piece.trayId != 0 || !piece.isVisible)
            continue;
        if (!piece.isGrouped) {
            const RECT box = piece.getBounds(true, false, false);
            if (meets(box, view))
                continue;
            const POINT d = shiftInto(box, view);
            piece.moveTo(piece.x + d.x, piece.y + d.y, false);
            moved = true;
            continue;
        }
        // A group moves whole, once: its first member moves it.
        if (!findGroup(piece.groupId, false) || foundGroup->members.head->value != p ||
            meets(foundGroup->bounds, view))
            continue;
        PieceGroup& group = *foundGroup;
        const POINT d = shiftInto(group.bounds, view);
        for (IndexNode* node = group.members.head; node; node = node->next)
            pieces[node->value].moveTo(pieces[node->value].x + d.x, pieces[node->value].y + d.y,
                                       false);
        group.setPosition(group.x + d.x, group.y + d.y);
        moved = true;
    }
    if (moved) {
        repaintRect(RECT{0, 0, boardImageWidth, boardImageHeight}, 0, mainWindow);
        noteChange();
    }
    for (Tray* tray = trayCount ? firstTray : nullptr; tray; tray = tray->next) {
        RECT box;
        if (!tray->window || IsZoomed(tray->window) || !GetWindowRect(tray->window, &box))
            continue;
        MapWindowPoints(nullptr, mainWindow, reinterpret_cast<POINT*>(&box), 2);
        if (captionInReach(box, view))
            continue;
        const POINT d = shiftInto(box, view);
        MoveWindow(tray->window, box.left + d.x, box.top + d.y, box.right - box.left,
                   box.bottom - box.top, TRUE);
    }
}

RECT Puzzle::boardView() const
{
    RECT client{};
    GetClientRect(mainWindow, &client);
    return RECT{boardLeft, boardTop, std::min<LONG>(client.right, boardImageWidth),
                std::min<LONG>(client.bottom, boardImageHeight)};
}
