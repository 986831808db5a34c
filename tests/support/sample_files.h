#pragma once
// Small files as the writers produce them, for the format tests and the fuzzers' seeds.
#include <vector>

#include "files/collection_format.h"
#include "files/puzzle_format.h"

namespace samples {

// A 2 x 2 knobbed puzzle of 200 x 160 pixels from "C:\cat.jpg": piece 0 set, pieces 1 and
// 3 joined; with trays, piece 2 and the group lie in tray 2.
inline fileformat::PuzzleFileContents puzzle(bool withTrayAndGroup)
{
    using namespace fileformat;
    PuzzleFileContents c;
    c.hasPuzzle = true;
    c.header = PuzzleFileHeader{204, 153, 200, 160, 0, 0, 0, 0, 2, 2, 2, 0, 0, 1};
    c.picturePath = "C:\\cat.jpg";
    const int knob = 160 / 2 / 8;
    // (top, bottom, right, left) of each piece, matching across the inner sides.
    const int kinds[4][4] = {{0, 1, 2, 0}, {0, 2, 0, 1}, {2, 0, 1, 0}, {1, 0, 0, 2}};
    for (int i = 0; i < 4; ++i) {
        c.pieces.push_back(PieceRecord{20 + 110 * i, 300 - 7 * i, (i + 2) % 4, knob, kinds[i][0],
                                       kinds[i][1], kinds[i][2], kinds[i][3]});
    }
    c.pieces[0] = PieceRecord{204, 153, 2, knob, 0, 1, 2, 0, 0, 0, 1};  // set at home
    if (withTrayAndGroup) {
        c.header.lastTrayId = 2;
        c.header.lastGroupId = 3;
        c.trays.push_back(
            TrayRecord{2, 5, 180, 100, 400, {44, 0, 1, -1, -1, -1, -1, 0, 140, 110, 560}});
        c.groups.push_back(GroupRecord{3, 10, 20, 200, 90, 2});
        for (int i : {1, 3})
            c.pieces[i].isGrouped = 1, c.pieces[i].groupId = 3, c.pieces[i].trayId = 2;
        // Joined, piece 3 lies below piece 1 as their homes do: 1's left tab puts its home
        // 20 pixels left of its cell, 3's top tab 20 pixels above its own.
        c.pieces[3].x = c.pieces[1].x + 20;
        c.pieces[3].y = c.pieces[1].y + 60;
        c.pieces[2].trayId = 2;
    }
    return c;
}

// Two entries with paths of 12 and 20 characters, the first taking the picture's own size.
inline std::vector<fileformat::CollectionFileEntry> collection()
{
    return {{"C:\\pic\\a.jpg", 640, 480, true, 8, 6},
            {"C:\\pics\\mountain.gif", 1200, 800, false, 30, 20}};
}

}  // namespace samples
