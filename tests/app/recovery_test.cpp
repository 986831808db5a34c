// The puzzle in play kept in a recovery file while it has unsaved changes, never during a
// carry and never over the player's own file, gone after a save, an open or a clean exit,
// and offered back after a sudden end: Yes restores it exactly, No discards it.
#include <gtest/gtest.h>

#include "app/app_state.h"
#include "app/autosave.h"
#include "files/puzzle_file.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "tests/support/game.h"

namespace {

struct Recovery : ::testing::Test {
    void SetUp() override
    {
        game::make(400, 300, 8, 6);
        kept = RecoveryPath();
        ASSERT_FALSE(kept.empty());
        player = game::folder() + "\\Puz\\mine.fpp";
        lstrcpyA(thePuzzle.puzzlePath, player.c_str());
        savePuzzleCommand(false);  // the player's own file; nothing unsaved
    }
    void TearDown() override { game::end(); }

    // A piece set, two joined, one in a tray: a puzzle in play with unsaved changes.
    void play()
    {
        const POINT home = game::home(0);
        game::carry(0, home.x, home.y);
        game::carry(10, 680, 440);
        game::carry(9, 628, 442);
        HWND tray = nullptr;
        thePuzzle.addTray(0, &tray);
        game::carryInto(20, tray, 10, 200);
    }

    std::string kept, player;
};

}  // namespace

TEST_F(Recovery, ASaveAnOpenOrACleanExitRemovesIt)
{
    const std::function<void()> ends[] = {
        [] { savePuzzleCommand(false); }, [this] { readPuzzleFile(player.c_str()); },
        [] { game::end(); },  // a puzzle no more: nothing to keep
    };
    for (const auto& end : ends) {
        play();
        ASSERT_TRUE(AutosaveNow());
        ASSERT_TRUE(game::exists(kept));
        end();
        OnAutosaveTimer();
        EXPECT_FALSE(game::exists(kept));
        SetUp();
    }
}

// The player's own file stays as they saved it throughout.
TEST_F(Recovery, KeptOutsideACarryAndAfterASuddenEndYesRestoresItAndNoDiscardsIt)
{
    const std::vector<uint8_t> mine = game::bytesOf(player);
    EXPECT_FALSE(game::exists(kept));
    play();
    game::pickUp(30);
    OnAutosaveTimer();  // the carry goes on undisturbed; the file waits for the drop
    EXPECT_TRUE(dragState.dragging);
    EXPECT_FALSE(game::exists(kept));
    game::drop();
    OnAutosaveTimer();
    ASSERT_TRUE(game::exists(kept));
    const std::vector<uint8_t> played = game::kept(false);
    const Snapshot board = game::board();
    const auto suddenEnd = [&, left = game::bytesOf(kept)] { game::write(kept, left); };
    thePuzzle.puzzlePath[0] = '\0';  // as in a new process: the name must come from the recovery

    EXPECT_EQ("Restore puzzle: ToviraPuzzle ended without closing while a puzzle was in "
              "play.\n\nDo you want to restore the puzzle as it was?\n",
              game::restart({"yes"}, suddenEnd));
    EXPECT_EQ(played, game::kept(false));
    EXPECT_TRUE(board == game::board());
    EXPECT_EQ(player, thePuzzle.puzzlePath);  // the next save goes to the player's file
    EXPECT_TRUE(HasUnsavedChanges());
    EXPECT_EQ(mine, game::bytesOf(player));

    game::restart({"no"}, suddenEnd);
    EXPECT_FALSE(thePuzzle.made);
    EXPECT_FALSE(game::exists(kept));
}
