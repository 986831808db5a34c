#pragma once
// Where the pieces lie, so that the pieces meeting a point or a rectangle are found without
// walking every piece. Each plane (the main window, each tray) is cut into square cells; a
// cell lists the pieces whose box meets it in stacking order, bottom first, so a lookup walks
// down from the top and stops early.
//
// Filing is lazy: a piece that moves, changes window, is set or changes place in the stacking
// order only says so (touch, raise, lower), and is filed again before the next lookup. Moving
// a large group on every pointer move thus costs nothing until something is looked up.
#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <vector>

class Piece;

struct PlaceBox {
    int left, top, right, bottom;  // [left, right) x [top, bottom)
};

// A piece as a cell lists it: its box and its solid core (the box without the knob zones)
// where it is filed, so that a walk down a cell reads the cell alone until a piece shows.
struct PlaceEntry {
    int piece;
    PlaceBox box;
    PlaceBox core;
};

class PlaceIndex {
public:
    // Forgets every place; pieces and order (bottom first) are read while filing. cellSide
    // is a power of two.
    void reset(const Piece* pieces, const int* order, int count, int cellSide);
    void clear();

    void touch(const Piece* piece);
    void touchAll();
    // The piece is about to become the top (raise) or the bottom (lower) of the stacking
    // order: told before its zIndex changes.
    void raise(int p);
    void lower(int p);

    // Files again every piece touched since the last call. where(p, plane, box, core) gives
    // a piece's plane, box and core now, or false when it is to be filed nowhere. When
    // memory runs out it throws std::bad_alloc, and the next call files everything again.
    template <class Where> void refresh(Where where);

    // Calls visit(cell, entries) for every cell of plane that meets area, with the cell's box
    // and its pieces bottom first (none for a cell no piece meets).
    template <class Visit> void forEachCell(int plane, const PlaceBox& area, Visit visit) const;

    // Marks for one lookup: each piece seen once, with a number the lookup gives it.
    void beginMarks();
    // The number given to p in this lookup, or -1.
    int mark(int p) const { return marks[p].epoch == epoch ? marks[p].value : -1; }
    void give(int p, int value) { marks[p] = Mark{epoch, value}; }

private:
    struct CellKey {
        int plane, column, row;
        bool operator==(const CellKey& o) const
        {
            return plane == o.plane && column == o.column && row == o.row;
        }
    };
    struct CellHash {
        size_t operator()(const CellKey& k) const
        {
            return static_cast<size_t>(k.plane) * 0x9E3779B1u ^
                   static_cast<size_t>(k.column) * 0x85EBCA77u ^
                   static_cast<size_t>(k.row) * 0xC2B2AE3Du;
        }
    };
    // The cells a piece is filed in: columns [left, right] and rows [top, bottom] of plane;
    // none when left > right.
    struct Filed {
        int plane, left, top, right, bottom;
    };
    struct Mark {
        unsigned epoch;
        int value;
    };

    Filed cellsOf(int plane, const PlaceBox& box) const;
    void restack(int p, bool toTop);
    void unfile(int p);
    void file(const PlaceEntry& entry, const Filed& cells, bool atTop);
    // Takes p's entry out of the cell, returning it.
    PlaceEntry eraseFrom(std::vector<PlaceEntry>& cell, int p) const;
    template <class Where> void fileNow(int p, Where& where, bool atTop);
    template <class Where> void refreshPending(Where& where);
    int floorDiv(int v) const { return v >> shift; }  // arithmetic: rounds down

    const Piece* pieces = nullptr;
    const int* order = nullptr;
    int count = 0;
    int side = 32;
    int shift = 5;
    std::unordered_map<CellKey, std::vector<PlaceEntry>, CellHash> cells;
    std::vector<Filed> filed;
    std::vector<int> pending;
    std::vector<std::uint8_t> isPending;
    bool allPending = false;
    std::vector<Mark> marks;
    unsigned epoch = 0;
};

template <class Where> void PlaceIndex::fileNow(int p, Where& where, bool atTop)
{
    PlaceEntry entry{p, {}, {}};
    int plane = 0;
    if (where(p, plane, entry.box, entry.core))
        file(entry, cellsOf(plane, entry.box), atTop);
    else
        filed[p] = Filed{0, 0, 0, -1, -1};
}

template <class Where> void PlaceIndex::refresh(Where where)
{
    try {
        refreshPending(where);
    } catch (...) {
        // Filing stopped part-way: everything is filed again by the next lookup.
        allPending = count > 0;
        pending.clear();
        std::fill(isPending.begin(), isPending.end(), 0);
        throw;
    }
}

template <class Where> void PlaceIndex::refreshPending(Where& where)
{
    // Past a few thousand moved pieces, filing all again in stacking order is cheaper than
    // one sorted insertion each.
    if (allPending || pending.size() > static_cast<size_t>(count) / 8 + 4096) {
        for (auto& cell : cells)
            cell.second.clear();
        for (int z = 0; z < count; ++z)
            fileNow(order[z], where, true);
        pending.clear();
        std::fill(isPending.begin(), isPending.end(), 0);
        allPending = false;
        return;
    }
    for (int p : pending) {
        isPending[p] = 0;
        unfile(p);
        fileNow(p, where, false);
    }
    pending.clear();
}

template <class Visit>
void PlaceIndex::forEachCell(int plane, const PlaceBox& area, Visit visit) const
{
    static const std::vector<PlaceEntry> none;
    if (area.left >= area.right || area.top >= area.bottom)
        return;
    for (int row = floorDiv(area.top); row <= floorDiv(area.bottom - 1); ++row) {
        for (int column = floorDiv(area.left); column <= floorDiv(area.right - 1); ++column) {
            const PlaceBox box{column * side, row * side, (column + 1) * side, (row + 1) * side};
            const auto found = cells.find(CellKey{plane, column, row});
            visit(box, found == cells.end() ? none : found->second);
        }
    }
}
