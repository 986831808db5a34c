#pragma once
// One scroll request for the main board's puzzle area or for a tray.
#include <windows.h>

// owner and bar name the scroll bar: a scroll-bar control with SB_CTL for the board, a
// tray's window with SB_HORZ or SB_VERT. offset is the stored scroll position it drives;
// trayId is 0 for the board. Pieces move only when the thumb is released.
void ScrollView(HWND owner, int& offset, int request, int bar, int trayId, int thumb);
