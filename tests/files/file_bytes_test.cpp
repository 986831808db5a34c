// The puzzle, collection and recovery files byte for byte, and every kind of damage, or of
// content play could not hold, that the readers refuse before anything is applied.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include "files/collection_format.h"
#include "files/puzzle_format.h"
#include "files/recovery_format.h"
#include "tests/support/sample_files.h"

using namespace fileformat;

namespace {

int32_t int32At(const std::vector<uint8_t>& bytes, size_t at)
{
    int32_t v;
    memcpy(&v, bytes.data() + at, 4);
    return v;
}

void putInt32(std::vector<uint8_t>& bytes, size_t at, int32_t v)
{
    memcpy(bytes.data() + at, &v, 4);
}

Decoded decode(const std::vector<uint8_t>& bytes)
{
    PuzzleFileContents read;
    return decodePuzzleFile(bytes.data(), bytes.size(), read);
}

constexpr size_t HeaderAt = VersionTagSize, PathAt = HeaderAt + HeaderSize;
constexpr size_t TrayAt = PathAt + 10, GroupAt = TrayAt + 68, PiecesAt = GroupAt + 24;

size_t pieceAt(int i)
{
    return PiecesAt + i * PieceRecordSize;
}

void expectHeader(const std::vector<uint8_t>& bytes, const std::vector<int32_t>& fields)
{
    for (size_t i = 0; i < fields.size(); ++i)
        EXPECT_EQ(fields[i], int32At(bytes, HeaderAt + 4 * i)) << "header field " << i;
}

}  // namespace

TEST(PuzzleFileBytes, LaidOutFieldByFieldAndReadBackTheSame)
{
    // A 2 x 2 puzzle with a 10-character path: 7 + 52 + 10 + 4 x 44 bytes; one tray and one
    // group add 68 and 24, trays first, right after the path.
    const PuzzleFileContents full = samples::puzzle(true);
    const std::vector<uint8_t> bytes = encodePuzzleFile(full);
    ASSERT_EQ(245u + 68 + 24, bytes.size());
    EXPECT_EQ(245u, encodePuzzleFile(samples::puzzle(false)).size());
    EXPECT_EQ(0, memcmp(bytes.data(), "v001.0\0", 7));
    expectHeader(bytes, {204, 153, 200, 160, 1, 1, 2, 3, 2, 2, 2, 10});
    // Never adjusted to the image in a puzzle file; outlined.
    EXPECT_TRUE(bytes[HeaderAt + 48] == 0 && bytes[HeaderAt + 49] == 1);
    EXPECT_EQ(0, memcmp(bytes.data() + PathAt, "C:\\cat.jpg", 10));
    // A tray's id and its placement's length; a group's id and its tray.
    EXPECT_TRUE(int32At(bytes, TrayAt) == 2 && int32At(bytes, TrayAt + TrayRecordSize) == 44);
    EXPECT_TRUE(int32At(bytes, GroupAt) == 3 && int32At(bytes, GroupAt + 20) == 2);
    // Piece 3: place, z, knob, the knobs in the order top, bottom, right, left, group, tray,
    // then the flags set, visible, grouped.
    const PieceRecord& r = full.pieces[3];
    const int32_t fields[] = {r.x,          r.y,         r.zIndex,   r.knobSize, r.knobTop,
                              r.knobBottom, r.knobRight, r.knobLeft, 3,          2};
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(fields[i], int32At(bytes, pieceAt(3) + 4 * i)) << "piece field " << i;
    EXPECT_EQ((std::vector<uint8_t>{0, 1, 1, 0}),
              std::vector<uint8_t>(bytes.begin() + pieceAt(3) + 40, bytes.begin() + pieceAt(4)));

    PuzzleFileContents read;
    std::vector<uint8_t> changed = bytes;
    changed[6] = 'x';  // the seventh byte is not examined
    ASSERT_EQ(Decoded::Ok, decodePuzzleFile(changed.data(), changed.size(), read));
    EXPECT_EQ(bytes, encodePuzzleFile(read));
    // The tag alone is a file without a puzzle; less, or another tag, another version.
    EXPECT_EQ(Decoded::Ok, decodePuzzleFile(bytes.data(), VersionTagSize, read));
    EXPECT_FALSE(read.hasPuzzle);
    EXPECT_EQ(Decoded::OtherVersion, decode({}));
}

