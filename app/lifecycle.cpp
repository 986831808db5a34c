// The main window's start-up sequence (run while it is created) and shutdown sequence (run
// while it is destroyed).
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <windows.h>
#include <mmsystem.h>

#include "app/app_state.h"
#include "app/autosave.h"
#include "app/commands.h"
#include "app/help.h"
#include "app/history.h"
#include "app/language.h"
#include "app/main_window.h"
#include "app/settings.h"
#include "app/strings.h"
#include "app/toolbar.h"
#include "files/collection.h"
#include "files/file_prompt.h"
#include "files/picture.h"
#include "model/gdi_objects.h"
#include "model/memory_dc.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "resources/resource.h"

namespace {

constexpr int TitleSize = 100;
constexpr const char* HelpFileEnglish = "ToviraPuzzle.hlp";
constexpr const char* HelpFileSpanish = "ToviraPuzzleEs.hlp";

// folder\name into out (MAX_PATH). A folder too long for it is tried by its short name;
// when even that is too long, out is left empty rather than holding a cut path.
bool joinPath(const char* folder, const char* name, char* out)
{
    std::string path = std::string(folder) + "\\" + name;
    if (path.size() >= MAX_PATH) {
        char shortFolder[MAX_PATH] = {};
        const DWORD length = GetShortPathNameA(folder, shortFolder, sizeof shortFolder);
        if (length > 0 && length < sizeof shortFolder)
            path = std::string(shortFolder) + "\\" + name;
    }
    const bool fits = path.size() < MAX_PATH;
    lstrcpynA(out, fits ? path.c_str() : "", MAX_PATH);
    return fits;
}

void makeWorkingFolder(char* folder, const char* name)
{
    // A failure only costs the default folder.
    if (joinPath(appState.startFolder, name, folder) && !fileExists(folder))
        CreateDirectoryA(folder, nullptr);
}

void createToolbar(HWND window)
{
    appState.toolbar =
        CreateDialogParamA(appState.instance, "TOOLBAR1", window, ToolbarDialogProc, 0);
    RECT strip{};
    GetWindowRect(appState.toolbar, &strip);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&strip), 2);
    SetWindowPos(appState.toolbar, nullptr, strip.left, strip.top, appState.screenWidth,
                 strip.bottom - strip.top, SWP_NOZORDER | SWP_NOACTIVATE);
    GetWindowRect(appState.toolbar, &appState.toolbarRect);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&appState.toolbarRect), 2);
    const int bottom = appState.toolbarRect.bottom;
    appState.boardRect = RECT{0, bottom, appState.maximisedWidth, appState.maximisedHeight};
    appState.paintOriginX = 0;
    appState.paintOriginY = bottom + 1;
}

void placePuzzleArea(HWND window)
{
    appState.areaWidth = static_cast<int>(std::trunc(appState.screenWidth * PuzzleAreaShare));
    appState.areaHeight = static_cast<int>(std::trunc(appState.screenHeight * PuzzleAreaShare));
    RECT client;
    GetClientRect(window, &client);
    appState.areaOriginX = client.right - appState.areaWidth;
    appState.areaOriginY = client.bottom - appState.areaHeight;
    appState.defaultAreaOriginX = appState.areaOriginX;
    appState.defaultAreaOriginY = appState.areaOriginY;
}

void loadCursors()
{
    appState.handCursor = LoadCursorA(appState.instance, MAKEINTRESOURCEA(IDR_HAND_CURSOR));
    appState.arrowCursor = LoadCursorA(nullptr, IDC_ARROW);
    appState.waitCursor = LoadCursorA(nullptr, IDC_WAIT);
    appState.crossCursor = LoadCursorA(nullptr, IDC_CROSS);
    appState.noCursor = LoadCursorA(nullptr, IDC_NO);
    SetCursor(appState.arrowCursor);
}

// The two bars of the puzzle area stay where they are made; Make shows and sets them.
void createScrollBars(HWND window)
{
    appState.vScrollWidth = GetSystemMetrics(SM_CXVSCROLL);
    appState.hScrollHeight = GetSystemMetrics(SM_CYHSCROLL);
    const int x = appState.areaOriginX, y = appState.areaOriginY;
    appState.hScrollBar =
        CreateWindowExA(0, "SCROLLBAR", "Hor.scroll bar", WS_CHILD | SBS_BOTTOMALIGN, x, y,
                        appState.areaWidth - appState.vScrollWidth, appState.areaHeight, window,
                        nullptr, appState.instance, nullptr);
    appState.vScrollBar =
        CreateWindowExA(0, "SCROLLBAR", "Ver.scroll bar", WS_CHILD | SBS_VERT | SBS_RIGHTALIGN, x,
                        y, appState.areaWidth, appState.areaHeight - appState.hScrollHeight, window,
                        nullptr, appState.instance, nullptr);
}

