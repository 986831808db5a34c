#include "tests/support/play_helpers.h"

#include "app/app_state.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "tests/support/game_session.h"

namespace play {

void Table::SetUp()
{
    session::makePuzzle(400, 300, 8, 6);
    session::moveFreePiecesTo(20, 560);
}

void Table::TearDown()
{
    session::end();
}

void placeCell(int p, int x, int y)
{
    const RECT cell = session::cellOf(p);
    Piece& piece = thePuzzle.pieces[p];
    piece.moveTo(piece.x + x - cell.left, piece.y + y - cell.top, false);
    thePuzzle.raiseToTop(p);
    // The board shows the model, as it always does in play.
    thePuzzle.repaintRect(RECT{0, 0, thePuzzle.boardWidth, thePuzzle.boardHeight}, 0, nullptr);
}

void pickUp(int p)
{
    // Bring it up from any pile first, so that the press finds it.
    if (!thePuzzle.pieces[p].isSet)
        thePuzzle.raiseToTop(p);
    const RECT cell = session::cellOf(p);
    handleClick(thePuzzle.pieces[p].window,
                session::at((cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2));
}

void moveBy(int dx, int dy)
{
    handleMouseMove(thePuzzle.pieces[dragState.draggedPiece].window,
                    session::at(thePuzzle.dragLastX + dx, thePuzzle.dragLastY + dy));
}

void drop()
{
    handleClick(thePuzzle.pieces[dragState.draggedPiece].window,
                session::at(thePuzzle.dragLastX, thePuzzle.dragLastY));
}

void dropIn(HWND window, int x, int y)
{
    handleClick(window, session::at(x, y));
}

void carryCellTo(int p, int x, int y)
{
    pickUp(p);
    const RECT cell = session::cellOf(p);
    moveBy(x - cell.left, y - cell.top);
    drop();
}

Snapshot boardImage()
{
    return Snapshot(appState.boardDC, 0, 0, thePuzzle.boardWidth, thePuzzle.boardHeight);
}

Snapshot freshBoardImage()
{
    thePuzzle.repaintRect(RECT{0, 0, thePuzzle.boardWidth, thePuzzle.boardHeight}, 0, nullptr);
    return boardImage();
}

bool boardIsAsRepainted()
{
    const Snapshot before = boardImage();
    return before == freshBoardImage();
}

}  // namespace play
