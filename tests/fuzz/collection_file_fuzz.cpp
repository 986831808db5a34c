// Any bytes given to the collection file reader: no crash, and what it accepts it writes
// back to the same bytes.
#include <cstdlib>

#include "files/collection_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace fileformat;
    std::vector<CollectionFileEntry> entries;
    if (decodeCollectionFile(data, size, entries) != Decoded::Ok)
        return 0;
    const std::vector<uint8_t> again = encodeCollectionFile(entries);
    std::vector<CollectionFileEntry> reread;
    if (decodeCollectionFile(again.data(), again.size(), reread) != Decoded::Ok ||
        encodeCollectionFile(reread) != again)
        abort();
    return 0;
}
