#pragma once
// Carrying a piece or group: click to pick up, move with the button released, click to drop.
#include <windows.h>

struct DragState {
    bool dragging;
    int draggedPiece;  // while grouped, it stands for its whole group
};

extern DragState dragState;

// Entry points of the main window's and every tray's procedure.
void handleClick(HWND window, LPARAM point);
void handleMouseMove(HWND window, LPARAM point);

// Drops a dragged item where it lies, without setting or joining it, so that nothing runs
// against a stale drag. Does nothing when no drag is under way.
void endDragInPlace();

// repaintRect that leaves no trace of an item being dragged, whichever window is repainted:
// the item's own window is rebuilt without the item, which is then drawn back on top.
void repaintBeneathDrag(const RECT& rect, int trayId, HWND window);

// The top-left of the item being dragged in its window's coordinates.
POINT draggedItemPlace();
// Keeps the pointer's link to the dragged item after scrolling moved the item by (dx, dy).
void followDraggedItem(int dx, int dy);
