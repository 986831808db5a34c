#include "files/picture_header.h"

#include <cstdlib>

namespace {

std::uint32_t little16(const std::uint8_t* p)
{
    return p[0] | (p[1] << 8);
}

std::uint32_t big16(const std::uint8_t* p)
{
    return (p[0] << 8) | p[1];
}

std::int32_t little32(const std::uint8_t* p)
{
    return static_cast<std::int32_t>(p[0] | (p[1] << 8) | (p[2] << 16) |
                                     (static_cast<std::uint32_t>(p[3]) << 24));
}

bool stated(long long w, long long h, int& width, int& height)
{
    if (w <= 0 || h <= 0 || w > 0x7FFFFFFF || h > 0x7FFFFFFF)
        return false;
    width = static_cast<int>(w);
    height = static_cast<int>(h);
    return true;
}

// An uncompressed bitmap must hold every row it states; one that does not is damaged, not
// too large, whatever its header says.
bool holdsItsRows(std::size_t size, std::uint32_t dataAt, long long w, long long h, int bits)
{
    if (bits <= 0 || w <= 0 || w > 0x7FFFFFFF || h < 0)
        return false;
    const long long stride = (w * bits + 31) / 32 * 4;
    const long long available = static_cast<long long>(size) - dataAt;
    return available >= 0 && available / stride >= h;
}

bool bitmapSize(const std::uint8_t* d, std::size_t size, int& width, int& height)
{
    constexpr std::size_t InfoAt = 14, CoreHeaderSize = 12, InfoHeaderSize = 40;
    constexpr std::uint32_t Uncompressed = 0, BitFields = 3;
    if (size < InfoAt + InfoHeaderSize)
        return false;
    const std::uint32_t dataAt = static_cast<std::uint32_t>(little32(d + 10));
    const std::uint32_t header = static_cast<std::uint32_t>(little32(d + InfoAt));
    if (header == CoreHeaderSize) {
        const long long w = little16(d + 18), h = little16(d + 20);
        return holdsItsRows(size, dataAt, w, h, static_cast<int>(little16(d + 24))) &&
               stated(w, h, width, height);
    }
    if (header < InfoHeaderSize)
        return false;
    // A negative height is a picture stored top-down.
    const long long w = little32(d + 18), h = std::llabs(little32(d + 22));
    const std::uint32_t compression = static_cast<std::uint32_t>(little32(d + 30));
    const bool uncompressed = compression == Uncompressed || compression == BitFields;
    if (uncompressed && !holdsItsRows(size, dataAt, w, h, static_cast<int>(little16(d + 28))))
        return false;
    return stated(w, h, width, height);
}

bool jpegSize(const std::uint8_t* d, std::size_t size, int& width, int& height)
{
    std::size_t at = 2;
    while (at + 4 <= size) {
        if (d[at] != 0xFF)
            return false;
        const std::uint8_t marker = d[at + 1];
        if (marker == 0xFF) {  // fill byte
            ++at;
            continue;
        }
        // Markers that stand alone carry no length.
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8)) {
            at += 2;
            continue;
        }
        const std::size_t length = big16(d + at + 2);
        // Start of frame (any coding but the huffman tables, JPG extension and arithmetic
        // conditioning markers that share the range): precision, height, width.
        const bool frame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame)
            return at + 9 <= size && stated(big16(d + at + 7), big16(d + at + 5), width, height);
        if (marker == 0xD9 || marker == 0xDA || length < 2)
            return false;  // the end, or the data, before any frame
        at += 2 + length;
    }
    return false;
}

}  // namespace

bool readPictureSize(const std::uint8_t* data, std::size_t size, int& width, int& height)
{
    if (size >= 2 && data[0] == 'B' && data[1] == 'M')
        return bitmapSize(data, size, width, height);
    if (size >= 10 && data[0] == 'G' && data[1] == 'I' && data[2] == 'F' && data[3] == '8' &&
        (data[4] == '7' || data[4] == '9') && data[5] == 'a')
        return stated(little16(data + 6), little16(data + 8), width, height);
    if (size >= 4 && data[0] == 0xFF && data[1] == 0xD8)
        return jpegSize(data, size, width, height);
    return false;
}
