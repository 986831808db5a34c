// Shuffling and showing hidden pieces, and whole sessions without GDI leaks.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "app/app_state.h"
#include "app/history.h"
#include "app/commands.h"
#include "files/picture.h"
#include "model/gdi_objects.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "play/tray.h"
#include "resources/resource.h"
#include "tests/support/game_session.h"
#include "tests/support/play_helpers.h"

using play::placeCell;
using session::cellOf;

namespace {

class Commands : public ::testing::Test {
protected:
    void TearDown() override { session::end(); }
};

}  // namespace

TEST_F(Commands, ShuffleMovesOnlyLooseBoardPiecesAndNeverRepeatsItself)
{
    session::makePuzzle(400, 300, 4, 3, 31, Rectangular);
    placeCell(0, 600, 450);
    play::carryCellTo(1, 700, 450);                                          // 0 and 1 grouped
    play::carryCellTo(5, thePuzzle.originX + 100, thePuzzle.originY + 100);  // set
    thePuzzle.addTray(0);
    thePuzzle.moveToWindow(7, thePuzzle.firstTray->window, thePuzzle.firstTray->imageDC, 1);
    const int kept[] = {0, 1, 5, 7};
    std::vector<POINT> before;
    for (int p = 0; p < thePuzzle.pieceCount; ++p)
        before.push_back(POINT{thePuzzle.pieces[p].x, thePuzzle.pieces[p].y});

    std::vector<std::vector<POINT>> rounds(2);
    for (auto& places : rounds) {
        RouteCommand(session::mainWindow(), IDM_SHUFFLE, 0);
        for (int p = 0; p < thePuzzle.pieceCount; ++p)
            places.push_back(POINT{thePuzzle.pieces[p].x, thePuzzle.pieces[p].y});
    }

    int repeated = 0;  // a generator seeded again would put pieces where they were
    for (int p = 0; p < thePuzzle.pieceCount; ++p) {
        const POINT& first = rounds[0][p];
        const POINT& place = rounds[1][p];
        if (std::find(std::begin(kept), std::end(kept), p) != std::end(kept)) {
            EXPECT_EQ(before[p].x, place.x) << "kept piece " << p;
            EXPECT_EQ(before[p].y, place.y) << "kept piece " << p;
            continue;
        }
        repeated += first.x == place.x && first.y == place.y;
        EXPECT_TRUE(place.x >= thePuzzle.previewX + thePuzzle.previewWidth ||
                    place.y >= thePuzzle.previewY + thePuzzle.previewHeight);
    }
    EXPECT_EQ(0, repeated);
}

TEST_F(Commands, ShowHiddenPiecesPutsSetPiecesUnderTheFreeOnes)
{
    session::makePuzzle(400, 300, 4, 3, 31, Rectangular);
    thePuzzle.raiseToTop(4);
    const std::vector<int> unset(thePuzzle.zOrder, thePuzzle.zOrder + 12);
    thePuzzle.showHiddenPieces();  // without set pieces nothing changes
    EXPECT_EQ(unset, std::vector<int>(thePuzzle.zOrder, thePuzzle.zOrder + 12));

    play::carryCellTo(1, thePuzzle.originX + 100, thePuzzle.originY);
    play::carryCellTo(6, thePuzzle.originX + 200, thePuzzle.originY + 100);
    ASSERT_TRUE(thePuzzle.pieces[1].isSet && thePuzzle.pieces[6].isSet);
    std::vector<int> freeOrder;
    for (int z = 0; z < thePuzzle.pieceCount; ++z) {
        if (!thePuzzle.pieces[thePuzzle.zOrder[z]].isSet)
            freeOrder.push_back(thePuzzle.zOrder[z]);
    }
    std::vector<POINT> places;
    for (int p = 0; p < thePuzzle.pieceCount; ++p)
        places.push_back(POINT{thePuzzle.pieces[p].x, thePuzzle.pieces[p].y});

    RouteCommand(session::mainWindow(), IDM_SHOW_HIDDEN, 0);
    EXPECT_EQ(6, thePuzzle.zOrder[0]);  // the highest index lowest
    EXPECT_EQ(1, thePuzzle.zOrder[1]);
    EXPECT_EQ(freeOrder, std::vector<int>(thePuzzle.zOrder + 2, thePuzzle.zOrder + 12));
    for (int p = 0; p < thePuzzle.pieceCount; ++p) {
        EXPECT_EQ(places[p].x, thePuzzle.pieces[p].x);
        EXPECT_EQ(places[p].y, thePuzzle.pieces[p].y);
    }
}

TEST_F(Commands, OutlineOptionsReachEveryPieceAndAreRepainted)
{
    session::makePuzzle(400, 300, 4, 3, 31, Knobbed);
    const bool outline = appState.drawOutline;
    RouteCommand(session::mainWindow(), IDM_DRAW_OUTLINE, 0);
    EXPECT_EQ(!outline, thePuzzle.drawOutline);
    for (int p = 0; p < thePuzzle.pieceCount; ++p)
        EXPECT_EQ(!outline, thePuzzle.pieces[p].drawOutline);
    EXPECT_EQ(!outline ? MF_CHECKED : MF_UNCHECKED,
              GetMenuState(appState.menu, IDM_DRAW_OUTLINE, MF_BYCOMMAND) & MF_CHECKED);
    EXPECT_TRUE(play::boardIsAsRepainted());
    RouteCommand(session::mainWindow(), IDM_DRAW_OUTLINE, 0);
    EXPECT_EQ(outline, thePuzzle.drawOutline);
}

