#include "app/settings.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "app/app_state.h"
#include "resources/resource.h"

bool ReadSetting(const char*, const char*, const char* defaultText, char* destination)
{
    strncpy(destination, defaultText, MAX_PATH - 1);
    destination[MAX_PATH - 1] = '\0';
    return true;
}

bool ReadIntSetting(const char*, const char*, const char* defaultText, int& destination)
{
    destination = atoi(defaultText);
    return true;
}

bool WriteSetting(const char*, const char*, const char*)
{
    return false;
}

bool WriteIntSetting(const char*, const char*, int)
{
    return false;
}

void LoadRecentLists()
{
    for (RecentList& list : appState.recent) {
        list.count = 0;
        list.lastMenuId = 0;
    }
}

void SaveRecentLists()
{
}

void BuildRecentMenu(int kind)
{
    // An empty list shows its placeholder grayed.
    static const int placeholders[] = {IDM_RECENT_PICTURES, IDM_RECENT_PUZZLES,
                                       IDM_RECENT_COLLECTIONS};
    if (appState.recent[kind].lastMenuId == 0)
        EnableMenuItem(appState.menu, placeholders[kind], MF_BYCOMMAND | MF_GRAYED | MF_DISABLED);
}

void AddRecent(RecentList&, const char*, int)
{
}

void AutoPuzzlePath(const char* folder, const char* picturePath, const char* extension,
                    char* result)
{
    const char* slash = strrchr(picturePath, '\\');
    const char* name = slash ? slash + 1 : picturePath;
    const size_t nameLength = strcspn(name, ".");
    // wsprintf knows no precision from an argument; the pieces are copied one by one.
    std::string path = std::string(folder) + "\\" + std::string(name, nameLength) + extension;
    lstrcpynA(result, path.c_str(), MAX_PATH);
}
