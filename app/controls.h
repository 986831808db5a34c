#pragma once
// Small helpers for dialog controls.
#include <windows.h>

// Sets or clears one bit of a window's long value at index; true when it changed.
bool SetStyleBit(HWND window, int index, LONG bit, bool on);
// Shows or hides a control; a hidden control's place is repainted.
void SetControlVisible(HWND dialog, int id, bool visible);
// Nothing is repainted here.
void SetControlEnabled(HWND dialog, int id, bool enabled);

// Range 0 .. maximum, page and position of a scroll bar (bar: SB_CTL, SB_HORZ or SB_VERT),
// redrawn.
void SetScrollBarRange(HWND window, int bar, int maximum, int page, int position);
