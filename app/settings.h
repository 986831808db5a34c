#pragma once
// Options and recent files in the registry of the current user.
// Not built yet: every read gives its default and writes are dropped, so each run starts
// with the default options.
#include <windows.h>

#include "app/recent_list.h"

bool ReadSetting(const char* keyPath, const char* name, const char* defaultText, char* destination);
bool ReadIntSetting(const char* keyPath, const char* name, const char* defaultText, int& destination);
bool WriteSetting(const char* keyPath, const char* name, const char* text);
bool WriteIntSetting(const char* keyPath, const char* name, int value);

void LoadRecentLists();
void SaveRecentLists();
void BuildRecentMenu(int kind);

// Adds path to a recent list. Not built yet: the lists stay empty.
void AddRecent(RecentList& list, const char* path, int kind);

// folder + "\" + the picture's file name up to its first "." + extension: the puzzle file
// the simple interface uses without asking.
void AutoPuzzlePath(const char* folder, const char* picturePath, const char* extension,
                    char* result);
