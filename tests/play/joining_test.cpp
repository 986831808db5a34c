// Dropping pieces and groups next to their neighbours and at their correct place.
#include <gtest/gtest.h>

#include <vector>

#include "model/puzzle.h"
#include "play/drag.h"
#include "play/piece_group.h"
#include "play/sounds.h"
#include "app/app_state.h"
#include "resources/resource.h"
#include "tests/support/game_session.h"
#include "tests/support/play_helpers.h"

using play::carryCellTo;
using play::placeCell;
using play::sameRect;
using session::cellOf;

namespace {

class Joining : public play::Table {
protected:
    bool together(int a, int b) const
    {
        const Piece& pa = thePuzzle.pieces[a];
        const Piece& pb = thePuzzle.pieces[b];
        return pa.isGrouped && pb.isGrouped && pa.groupId == pb.groupId;
    }
    PieceGroup& groupOf(int p)
    {
        EXPECT_TRUE(thePuzzle.findGroup(thePuzzle.pieces[p].groupId, false));
        return *thePuzzle.foundGroup;
    }
};

constexpr int X = play::TableX, Y = play::TableY;

}  // namespace

TEST_F(Joining, FourPixelsJoinFiveDoNotOnEitherAxis)
{
    const struct {
        int dx, dy;
        bool joins;
    } drops[] = {{4, 0, true},  {0, 4, true},  {-4, 0, true},  {0, -4, true}, {4, 4, true},
                 {5, 0, false}, {0, 5, false}, {-5, 0, false}, {0, -5, false}};
    for (const auto& d : drops) {
        SCOPED_TRACE(testing::Message() << d.dx << "," << d.dy);
        SetUp();
        placeCell(8, X, Y);                       // the left neighbour of piece 9
        carryCellTo(9, X + 50 + d.dx, Y + d.dy);  // 9 belongs right of it
        EXPECT_EQ(d.joins, together(8, 9));
        if (d.joins) {  // snapped: the cells meet without gap or overlap
            EXPECT_EQ(X + 50, cellOf(9).left);
            EXPECT_EQ(Y, cellOf(9).top);
            EXPECT_EQ(1, thePuzzle.groupCount);
        } else {
            EXPECT_EQ(X + 50 + d.dx, cellOf(9).left);
        }
        session::end();
    }
}

TEST_F(Joining, NeighboursAreTriedUpDownLeftRight)
{
    placeCell(1, X + 50, Y - 50);  // the piece above 9
    placeCell(8, X, Y);            // the piece left of 9
    carryCellTo(9, X + 52, Y + 2);
    EXPECT_TRUE(together(9, 1));
    EXPECT_FALSE(thePuzzle.pieces[8].isGrouped);
}

TEST_F(Joining, ADroppedGroupAbsorbsTheRestingOneWhichKeepsItsPlace)
{
    placeCell(9, X - 120, Y);
    carryCellTo(10, X - 70, Y);  // group of 9, 10
    placeCell(11, X + 60, Y + 30);
    carryCellTo(12, X + 110, Y + 30);  // group of 11, 12
    ASSERT_EQ(2, thePuzzle.groupCount);
    const int dropped = thePuzzle.pieces[9].groupId;
    const RECT resting11 = cellOf(11), resting12 = cellOf(12);

    // Carry the first group so that 10 comes within 3 pixels of 11.
    play::pickUp(9);
    play::moveBy(X + 60 - 50 - 3 - cellOf(10).left, Y + 30 + 2 - cellOf(10).top);
    play::drop();

    EXPECT_EQ(1, thePuzzle.groupCount);
    for (int p : {9, 10, 11, 12})
        EXPECT_EQ(dropped, thePuzzle.pieces[p].groupId) << p;
    EXPECT_TRUE(sameRect(resting11, cellOf(11)));
    EXPECT_TRUE(sameRect(resting12, cellOf(12)));
    EXPECT_EQ(cellOf(11).left, cellOf(10).right);
    EXPECT_EQ(cellOf(11).top, cellOf(10).top);
    EXPECT_EQ(4, groupOf(9).members.count);
}

