#pragma once
// The main window: class ToviraPuzzle, its start-up and shutdown, painting and scrolling.
#include <windows.h>

constexpr const char* MainClassName = "ToviraPuzzle";
constexpr const char* ProgramName = "ToviraPuzzle";

// Registers ToviraPuzzle and CAJA; false if either fails.
bool RegisterWindowClasses(HINSTANCE instance);
// Creates the maximised main window; its creation runs the start-up sequence.
HWND CreateMainWindow(HINSTANCE instance);

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Run inside the main window's creation and destruction.
void StartUp(HWND window);
void ShutDown(HWND window);
