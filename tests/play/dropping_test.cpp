// Dropping pieces and groups: set at their correct place, or joined to a true neighbour
// lying within four pixels on both axes, from every side; at most one join a drop.
#include <gtest/gtest.h>

#include "model/puzzle.h"
#include "play/piece_group.h"
#include "tests/support/game.h"

namespace {

class Dropping : public ::testing::Test {
protected:
    static constexpr int X = 680, Y = 440;
    // Piece 18 of this cut has a socket on every side, and each neighbour dropped against it
    // a tab on the side it is measured from as well: every tab takes part in a snap.
    void SetUp() override { game::table(1); }
    void TearDown() override { game::end(); }
    // The cell of p at home, in main-window coordinates.
    static POINT home(int p)
    {
        const RECT at = game::cell(p);
        const Piece& piece = thePuzzle.pieces[p];
        return POINT{at.left + piece.homeX - piece.x, at.top + piece.homeY - piece.y};
    }
};

}  // namespace

TEST_F(Dropping, APieceJoinsANeighbourOnEverySideWithinFourPixels)
{
    // Piece 18 rests at the table; each neighbour is dropped where it belongs, off by (dx, dy).
    const struct {
        int neighbour, cellX, cellY;
    } sides[] = {{10, 0, -50}, {26, 0, 50}, {17, -50, 0}, {19, 50, 0}};
    const struct {
        int dx, dy;
    } offsets[] = {{4, 0}, {0, -4}, {-4, 4}, {5, 0}, {0, 5}, {-5, -1}, {3, -5}};
    for (const auto& side : sides) {
        for (const auto& off : offsets) {
            SCOPED_TRACE(testing::Message() << "neighbour " << side.neighbour << " off by "
                                            << off.dx << "," << off.dy);
            SetUp();
            game::place(18, X, Y);
            game::carry(side.neighbour, X + side.cellX + off.dx, Y + side.cellY + off.dy);
            const bool within = std::abs(off.dx) <= 4 && std::abs(off.dy) <= 4;
            ASSERT_EQ(within, game::joined(18, side.neighbour));
            // Snapped, the cells meet without gap or overlap; else it lies where dropped.
            const RECT at = game::cell(side.neighbour);
            EXPECT_EQ(X + side.cellX + (within ? 0 : off.dx), at.left);
            EXPECT_EQ(Y + side.cellY + (within ? 0 : off.dy), at.top);
            EXPECT_EQ(X, game::cell(18).left);  // the resting piece stays
        }
    }
}

TEST_F(Dropping, AGroupJoinsByAnyMemberAndAbsorbsTheRestingGroupWhichKeepsItsPlace)
{
    game::place(9, X - 120, Y);
    game::carry(10, X - 70, Y);  // 9 and 10
    game::place(12, X + 60, Y + 30);
    game::carry(11, X + 10, Y + 30);  // 11 and 12, 11 left of 12
    ASSERT_EQ(2, thePuzzle.groupCount);
    const RECT resting11 = game::cell(11), resting12 = game::cell(12);
    const int dropped = thePuzzle.pieces[9].groupId;

    // The first group, carried so that 10 comes within 3 pixels of 11's left.
    game::pickUp(9);
    game::moveBy(X + 10 - 50 - 3 - game::cell(10).left, Y + 30 + 2 - game::cell(10).top);
    game::drop();

    EXPECT_EQ(1, thePuzzle.groupCount);
    for (int p : {9, 10, 11, 12})
        EXPECT_EQ(dropped, thePuzzle.pieces[p].groupId) << p;
    EXPECT_TRUE(game::same(resting11, game::cell(11)) && game::same(resting12, game::cell(12)));
    EXPECT_EQ(game::cell(11).left, game::cell(10).right);
    ASSERT_TRUE(thePuzzle.findGroup(dropped, false));
    EXPECT_EQ(4, thePuzzle.foundGroup->members.count);

    // At most one join a drop: 13 between 12 and 14, both where it belongs; one side wins.
    game::place(14, game::cell(12).right + 50, Y + 30);
    game::carry(13, game::cell(12).right + 2, Y + 30);
    EXPECT_NE(game::joined(13, 12), game::joined(13, 14));
}

TEST_F(Dropping, APieceOrGroupWithinFourPixelsOfHomeIsSetThere)
{
    const struct {
        int dx, dy;
    } drops[] = {{4, -4}, {-4, 3}, {0, 4}, {5, 0}, {0, -5}, {-5, 5}};
    for (const auto& d : drops) {
        SCOPED_TRACE(testing::Message() << d.dx << "," << d.dy);
        SetUp();
        const POINT at = home(20);
        game::carry(20, at.x + d.dx, at.y + d.dy);
        const bool within = std::abs(d.dx) <= 4 && std::abs(d.dy) <= 4;
        const Piece& piece = thePuzzle.pieces[20];
        EXPECT_EQ(within, piece.isSet);
        int found = -1;  // set at home exactly, and never picked up again
        const RECT box = game::cell(20);
        EXPECT_TRUE(!within ||
                    (piece.x == piece.homeX && piece.y == piece.homeY &&
                     !thePuzzle.pieceAt(thePuzzle.mainWindow, box.left + 25, box.top + 25, found)));
    }

    // A group near home is set whole, and is a group no more.
    SetUp();
    game::place(27, X, Y);
    game::carry(28, X + 50, Y);
    const POINT at = home(27);
    game::pickUp(27);
    game::moveBy(at.x + 3 - X, at.y - 2 - Y);
    game::drop();
    for (int p : {27, 28})
        EXPECT_TRUE(thePuzzle.pieces[p].isSet && !thePuzzle.pieces[p].isGrouped) << p;
    EXPECT_EQ(0, thePuzzle.groupCount);
}

TEST_F(Dropping, NearHomeAPieceIsSetRatherThanJoined)
{
    // 10 lies free where it belongs: 9 dropped near home could join it, and is set instead.
    const POINT home10 = home(10);
    game::place(10, home10.x, home10.y);
    const POINT at = home(9);
    game::carry(9, at.x + 2, at.y - 1);
    EXPECT_TRUE(thePuzzle.pieces[9].isSet);
    EXPECT_EQ(0, thePuzzle.groupCount);
    // Between two set neighbours no line is left: the board is what a repaint draws.
    game::carry(10, home10.x - 1, home10.y + 2);
    EXPECT_TRUE(thePuzzle.pieces[10].isSet);
    EXPECT_TRUE(game::boardAsRepainted());
}
