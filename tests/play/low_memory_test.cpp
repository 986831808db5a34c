// Memory that runs out part-way through a join, a drop into a tray, a new tray, a save or
// an open: every allocation fails in turn, and each time the player is told and the puzzle
// is as it was, or the action is done whole; the board shows the puzzle, and nothing leaks.
#include <gtest/gtest.h>

#include "app/app_state.h"
#include "app/history.h"
#include "files/puzzle_file.h"
#include "model/gdi_objects.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "play/tray.h"
#include "resources/resource.h"
#include "tests/support/allocations.h"
#include "tests/support/game.h"

namespace {

constexpr const char* LowResources =
    "System Error: Problems creating puzzle. System low in resources\n";

// A 400 x 300 puzzle of 8 x 6: pieces 9 and 10 joined at (600, 450), 17 and 18 (the row
// below) joined at (600, 250), a tray holding piece 30, and piece 11 alone at (300, 450).
HWND played()
{
    game::make(400, 300, 8, 6);
    for (int p = 0; p < thePuzzle.pieceCount; ++p)
        game::place(p, 20, 560);
    game::place(9, 600, 450);
    game::carry(10, 650, 450);
    game::place(17, 600, 250);
    game::carry(18, 650, 250);
    game::place(11, 300, 450);
    HWND tray = nullptr;
    thePuzzle.addTray(0, &tray);
    game::carryInto(30, tray, 10, 100);
    return tray;
}

// Runs steps up to the action, then the action with the n-th allocation failing, for every n
// of the first few and more and more sparsely after (an open makes hundreds), until the
// action no longer meets the failure.
void everyAllocationFailing(const std::function<void()>& steps, const std::function<void()>& action)
{
    played();
    steps();
    action();
    const std::vector<uint8_t> done = game::kept(false);
    game::end();
    const long objects = gdi::liveObjects();
    int failures = 0;
    for (long n = 0;; n += 1 + n / 4) {
        played();
        steps();
        const std::vector<uint8_t> before = game::kept(false);
        bool reached = false;
        const std::string said = game::answering([&] {
            allocations::failAfter(n);
            action();
            reached = allocations::stop();
        });
        if (!reached)
            break;
        ++failures;
        SCOPED_TRACE(testing::Message() << "allocation " << n << " failing: " << said);
        endDragInPlace();
        // Told, and nothing changed; or the failure was taken care of and the action done.
        if (said == LowResources)
            EXPECT_EQ(before, game::kept(false));
        else
            EXPECT_EQ(done, game::kept(false));
        EXPECT_TRUE(game::boardAsRepainted());
        game::end();
        EXPECT_EQ(objects, gdi::liveObjects());
        if (::testing::Test::HasFailure())
            return;
    }
    EXPECT_GT(failures, 0);
}

}  // namespace

TEST(LowMemory, AJoinOrADropIntoATrayHappensWholeOrNotAtAll)
{
    const struct {
        const char* what;
        std::function<void()> steps;
        std::function<void()> action;
    } drops[] = {
        // Piece 11 to the right of 10: a group gains a member.
        {"joining a group",
         [] {
             game::pickUp(11);
             game::moveBy(401, 2);
         },
         game::drop},
        // The group of 17 and 18 up against 9 and 10's bottom: two groups become one.
        {"two groups",
         [] {
             game::pickUp(17);
             game::moveBy(0, 252);
         },
         game::drop},
        // Piece 11 over the tray.
        {"into a tray", [] { game::pickUp(11); },
         [] { game::dropIn(thePuzzle.firstTray->window, 30, 300); }},
        // Piece 30 out of the tray onto the board.
        {"out of a tray", [] { game::pickUp(30); },
         [] { game::dropIn(thePuzzle.mainWindow, 500, 300); }},
    };
    for (const auto& drop : drops) {
        SCOPED_TRACE(drop.what);
        everyAllocationFailing(drop.steps, drop.action);
    }
}

TEST(LowMemory, ANewTrayASaveAndAnOpenChangeNothingWhenTheyFail)
{
    const std::string path = game::folder() + "\\low-memory.fpp";
    played();
    lstrcpyA(thePuzzle.puzzlePath, path.c_str());
    ASSERT_TRUE(writePuzzleFile());
    everyAllocationFailing([] {}, [] { game::command(IDM_ADD_TRAY); });
    everyAllocationFailing([&] { lstrcpyA(thePuzzle.puzzlePath, path.c_str()); },
                           [] { game::command(IDM_SAVE_PUZZLE); });
    // The file opened from the recent puzzles over the same puzzle played on.
    AddRecent(appState.recent[RecentPuzzles], path.c_str(), RecentPuzzles);
    everyAllocationFailing([] { game::carry(11, 100, 300); },
                           [] { game::command(IDM_RECENT_PUZZLE_FIRST); });
}
