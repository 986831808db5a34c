#pragma once
// The three lists of recently used pictures, puzzles and collections, kept in the History
// key and shown in their submenus, and the puzzle file the simple interface uses.
#include "app/recent_list.h"

// Loads every list from the registry (at start-up) and stores them back (at shutdown).
void LoadRecentLists();
void SaveRecentLists();
// Puts path first in the list unless it is already in it; rebuilds the list's submenu.
void AddRecent(RecentList& list, const char* path, int kind);
void BuildRecentMenu(int kind);

// folder + "\" + the picture's file name up to its first "." + extension; result holds
// MAX_PATH characters and is cut to them.
void AutoPuzzlePath(const char* folder, const char* picturePath, const char* extension,
                    char* result);
