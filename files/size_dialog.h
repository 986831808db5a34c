#pragma once
// The size-and-pieces dialog (PUZZLEINPUT): the puzzle's size in pixels, or the number of
// pieces across and down. Writes MakeParameters on OK.
#include <windows.h>

enum SizeDialogMode { Pixels = 1, Pieces = 2 };

// Runs the dialog modally; ends with IDC_SIZE_OK or IDC_SIZE_CANCEL.
INT_PTR showSizeDialog(HWND owner, SizeDialogMode mode);

INT_PTR CALLBACK sizeDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
