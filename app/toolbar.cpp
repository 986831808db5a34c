#include "app/toolbar.h"

#include "app/app_state.h"
#include "app/commands.h"
#include "app/make_command.h"
#include "app/history.h"
#include "app/tooltip.h"
#include "files/collection.h"
#include "files/collection_commands.h"
#include "files/file_prompt.h"
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

}  // namespace

void LayoutToolbar()
{
}

void RunCommand(int id, LPARAM)
{
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
        if (thePuzzle.made)
            thePuzzle.addTray(0);
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
    default:  // help comes later; recent-file IDs only run the closing steps
        break;
    }

    UpdateCommandStates();
    SetCursor(previous);
}

INT_PTR CALLBACK ToolbarDialogProc(HWND, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        return TRUE;
    case WM_COMMAND:
        RunCommand(LOWORD(wParam), lParam);
        return TRUE;
    default:
        return FALSE;
    }
}
