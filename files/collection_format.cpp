#include "files/collection_format.h"

#include <cstdint>

#include "files/byte_stream.h"

namespace fileformat {

namespace {

bool within(int64_t value, int64_t low, int64_t high)
{
    return value >= low && value <= high;
}

// Sizes as the size dialog takes them; an entry that takes its picture's own size may hold
// any, since it is not used.
bool entryValid(const PuzzleFileHeader& h)
{
    const int64_t maxSide = h.adjustToImage ? INT32_MAX : MaxPuzzleSide;
    return within(h.width, 0, maxSide) && within(h.height, 0, maxSide) &&
           within(h.columns, 0, MaxPiecesPerSide) && within(h.rows, 0, MaxPiecesPerSide) &&
           within(h.pathLength, 1, MaxPathLength) && h.adjustToImage <= 1;
}

}  // namespace

std::vector<uint8_t> encodeCollectionFile(const std::vector<CollectionFileEntry>& entries)
{
    ByteWriter out;
    writeVersionTag(out);
    for (const CollectionFileEntry& e : entries) {
        PuzzleFileHeader h;
        h.width = e.width;
        h.height = e.height;
        h.columns = e.columns;
        h.rows = e.rows;
        h.pathLength = static_cast<int32_t>(e.picturePath.size());
        h.adjustToImage = e.adjustToImage ? 1 : 0;
        writeHeader(out, h);
        out.text(e.picturePath);
    }
    return out.bytes;
}

Decoded decodeCollectionFile(const uint8_t* data, size_t size,
                             std::vector<CollectionFileEntry>& entries)
{
    entries.clear();
    ByteReader in(data, size);
    const Decoded tag = readVersionTag(in, size);
    if (tag != Decoded::Ok)
        return tag;
    // Each entry takes at least HeaderSize + 1 bytes, so the loop ends within the file.
    while (in.remaining() > 0) {
        const PuzzleFileHeader h = readHeader(in);
        if (!in.ok() || !entryValid(h) || static_cast<size_t>(h.pathLength) > in.remaining())
            return Decoded::Malformed;
        CollectionFileEntry e;
        e.picturePath = in.text(h.pathLength);
        if (e.picturePath.find('\0') != std::string::npos)
            return Decoded::Malformed;
        e.width = h.width;
        e.height = h.height;
        e.adjustToImage = h.adjustToImage != 0;
        e.columns = h.columns;
        e.rows = h.rows;
        entries.push_back(std::move(e));
    }
    return Decoded::Ok;
}

}  // namespace fileformat
