#pragma once
// One piece of the puzzle: a fixed-size record addressed by its index in the Puzzle's
// piece array (row-major: index = row * columns + column).
#include <windows.h>

// Kind of a piece side.
enum KnobKind : int {
    NoKnob = -1,  // a freshly constructed piece, before generation
    Flat = 0,     // straight: the puzzle's border, or every side of a rectangular piece
    Out = 1,      // a tab sticks out
    In = 2,       // a socket is cut in
};

enum ShapeMode : int {
    Rectangular = 1,
    Knobbed = 2,
};

// Distance in pixels within which a piece counts as dropped at its correct place.
constexpr int HomeTolerance = 4;

class PlaceIndex;
struct PixelSurface;
struct ShapeRuns;
class ShapeCache;

class Piece {
public:
    Piece();
    virtual ~Piece();
    Piece(const Piece&) = delete;
    Piece& operator=(const Piece&) = delete;

    // Stores the new place (not for a set piece) and, with redraw, draws the piece there
    // into targetDC. Nothing under the old place is restored.
    void moveTo(int newX, int newY, bool redraw);
    void assignWindow(HWND window, HDC targetDC, int trayId);
    // The piece is at its correct place for good: it stays there, in puzzle coordinates.
    void markSet();
    // (px, py): the piece's top-left in puzzle coordinates.
    bool isNearHome(int px, int py) const;

    // Outline and bounding box from the grid cell held in x, y, width, height.
    void buildShape(int originX, int originY);
    RECT getBounds(bool atPosition, bool withoutTabs, bool withoutKnobs) const;
    // (px, py) in the coordinates of window.
    bool hitTest(HWND window, int px, int py) const;

    // Draws the part of the piece inside clip (the piece's own coordinates) into targetDC,
    // shifted by (-offsetX, -offsetY). The flags say which neighbours exist and are set.
    void draw(const RECT& clip, int offsetX, int offsetY, bool upSet, bool downSet, bool leftSet,
              bool rightSet);
    // The same into dest's pixels from source's, without a GDI call; false, with nothing
    // drawn, when the piece has no runs or its frame needs the GDI.
    bool drawDirect(const PixelSurface& dest, const PixelSurface& source, const RECT& clip,
                    int offsetX, int offsetY, bool upSet, bool downSet, bool leftSet,
                    bool rightSet) const;

    HRGN region;            // outline in piece-local coordinates
    HRGN frameRegion;       // its frame, shared like it; null: worked out when drawn
    const ShapeRuns* runs;  // both as runs of pixels, shared like them; null: none
    int x, y;  // bounding box top-left: window coordinates if free, puzzle coordinates if set
    int width, height;
    int sourceX, sourceY;  // bounding box inside the rendered picture
    int homeX, homeY;      // correct place, puzzle coordinates
    int zIndex;
    int knobSize;
    KnobKind knobTop, knobBottom, knobRight, knobLeft;
    int neighbourUp, neighbourDown, neighbourLeft, neighbourRight;
    int trayId;   // 0 = the main window
    int groupId;  // meaningful while isGrouped
    HDC targetDC;
    HDC sourceDC;
    HWND window;
    bool isSet;
    bool isVisible;
    bool isGrouped;
    bool drawOutline;
    bool drawSetOutline;

    // Pieces of one shape share one outline region from this cache, which keeps a large
    // puzzle far below the platform's per-process GDI object limit. Without a cache the
    // piece owns its region.
    ShapeCache* shapes;
    // Told of every change of place, window or state, so that lookups by place stay current.
    PlaceIndex* places;

private:
    void releaseRegion();
    bool ownsRegion;
};
