#include "app/scroll_view.h"

#include "app/app_state.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "play/tray.h"

namespace {

int requestedOffset(int p, int request, int page, int max, int thumb)
{
    switch (request) {
    case SB_LINEUP:
        return p > 0 ? p - 1 : p;
    case SB_LINEDOWN:
        return p < max ? p + 1 : p;
    case SB_PAGEUP:
        return p <= page ? 0 : p - page;
    case SB_PAGEDOWN:
        return p + page > max ? max : p + page;
    case SB_THUMBPOSITION:
        return thumb;
    case SB_TOP:
        return 0;
    case SB_BOTTOM:
        return max;
    default:  // thumb tracking and the end of a scroll change nothing
        return p;
    }
}

}  // namespace

void ScrollView(HWND owner, int& offset, int request, int bar, int trayId, int thumb)
{
    // The board's bars stay on screen after a puzzle is cleared; without a puzzle they
    // move nothing, or the offset would carry into the next one.
    Puzzle& puzzle = thePuzzle;
    if (!puzzle.made)
        return;
    HCURSOR previous = SetCursor(appState.waitCursor);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(owner, bar, &info);
    const int page = static_cast<int>(info.nPage);
    offset = requestedOffset(offset, request, page, info.nMax - page, thumb);

    if (offset != info.nPos) {
        RECT area;
        HWND target;
        if (trayId == 0) {
            area = puzzle.getPuzzleArea(false);
            if (puzzle.patternShown)
                puzzle.refreshPattern(false);
            target = puzzle.mainWindow;
        } else {
            GetClientRect(owner, &area);
            // A dragged item in this tray moves with its contents.
            const POINT before = draggedItemPlace();
            puzzle.applyTrayScroll(trayId);
            if (dragState.dragging && puzzle.pieces[dragState.draggedPiece].trayId == trayId) {
                const POINT after = draggedItemPlace();
                followDraggedItem(after.x - before.x, after.y - before.y);
            }
            target = owner;
        }
        repaintBeneathDrag(area, trayId, target);
        SetScrollPos(owner, bar, offset, TRUE);
    }
    SetCursor(previous);
}
