#pragma once
// The common open and save dialogs for the program's three kinds of file.
#include <windows.h>

enum FileKind { PictureFile = 0, CollectionFile = 1, PuzzleFile = 2 };
enum FilePromptMode { OpenPrompt = 0, SavePrompt = 1 };

// path: a buffer of MAX_PATH, emptied first. The save dialog asks before an existing file
// is replaced. On OK the file's folder becomes the kind's starting folder.
bool chooseFile(HWND owner, char* path, int mode, FileKind kind);

// Whether a file or folder of that path exists.
bool fileExists(const char* path);

// folder := the text before path's last backslash (empty without one); name, when given,
// := the text after it.
void folderOf(const char* path, char* folder, char* name);
