#include "model/pixel_runs.h"

#include <algorithm>
#include <cstring>

#include "model/gdi_objects.h"

bool pixelsOf(HDC dc, PixelSurface& out)
{
    DIBSECTION section{};
    HGDIOBJ bitmap = dc ? GetCurrentObject(dc, OBJ_BITMAP) : nullptr;
    // Only the program's own surfaces: they are known to run top-down.
    if (!gdi::isSurfaceBitmap(bitmap) ||
        GetObjectA(bitmap, sizeof section, &section) != sizeof section ||
        section.dsBm.bmBitsPixel != 32 || !section.dsBm.bmBits)
        return false;
    out.width = section.dsBm.bmWidth;
    out.height = section.dsBm.bmHeight;
    out.top = static_cast<std::uint8_t*>(section.dsBm.bmBits);
    out.rowStep = section.dsBm.bmWidthBytes;
    return true;
}

bool PixelRuns::build(HRGN region)
{
    firstOfRow.assign(1, 0);
    runs.clear();
    const DWORD size = region ? GetRegionData(region, 0, nullptr) : 0;
    if (size < sizeof(RGNDATAHEADER))
        return false;
    std::vector<std::uint8_t> buffer(size);
    RGNDATA* data = reinterpret_cast<RGNDATA*>(buffer.data());
    if (GetRegionData(region, size, data) != size)
        return false;
    const RECT* rects = reinterpret_cast<const RECT*>(data->Buffer);
    const DWORD count = data->rdh.nCount;
    int rowCount = 0;
    for (DWORD i = 0; i < count; ++i) {
        if (rects[i].left < 0 || rects[i].top < 0)
            return false;
        rowCount = std::max<int>(rowCount, rects[i].bottom);
    }
    // Rectangles come in bands of rows, top to bottom and left to right within a band.
    std::vector<std::vector<Run>> perRow(rowCount);
    for (DWORD i = 0; i < count; ++i) {
        for (int y = rects[i].top; y < rects[i].bottom; ++y)
            perRow[y].push_back(Run{rects[i].left, rects[i].right});
    }
    firstOfRow.resize(rowCount + 1);
    for (int y = 0; y < rowCount; ++y) {
        firstOfRow[y] = static_cast<int>(runs.size());
        runs.insert(runs.end(), perRow[y].begin(), perRow[y].end());
    }
    firstOfRow[rowCount] = static_cast<int>(runs.size());
    return true;
}

void drawThroughRuns(const PixelSurface& dest, const RECT& clip, const ShapeRuns& shape, int x,
                     int y, const PixelSurface& source, int sourceX, int sourceY, bool framed)
{
    // Nothing is written outside either surface, whatever the places.
    const int top = std::max<int>({clip.top, 0, y, y - sourceY});
    const int bottom = std::min<int>(
        {clip.bottom, dest.height, y + shape.outline.rows(), y - sourceY + source.height});
    const int left = std::max<int>({clip.left, 0, x - sourceX});
    const int right = std::min<int>({clip.right, dest.width, x - sourceX + source.width});
    for (int row = top; row < bottom; ++row) {
        std::uint32_t* to = dest.row(row);
        const std::uint32_t* from = source.row(sourceY + row - y) + sourceX - x;
        const int r = row - y;
        for (const PixelRuns::Run* run = shape.outline.begin(r); run != shape.outline.end(r);
             ++run) {
            const int a = std::max(left, x + run->left), b = std::min(right, x + run->right);
            if (a < b)
                std::memcpy(to + a, from + a, static_cast<size_t>(b - a) * sizeof *to);
        }
        if (!framed || r >= shape.frame.rows())
            continue;
        for (const PixelRuns::Run* run = shape.frame.begin(r); run != shape.frame.end(r); ++run) {
            const int a = std::max(left, x + run->left), b = std::min(right, x + run->right);
            if (a < b)
                std::fill(to + a, to + b, 0u);
        }
    }
}
