#include "app/toolbar.h"

#include <windowsx.h>

#include "app/app_state.h"
#include "app/guarded.h"
#include "app/commands.h"
#include "app/controls.h"
#include "app/help.h"
#include "app/make_command.h"
#include "app/history.h"
#include "app/tooltip.h"
#include "files/collection.h"
#include "files/collection_commands.h"
#include "files/file_prompt.h"
#include "files/message.h"
#include "files/picture.h"
#include "files/puzzle_file.h"
#include "files/size_dialog.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "resources/resource.h"

namespace {

void openImage()
{
    char path[MAX_PATH];
    if (!chooseFile(appState.mainWindow, path, OpenPrompt, PictureFile))
        return;
    AddRecent(appState.recent[RecentPictures], path, RecentPictures);
    openPictureCommand(path);
}

void togglePattern()
{
    if (!thePuzzle.made)
        return;
    thePuzzle.refreshPattern(true);
    SetMenuItemText(IDM_PATTERN, thePuzzle.patternShown ? IDS_HIDE_PATTERN : IDS_SHOW_PATTERN,
                    false);
}

// The buttons the simple interface shows, and those followed by a gap.
bool shownWhenSimple(int id)
{
    switch (id) {
    case IDT_OPEN_PUZZLE:
    case IDT_SAVE_PUZZLE:
    case IDT_MAKE:
    case IDT_SHOW_HIDDEN:
    case IDT_SHUFFLE:
    case IDT_PREVIOUS_PUZZLE:
    case IDT_NEXT_PUZZLE:
    case IDT_SOUND:
    case IDT_PATTERN:
    case IDT_EXIT:
    case IDT_HELP:
        return true;
    default:
        return false;
    }
}

bool gapAfter(int id)
{
    return id == IDT_SAVE_PUZZLE || id == IDT_ADD_TRAY || id == IDT_NEXT_PUZZLE || id == IDT_EXIT;
}

LRESULT CALLBACK buttonProc(HWND button, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_MOUSEMOVE)
        RequestTip(button, GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
    return CallWindowProcA(appState.tip.buttonClassProc, button, message, wParam, lParam);
}

// The pointer over the strip itself, or over a disabled button, which gets no pointer
// messages of its own: disabled buttons show their tips too.
void onStripMouseMove(HWND strip, LPARAM lParam)
{
    appState.tip.armed = false;
    POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    HWND child = ChildWindowFromPointEx(strip, at, CWP_SKIPINVISIBLE | CWP_SKIPTRANSPARENT);
    if (child && child != strip) {
        MapWindowPoints(strip, child, &at, 1);
        RequestTip(child, at.x, at.y);
    } else if (appState.tip.visible) {
        HideTip(true);
    }
}

void initStrip(HWND strip)
{
    appState.toolbar = strip;
    for (int id = IDT_OPEN_IMAGE; id <= IDT_HELP; ++id) {
        HANDLE icon = LoadImageA(appState.instance, MAKEINTRESOURCEA(id - ToolbarIconShift),
                                 IMAGE_ICON, ToolbarIconSize, ToolbarIconSize, LR_SHARED);
        SendDlgItemMessageA(strip, id, BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon));
    }
    LayoutToolbar();
    CreateTipWindow(appState.mainWindow);
}

void showHelpTopics()
{
    ShowHelpContents(appState.mainWindow);
}

}  // namespace

