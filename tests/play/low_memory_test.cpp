// Memory that runs out part-way through an action: every allocation fails in turn, and each
// time the player is told and nothing changed, or the action is done whole; nothing leaks.
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

// 9 and 10 joined, 17 and 18 joined below them, 11 alone, and a tray holding 30.
void played()
{
    game::table();
    game::place(9, 600, 450);
    game::carry(10, 650, 450);
    game::place(17, 600, 250);
    game::carry(18, 650, 250);
    game::place(11, 300, 450);
    thePuzzle.addTray(0);
    game::carryInto(30, thePuzzle.firstTray->window, 10, 100);
}

// Runs steps, then the action with the n-th allocation failing, for every n of the first
// few and sparser after (an open makes hundreds), until the action no longer meets it.
void everyAllocationFailing(const std::function<void()>& steps, const std::function<void()>& action)
{
    played();
    steps();
    action();
    const std::vector<uint8_t> done = game::kept(false);
    game::end();
    const long objects = gdi::liveObjects();
    long n = 0;
    for (;; n += 1 + n / 4) {
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
        SCOPED_TRACE(testing::Message() << "allocation " << n << " failing: " << said);
        endDragInPlace();
        // Told, and nothing changed; or the failure was taken care of and the action done.
        const bool told =
            said == "System Error: Problems creating puzzle. System low in resources\n";
        EXPECT_EQ(told ? before : done, game::kept(false));
        EXPECT_TRUE(game::boardAsRepainted());
        game::end();
        EXPECT_EQ(objects, gdi::liveObjects());
        if (::testing::Test::HasFailure())
            return;
    }
    EXPECT_GT(n, 0);
}

}  // namespace

TEST(LowMemory, EveryActionHappensWholeOrNotAtAll)
{
    // 11 joins 9 and 10 at their right, 17 and 18 join them from below, 11 goes into the
    // tray, and 30 comes out of it: the piece, moved by (dx, dy), dropped in the tray or not.
    const int drops[][4] = {{11, 401, 2, 0}, {17, 0, 252, 0}, {11, 0, 0, 1}, {30, 0, 0, 0}};
    for (const auto& drop : drops) {
        SCOPED_TRACE(testing::Message() << "piece " << drop[0]);
        everyAllocationFailing(
            [&] {
                game::pickUp(drop[0]);
                game::moveBy(drop[1], drop[2]);
            },
            [&] {
                game::dropIn(drop[3] ? thePuzzle.firstTray->window : thePuzzle.mainWindow, 5, 5);
            });
    }

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
