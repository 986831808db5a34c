#include "model/memory_budget.h"

#include <windows.h>

#include "model/piece.h"
#include "model/place_index.h"

std::uint64_t bitmapBytes(int w, int h)
{
    constexpr std::uint64_t BytesPerPixel = 4;
    return static_cast<std::uint64_t>(w > 0 ? w : 0) * static_cast<std::uint64_t>(h > 0 ? h : 0) *
           BytesPerPixel;
}

std::uint64_t makeFootprint(int width, int height, int pieceCount, int boardWidth, int boardHeight)
{
    // The record, its z place, and its place in the index: filed in up to four cells (about
    // two and a half on average), with its own filing, mark and pending flag.
    constexpr std::uint64_t IndexBytesPerPiece = 3 * sizeof(PlaceEntry) + 32;
    const std::uint64_t perPiece = sizeof(Piece) + sizeof(int) + IndexBytesPerPiece;
    const std::uint64_t pieces = static_cast<std::uint64_t>(pieceCount > 0 ? pieceCount : 0);
    return bitmapBytes(width, height) + pieces * perPiece + bitmapBytes(boardWidth, boardHeight);
}

bool processCanHold(std::uint64_t bytes)
{
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof status;
    if (!GlobalMemoryStatusEx(&status))
        return true;  // nothing known: the allocations themselves are checked
    // Half the free addresses: the largest single block is usually far below their sum.
    return bytes <= status.ullAvailVirtual / 2 && bytes <= status.ullAvailPageFile;
}

namespace {

std::uint64_t largestFreeBlock()
{
    SYSTEM_INFO system{};
    GetSystemInfo(&system);
    auto at = static_cast<const char*>(system.lpMinimumApplicationAddress);
    const auto end = static_cast<const char*>(system.lpMaximumApplicationAddress);
    std::uint64_t largest = 0;
    MEMORY_BASIC_INFORMATION region{};
    while (at < end && VirtualQuery(at, &region, sizeof region) == sizeof region) {
        if (region.State == MEM_FREE && region.RegionSize > largest)
            largest = region.RegionSize;
        at = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
    }
    return largest;
}

}  // namespace

bool blockCanBeHad(std::uint64_t bytes)
{
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof status;
    if (GlobalMemoryStatusEx(&status) && bytes > status.ullAvailPageFile)
        return false;
    return bytes <= largestFreeBlock();
}