void LayoutToolbar()
{
    HWND strip = appState.toolbar;
    if (!strip)
        return;
    int x = 0;
    for (int id = IDT_OPEN_IMAGE; id <= IDT_HELP; ++id) {
        const bool visible = appState.interfaceType == AdvancedInterface || shownWhenSimple(id);
        HWND button = GetDlgItem(strip, id);
        if (visible && button) {
            const auto current = reinterpret_cast<WNDPROC>(GetWindowLongPtrA(button, GWLP_WNDPROC));
            if (current != buttonProc) {
                if (!appState.tip.buttonClassProc)
                    appState.tip.buttonClassProc = current;
                SetWindowLongPtrA(button, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(buttonProc));
            }
            RECT place;
            GetWindowRect(button, &place);
            MapWindowPoints(nullptr, strip, reinterpret_cast<POINT*>(&place), 2);
            SetWindowPos(button, nullptr, x, place.top, 0, 0,
                         SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
            x += place.right - place.left;
            if (gapAfter(id))
                x += ToolbarGap;
        }
        SetControlVisible(strip, id, visible);
    }
    InvalidateRect(strip, nullptr, TRUE);
}

void RunCommand(int id, LPARAM)
{
    const CommandScope scope;
    endDragInPlace();
    HCURSOR previous = SetCursor(appState.waitCursor);
    if (appState.tip.visible)
        HideTip(true);
    appState.tip.armed = false;
    appState.tip.quick = false;

    switch (id) {
    case IDT_OPEN_IMAGE:
        openImage();
        break;
    case IDT_MAKE:
        makeCommand();
        break;
    case IDT_SET_PIECES:
        showSizeDialog(appState.mainWindow, Pieces);
        break;
    case IDT_SET_SIZE:
        showSizeDialog(appState.mainWindow, Pixels);
        break;
    case IDT_SHOW_HIDDEN:
        thePuzzle.showHiddenPieces();
        break;
    case IDT_SHUFFLE:
        thePuzzle.shufflePieces();
        break;
    case IDT_ADD_TRAY:
        if (thePuzzle.made && thePuzzle.addTray(0) == 0)
            reportLowResources();
        break;
    case IDT_SOUND:
        ToggleSound(true);
        break;
    case IDT_PATTERN:
        togglePattern();
        break;
    case IDT_EXIT:
        DestroyWindow(appState.mainWindow);
        break;
    case IDT_HELP:
        showHelpTopics();
        break;
    case IDT_OPEN_PUZZLE:
        openPuzzleCommand();
        break;
    case IDT_SAVE_PUZZLE:
        savePuzzleCommand(false);
        break;
    case IDT_NEW_COLLECTION:
        resetCollection(true);
        break;
    case IDT_OPEN_COLLECTION:
        openCollectionCommand();
        break;
    case IDT_SAVE_COLLECTION:
        saveCollectionCommand(false);
        break;
    case IDT_ADD_IMAGE:
        addImageCommand();
        break;
    case IDT_REMOVE_IMAGE:
        removeImageCommand();
        break;
    case IDT_UPDATE_IMAGE:
        updateImageCommand();
        break;
    case IDT_PREVIOUS_PUZZLE:
        previousPuzzleCommand();
        break;
    case IDT_NEXT_PUZZLE:
        nextPuzzleCommand();
        break;
    default:  // recent-file IDs only run the closing steps
        break;
    }

    UpdateCommandStates();
    // A pressed button took the focus; the keys belong to the main window and its menu.
    if (GetParent(GetFocus()) == appState.toolbar)
        SetFocus(appState.mainWindow);
    SetCursor(previous);
}

namespace {

INT_PTR dispatchStrip(HWND strip, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        initStrip(strip);
        return FALSE;  // the keyboard stays with the main window and its menu
    case WM_COMMAND:
        RunCommand(LOWORD(wParam), lParam);
        return TRUE;
    case WM_MOUSEMOVE:
        onStripMouseMove(strip, lParam);
        return TRUE;
    case WM_TIMER:
        OnTipTimer(wParam);
        return TRUE;
    default:
        return FALSE;
    }
}

}  // namespace

INT_PTR CALLBACK ToolbarDialogProc(HWND strip, UINT message, WPARAM wParam, LPARAM lParam)
{
    return guarded([&] { return dispatchStrip(strip, message, wParam, lParam); }, INT_PTR(TRUE));
}
