#pragma once
// The collection file (.fpc) as bytes: the version tag, then for every entry a puzzle file
// header and the picture path, to the end of the file. Plain C++, like the puzzle file.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "files/puzzle_format.h"

namespace fileformat {

struct CollectionFileEntry {
    std::string picturePath;
    int32_t width = 0, height = 0;
    bool adjustToImage = false;
    int32_t columns = 0, rows = 0;
};

std::vector<uint8_t> encodeCollectionFile(const std::vector<CollectionFileEntry>& entries);
Decoded decodeCollectionFile(const uint8_t* data, size_t size,
                             std::vector<CollectionFileEntry>& entries);

}  // namespace fileformat
