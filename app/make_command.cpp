#include "app/make_command.h"

#include "app/app_state.h"
#include "files/make_parameters.h"
#include "files/picture.h"
#include "model/puzzle.h"

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

void makeCommand()
{
    // The board image exists once a picture has been shown.
    if (appState.boardDC)
        thePuzzle.makePuzzle(gatherMakeInputs());
}
