#include "model/place_index.h"

#include "model/piece.h"

void PlaceIndex::reset(const Piece* newPieces, const int* newOrder, int newCount, int cellSide)
{
    clear();
    pieces = newPieces;
    order = newOrder;
    count = newCount;
    side = cellSide;
    shift = 0;
    while ((1 << shift) < side)
        ++shift;
    filed.assign(count, Filed{0, 0, 0, -1, -1});
    isPending.assign(count, 0);
    // Each piece is pending at most once, so touching never allocates: a move never fails.
    pending.reserve(count);
    marks.assign(count, Mark{0, 0});
    allPending = true;
}

void PlaceIndex::clear()
{
    pieces = nullptr;
    order = nullptr;
    count = 0;
    cells.clear();
    std::vector<Filed>().swap(filed);
    std::vector<int>().swap(pending);
    std::vector<std::uint8_t>().swap(isPending);
    std::vector<Mark>().swap(marks);
    allPending = false;
    epoch = 0;
}

void PlaceIndex::touch(const Piece* piece)
{
    if (allPending || !pieces || piece < pieces || piece >= pieces + count)
        return;
    const int p = static_cast<int>(piece - pieces);
    if (isPending[p])
        return;
    isPending[p] = 1;
    pending.push_back(p);  // within the room reserved for every piece: never allocates
}

void PlaceIndex::touchAll()
{
    allPending = count > 0;
}

void PlaceIndex::raise(int p)
{
    restack(p, true);
}

void PlaceIndex::lower(int p)
{
    restack(p, false);
}

void PlaceIndex::restack(int p, bool toTop)
{
    if (allPending || p < 0 || p >= count)
        return;
    const Filed& f = filed[p];
    for (int row = f.top; row <= f.bottom; ++row) {
        for (int column = f.left; column <= f.right; ++column) {
            // The piece is filed here, so the cell exists and has room for it again.
            const auto found = cells.find(CellKey{f.plane, column, row});
            if (found == cells.end())
                continue;
            std::vector<PlaceEntry>& cell = found->second;
            const PlaceEntry entry = eraseFrom(cell, p);
            cell.insert(toTop ? cell.end() : cell.begin(), entry);
        }
    }
}

void PlaceIndex::beginMarks()
{
    if (++epoch == 0) {  // wrapped: old marks could look current
        std::fill(marks.begin(), marks.end(), Mark{0, 0});
        epoch = 1;
    }
}

PlaceIndex::Filed PlaceIndex::cellsOf(int plane, const PlaceBox& box) const
{
    if (box.left >= box.right || box.top >= box.bottom)
        return Filed{plane, 0, 0, -1, -1};
    return Filed{plane, floorDiv(box.left), floorDiv(box.top), floorDiv(box.right - 1),
                 floorDiv(box.bottom - 1)};
}

PlaceEntry PlaceIndex::eraseFrom(std::vector<PlaceEntry>& cell, int p) const
{
    // Cells are in stacking order, so the piece is found by its zIndex.
    const int z = pieces[p].zIndex;
    auto at = std::lower_bound(cell.begin(), cell.end(), z, [this](const PlaceEntry& e, int value) {
        return pieces[e.piece].zIndex < value;
    });
    if (at == cell.end() || at->piece != p)
        at = std::find_if(cell.begin(), cell.end(),
                          [p](const PlaceEntry& e) { return e.piece == p; });
    if (at == cell.end())
        return PlaceEntry{p, {}, {}};
    const PlaceEntry entry = *at;
    cell.erase(at);
    return entry;
}

void PlaceIndex::unfile(int p)
{
    const Filed& f = filed[p];
    for (int row = f.top; row <= f.bottom; ++row) {
        for (int column = f.left; column <= f.right; ++column) {
            const auto found = cells.find(CellKey{f.plane, column, row});
            if (found != cells.end())
                eraseFrom(found->second, p);
        }
    }
    filed[p] = Filed{0, 0, 0, -1, -1};
}

void PlaceIndex::file(const PlaceEntry& entry, const Filed& where, bool atTop)
{
    filed[entry.piece] = where;
    const int z = pieces[entry.piece].zIndex;
    for (int row = where.top; row <= where.bottom; ++row) {
        for (int column = where.left; column <= where.right; ++column) {
            std::vector<PlaceEntry>& cell = cells[CellKey{where.plane, column, row}];
            if (atTop) {
                cell.push_back(entry);
                continue;
            }
            cell.insert(std::upper_bound(cell.begin(), cell.end(), z,
                                         [this](int value, const PlaceEntry& e) {
                                             return value < pieces[e.piece].zIndex;
                                         }),
                        entry);
        }
    }
}
