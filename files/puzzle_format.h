#pragma once
// The puzzle file (.fpp) as bytes: records to bytes and bytes to records, nothing else.
// Plain C++ with no platform headers, so that the format is tested and fuzzed natively.
// The collection file shares the version tag and the header record.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class ByteReader;
class ByteWriter;

namespace fileformat {

constexpr char VersionTag[] = "v001.0";  // six characters and a zero byte in the file
constexpr size_t VersionTagSize = 7;
constexpr size_t HeaderSize = 52;
constexpr size_t TrayRecordSize = 24;
constexpr size_t PlacementSize = 44;  // a 32-bit WINDOWPLACEMENT
constexpr size_t GroupRecordSize = 24;
constexpr size_t PieceRecordSize = 44;
constexpr int PlacementFields = 11;

// What the reader accepts: paths that fit a 260-character buffer with its terminator, the
// pieces dialog's range, and only what play can hold (model/play_limits.h).
constexpr int MaxPathLength = 259;
constexpr int MaxPiecesPerSide = 999;
constexpr int MaxPuzzleSide = 32767;
// Each tray is a window with its own image; no player keeps this many.
constexpr int MaxTrays = 256;
// Ids far beyond any played puzzle, and far from overflowing when the next is handed out.
constexpr int MaxId = 1 << 24;
// The largest file worth reading: 999 x 999 pieces with room for trays and groups.
constexpr size_t MaxFileSize = 64u << 20;

enum class Decoded {
    Ok,
    OtherVersion,  // empty, or not "v001.0"
    Malformed,     // truncated, trailing bytes, or values the writer never produces
};

struct PuzzleFileHeader {
    int32_t originX = 0, originY = 0;
    int32_t width = 0, height = 0;
    int32_t groupCount = 0, trayCount = 0;
    int32_t lastTrayId = 0, lastGroupId = 0;
    int32_t columns = 0, rows = 0;
    int32_t shapeMode = 0;
    int32_t pathLength = 0;
    uint8_t adjustToImage = 0;
    uint8_t drawOutline = 0;
};

struct TrayRecord {
    int32_t id = 0;
    int32_t left = 0, top = 0;  // screen coordinates
    int32_t viewWidth = 0, viewHeight = 0;
    // length, flags, showCmd, minimised position, maximised position, normal rectangle
    int32_t placement[PlacementFields] = {};
};

struct GroupRecord {
    int32_t id = 0;
    int32_t x = 0, y = 0, width = 0, height = 0;
    int32_t trayId = 0;
};

struct PieceRecord {
    int32_t x = 0, y = 0;
    int32_t zIndex = 0;
    int32_t knobSize = 0;
    int32_t knobTop = 0, knobBottom = 0, knobRight = 0, knobLeft = 0;
    int32_t groupId = 0;
    int32_t trayId = 0;
    uint8_t isSet = 0, isVisible = 1, isGrouped = 0;
};

struct PuzzleFileContents {
    bool hasPuzzle = false;  // false for a file of the version tag alone
    PuzzleFileHeader header;
    std::string picturePath;
    std::vector<TrayRecord> trays;
    std::vector<GroupRecord> groups;
    std::vector<PieceRecord> pieces;  // in piece-index order
};

// Where a piece belongs and the size of its box, from the header and its record alone, as
// generation and shape building make them: puzzle coordinates.
struct PieceBox {
    int64_t homeX, homeY, width, height;
};
PieceBox pieceBoxOf(const PuzzleFileHeader& header, int32_t index, const PieceRecord& record);

// The counts and the path length of the header are taken from the contents.
std::vector<uint8_t> encodePuzzleFile(const PuzzleFileContents& contents);
// The number of bytes encodePuzzleFile makes of contents.
size_t encodedSize(const PuzzleFileContents& contents);
// The same, written on at the end of out.
void encodePuzzleFile(ByteWriter& out, const PuzzleFileContents& contents);
Decoded decodePuzzleFile(const uint8_t* data, size_t size, PuzzleFileContents& contents);

// Shared with the collection file.
void writeVersionTag(ByteWriter& out);
Decoded readVersionTag(ByteReader& in, size_t size);
void writeHeader(ByteWriter& out, const PuzzleFileHeader& header);
PuzzleFileHeader readHeader(ByteReader& in);

}  // namespace fileformat
