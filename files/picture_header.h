#pragma once
// The size a BMP, GIF or JPEG file states in its header, read without decoding it: so that a
// picture whose decoding fails for want of memory is told from a file that is no picture.
// Plain C++, built and fuzzed natively like the file formats.
#include <cstddef>
#include <cstdint>

// True, with the size in pixels, when data begins like one of the three formats and states
// a size above zero.
bool readPictureSize(const std::uint8_t* data, std::size_t size, int& width, int& height);
