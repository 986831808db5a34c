// Any bytes given to the puzzle file reader: no crash, no unbounded allocation, and what it
// accepts it writes back to the same bytes. The same bytes taken for a recovery file, which
// holds a puzzle file, and for a picture's header, read before any picture is decoded.
#include <cstdlib>

#include "files/picture_header.h"
#include "files/puzzle_format.h"
#include "files/recovery_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace fileformat;
    int width = 0, height = 0;
    if (readPictureSize(data, size, width, height) && (width <= 0 || height <= 0))
        abort();
    RecoveryContents recovery, reread;
    if (decodeRecoveryFile(data, size, recovery) == Decoded::Ok) {
        const std::vector<uint8_t> again = encodeRecoveryFile(recovery);
        if (decodeRecoveryFile(again.data(), again.size(), reread) != Decoded::Ok ||
            encodeRecoveryFile(reread) != again)
            abort();
    }
    PuzzleFileContents contents;
    if (decodePuzzleFile(data, size, contents) != Decoded::Ok)
        return 0;
    const std::vector<uint8_t> again = encodePuzzleFile(contents);
    if (decodePuzzleFile(again.data(), again.size(), reread.puzzle) != Decoded::Ok ||
        encodePuzzleFile(reread.puzzle) != again)
        abort();
    return 0;
}
