#pragma once
// Help in the language in use: the WinHelp file where the system has a WinHelp viewer
// (Windows before Vista, and Wine), otherwise the same guide as a compiled HTML Help file
// beside it, opened through HTML Help loaded at run time.
#include <windows.h>

// Whether the system has a WinHelp viewer.
bool HasWinHelpViewer();
// The contents of appState.helpFile.
void ShowHelpContents(HWND owner);
// Context help for control, on a pair list (control ID, topic) ended by a zero pair.
void ShowContextHelp(HWND control, const DWORD* pairs);
// Closes what help opened, at shutdown.
void CloseHelp(HWND owner);
