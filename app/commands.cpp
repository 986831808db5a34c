#include "app/commands.h"

#include "app/about.h"
#include "app/app_state.h"
#include "app/controls.h"
#include "app/help.h"
#include "app/history.h"
#include "app/make_command.h"
#include "app/settings.h"
#include "app/strings.h"
#include "app/toolbar.h"
#include "files/collection.h"
#include "files/collection_commands.h"
#include "files/file_prompt.h"
#include "files/picture.h"
#include "files/puzzle_file.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "resources/resource.h"

namespace {

constexpr int MenuTextSize = 50;

void enableMenuItem(int id, bool enabled)
{
    EnableMenuItem(appState.menu, id,
                   MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED | MF_DISABLED));
}

// One rule of the enabling pass: a menu item and its toolbar button (0 for none).
void setCommandEnabled(int menuId, int buttonId, bool enabled)
{
    if (buttonId)
        SetControlEnabled(appState.toolbar, buttonId, enabled);
    enableMenuItem(menuId, enabled);
}

// Commands the main window executes itself; false for those it passes on.
bool runMainCommand(HWND window, int id)
{
    switch (id) {
    case IDM_MAKE:
        makeCommand();
        UpdateCommandStates();
        return true;
    case IDM_SOUND:
        ToggleSound(true);
        return true;
    case IDM_EXIT:
        DestroyWindow(window);
        return true;
    case IDM_SET_DEFAULT:
    case IDM_RESET_DEFAULT:
        setDefaultCollection(id == IDM_RESET_DEFAULT);
        return true;
    case IDM_SIMPLE_INTERFACE:
    case IDM_ADVANCED_INTERFACE:
        SetInterface(id);
        return true;
    case IDM_REACTIVATE_LANGUAGE:
        WriteSetting(appState.optionsKey, "SupLangDlg", "0");
        return true;
    case IDM_DRAW_OUTLINE:
    case IDM_DRAW_SET_OUTLINE:
        ToggleOutline(id);
        return true;
    case IDM_SAVE_PUZZLE_AS:
        savePuzzleCommand(true);
        UpdateCommandStates();
        return true;
    case IDM_SAVE_COLLECTION_AS:
        saveCollectionCommand(true);
        UpdateCommandStates();
        return true;
    case IDM_CLOSE_COLLECTION:
        resetCollection(false);
        return true;
    case IDM_HELP_TOPICS:
        ShowHelpContents(window);
        return true;
    case IDM_ABOUT:
        RunAboutDialog(window);
        return true;
    default:
        return false;
    }
}

// An item of a recent-file submenu: the entry it names is opened. False for other IDs.
bool runRecentCommand(int id)
{
    static const int firsts[] = {IDM_RECENT_PICTURE_FIRST, IDM_RECENT_PUZZLE_FIRST,
                                 IDM_RECENT_COLLECTION_FIRST};
    for (int kind = RecentPictures; kind <= RecentCollections; ++kind) {
        const RecentList& list = appState.recent[kind];
        if (id < firsts[kind] || id > list.lastMenuId)
            continue;
        char path[MAX_PATH];
        lstrcpynA(path, list.entries[id - firsts[kind]], MAX_PATH);
        if (kind == RecentPictures)
            openPictureCommand(path);
        else if (kind == RecentPuzzles)
            openPuzzleCommand(path);
        else
            openCollection(path);
        return true;
    }
    return false;
}

}  // namespace

void RouteCommand(HWND window, int id, LPARAM lParam)
{
    const CommandScope scope;
    endDragInPlace();
    HCURSOR previous = SetCursor(appState.waitCursor);
    if (!runMainCommand(window, id)) {
        runRecentCommand(id);
        // Every other ID goes to its button; a recent-file ID matches none, and the
        // toolbar only runs its closing steps, among them the enabling pass.
        SendMessageA(appState.toolbar, WM_COMMAND, MAKEWPARAM(id - ToolbarCommandShift, 0), lParam);
    }
    SetCursor(previous);
}

void UpdateCommandStates()
{
    const bool open = appState.collectionOpen;
    const bool entries = open && theCollection.count > 0;
    const CollectionEntry* current = theCollection.current;
    const bool made = thePuzzle.made;
    const bool picture = appState.pictureLoaded || entries;

    setCommandEnabled(IDM_SAVE_COLLECTION, IDT_SAVE_COLLECTION, open);
    setCommandEnabled(IDM_ADD_IMAGE, IDT_ADD_IMAGE, open);
    setCommandEnabled(IDM_SAVE_COLLECTION_AS, 0, open);
    setCommandEnabled(IDM_CLOSE_COLLECTION, 0, open);
    setCommandEnabled(IDM_REMOVE_IMAGE, IDT_REMOVE_IMAGE, entries);
    setCommandEnabled(IDM_UPDATE_IMAGE, IDT_UPDATE_IMAGE, entries);
    setCommandEnabled(IDM_PREVIOUS_PUZZLE, IDT_PREVIOUS_PUZZLE,
                      entries && current && current->previous);
    setCommandEnabled(IDM_NEXT_PUZZLE, IDT_NEXT_PUZZLE, entries && current && current->next);

    setCommandEnabled(IDM_SAVE_PUZZLE, IDT_SAVE_PUZZLE, made);
    setCommandEnabled(IDM_PATTERN, IDT_PATTERN, made);
    setCommandEnabled(IDM_SOUND, IDT_SOUND, made);
    setCommandEnabled(IDM_SHUFFLE, IDT_SHUFFLE, made);
    setCommandEnabled(IDM_SHOW_HIDDEN, IDT_SHOW_HIDDEN, made);
    setCommandEnabled(IDM_ADD_TRAY, IDT_ADD_TRAY, made);
    setCommandEnabled(IDM_SAVE_PUZZLE_AS, 0, made);

    setCommandEnabled(IDM_SET_PIECES, IDT_SET_PIECES, picture);
    setCommandEnabled(IDM_SET_SIZE, IDT_SET_SIZE, picture);
    setCommandEnabled(IDM_MAKE, IDT_MAKE, picture);

    bool canOpenPuzzle = true;
    if (appState.interfaceType != AdvancedInterface) {
        char path[MAX_PATH];
        if (thePuzzle.puzzlePath[0])
            lstrcpynA(path, thePuzzle.puzzlePath, MAX_PATH);
        else
            AutoPuzzlePath(appState.autoPuzzleFolder, loadedPicturePath, ".fpp", path);
        canOpenPuzzle = fileExists(path);
    }
    setCommandEnabled(IDM_OPEN_PUZZLE, IDT_OPEN_PUZZLE, canOpenPuzzle);

    if (appState.toolbar)
        InvalidateRect(appState.toolbar, nullptr, TRUE);
}

