#pragma once
// The toolbar strip (dialog TOOLBAR1), where most commands execute.
// Its buttons, their layout and tooltips are not built yet: the strip is empty.
#include <windows.h>

INT_PTR CALLBACK ToolbarDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
void LayoutToolbar();
// Executes the command of toolbar button id, then runs the enabling pass.
void RunCommand(int id, LPARAM lParam);
