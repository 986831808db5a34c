// The puzzle and collection files byte for byte, and every kind of damage the readers
// refuse before anything is applied.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include "files/collection_format.h"
#include "files/puzzle_format.h"
#include "tests/support/sample_files.h"

using namespace fileformat;

namespace {

int32_t int32At(const std::vector<uint8_t>& bytes, size_t offset)
{
    int32_t v;
    memcpy(&v, bytes.data() + offset, 4);
    return v;
}

void putInt32(std::vector<uint8_t>& bytes, size_t offset, int32_t v)
{
    memcpy(bytes.data() + offset, &v, 4);
}

Decoded decode(const std::vector<uint8_t>& bytes, PuzzleFileContents& out)
{
    return decodePuzzleFile(bytes.data(), bytes.size(), out);
}

constexpr size_t HeaderAt = VersionTagSize;
constexpr size_t PathAt = VersionTagSize + HeaderSize;

}  // namespace

TEST(PuzzleFileBytes, TwoByTwoPuzzleLaidOutFieldByField)
{
    // A 10-character path and no trays or groups: 7 + 52 + 10 + 4 x 44 bytes.
    const PuzzleFileContents plain = samples::puzzle(false);
    const std::vector<uint8_t> bytes = encodePuzzleFile(plain);
    ASSERT_EQ(245u, bytes.size());
    EXPECT_EQ(0, memcmp(bytes.data(), "v001.0\0", 7));
    EXPECT_EQ(200, int32At(bytes, HeaderAt + 8));  // width
    EXPECT_EQ(2, int32At(bytes, HeaderAt + 32));   // columns
    EXPECT_EQ(2, int32At(bytes, HeaderAt + 40));   // knobbed
    EXPECT_EQ(10, int32At(bytes, HeaderAt + 44));  // path length
    EXPECT_EQ(1, bytes[HeaderAt + 49]);            // outline
    EXPECT_EQ(0, memcmp(bytes.data() + PathAt, "C:\\cat.jpg", 10));
    // Piece 1's record: the knobs in the order top, bottom, right, left.
    const size_t piece1 = PathAt + 10 + PieceRecordSize;
    const PieceRecord& r = plain.pieces[1];
    EXPECT_EQ(r.zIndex, int32At(bytes, piece1 + 8));
    EXPECT_EQ(r.knobBottom, int32At(bytes, piece1 + 20));
    EXPECT_EQ(r.knobLeft, int32At(bytes, piece1 + 28));
    EXPECT_EQ(r.isSet, bytes[piece1 + 40]);
    EXPECT_EQ(r.isGrouped, bytes[piece1 + 42]);

    // One tray and one group add 68 and 24 bytes, trays first, right after the path.
    const PuzzleFileContents full = samples::puzzle(true);
    const std::vector<uint8_t> withBoth = encodePuzzleFile(full);
    ASSERT_EQ(245u + 68 + 24, withBoth.size());
    EXPECT_EQ(full.trays[0].id, int32At(withBoth, PathAt + 10));
    EXPECT_EQ(44, int32At(withBoth, PathAt + 10 + TrayRecordSize));  // placement length
    EXPECT_EQ(full.groups[0].id, int32At(withBoth, PathAt + 10 + 68));
}

TEST(PuzzleFileBytes, VersionTagDecidesFirst)
{
    PuzzleFileContents read;
    EXPECT_EQ(Decoded::OtherVersion, decode({}, read));
    std::vector<uint8_t> bytes = encodePuzzleFile(samples::puzzle(false));
    bytes[5] = '1';  // v001.1
    EXPECT_EQ(Decoded::OtherVersion, decode(bytes, read));
    bytes[5] = '0';
    bytes[6] = 'x';  // the seventh byte is not examined
    EXPECT_EQ(Decoded::Ok, decode(bytes, read));
    // The tag alone: a file without a puzzle.
    bytes.resize(VersionTagSize);
    EXPECT_EQ(Decoded::Ok, decode(bytes, read));
    EXPECT_FALSE(read.hasPuzzle);
}

