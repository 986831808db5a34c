#pragma once
// The toolbar strip (dialog TOOLBAR1), where most commands execute: its icon buttons, their
// layout for the interface in use, and the pointer moves that bring their tooltips.
#include <windows.h>

constexpr int ToolbarIconShift = 900;  // icon resource = button ID - ToolbarIconShift
constexpr int ToolbarIconSize = 16;
constexpr int ToolbarGap = 32;  // pixels between groups of buttons

INT_PTR CALLBACK ToolbarDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
// Places and shows the buttons of the interface in use.
void LayoutToolbar();
// Executes the command of toolbar button id, then runs the enabling pass.
void RunCommand(int id, LPARAM lParam);
