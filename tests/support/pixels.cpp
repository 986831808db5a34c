#include "tests/support/pixels.h"

#include "model/memory_dc.h"
#include "model/pixel_runs.h"

COLORREF patternColour(int x, int y)
{
    // As the build draws it: red the column, green the row, blue which 256-pixel block.
    return RGB(x & 0xFF, y & 0xFF, ((x >> 8) * 32 + (y >> 8) * 8 + 4) & 0xFF);
}

Snapshot::Snapshot(HDC source, int left, int top, int w, int h)
    : left(left), top(top), width(w), height(h), pixels(static_cast<size_t>(w) * h)
{
    HDC dc = nullptr;
    HBITMAP bitmap = nullptr;
    createPixelSurface(dc, source, bitmap, w, h, false);
    BitBlt(dc, 0, 0, w, h, source, left, top, SRCCOPY);
    GdiFlush();
    PixelSurface copy;
    if (pixelsOf(dc, copy)) {
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) {
                const std::uint32_t v = copy.row(y)[x];
                pixels[static_cast<size_t>(y) * w + x] =
                    RGB(v >> 16 & 0xFF, v >> 8 & 0xFF, v & 0xFF);
            }
        }
    }
    deleteMemoryDC(dc, bitmap);
}

COLORREF Snapshot::at(int x, int y) const
{
    return pixels[static_cast<size_t>(y - top) * width + (x - left)];
}