void ApplyInterfaceMenuRule()
{
    static const int simpleGrays[] = {
        IDM_ADD_IMAGE,          IDM_OPEN_IMAGE,      IDM_SAVE_PUZZLE_AS,   IDM_SET_SIZE,
        IDM_SET_PIECES,         IDM_OPEN_COLLECTION, IDM_CLOSE_COLLECTION, IDM_NEW_COLLECTION,
        IDM_SAVE_COLLECTION_AS, IDM_SAVE_COLLECTION, IDM_REMOVE_IMAGE,     IDM_UPDATE_IMAGE,
        IDM_SET_DEFAULT,        IDM_RESET_DEFAULT,
    };
    for (int id : simpleGrays)
        enableMenuItem(id, appState.interfaceType == AdvancedInterface);
}

void SetInterface(int commandId)
{
    appState.interfaceType =
        commandId == IDM_SIMPLE_INTERFACE ? SimpleInterface : AdvancedInterface;
    CheckMenuItem(appState.menu, IDM_SIMPLE_INTERFACE,
                  MF_BYCOMMAND |
                      (appState.interfaceType == SimpleInterface ? MF_CHECKED : MF_UNCHECKED));
    CheckMenuItem(appState.menu, IDM_ADVANCED_INTERFACE,
                  MF_BYCOMMAND |
                      (appState.interfaceType == AdvancedInterface ? MF_CHECKED : MF_UNCHECKED));
    LayoutToolbar();
    ApplyInterfaceMenuRule();
    UpdateCommandStates();
    WriteIntSetting(appState.optionsKey, "Interface Type", appState.interfaceType);
}

void ToggleSound(bool toggle)
{
    if (toggle)
        appState.soundOn = !appState.soundOn;
    // The item names what a click does.
    SetMenuItemText(IDM_SOUND, appState.soundOn ? IDS_SOUND_OFF : IDS_SOUND_ON, false);
}

void ToggleOutline(int commandId)
{
    bool& flag = commandId == IDM_DRAW_OUTLINE ? appState.drawOutline : appState.drawSetOutline;
    flag = !flag;
    CheckMenuItem(appState.menu, commandId, MF_BYCOMMAND | (flag ? MF_CHECKED : MF_UNCHECKED));
    if (thePuzzle.made)
        thePuzzle.applyOutlineOptions(appState.drawOutline, appState.drawSetOutline);
}

void SetMenuItemText(UINT item, int stringId, bool byPosition, int submenu)
{
    HMENU menu = submenu >= 0 ? GetSubMenu(appState.menu, submenu) : appState.menu;
    if (!menu)
        return;
    char text[MenuTextSize];
    loadString(appState.instance, stringId, text, sizeof text);
    // Only the text changes; the item keeps its command ID and its popup.
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    info.dwTypeData = text;
    SetMenuItemInfoA(menu, item, byPosition, &info);
    if (submenu < 0 && appState.mainWindow)
        DrawMenuBar(appState.mainWindow);
}

void SetMenuTexts()
{
    SetMenuItemText(1, IDS_MENU_COLLECTION, true);
    SetMenuItemText(2, IDS_MENU_OPTIONS, true);
    SetMenuItemText(3, IDS_MENU_HELP, true);
    SetMenuItemText(14, IDS_RECENT_PICTURES, true, 0);
    SetMenuItemText(15, IDS_RECENT_PUZZLES, true, 0);
    SetMenuItemText(16, IDS_RECENT_COLLECTIONS, true, 1);
    appState.recentMenus[RecentPictures] = GetSubMenu(GetSubMenu(appState.menu, 0), 14);
    appState.recentMenus[RecentPuzzles] = GetSubMenu(GetSubMenu(appState.menu, 0), 15);
    appState.recentMenus[RecentCollections] = GetSubMenu(GetSubMenu(appState.menu, 1), 16);
    for (int id = IDM_FIRST; id <= IDM_LAST; ++id) {
        if (GetMenuState(appState.menu, id, MF_BYCOMMAND) != static_cast<UINT>(-1))
            SetMenuItemText(id, id - MenuTextBase, false);
    }
    ToggleSound(false);
}