TEST(PuzzleFileBytes, DamagedFilesAreRefused)
{
    const std::vector<uint8_t> good = encodePuzzleFile(samples::puzzle(true));
    const size_t trayAt = PathAt + 10, groupAt = trayAt + 68, piecesAt = groupAt + 24;
    const size_t piece2 = piecesAt + 2 * PieceRecordSize;
    const std::vector<std::pair<const char*, std::function<void(std::vector<uint8_t>&)>>> damage{
        {"cut inside the header", [](auto& b) { b.resize(HeaderAt + 30); }},
        {"cut inside the last piece", [](auto& b) { b.pop_back(); }},
        {"a byte after the last record", [](auto& b) { b.push_back(0); }},
        {"a second block", [&](auto& b) { b.insert(b.end(), good.begin() + 7, good.end()); }},
        {"path of 260", [](auto& b) { putInt32(b, HeaderAt + 44, 260); }},
        {"negative tray count", [](auto& b) { putInt32(b, HeaderAt + 20, -1); }},
        {"absurd group count", [](auto& b) { putInt32(b, HeaderAt + 16, 0x7fffffff); }},
        {"1000 columns", [](auto& b) { putInt32(b, HeaderAt + 32, 1000); }},
        {"no rows", [](auto& b) { putInt32(b, HeaderAt + 36, 0); }},
        {"shape 3", [](auto& b) { putInt32(b, HeaderAt + 40, 3); }},
        {"zIndex repeated", [&](auto& b) { putInt32(b, piece2 + 8, int32At(b, piecesAt + 8)); }},
        {"zIndex out of range", [&](auto& b) { putInt32(b, piece2 + 8, 4); }},
        {"piece in a missing tray", [&](auto& b) { putInt32(b, piece2 + 36, 9); }},
        {"tray id above lastTrayId", [&](auto& b) { putInt32(b, HeaderAt + 24, 0); }},
        {"group id 0", [&](auto& b) { putInt32(b, groupAt, 0); }},
        {"knob kind 3", [&](auto& b) { putInt32(b, piece2 + 16, 3); }},
        {"knob larger than the cell allows", [&](auto& b) { putInt32(b, piece2 + 12, 99); }},
        {"flag 2", [&](auto& b) { b[piece2 + 40] = 2; }},
        {"a group of one piece", [&](auto& b) { b[piecesAt + 3 * PieceRecordSize + 42] = 0; }},
        {"set piece in a tray",
         [&](auto& b) {
             b[piece2 + 40] = 1;
             putInt32(b, piece2 + 36, 1);
         }},
        {"placement of another size", [&](auto& b) { putInt32(b, trayAt + 24, 40); }},
        {"coordinates beyond reach", [&](auto& b) { putInt32(b, piece2, 0x40000000); }},
    };
    for (const auto& [what, change] : damage) {
        std::vector<uint8_t> bytes = good;
        change(bytes);
        PuzzleFileContents read;
        EXPECT_EQ(Decoded::Malformed, decode(bytes, read)) << what;
    }

    // Two trays, or two groups, of one id.
    PuzzleFileContents twice = samples::puzzle(true);
    twice.trays.push_back(twice.trays[0]);
    PuzzleFileContents read;
    EXPECT_EQ(Decoded::Malformed, decode(encodePuzzleFile(twice), read));
    twice = samples::puzzle(true);
    twice.groups.push_back(twice.groups[0]);
    EXPECT_EQ(Decoded::Malformed, decode(encodePuzzleFile(twice), read));
}

TEST(CollectionFileBytes, TwoEntriesLaidOutAndReadBack)
{
    const std::vector<CollectionFileEntry> entries = samples::collection();
    const std::vector<uint8_t> bytes = encodeCollectionFile(entries);
    // Paths of 12 and 20 characters: 7 + (52 + 12) + (52 + 20).
    ASSERT_EQ(143u, bytes.size());
    EXPECT_EQ(0, memcmp(bytes.data(), "v001.0\0", 7));
    EXPECT_EQ(entries[0].columns, int32At(bytes, HeaderAt + 32));
    EXPECT_EQ(1, bytes[HeaderAt + 48]);
    EXPECT_EQ(0, memcmp(bytes.data() + PathAt, entries[0].picturePath.data(), 12));
    EXPECT_EQ(20, int32At(bytes, PathAt + 12 + 44));

    std::vector<CollectionFileEntry> read;
    ASSERT_EQ(Decoded::Ok, decodeCollectionFile(bytes.data(), bytes.size(), read));
    ASSERT_EQ(2u, read.size());
    EXPECT_EQ(bytes, encodeCollectionFile(read));

    // The tag alone is an empty collection; a cut entry, a path of 260, or 1000 rows are refused.
    EXPECT_EQ(Decoded::Ok, decodeCollectionFile(bytes.data(), VersionTagSize, read));
    EXPECT_TRUE(read.empty());
    EXPECT_EQ(Decoded::Malformed, decodeCollectionFile(bytes.data(), bytes.size() - 1, read));
    std::vector<uint8_t> bad = bytes;
    putInt32(bad, HeaderAt + 44, 260);
    EXPECT_EQ(Decoded::Malformed, decodeCollectionFile(bad.data(), bad.size(), read));
    bad = bytes;
    putInt32(bad, HeaderAt + 36, 1000);
    EXPECT_EQ(Decoded::Malformed, decodeCollectionFile(bad.data(), bad.size(), read));
}