TEST(PuzzleFileBytes, DamageAndWhatPlayCannotHoldAreRefused)
{
    const std::vector<uint8_t> good = encodePuzzleFile(samples::puzzle(true));
    ASSERT_EQ(Decoded::Ok, decode(good));
    using Change = std::function<void(std::vector<uint8_t>&)>;
    const std::pair<const char*, Change> damage[] = {
        {"cut inside the header", [](auto& b) { b.resize(HeaderAt + 30); }},
        {"cut inside the last piece", [](auto& b) { b.pop_back(); }},
        {"a byte after the last record", [](auto& b) { b.push_back(0); }},
        {"a path of 260", [](auto& b) { putInt32(b, HeaderAt + 44, 260); }},
        {"a negative tray count", [](auto& b) { putInt32(b, HeaderAt + 20, -1); }},
        {"an absurd group count", [](auto& b) { putInt32(b, HeaderAt + 16, 0x7fffffff); }},
        {"1000 columns", [](auto& b) { putInt32(b, HeaderAt + 32, 1000); }},
        {"no rows", [](auto& b) { putInt32(b, HeaderAt + 36, 0); }},
        {"shape 3", [](auto& b) { putInt32(b, HeaderAt + 40, 3); }},
        {"a zIndex repeated",
         [](auto& b) { putInt32(b, pieceAt(2) + 8, int32At(b, PiecesAt + 8)); }},
        {"a zIndex out of range", [](auto& b) { putInt32(b, pieceAt(2) + 8, 4); }},
        {"a piece in a missing tray", [](auto& b) { putInt32(b, pieceAt(2) + 36, 9); }},
        {"a tray id above the last", [](auto& b) { putInt32(b, HeaderAt + 24, 0); }},
        {"group id 0", [](auto& b) { putInt32(b, GroupAt, 0); }},
        {"knob kind 3", [](auto& b) { putInt32(b, pieceAt(2) + 16, 3); }},
        {"a knob larger than the cell allows", [](auto& b) { putInt32(b, pieceAt(2) + 12, 99); }},
        {"flag 2", [](auto& b) { b[pieceAt(2) + 40] = 2; }},
        {"a group of one piece", [](auto& b) { b[pieceAt(3) + 42] = 0; }},
        {"a set piece in a tray", [](auto& b) { putInt32(b, PiecesAt + 36, 2); }},
        {"a set piece away from home", [](auto& b) { putInt32(b, PiecesAt, 205); }},
        {"a placement of another size", [](auto& b) { putInt32(b, TrayAt + 24, 40); }},
        // A group's members lie at their home offsets from each other, as joins leave them.
        {"a member one pixel off",
         [](auto& b) { putInt32(b, pieceAt(3), int32At(b, pieceAt(3)) + 1); }},
        {"a member a million pixels off", [](auto& b) { putInt32(b, pieceAt(3) + 4, -1000000); }},
        {"a loose piece beyond reach", [](auto& b) { putInt32(b, pieceAt(2), 40000); }},
        {"a tray beyond reach", [](auto& b) { putInt32(b, TrayAt + 4, 1000000); }},
        {"a tray larger than a tray can grow", [](auto& b) { putInt32(b, pieceAt(2) + 4, 17000); }},
        {"an area beyond reach", [](auto& b) { putInt32(b, HeaderAt, -40000); }},
    };
    for (const auto& [what, change] : damage) {
        std::vector<uint8_t> bytes = good;
        change(bytes);
        EXPECT_EQ(Decoded::Malformed, decode(bytes)) << what;
    }

    // Trays or groups of one id; the images of many trays together beyond what trays hold.
    PuzzleFileContents twice = samples::puzzle(true);
    twice.trays.push_back(twice.trays[0]);
    EXPECT_EQ(Decoded::Malformed, decode(encodePuzzleFile(twice)));
    twice = samples::puzzle(true);
    twice.groups.push_back(twice.groups[0]);
    EXPECT_EQ(Decoded::Malformed, decode(encodePuzzleFile(twice)));
    // A piece at (8000, 8000) makes a tray's image of some 256 MB: one tray may, two may not.
    PuzzleFileContents crowded = samples::puzzle(false);
    crowded.header.lastTrayId = 2;
    for (int t = 1; t <= 2; ++t) {
        crowded.trays.push_back(samples::puzzle(true).trays[0]);
        crowded.trays.back().id = t;
        PieceRecord& piece = crowded.pieces[t];
        piece.trayId = t;
        piece.x = piece.y = 8000;
    }
    EXPECT_EQ(Decoded::Malformed, decode(encodePuzzleFile(crowded)));
    crowded.pieces[2].trayId = 0;
    crowded.pieces[2].x = crowded.pieces[2].y = 300;
    EXPECT_EQ(Decoded::Ok, decode(encodePuzzleFile(crowded)));
}