// After joins from every side, the group's outline is the union of its members' outlines
// where they lie, pixel for pixel, also when the group grew to the left and upwards.
TEST_F(Joining, AGroupsOutlineIsTheUnionOfItsMembers)
{
    const int cx = X - 100, cy = Y - 60;
    placeCell(18, cx, cy);
    const int order[][3] = {{19, 50, 0},   {17, -50, 0}, {10, 0, -50},  {26, 0, 50},
                            {9, -50, -50}, {27, 50, 50}, {11, 50, -50}, {25, -50, 50}};
    for (const auto& step : order) {
        carryCellTo(step[0], cx + step[1] + 2, cy + step[2] - 1);
        ASSERT_TRUE(together(18, step[0])) << step[0];
        PieceGroup& group = groupOf(18);
        RECT united{0, 0, 0, 0};
        std::vector<int> members(group.members.count);
        group.members.copyTo(members.data());
        for (int m : members) {
            const RECT box = thePuzzle.pieces[m].getBounds(true, false, false);
            UnionRect(&united, &united, &box);
        }
        ASSERT_TRUE(EqualRect(&united, &group.bounds));
        ASSERT_EQ(group.x, group.bounds.left);
        ASSERT_EQ(group.y, group.bounds.top);
        for (int py = group.bounds.top - 2; py < group.bounds.bottom + 2; ++py) {
            for (int px = group.bounds.left - 2; px < group.bounds.right + 2; ++px) {
                bool inMember = false;
                for (int m : members) {
                    const Piece& piece = thePuzzle.pieces[m];
                    inMember |= PtInRegion(piece.region, px - piece.x, py - piece.y) != FALSE;
                }
                ASSERT_EQ(inMember, PtInRegion(group.region, px - group.x, py - group.y) != FALSE)
                    << "after " << step[0] << " at " << px << "," << py;
            }
        }
    }
    EXPECT_EQ(9, groupOf(18).members.count);
}

TEST_F(Joining, ADropNearHomeSetsThePiece)
{
    const Piece& piece = thePuzzle.pieces[9];
    const int homeCellX = thePuzzle.originX + 50, homeCellY = thePuzzle.originY + 50;
    carryCellTo(9, homeCellX + 4, homeCellY - 4);
    EXPECT_TRUE(piece.isSet);
    EXPECT_EQ(piece.homeX, piece.x);
    EXPECT_EQ(piece.homeY, piece.y);
    // A set piece can no longer be picked up.
    play::pickUp(9);
    EXPECT_FALSE(dragState.dragging);
}

TEST_F(Joining, AGroupDroppedNearHomeIsSetAsAWhole)
{
    placeCell(8, X, Y);
    carryCellTo(9, X + 50, Y);
    ASSERT_TRUE(together(8, 9));
    const int homeCellX = thePuzzle.originX + 50, homeCellY = thePuzzle.originY + 50;
    play::pickUp(8);
    play::moveBy(homeCellX - 3 - cellOf(9).left, homeCellY + 2 - cellOf(9).top);
    play::drop();
    for (int p : {8, 9}) {
        const Piece& piece = thePuzzle.pieces[p];
        EXPECT_TRUE(piece.isSet) << p;
        EXPECT_FALSE(piece.isGrouped) << p;
        EXPECT_EQ(0, piece.groupId);
        EXPECT_EQ(piece.homeX, piece.x);
        EXPECT_EQ(piece.homeY, piece.y);
    }
    EXPECT_EQ(0, thePuzzle.groupCount);
}

TEST_F(Joining, AFreePieceNeverJoinsASetNeighbour)
{
    // 9 set at home; 10 dropped where it would touch 9 if 9's puzzle coordinates were taken
    // for window coordinates while the area is scrolled.
    carryCellTo(9, thePuzzle.originX + 50, thePuzzle.originY + 50);
    ASSERT_TRUE(thePuzzle.pieces[9].isSet);
    thePuzzle.scrollX = 40;
    carryCellTo(10, thePuzzle.originX + 100, thePuzzle.originY + 52);
    EXPECT_FALSE(thePuzzle.pieces[10].isGrouped);
    EXPECT_FALSE(thePuzzle.pieces[10].isSet);
    thePuzzle.scrollX = 0;
}

TEST_F(Joining, SoundsMarkPickUpsPlainDropsJoinsAndSetting)
{
    appState.soundOn = true;
    placeCell(8, X, Y);
    play::pickUp(9);
    EXPECT_EQ(IDW_CLICK, lastSoundPlayed());
    play::moveBy(0, -200);
    play::drop();  // neither set nor joined
    EXPECT_EQ(IDW_CLICK, lastSoundPlayed());
    carryCellTo(9, X + 52, Y);
    EXPECT_EQ(IDW_SNAP, lastSoundPlayed());
    carryCellTo(1, X - 300, Y - 200);
    carryCellTo(1, thePuzzle.originX + 50, thePuzzle.originY + 2);  // set at home
    EXPECT_EQ(IDW_SNAP, lastSoundPlayed());

    appState.soundOn = false;  // the option silences the next pick-up
    play::pickUp(2);
    EXPECT_EQ(IDW_SNAP, lastSoundPlayed());
    play::drop();
}

TEST(IndexList, KeepsOrderAndRemovesOnlyTheFirstMatch)
{
    IndexList list;
    EXPECT_FALSE(list.remove(3));
    for (int v : {4, 7, 4, 9})
        list.append(v);
    EXPECT_EQ(4, list.count);
    EXPECT_EQ(9, list.cursor->value);
    EXPECT_TRUE(list.remove(4));
    int values[3];
    list.copyTo(values);
    EXPECT_EQ(7, values[0]);
    EXPECT_EQ(4, values[1]);
    EXPECT_EQ(9, values[2]);
    EXPECT_TRUE(list.remove(9));
    EXPECT_EQ(4, list.tail->value);
    EXPECT_FALSE(list.remove(9));
    EXPECT_EQ(2, list.count);
}
