#include "app/history.h"

#include <cstring>
#include <string>

#include "app/app_state.h"
#include "app/settings.h"
#include "resources/resource.h"

namespace {

struct RecentKindInfo {
    const char* valueStem;
    int firstCommand;
    int placeholder;
};

constexpr RecentKindInfo Kinds[] = {
    {"PictHist", IDM_RECENT_PICTURE_FIRST, IDM_RECENT_PICTURES},
    {"PuzHist", IDM_RECENT_PUZZLE_FIRST, IDM_RECENT_PUZZLES},
    {"ColHist", IDM_RECENT_COLLECTION_FIRST, IDM_RECENT_COLLECTIONS},
};

// The value name of a slot: the stem and the slot's digit.
std::string valueName(int kind, int slot)
{
    return Kinds[kind].valueStem + std::to_string(slot);
}

// "&1 path", with the path's own ampersands doubled so that they show as written.
std::string menuText(int slot, const char* path)
{
    std::string text = "&" + std::to_string(slot + 1) + " ";
    for (const char* c = path; *c; ++c) {
        if (*c == '&')
            text += '&';
        text += *c;
    }
    return text;
}

bool contains(const RecentList& list, int count, const char* path)
{
    for (int slot = 0; slot < count; ++slot) {
        if (lstrcmpA(list.entries[slot], path) == 0)
            return true;
    }
    return false;
}

}  // namespace

void LoadRecentLists()
{
    for (int kind = RecentPictures; kind <= RecentCollections; ++kind) {
        RecentList& list = appState.recent[kind];
        list.count = 0;
        list.lastMenuId = 0;
        // Entries are taken in slot order; a missing or empty slot leaves no gap, and a
        // path already taken (the registry may have been edited by hand) is left out.
        for (int slot = 0; slot < RecentCapacity; ++slot) {
            char* entry = list.entries[list.count];
            if (QueryStringValue(appState.historyKey, valueName(kind, slot).c_str(), entry,
                                 MAX_PATH) &&
                entry[0] && !contains(list, list.count, entry))
                ++list.count;
        }
    }
}

void SaveRecentLists()
{
    for (int kind = RecentPictures; kind <= RecentCollections; ++kind) {
        const RecentList& list = appState.recent[kind];
        for (int slot = 0; slot < list.count; ++slot) {
            const std::string name = valueName(kind, slot);
            if (!WriteSetting(appState.historyKey, name.c_str(), list.entries[slot])) {
                CreateSettingsKey(appState.historyKey);
                WriteSetting(appState.historyKey, name.c_str(), list.entries[slot]);
            }
        }
    }
}

void AddRecent(RecentList& list, const char* path, int kind)
{
    if (contains(list, list.count, path))
        return;
    if (list.count < RecentCapacity)
        ++list.count;
    for (int slot = list.count - 1; slot >= 1; --slot)
        lstrcpyA(list.entries[slot], list.entries[slot - 1]);
    lstrcpynA(list.entries[0], path, MAX_PATH);
    BuildRecentMenu(kind);
}

void BuildRecentMenu(int kind)
{
    RecentList& list = appState.recent[kind];
    const RecentKindInfo& info = Kinds[kind];
    if (list.lastMenuId == 0)
        EnableMenuItem(appState.menu, info.placeholder, MF_BYCOMMAND | MF_GRAYED | MF_DISABLED);
    if (list.count == 0)
        return;
    DeleteMenu(appState.menu, info.placeholder, MF_BYCOMMAND);
    for (int id = info.firstCommand; list.lastMenuId != 0 && id <= list.lastMenuId; ++id)
        DeleteMenu(appState.menu, id, MF_BYCOMMAND);
    for (int slot = 0; slot < list.count; ++slot) {
        AppendMenuA(appState.recentMenus[kind], MF_STRING, info.firstCommand + slot,
                    menuText(slot, list.entries[slot]).c_str());
    }
    list.lastMenuId = info.firstCommand + list.count - 1;
}

void AutoPuzzlePath(const char* folder, const char* picturePath, const char* extension,
                    char* result)
{
    const char* slash = strrchr(picturePath, '\\');
    const char* name = slash ? slash + 1 : picturePath;
    const size_t nameLength = strcspn(name, ".");
    const std::string path = std::string(folder) + "\\" + std::string(name, nameLength) + extension;
    lstrcpynA(result, path.c_str(), MAX_PATH);
}
