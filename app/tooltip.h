#pragma once
// The toolbar's tooltip: a pale-yellow text window shown below the pointer after a delay,
// sooner when a tip was shown recently, and hidden again after a while.
#include <windows.h>

constexpr UINT_PTR TipShowTimer = 1;
constexpr UINT_PTR TipHideTimer = 2;
constexpr UINT TipDelay = 1000;      // before the first tip
constexpr UINT TipQuickDelay = 200;  // before the next one, once a tip has shown
constexpr UINT TipShowTime = 5000;
constexpr int TipBelowPointer = 18;

// A font of face, cell height and weight, for the program's own small texts.
HFONT CreateUiFont(const char* face, int height, int weight);
// The tip window (a child of the main window) and its font.
void CreateTipWindow(HWND mainWindow);
// The pointer is at (x, y) of button: its tip is due.
void RequestTip(HWND button, int x, int y);
// A tip timer of the toolbar fired.
void OnTipTimer(UINT_PTR id);
// Hides the tip; with forget, it no longer belongs to any button.
void HideTip(bool forget);
// The string-table ID of a button's tip (before the language offset).
int TipStringId(int buttonId);
