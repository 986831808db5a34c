#include "files/puzzle_format.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>
#include <unordered_set>

#include "files/byte_stream.h"
#include "model/cell_geometry.h"
#include "model/play_limits.h"

namespace fileformat {

namespace {

constexpr int Rectangular = 1, Knobbed = 2;
constexpr int MaxKnobKind = 2;  // Flat, Out, In
constexpr int32_t Tab = 1;      // a side of kind Out
constexpr int MaxShowCommand = 11;
constexpr int32_t MaxWindowSide = 32767;

bool within(int64_t value, int64_t low, int64_t high)
{
    return value >= low && value <= high;
}

bool isFlag(uint8_t value)
{
    return value <= 1;
}

bool isCoordinate(int32_t value)
{
    return within(value, -MaxPlaceDistance, MaxPlaceDistance);
}

bool headerValid(const PuzzleFileHeader& h)
{
    return within(h.width, 1, MaxPuzzleSide) && within(h.height, 1, MaxPuzzleSide) &&
           within(h.columns, 1, std::min(MaxPiecesPerSide, h.width)) &&
           within(h.rows, 1, std::min(MaxPiecesPerSide, h.height)) &&
           (h.shapeMode == Rectangular || h.shapeMode == Knobbed) &&
           within(h.pathLength, 1, MaxPathLength) && within(h.trayCount, 0, MaxTrays) &&
           within(h.groupCount, 0, int64_t(h.columns) * h.rows / 2) &&
           within(h.lastTrayId, 0, MaxId) && within(h.lastGroupId, 0, MaxId) &&
           isCoordinate(h.originX) && isCoordinate(h.originY) && isFlag(h.adjustToImage) &&
           isFlag(h.drawOutline);
}

bool trayValid(const TrayRecord& t, int32_t lastTrayId)
{
    const int32_t* p = t.placement;
    return within(t.id, 1, lastTrayId) && isCoordinate(t.left) && isCoordinate(t.top) &&
           within(t.viewWidth, 0, MaxWindowSide) && within(t.viewHeight, 0, MaxWindowSide) &&
           p[0] == static_cast<int32_t>(PlacementSize) && within(p[2], 0, MaxShowCommand) &&
           std::all_of(p + 3, p + PlacementFields, isCoordinate) &&
           within(int64_t(p[9]) - p[7], 0, MaxWindowSide) &&
           within(int64_t(p[10]) - p[8], 0, MaxWindowSide);
}

bool knobsValid(const PieceRecord& r, const PuzzleFileHeader& h)
{
    if (h.shapeMode == Rectangular)
        return true;  // the knob fields are not used
    // Generation gives every piece one eighth of the base cell height.
    const int32_t knob = h.height / h.rows / 8;
    const int32_t kinds[] = {r.knobTop, r.knobBottom, r.knobRight, r.knobLeft};
    return within(r.knobSize, 0, knob) &&
           std::all_of(kinds, kinds + 4, [](int32_t k) { return within(k, 0, MaxKnobKind); });
}

// The members of every group lie at their home offsets from each other, as joining leaves
// them and as they move: one offset from home for the whole group.
bool groupsKeepTheirShape(const PuzzleFileContents& c)
{
    struct Offset {
        int64_t dx, dy;
    };
    std::unordered_map<int32_t, Offset> offsets;
    for (size_t i = 0; i < c.pieces.size(); ++i) {
        const PieceRecord& r = c.pieces[i];
        if (!r.isGrouped)
            continue;
        const PieceBox box = pieceBoxOf(c.header, static_cast<int32_t>(i), r);
        const Offset offset{r.x - box.homeX, r.y - box.homeY};
        const auto known = offsets.emplace(r.groupId, offset);
        if (!known.second &&
            (known.first->second.dx != offset.dx || known.first->second.dy != offset.dy))
            return false;
    }
    return true;
}

// What each tray holds fits an image no larger than play lets a tray grow, and all of them
// together no more than play lets every tray hold.
bool traysFitTheirImages(const PuzzleFileContents& c)
{
    struct Extent {
        int64_t left = 0, top = 0, right = 0, bottom = 0;
    };
    std::unordered_map<int32_t, Extent> extents;
    for (size_t i = 0; i < c.pieces.size(); ++i) {
        const PieceRecord& r = c.pieces[i];
        if (r.trayId == 0)
            continue;
        const PieceBox box = pieceBoxOf(c.header, static_cast<int32_t>(i), r);
        Extent& e = extents[r.trayId];
        e.left = std::min<int64_t>(e.left, r.x);
        e.top = std::min<int64_t>(e.top, r.y);
        e.right = std::max<int64_t>(e.right, r.x + box.width);
        e.bottom = std::max<int64_t>(e.bottom, r.y + box.height);
    }
    constexpr int64_t BytesPerPixel = 4;
    int64_t bytes = 0;
    for (const auto& tray : extents) {
        const int64_t w = tray.second.right - tray.second.left;
        const int64_t h = tray.second.bottom - tray.second.top;
        if (w > MaxTrayContentSide || h > MaxTrayContentSide)
            return false;
        bytes += w * h * BytesPerPixel;
    }
    return bytes <= MaxTrayImagesBytes;
}

// The values the reader relies on, all of which the writer guarantees, and what play can
// hold, which play never exceeds.
bool contentsValid(const PuzzleFileContents& c)
{
    const PuzzleFileHeader& h = c.header;
    if (c.picturePath.find('\0') != std::string::npos)
        return false;

    std::unordered_set<int32_t> trayIds;
    for (const TrayRecord& t : c.trays) {
        if (!trayValid(t, h.lastTrayId) || !trayIds.insert(t.id).second)
            return false;
    }
    std::unordered_map<int32_t, int32_t> groupTrays;
    std::unordered_map<int32_t, int> groupSizes;
    for (const GroupRecord& g : c.groups) {
        if (!within(g.id, 1, h.lastGroupId) || (g.trayId != 0 && !trayIds.count(g.trayId)) ||
            !groupTrays.emplace(g.id, g.trayId).second)
            return false;
    }

    std::vector<bool> stacked(c.pieces.size(), false);
    for (size_t i = 0; i < c.pieces.size(); ++i) {
        const PieceRecord& r = c.pieces[i];
        if (!within(r.zIndex, 0, int64_t(c.pieces.size()) - 1) || stacked[r.zIndex])
            return false;
        stacked[r.zIndex] = true;
        if (!knobsValid(r, h) || !isFlag(r.isSet) || !isFlag(r.isVisible) || !isFlag(r.isGrouped))
            return false;
        if (r.trayId != 0 && !trayIds.count(r.trayId))
            return false;
        // A set piece lies at its home on the main window and belongs to no group; a free
        // one lies within reach.
        if (r.isSet) {
            const PieceBox box = pieceBoxOf(h, static_cast<int32_t>(i), r);
            if (r.trayId != 0 || r.isGrouped || r.x != box.homeX || r.y != box.homeY)
                return false;
        } else if (!isCoordinate(r.x) || !isCoordinate(r.y)) {
            return false;
        }
        // A group lies in one window with all its members. A group the file does not
        // define leaves the piece ungrouped.
        if (r.isGrouped) {
            const auto group = groupTrays.find(r.groupId);
            if (group != groupTrays.end() && group->second != r.trayId)
                return false;
            ++groupSizes[r.groupId];
        }
    }
    // Every group joins at least two pieces.
    for (const GroupRecord& g : c.groups) {
        if (groupSizes[g.id] < 2)
            return false;
    }
    return groupsKeepTheirShape(c) && traysFitTheirImages(c);
}

void writeTray(ByteWriter& out, const TrayRecord& t)
{
    for (int32_t v : {t.id, t.left, t.top, t.viewWidth, t.viewHeight, 0})
        out.int32(v);
    for (int32_t v : t.placement)
        out.int32(v);
}

TrayRecord readTray(ByteReader& in)
{
    TrayRecord t;
    t.id = in.int32();
    t.left = in.int32();
    t.top = in.int32();
    t.viewWidth = in.int32();
    t.viewHeight = in.int32();
    in.skip(4);
    for (int32_t& v : t.placement)
        v = in.int32();
    return t;
}

void writeGroup(ByteWriter& out, const GroupRecord& g)
{
    for (int32_t v : {g.id, g.x, g.y, g.width, g.height, g.trayId})
        out.int32(v);
}

GroupRecord readGroup(ByteReader& in)
{
    GroupRecord g;
    g.id = in.int32();
    g.x = in.int32();
    g.y = in.int32();
    g.width = in.int32();
    g.height = in.int32();
    g.trayId = in.int32();
    return g;
}

void writePiece(ByteWriter& out, const PieceRecord& r)
{
    for (int32_t v : {r.x, r.y, r.zIndex, r.knobSize, r.knobTop, r.knobBottom, r.knobRight,
                      r.knobLeft, r.groupId, r.trayId})
        out.int32(v);
    out.byte(r.isSet);
    out.byte(r.isVisible);
    out.byte(r.isGrouped);
    out.byte(0);
}

PieceRecord readPiece(ByteReader& in)
{
    PieceRecord r;
    r.x = in.int32();
    r.y = in.int32();
    r.zIndex = in.int32();
    r.knobSize = in.int32();
    r.knobTop = in.int32();
    r.knobBottom = in.int32();
    r.knobRight = in.int32();
    r.knobLeft = in.int32();
    r.groupId = in.int32();
    r.trayId = in.int32();
    r.isSet = in.byte();
    r.isVisible = in.byte();
    r.isGrouped = in.byte();
    in.skip(1);
    return r;
}

}  // namespace

PieceBox pieceBoxOf(const PuzzleFileHeader& h, int32_t index, const PieceRecord& r)
{
    // As the cut makes the cell, and the piece's tabs grow it.
    const CellSpan across = cellSpan(h.width, h.columns, index % h.columns);
    const CellSpan down = cellSpan(h.height, h.rows, index / h.columns);
    PieceBox box{h.originX + across.offset, h.originY + down.offset, across.size, down.size};
    if (h.shapeMode != Rectangular) {  // else the knob fields are not used
        growForTabs(box.homeX, box.homeY, box.width, box.height, 2 * int64_t(r.knobSize),
                    r.knobLeft == Tab, r.knobRight == Tab, r.knobTop == Tab, r.knobBottom == Tab);
    }
    return box;
}

void writeVersionTag(ByteWriter& out)
{
    out.text(VersionTag);
    out.byte(0);
}

Decoded readVersionTag(ByteReader& in, size_t size)
{
    const size_t tagText = VersionTagSize - 1;
    if (size < tagText || in.text(tagText) != VersionTag)
        return Decoded::OtherVersion;
    // The seventh byte is not examined.
    in.skip(1);
    return in.ok() ? Decoded::Ok : Decoded::Malformed;
}

void writeHeader(ByteWriter& out, const PuzzleFileHeader& h)
{
    for (int32_t v : {h.originX, h.originY, h.width, h.height, h.groupCount, h.trayCount,
                      h.lastTrayId, h.lastGroupId, h.columns, h.rows, h.shapeMode, h.pathLength})
        out.int32(v);
    out.byte(h.adjustToImage);
    out.byte(h.drawOutline);
    out.byte(0);
    out.byte(0);
}

PuzzleFileHeader readHeader(ByteReader& in)
{
    PuzzleFileHeader h;
    h.originX = in.int32();
    h.originY = in.int32();
    h.width = in.int32();
    h.height = in.int32();
    h.groupCount = in.int32();
    h.trayCount = in.int32();
    h.lastTrayId = in.int32();
    h.lastGroupId = in.int32();
    h.columns = in.int32();
    h.rows = in.int32();
    h.shapeMode = in.int32();
    h.pathLength = in.int32();
    h.adjustToImage = in.byte();
    h.drawOutline = in.byte();
    in.skip(2);
    return h;
}

size_t encodedSize(const PuzzleFileContents& c)
{
    if (!c.hasPuzzle)
        return VersionTagSize;
    return VersionTagSize + HeaderSize + c.picturePath.size() +
           (TrayRecordSize + PlacementSize) * c.trays.size() + GroupRecordSize * c.groups.size() +
           PieceRecordSize * c.pieces.size();
}

std::vector<uint8_t> encodePuzzleFile(const PuzzleFileContents& c)
{
    ByteWriter out(encodedSize(c));
    encodePuzzleFile(out, c);
    return out.bytes;
}

void encodePuzzleFile(ByteWriter& out, const PuzzleFileContents& c)
{
    writeVersionTag(out);
    if (!c.hasPuzzle)
        return;
    PuzzleFileHeader h = c.header;
    h.groupCount = static_cast<int32_t>(c.groups.size());
    h.trayCount = static_cast<int32_t>(c.trays.size());
    h.pathLength = static_cast<int32_t>(c.picturePath.size());
    h.adjustToImage = 0;
    writeHeader(out, h);
    out.text(c.picturePath);
    for (const TrayRecord& t : c.trays)
        writeTray(out, t);
    for (const GroupRecord& g : c.groups)
        writeGroup(out, g);
    for (const PieceRecord& r : c.pieces)
        writePiece(out, r);
}

Decoded decodePuzzleFile(const uint8_t* data, size_t size, PuzzleFileContents& c)
{
    c = PuzzleFileContents();
    ByteReader in(data, size);
    const Decoded tag = readVersionTag(in, size);
    if (tag != Decoded::Ok)
        return tag;
    if (in.remaining() == 0)
        return Decoded::Ok;  // the tag alone: no puzzle

    c.hasPuzzle = true;
    c.header = readHeader(in);
    const PuzzleFileHeader& h = c.header;
    if (!in.ok() || !headerValid(h))
        return Decoded::Malformed;
    // One block fills the file exactly: no record is cut short and nothing follows. This
    // also bounds every count by the size of the file before anything is allocated.
    const uint64_t expected = uint64_t(h.pathLength) + TrayRecordSize * uint64_t(h.trayCount) +
                              PlacementSize * uint64_t(h.trayCount) +
                              GroupRecordSize * uint64_t(h.groupCount) +
                              PieceRecordSize * uint64_t(h.columns) * uint64_t(h.rows);
    if (expected != in.remaining())
        return Decoded::Malformed;

    c.picturePath = in.text(h.pathLength);
    c.trays.reserve(h.trayCount);
    for (int32_t t = 0; t < h.trayCount; ++t)
        c.trays.push_back(readTray(in));
    c.groups.reserve(h.groupCount);
    for (int32_t g = 0; g < h.groupCount; ++g)
        c.groups.push_back(readGroup(in));
    const int32_t pieceCount = h.columns * h.rows;
    c.pieces.reserve(pieceCount);
    for (int32_t i = 0; i < pieceCount; ++i)
        c.pieces.push_back(readPiece(in));
    if (!in.ok() || !contentsValid(c))
        return Decoded::Malformed;
    return Decoded::Ok;
}

}  // namespace fileformat
