#include "app/make_command.h"

#include <new>

#include "app/app_state.h"
#include "app/make_progress.h"
#include "files/make_parameters.h"
#include "files/message.h"
#include "files/picture.h"
#include "model/puzzle.h"
#include "resources/resource.h"

MakeInputs gatherMakeInputs()
{
    MakeInputs in{};
    in.picturePath = loadedPicturePath;
    in.width = makeParameters.width;
    in.height = makeParameters.height;
    in.columns = makeParameters.columns;
    in.rows = makeParameters.rows;
    in.shapeMode = makeParameters.shapeMode;
    in.drawOutline = appState.drawOutline;
    in.drawSetOutline = appState.drawSetOutline;
    in.mainWindow = appState.mainWindow;
    in.instance = appState.instance;
    in.boardLeft = appState.paintOriginX;
    in.boardTop = appState.paintOriginY;
    in.boardImageWidth = appState.boardImageWidth;
    in.boardImageHeight = appState.boardImageHeight;
    in.originX = appState.areaOriginX;
    in.originY = appState.areaOriginY;
    in.areaWidth = appState.areaWidth;
    in.areaHeight = appState.areaHeight;
    in.hScrollBar = appState.hScrollBar;
    in.vScrollBar = appState.vScrollBar;
    in.boardDC = appState.boardDC;
    in.backgroundDC = appState.backgroundDC;
    in.windowDC = appState.windowDC;
    in.picture = &thePicture;
    return in;
}

MakeResult makeWithProgress()
{
    // The board image exists once a picture has been shown.
    if (!appState.boardDC)
        return MakeResult::LowResources;
    HCURSOR before = SetCursor(appState.waitCursor);
    beginMakeProgress();
    thePuzzle.makeProgress = reportMakeProgress;
    MakeResult result = MakeResult::LowResources;
    try {
        result = thePuzzle.makePuzzle(gatherMakeInputs());
    } catch (const std::bad_alloc&) {
        // Cut part-way: no half-made puzzle is left to play.
        thePuzzle.clear();
    }
    thePuzzle.makeProgress = nullptr;
    endMakeProgress();
    SetCursor(before);
    return result;
}

void makeCommand()
{
    if (!appState.boardDC)
        return;
    const MakeResult result = makeWithProgress();
    if (result != MakeResult::Made)
        showMessage(appState.instance, appState.mainWindow,
                    result == MakeResult::TooLarge ? IDS_PUZZLE_TOO_LARGE : IDS_LOW_RESOURCES,
                    IDS_SYSTEM_ERROR, MB_OK);
}
