// Any bytes given to the puzzle file reader: no crash, no unbounded allocation, and what it
// accepts it writes back to the same bytes.
#include <cstdlib>

#include "files/puzzle_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace fileformat;
    PuzzleFileContents contents;
    if (decodePuzzleFile(data, size, contents) != Decoded::Ok)
        return 0;
    const std::vector<uint8_t> again = encodePuzzleFile(contents);
    PuzzleFileContents reread;
    if (decodePuzzleFile(again.data(), again.size(), reread) != Decoded::Ok ||
        encodePuzzleFile(reread) != again)
        abort();
    return 0;
}
