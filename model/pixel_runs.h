#pragma once
// Direct access to the pixels of a surface, and outlines kept as runs of pixels row by row,
// so that a repaint can copy a piece's picture into the board without a GDI call per piece.
// Every surface is a 32-bit DIB section; whatever the GDI has batched is flushed first.
#include <cstdint>
#include <vector>
#include <windows.h>

struct PixelSurface {
    std::uint8_t* top = nullptr;  // row 0
    long rowStep = 0;             // bytes from one row to the next
    int width = 0;
    int height = 0;

    std::uint32_t* row(int y) const { return reinterpret_cast<std::uint32_t*>(top + rowStep * y); }
};

// The pixels of the surface bitmap selected into dc; false for any other bitmap.
bool pixelsOf(HDC dc, PixelSurface& out);

// A region as runs [left, right) per row, rows 0 to rows - 1 of its own coordinates.
class PixelRuns {
public:
    // False when the region cannot be read or reaches above or left of its origin.
    bool build(HRGN region);

    struct Run {
        int left, right;
    };
    int rows() const { return static_cast<int>(firstOfRow.size()) - 1; }
    const Run* begin(int row) const { return runs.data() + firstOfRow[row]; }
    const Run* end(int row) const { return runs.data() + firstOfRow[row + 1]; }

private:
    std::vector<int> firstOfRow{0};
    std::vector<Run> runs;
};

// The runs of a piece's outline and of its frame.
struct ShapeRuns {
    PixelRuns outline;
    PixelRuns frame;
};

// Copies source (sourceX, sourceY onwards) into dest inside the outline placed at (x, y) and
// within clip, then blackens the frame there when framed: what clipping to the outline,
// copying, and filling the frame region draw.
void drawThroughRuns(const PixelSurface& dest, const RECT& clip, const ShapeRuns& shape, int x,
                     int y, const PixelSurface& source, int sourceX, int sourceY, bool framed);
