#pragma once
// A list of recently used files of one kind: newest first, at most three.
#include <windows.h>

constexpr int RecentCapacity = 3;

struct RecentList {
    char entries[RecentCapacity][MAX_PATH];
    int count;
    int lastMenuId;  // command ID of the last item built in its submenu; 0 while none is
};

enum RecentKind { RecentPictures = 0, RecentPuzzles = 1, RecentCollections = 2 };
