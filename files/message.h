#pragma once
// Message boxes built from string-table entries of the current language.
#include <windows.h>

// Text and caption are loaded with the language offset added; suffix, when given, is
// appended to the text, and then the text of afterId. Returns MessageBoxA's answer.
int showMessage(HINSTANCE instance, HWND owner, int textId, int captionId, UINT type,
                const char* suffix = nullptr, int afterId = 0);
// Message 14, which every action that fails for want of memory ends in.
void reportLowResources();
