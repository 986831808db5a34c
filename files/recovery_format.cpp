#include "files/recovery_format.h"

#include <cstring>

#include "files/byte_stream.h"

namespace fileformat {

std::vector<uint8_t> encodeRecoveryFile(const RecoveryContents& c)
{
    ByteWriter out(RecoveryTagSize + 4 + c.puzzlePath.size() + encodedSize(c.puzzle));
    out.text(std::string(RecoveryTag, RecoveryTagSize));
    out.int32(static_cast<int32_t>(c.puzzlePath.size()));
    out.text(c.puzzlePath);
    encodePuzzleFile(out, c.puzzle);
    return out.bytes;
}

Decoded decodeRecoveryFile(const uint8_t* data, size_t size, RecoveryContents& c)
{
    c = RecoveryContents();
    ByteReader in(data, size);
    if (in.text(RecoveryTagSize) != std::string(RecoveryTag, RecoveryTagSize))
        return Decoded::Malformed;
    const int32_t pathLength = in.int32();
    if (!in.ok() || pathLength < 0 || pathLength > MaxPathLength ||
        static_cast<size_t>(pathLength) > in.remaining())
        return Decoded::Malformed;
    c.puzzlePath = in.text(pathLength);
    if (c.puzzlePath.find('\0') != std::string::npos)
        return Decoded::Malformed;
    const size_t at = size - in.remaining();
    const Decoded puzzle = decodePuzzleFile(data + at, size - at, c.puzzle);
    return puzzle == Decoded::Ok && c.puzzle.hasPuzzle ? Decoded::Ok : Decoded::Malformed;
}

}  // namespace fileformat
