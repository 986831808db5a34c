#pragma once
// The About box: the program's picture, name and version.
#include <windows.h>

void RunAboutDialog(HWND owner);
