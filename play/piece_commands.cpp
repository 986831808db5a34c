// Commands that rearrange the pieces: shuffling the loose ones and bringing hidden ones up.
#include "model/puzzle.h"

void Puzzle::shufflePieces()
{
    if (!made)
        return;
    // Set pieces, group members and pieces in trays keep their places. The generator goes
    // on from where generation left it.
    for (int p = 0; p < pieceCount; ++p) {
        Piece& piece = pieces[p];
        if (piece.isSet || piece.trayId != 0 || piece.isGrouped)
            continue;
        const POINT place = randomPosition(piece.width, piece.height);
        piece.moveTo(place.x, place.y, true);
    }
    repaintRect(RECT{boardLeft, boardTop, boardLeft + boardWidth, boardTop + boardHeight}, 0,
                mainWindow);
}

void Puzzle::showHiddenPieces()
{
    if (!made)
        return;
    // Every set piece goes below every free one; free pieces keep their order.
    for (int p = 0; p < pieceCount; ++p) {
        if (pieces[p].isSet)
            sendToBottom(p);
    }
    repaintRect(getPuzzleArea(false), 0, mainWindow);
}
