#pragma once
// String-table texts in the language of this run.
#include <windows.h>

// Loads string id + the language offset; an empty text when there is none.
int loadString(HINSTANCE instance, int id, char* buffer, int size);

// Removes every occurrence of c from text, in place.
void RemoveChar(char* text, char c);