void chooseLanguage(HWND window)
{
    ReadIntSetting(appState.optionsKey, "TextLanguage", "0", appState.language);
    ReadIntSetting(appState.optionsKey, "SupLangDlg", "0", appState.suppressLanguageDialog);
    if (appState.suppressLanguageDialog == 0) {
        lstrcpynA(appState.helpFile, HelpFileEnglish, sizeof appState.helpFile);
        RunLanguageDialog(window);
    }
    const bool spanish = appState.language == 1;
    appState.languageOffset = spanish ? SpanishOffset : 0;
    joinPath(appState.startFolder, spanish ? HelpFileSpanish : HelpFileEnglish, appState.helpFile);
}

// Each option is set to its opposite and toggled, which also sets the check mark.
void applyStoredOutline(const char* name, const char* defaultText, int commandId, bool& flag)
{
    int value = 0;
    ReadIntSetting(appState.optionsKey, name, defaultText, value);
    flag = value == 0;
    ToggleOutline(commandId);
}

}  // namespace

void StartUp(HWND window)
{
    appState.mainWindow = window;
    appState.soundOn = true;
    GetCurrentDirectoryA(sizeof appState.startFolder, appState.startFolder);
    makeWorkingFolder(appState.puzzleFolder, "Puz");
    strcpy(appState.autoPuzzleFolder, appState.puzzleFolder);
    makeWorkingFolder(appState.collectionFolder, "Col");
    appState.versionText = "1.0.0";
    appState.previewBoxWidth = PreviewBoxSize;
    appState.previewBoxHeight = PreviewBoxSize;

    appState.windowDC = GetDC(window);
    createMemoryDC(appState.backgroundDC, appState.windowDC, appState.backgroundBitmap,
                   appState.boardImageWidth, appState.boardImageHeight, false);
    BitBlt(appState.backgroundDC, 0, 0, appState.boardImageWidth, appState.boardImageHeight,
           nullptr, 0, 0, WHITENESS);

    createToolbar(window);
    placePuzzleArea(window);
    loadCursors();
    appState.menu = GetMenu(window);
    ApplyInterfaceMenuRule();
    createScrollBars(window);

    appState.optionsKey = NewSettingsKey("\\Options");
    appState.historyKey = NewSettingsKey("\\History");
    LoadRecentLists();
    ReadSetting(appState.optionsKey, "Pictures Folder", appState.startFolder,
                appState.picturesFolder);
    char defaultFolder[MAX_PATH];
    strcpy(defaultFolder, appState.collectionFolder);
    ReadSetting(appState.optionsKey, "Puzzle Collection Folder", defaultFolder,
                appState.collectionFolder);
    strcpy(defaultFolder, appState.puzzleFolder);
    ReadSetting(appState.optionsKey, "Puzzle Folder", defaultFolder, appState.puzzleFolder);

    chooseLanguage(window);

    char defaultCollection[MAX_PATH] = {};
    ReadSetting(appState.optionsKey, "Default Collection", "", defaultCollection);
    ReadIntSetting(appState.optionsKey, "Interface Type", "0", appState.interfaceType);
    if (defaultCollection[0])
        openCollection(defaultCollection);
    else
        appState.interfaceType = AdvancedInterface;  // the simple interface needs a collection

    char title[TitleSize];
    loadString(appState.instance, IDS_WINDOW_TITLE, title, sizeof title);
    SetWindowTextA(window, title);
    SetMenuTexts();
    SendMessageA(window, WM_COMMAND,
                 appState.interfaceType == SimpleInterface ? IDM_SIMPLE_INTERFACE
                                                           : IDM_ADVANCED_INTERFACE,
                 0);
    UpdateCommandStates();
    for (int kind = RecentPictures; kind <= RecentCollections; ++kind)
        BuildRecentMenu(kind);

    applyStoredOutline("Outline", "1", IDM_DRAW_OUTLINE, appState.drawOutline);
    applyStoredOutline("OutlineSet", "0", IDM_DRAW_SET_OUTLINE, appState.drawSetOutline);
    StartAutosave(window);
}

void ShutDown(HWND window)
{
    endDragInPlace();
    EndAutosave();  // a clean exit: nothing to offer back
    if (thePuzzle.made)
        thePuzzle.clear();
    PlaySoundA(nullptr, appState.instance, SND_PURGE);
    forgetCheckedPicture();
    WriteSetting(appState.optionsKey, "Pictures Folder", appState.picturesFolder);
    WriteSetting(appState.optionsKey, "Puzzle Collection Folder", appState.collectionFolder);
    WriteSetting(appState.optionsKey, "Puzzle Folder", appState.puzzleFolder);
    WriteIntSetting(appState.optionsKey, "Outline", appState.drawOutline ? 1 : 0);
    WriteIntSetting(appState.optionsKey, "OutlineSet", appState.drawSetOutline ? 1 : 0);
    SaveRecentLists();
    free(appState.optionsKey);
    free(appState.historyKey);
    appState.optionsKey = appState.historyKey = nullptr;
    CloseHelp(window);
    PostQuitMessage(0);

    ReleaseDC(window, appState.windowDC);
    appState.windowDC = nullptr;
    gdi::deleteObject(appState.tipFont);
    gdi::deleteObject(appState.tipBrush);
    appState.tipFont = nullptr;
    appState.tipBrush = nullptr;
    deleteMemoryDC(appState.boardDC, appState.boardBitmap);
    deleteMemoryDC(appState.backgroundDC, appState.backgroundBitmap);
}
