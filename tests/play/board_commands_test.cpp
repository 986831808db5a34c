// The commands that rearrange the board: Shuffle, Show Hidden Pieces (which also brings back
// what lies out of view), the outline and pattern options, and a window shrunk and grown.
#include <gtest/gtest.h>

#include "app/app_state.h"
#include "model/puzzle.h"
#include "play/piece_group.h"
#include "play/tray.h"
#include "resources/resource.h"
#include "tests/support/game.h"

namespace {

std::vector<std::pair<int, int>> places()
{
    std::vector<std::pair<int, int>> at;
    for (int p = 0; p < thePuzzle.pieceCount; ++p)
        at.emplace_back(thePuzzle.pieces[p].x, thePuzzle.pieces[p].y);
    return at;
}

bool inView(int p)
{
    RECT box = thePuzzle.pieces[p].getBounds(true, false, false), view = thePuzzle.boardView(),
         shown;
    return IntersectRect(&shown, &box, &view) != FALSE;
}

// A 400 x 300 puzzle of 4 x 3: pieces 0 and 1 joined, 5 set, 7 in a tray.
class BoardCommands : public ::testing::Test {
protected:
    void SetUp() override
    {
        game::make(400, 300, 4, 3, 31, Rectangular);
        game::place(0, 600, 450);
        game::carry(1, 700, 450);
        game::carry(5, thePuzzle.originX + 100, thePuzzle.originY + 100);
        thePuzzle.addTray(0);
        game::carryInto(7, thePuzzle.firstTray->window, 10, 100);
    }
    void TearDown() override { game::end(); }
};

}  // namespace

TEST_F(BoardCommands, ShuffleMovesLoosePiecesAndShowHiddenPiecesPutsSetOnesUnderAndBringsBack)
{
    const auto before = places();
    game::command(IDM_SHUFFLE);
    const auto first = places();
    game::command(IDM_SHUFFLE);
    const auto second = places();
    for (int p = 0; p < thePuzzle.pieceCount; ++p) {
        const bool kept = p == 0 || p == 1 || p == 5 || p == 7;  // grouped, set, in a tray
        EXPECT_EQ(kept, before[p] == second[p]) << p;
        // Moved, where the generator goes on, and never over the preview.
        EXPECT_TRUE(kept || (first[p] != second[p] &&
                             (second[p].first >= thePuzzle.previewX + thePuzzle.previewWidth ||
                              second[p].second >= thePuzzle.previewY + thePuzzle.previewHeight)))
            << p;
    }
    EXPECT_TRUE(game::boardAsRepainted());

    game::carry(6, thePuzzle.originX + 200, thePuzzle.originY + 100);  // set as well
    thePuzzle.pieces[9].moveTo(5000, 3000, false);                     // out of view
    HWND tray = thePuzzle.firstTray->window;  // its caption just above the view, under the toolbar
    SetWindowPos(tray, nullptr, 100, thePuzzle.boardView().top - 5, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    // The set ones lowest, the higher index lowest, then the free ones in their order.
    std::vector<int> order{6, 5};
    for (int z = 0; z < thePuzzle.pieceCount; ++z) {
        if (!thePuzzle.pieces[thePuzzle.zOrder[z]].isSet)
            order.push_back(thePuzzle.zOrder[z]);
    }
    game::command(IDM_SHOW_HIDDEN);
    EXPECT_EQ(order, std::vector<int>(thePuzzle.zOrder, thePuzzle.zOrder + 12));
    for (int z = 0; z < thePuzzle.pieceCount; ++z)
        EXPECT_EQ(z, thePuzzle.pieces[thePuzzle.zOrder[z]].zIndex);
    const RECT view = thePuzzle.boardView();
    const RECT box = game::box(tray);
    EXPECT_TRUE(inView(9) && box.left >= view.left && box.top >= view.top &&
                box.bottom <= view.bottom);
}

TEST_F(BoardCommands, OptionsReachEveryPieceAndRelabelTheirItems)
{
    const bool outline = appState.drawOutline;
    game::command(IDM_DRAW_OUTLINE);
    for (int p = 0; p < thePuzzle.pieceCount; ++p)
        EXPECT_EQ(!outline, thePuzzle.pieces[p].drawOutline);
    EXPECT_EQ(!outline,
              (GetMenuState(appState.menu, IDM_DRAW_OUTLINE, MF_BYCOMMAND) & MF_CHECKED) != 0);
    EXPECT_TRUE(game::boardAsRepainted());
    game::command(IDM_DRAW_OUTLINE);

    // A new puzzle shows the pattern the menu says is shown (black where four cells meet);
    // hidden, the area is plain.
    char text[64];
    for (const char* label : {"Hide &Pattern", "Show &Pattern"}) {
        game::command(IDM_PATTERN);
        GetMenuStringA(appState.menu, IDM_PATTERN, text, sizeof text, MF_BYCOMMAND);
        EXPECT_STREQ(label, text);
        game::make(400, 300, 4, 3, 32, Knobbed);
        EXPECT_EQ(
            label[0] == 'H' ? RGB(0, 0, 0) : RGB(255, 255, 255),
            GetPixel(appState.backgroundDC, thePuzzle.originX + 100, thePuzzle.originY + 100));
    }
}

TEST_F(BoardCommands, AShrunkWindowBringsLooseItemsBackAndAGrownOneShowsADrawnBoard)
{
    game::place(2, 850, 600);
    game::place(3, 60, 200);
    game::place(7, 600, 500);  // in its tray, where the shrunk board shows nothing
    const auto before = places();
    HWND window = game::window();
    RECT full;
    GetWindowRect(window, &full);
    SetWindowPos(window, nullptr, 0, 0, 520, 420, SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
    for (int p = 0; p < thePuzzle.pieceCount; ++p)
        EXPECT_TRUE(thePuzzle.pieces[p].isSet || thePuzzle.pieces[p].trayId || inView(p)) << p;
    EXPECT_EQ(100, thePuzzle.pieces[1].x - thePuzzle.pieces[0].x);      // the group moved whole
    EXPECT_TRUE(before[3] == places()[3] && before[7] == places()[7]);  // in view; in a tray
    // Narrower than the group, the view shows the group's top-left.
    SetWindowPos(window, nullptr, 0, 0, 160, 420, SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
    EXPECT_EQ(thePuzzle.boardView().left, thePuzzle.firstGroup->x);
    SetWindowPos(window, nullptr, 0, 0, full.right - full.left, full.bottom - full.top,
                 SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
    game::carry(2, appState.boardImageWidth - 120, 500);
    EXPECT_TRUE(game::boardAsRepainted());
    int found = -1;
    EXPECT_TRUE(thePuzzle.pieceAt(window, appState.boardImageWidth - 70, 550, found) && found == 2);
}
