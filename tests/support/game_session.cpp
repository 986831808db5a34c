#include "tests/support/game_session.h"

#include <cstdlib>

#include "app/app_state.h"
#include "app/main_window.h"
#include "app/make_command.h"
#include "app/settings.h"
#include "files/make_parameters.h"
#include "files/picture.h"
#include "model/puzzle.h"
#include "play/drag.h"

namespace session {

HWND mainWindow()
{
    static HWND window = nullptr;
    if (!window) {
        HINSTANCE instance = GetModuleHandleA(nullptr);
        appState.instance = instance;
        RedirectSettings(TestSettingsKey);
        // English, and no language dialog to wait for an answer.
        char* options = NewSettingsKey("\\Options");
        CreateSettingsKey(options);
        WriteSetting(options, "TextLanguage", "0");
        WriteSetting(options, "SupLangDlg", "1");
        free(options);
        RegisterWindowClasses(instance);
        window = CreateMainWindow(instance);
        appState.soundOn = false;  // tests are quiet
    }
    return window;
}

std::string picture(const char* name)
{
    return std::string(TEST_PICTURE_DIR) + "\\" + name;
}

void makePuzzle(int w, int h, int columns, int rows, unsigned seed, int shapeMode,
                const char* pictureName)
{
    mainWindow();
    end();
    const std::string path = picture(pictureName);
    if (path != loadedPicturePath)
        thePicture.loadPreview(path.c_str());
    makeParameters.width = w;
    makeParameters.height = h;
    makeParameters.columns = columns;
    makeParameters.rows = rows;
    makeParameters.shapeMode = shapeMode;
    appState.pictureLoaded = true;
    MakeInputs inputs = gatherMakeInputs();
    inputs.seed = seed;
    thePuzzle.makePuzzle(inputs);
}

void end()
{
    endDragInPlace();
    thePuzzle.clear();
}

void moveFreePiecesTo(int x, int y)
{
    for (int p = 0; p < thePuzzle.pieceCount; ++p) {
        Piece& piece = thePuzzle.pieces[p];
        if (!piece.isSet && piece.trayId == 0 && !piece.isGrouped)
            piece.moveTo(x, y, false);
    }
    thePuzzle.repaintRect(RECT{0, 0, thePuzzle.boardWidth, thePuzzle.boardHeight}, 0, nullptr);
}

RECT cellOf(int p)
{
    return thePuzzle.pieces[p].getBounds(true, true, false);
}

}  // namespace session
