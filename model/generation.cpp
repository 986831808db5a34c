// Cutting the picture into a grid of pieces with tabs and sockets, and scattering them.
#include <algorithm>
#include <cmath>
#include <ctime>

#include "model/cell_geometry.h"
#include "model/puzzle.h"
#include "model/random.h"

namespace {

constexpr int PlacementTries = 500;
constexpr int FallbackGap = 5;  // the fall-back place lies this far right of and below the preview
constexpr int MinimumCellSide = 32;  // cells of the place index, in pixels
constexpr int MaximumCellSide = 1024;

KnobKind complement(KnobKind kind)
{
    return kind == Out ? In : kind == In ? Out : kind;
}

double unitRandom()
{
    return nextRandom() * (1.0 / RandomRange);
}

}  // namespace

KnobKind Puzzle::randomKnobKind()
{
    const int n = static_cast<int>(std::floor(1 + unitRandom() * 100));
    return n > 50 ? In : Out;
}

POINT Puzzle::randomPosition(int w, int h)
{
    for (int attempt = 0; attempt < PlacementTries; ++attempt) {
        const int rx =
            static_cast<int>(std::floor(unitRandom() * ((boardWidth - w) - boardLeft) + boardLeft));
        const int ry =
            static_cast<int>(std::floor(unitRandom() * ((boardHeight - h) - boardTop) + boardTop));
        // Right of the preview or below it: the piece does not cover the preview.
        if (rx >= previewX + previewWidth || ry >= previewY + previewHeight)
            return POINT{rx, ry};
    }
    return POINT{previewX + previewWidth + FallbackGap, previewY + previewHeight + FallbackGap};
}

bool Puzzle::generate()
{
    return generate(static_cast<unsigned>(std::time(nullptr)));
}

bool Puzzle::generate(unsigned seed)
{
    if (pieceCount == 0 || rows == 0 || columns == 0)
        return true;
    seedRandom(seed);
    made = true;
    if (!buildPieces())
        return false;
    // Cells about a piece wide: each piece lies in at most four, and a cell holds few.
    int longest = 1;
    for (int p = 0; p < pieceCount; ++p)
        longest = std::max({longest, pieces[p].width, pieces[p].height});
    int side = MinimumCellSide;
    while (side < longest && side < MaximumCellSide)
        side *= 2;
    places.reset(pieces, zOrder, pieceCount, side);
    placesScrollX = scrollX;
    placesScrollY = scrollY;
    return true;
}

bool Puzzle::buildPieces()
{
    // One knob size for every piece and both directions, from the base cell height.
    const int knob = height / rows / 8;
    for (int row = 0; row < rows; ++row) {
        const CellSpan down = cellSpan(height, rows, row);
        const int cellY = originY + static_cast<int>(down.offset);
        const int cellH = static_cast<int>(down.size);
        for (int column = 0; column < columns; ++column) {
            const CellSpan across = cellSpan(width, columns, column);
            const int cellX = originX + static_cast<int>(across.offset);
            const int cellW = static_cast<int>(across.size);
            const int p = row * columns + column;
            Piece& piece = pieces[p];
            piece.neighbourUp = row > 0 ? p - columns : -1;
            piece.neighbourDown = row < rows - 1 ? p + columns : -1;
            piece.neighbourLeft = column > 0 ? p - 1 : -1;
            piece.neighbourRight = column < columns - 1 ? p + 1 : -1;

            piece.homeX = cellX;
            piece.x = cellX - originX;
            piece.homeY = cellY;
            piece.y = cellY - originY;
            piece.width = cellW;
            piece.height = cellH;
            piece.zIndex = p;

            if (shapeMode == Knobbed) {
                piece.knobSize = knob;
                piece.knobBottom = row == rows - 1 ? Flat : randomKnobKind();
                piece.knobTop = row == 0 ? Flat : complement(pieces[p - columns].knobBottom);
                piece.knobRight = column == columns - 1 ? Flat : randomKnobKind();
                piece.knobLeft = column == 0 ? Flat : complement(pieces[p - 1].knobRight);
            } else {
                piece.knobSize = 0;
                piece.knobTop = piece.knobBottom = piece.knobRight = piece.knobLeft = Flat;
            }

            piece.shapes = &shapes;
            piece.places = &places;
            piece.buildShape(originX, originY);
            if (!piece.region)
                return false;
            piece.assignWindow(mainWindow, boardDC, 0);
            piece.sourceDC = pictureDC;
            piece.drawOutline = drawOutline;
            piece.drawSetOutline = drawSetOutline;

            const POINT place = randomPosition(cellW, cellH);
            piece.moveTo(place.x, place.y, false);
            zOrder[p] = p;
        }
        if (makeProgress)
            makeProgress(row + 1, rows);
    }
    return true;
}
