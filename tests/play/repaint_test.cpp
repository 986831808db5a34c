// The repaint that draws only what is not hidden under higher pieces gives, pixel for pixel,
// what drawing every piece back to front gives, on boards with groups, set pieces, trays,
// the pattern and both outline options.
#include <gtest/gtest.h>

#include <random>

#include "model/puzzle.h"
#include "play/tray.h"
#include "tests/support/game_session.h"
#include "tests/support/play_helpers.h"

namespace {

bool isSet(const Puzzle& z, int p)
{
    return p >= 0 && z.pieces[p].isSet;
}

// The background as the repaint paints it, then every piece of the window, lowest first.
void plainRepaint(Puzzle& z, HDC target, const RECT& rect, int trayId)
{
    BitBlt(target, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, nullptr, 0,
           0, WHITENESS);
    if (trayId == 0) {
        BitBlt(target, z.previewX, z.previewY, z.previewWidth, z.previewHeight, z.previewDC, 0, 0,
               SRCCOPY);
        BitBlt(target, z.originX, z.originY, z.visibleWidth, z.visibleHeight, z.backgroundDC,
               z.originX, z.originY, SRCCOPY);
    }
    const RECT visible = z.getPuzzleArea(true);
    for (int i = 0; i < z.pieceCount; ++i) {
        const int p = z.zOrder[i];
        Piece& piece = z.pieces[p];
        if (!piece.isVisible || piece.trayId != trayId)
            continue;
        RECT bounds = piece.getBounds(true, false, false), clip = rect, part;
        int dx = 0, dy = 0;
        if (piece.isSet) {
            if (!IntersectRect(&bounds, &bounds, &visible))
                continue;
            OffsetRect(&clip, z.scrollX, z.scrollY);
            dx = z.scrollX;
            dy = z.scrollY;
        }
        if (!IntersectRect(&part, &bounds, &clip))
            continue;
        if (piece.isGrouped)
            z.drawGroup(part, p);
        else
            piece.draw(part, dx, dy, isSet(z, piece.neighbourUp), isSet(z, piece.neighbourDown),
                       isSet(z, piece.neighbourLeft), isSet(z, piece.neighbourRight));
    }
}

void expectSameAsPlain(Puzzle& z, HDC image, const RECT& rect, int trayId)
{
    z.repaintRect(rect, trayId, nullptr);
    const int w = rect.right - rect.left, h = rect.bottom - rect.top;
    const Snapshot fast(image, rect.left, rect.top, w, h);
    plainRepaint(z, image, rect, trayId);
    EXPECT_TRUE(fast == Snapshot(image, rect.left, rect.top, w, h))
        << "rect " << rect.left << "," << rect.top << " " << w << "x" << h << " of window "
        << trayId;
}

}  // namespace

TEST(Repaint, DrawsWhatEveryPieceBackToFrontDraws)
{
    for (unsigned seed = 1; seed <= 4; ++seed) {
        std::mt19937 random(seed);
        auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
        session::makePuzzle(400, 300, 8, 6, seed);
        Puzzle& z = thePuzzle;
        // Piles over the puzzle area and beside it, two pairs joined, two pieces set.
        for (int i = 0; i < 20; ++i)
            play::placeCell(8 + below(40), 150 + below(700), 60 + below(550));
        play::placeCell(2, 700, 500);
        play::carryCellTo(3, 750, 500);
        play::placeCell(40, 300, 600);
        play::carryCellTo(41, 300 + 50, 600);
        play::carryCellTo(9, z.originX + 50, z.originY + 50);
        play::carryCellTo(10, z.originX + 100, z.originY + 50);
        HWND window = nullptr;
        const int tray = z.addTray(0, &window);
        z.findTray(tray, true);
        for (int p : {20, 21, 22}) {
            z.findTray(tray, true);
            z.moveToWindow(p, window, z.currentTray->imageDC, tray);
        }
        z.applyOutlineOptions(seed % 2 == 0, seed % 3 == 0);
        z.refreshPattern(seed >= 3);
        if (seed == 4) {  // everything loose moves at once, and the order changes
            z.shufflePieces();
            z.showHiddenPieces();
        }

        const RECT board{0, z.boardTop, z.boardWidth, z.boardHeight};
        expectSameAsPlain(z, z.boardDC, board, 0);
        for (int i = 0; i < 6; ++i) {
            const int left = below(900), top = z.boardTop + below(550);
            expectSameAsPlain(z, z.boardDC,
                              RECT{left, top, left + 20 + below(300), top + 20 + below(200)}, 0);
        }
        z.findTray(tray, true);
        RECT client;
        GetClientRect(window, &client);
        expectSameAsPlain(z, z.currentTray->imageDC, client, tray);
        session::end();
    }
}