TEST_F(Commands, PatternAndSoundRelabelTheirItems)
{
    session::makePuzzle(400, 300, 4, 3, 31, Knobbed);
    char text[64];
    RouteCommand(session::mainWindow(), IDM_PATTERN, 0);
    EXPECT_TRUE(thePuzzle.patternShown);
    GetMenuStringA(appState.menu, IDM_PATTERN, text, sizeof text, MF_BYCOMMAND);
    EXPECT_STREQ("Hide &Pattern", text);
    RouteCommand(session::mainWindow(), IDM_PATTERN, 0);
    GetMenuStringA(appState.menu, IDM_PATTERN, text, sizeof text, MF_BYCOMMAND);
    EXPECT_STREQ("Show &Pattern", text);

    const bool sound = appState.soundOn;
    RouteCommand(session::mainWindow(), IDM_SOUND, 0);
    EXPECT_EQ(!sound, appState.soundOn);
    GetMenuStringA(appState.menu, IDM_SOUND, text, sizeof text, MF_BYCOMMAND);
    EXPECT_STREQ(appState.soundOn ? "Sound &Off" : "Sound &On", text);
    appState.soundOn = false;
}

TEST_F(Commands, ShrinkingTheWindowBringsLooseItemsBackAndGrowingShowsADrawnBoard)
{
    session::makePuzzle(400, 300, 4, 3, 31, Rectangular);
    placeCell(0, 600, 450);
    play::carryCellTo(1, 700, 450);  // 0 and 1 grouped
    placeCell(2, 850, 600);
    placeCell(3, 60, 200);
    const POINT kept{thePuzzle.pieces[3].x, thePuzzle.pieces[3].y};

    HWND window = session::mainWindow();
    RECT full;
    GetWindowRect(window, &full);
    SetWindowPos(window, nullptr, 0, 0, 520, 420, SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
    RECT client;
    GetClientRect(window, &client);
    const RECT view{0, appState.paintOriginY, client.right, client.bottom};
    for (int p = 0; p < thePuzzle.pieceCount; ++p) {
        const Piece& piece = thePuzzle.pieces[p];
        RECT box = piece.getBounds(true, false, false), shown;
        if (!piece.isSet) {
            EXPECT_TRUE(IntersectRect(&shown, &box, &view)) << "piece " << p;
        }
    }
    EXPECT_EQ(100, thePuzzle.pieces[1].x - thePuzzle.pieces[0].x);  // the group moved whole
    EXPECT_EQ(kept.x, thePuzzle.pieces[3].x);                       // a piece in view stays
    EXPECT_EQ(kept.y, thePuzzle.pieces[3].y);

    // Back to full size, a piece dropped at the far right is drawn and kept.
    SetWindowPos(window, nullptr, 0, 0, full.right - full.left, full.bottom - full.top,
                 SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
    play::carryCellTo(2, appState.boardImageWidth - 120, 500);
    EXPECT_TRUE(play::boardIsAsRepainted());
    int p = -1;
    EXPECT_TRUE(thePuzzle.pieceAt(window, appState.boardImageWidth - 70, 550, p));
    EXPECT_EQ(2, p);
}

TEST_F(Commands, APlayedSessionLeaksNoGdiObject)
{
    session::makePuzzle(400, 300, 8, 6);
    session::end();
    const long before = gdi::liveObjects();

    session::makePuzzle(400, 300, 8, 6);
    session::moveFreePiecesTo(20, 560);
    placeCell(9, 600, 450);
    play::carryCellTo(10, 652, 451);                                          // a join
    play::carryCellTo(17, 601, 503);                                          // another
    play::carryCellTo(30, thePuzzle.originX + 300, thePuzzle.originY + 150);  // set
    HWND window = nullptr;
    thePuzzle.addTray(0, &window);
    thePuzzle.addTray(0);
    play::pickUp(11);
    play::moveBy(-300, 20);
    play::dropIn(window, 5, 5);
    SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);  // refused: it holds a piece
    RouteCommand(session::mainWindow(), IDM_DRAW_OUTLINE, 0);
    RouteCommand(session::mainWindow(), IDM_DRAW_OUTLINE, 0);
    RouteCommand(session::mainWindow(), IDM_PATTERN, 0);
    play::pickUp(9);  // the group
    play::moveBy(40, -30);
    RouteCommand(session::mainWindow(), IDM_ADD_TRAY, 0);  // ends the drag first
    session::end();

    EXPECT_EQ(before, gdi::liveObjects());
}

TEST(AutoPuzzlePath, NamesThePuzzleFileAfterThePicture)
{
    char path[MAX_PATH];
    AutoPuzzlePath("C:\\Game\\Puz", "C:\\Pics\\cat.small.jpg", ".fpp", path);
    EXPECT_STREQ("C:\\Game\\Puz\\cat.fpp", path);
    AutoPuzzlePath("C:\\Game\\Puz", "C:\\Pics\\dog", ".fpp", path);
    EXPECT_STREQ("C:\\Game\\Puz\\dog.fpp", path);
    AutoPuzzlePath("C:\\Game\\Puz", "", ".fpp", path);
    EXPECT_STREQ("C:\\Game\\Puz\\.fpp", path);
}
