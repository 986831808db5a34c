// Any bytes to every file reader (puzzle, recovery, picture header, collection): no crash, no
// unbounded allocation, and what a reader accepts its writer writes back to the same bytes.
#include <cstdlib>

#include "files/collection_format.h"
#include "files/picture_header.h"
#include "files/puzzle_format.h"
#include "files/recovery_format.h"

namespace {

// Decoded, written and decoded again, the contents come back to the same bytes.
template <typename Contents, typename Decode, typename Encode>
void roundTrip(const uint8_t* data, size_t size, Decode decode, Encode encode)
{
    Contents read, reread;
    if (decode(data, size, read) != fileformat::Decoded::Ok)
        return;
    const std::vector<uint8_t> again = encode(read);
    if (decode(again.data(), again.size(), reread) != fileformat::Decoded::Ok ||
        encode(reread) != again)
        abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace fileformat;
    int width = 0, height = 0;
    if (readPictureSize(data, size, width, height) && (width <= 0 || height <= 0))
        abort();
    roundTrip<PuzzleFileContents>(data, size, decodePuzzleFile,
                                  [](const auto& c) { return encodePuzzleFile(c); });
    roundTrip<RecoveryContents>(data, size, decodeRecoveryFile, encodeRecoveryFile);
    roundTrip<std::vector<CollectionFileEntry>>(data, size, decodeCollectionFile,
                                                encodeCollectionFile);
    return 0;
}