TEST(CollectionFileBytes, EntriesLaidOutAndDamageRefused)
{
    const std::vector<CollectionFileEntry> entries = samples::collection();
    const std::vector<uint8_t> bytes = encodeCollectionFile(entries);
    // Paths of 12 and 20 characters: 7 + (52 + 12) + (52 + 20).
    ASSERT_EQ(143u, bytes.size());
    expectHeader(bytes, {0, 0, 640, 480, 0, 0, 0, 0, 8, 6, 0, 12});
    EXPECT_EQ(1, bytes[HeaderAt + 48]);
    EXPECT_EQ(0, memcmp(bytes.data() + PathAt, entries[0].picturePath.data(), 12));
    EXPECT_EQ(1200, int32At(bytes, PathAt + 12 + 8));
    std::vector<CollectionFileEntry> read;
    ASSERT_EQ(Decoded::Ok, decodeCollectionFile(bytes.data(), bytes.size(), read));
    EXPECT_EQ(bytes, encodeCollectionFile(read));
    EXPECT_EQ(Decoded::Ok, decodeCollectionFile(bytes.data(), VersionTagSize, read));
    EXPECT_TRUE(read.empty());

    // Cut inside an entry, a path of 260, 1000 rows, adjust flag 2.
    std::vector<uint8_t> bad[] = {bytes, bytes, bytes, bytes};
    bad[0].pop_back();
    putInt32(bad[1], HeaderAt + 44, 260);
    putInt32(bad[2], HeaderAt + 36, 1000);
    bad[3][HeaderAt + 48] = 2;
    for (const auto& b : bad)
        EXPECT_EQ(Decoded::Malformed, decodeCollectionFile(b.data(), b.size(), read)) << &b - bad;
}

TEST(RecoveryFileBytes, ThePlayersFileNameThenThePuzzleFile)
{
    RecoveryContents kept{"C:\\My puzzles\\cat.fpp", samples::puzzle(true)};
    const std::vector<uint8_t> bytes = encodeRecoveryFile(kept);
    const std::vector<uint8_t> puzzle = encodePuzzleFile(kept.puzzle);
    ASSERT_EQ(RecoveryTagSize + 4 + kept.puzzlePath.size() + puzzle.size(), bytes.size());
    EXPECT_EQ(0, memcmp(bytes.data(), "tvrec01\0", 8));
    EXPECT_EQ(21, int32At(bytes, RecoveryTagSize));
    EXPECT_TRUE(std::equal(puzzle.begin(), puzzle.end(), bytes.end() - puzzle.size()));
    RecoveryContents read;
    ASSERT_EQ(Decoded::Ok, decodeRecoveryFile(bytes.data(), bytes.size(), read));
    EXPECT_EQ(kept.puzzlePath, read.puzzlePath);
    EXPECT_EQ(puzzle, encodePuzzleFile(read.puzzle));

    // A cut file, another tag, a path too long, or a puzzle file without a puzzle.
    std::vector<uint8_t> bad[] = {bytes, bytes, bytes, bytes};
    bad[0].pop_back();
    bad[1][0] = 'x';
    putInt32(bad[2], RecoveryTagSize, 300);
    bad[3].resize(bytes.size() - puzzle.size() + VersionTagSize);
    for (const auto& b : bad)
        EXPECT_EQ(Decoded::Malformed, decodeRecoveryFile(b.data(), b.size(), read)) << &b - bad;
}
