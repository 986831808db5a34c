#pragma once
// The language of the run and the About box.
#include <windows.h>

// Chooses the language at first start. Not built yet: the run stays in the stored language.
void RunLanguageDialog(HWND owner);
