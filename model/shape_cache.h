#pragma once
// Outline regions shared by every piece of the same shape. A piece's outline depends only
// on its cell size, its knob size and its four side kinds, so a puzzle has at most a few
// hundred distinct outlines however many pieces it has.
#include <map>
#include <tuple>
#include <windows.h>

#include "piece.h"
#include "pixel_runs.h"

struct ShapeKey {
    int cellWidth;
    int cellHeight;
    int knobSize;
    KnobKind top, bottom, right, left;

    bool operator<(const ShapeKey& other) const
    {
        return std::tie(cellWidth, cellHeight, knobSize, top, bottom, right, left) <
               std::tie(other.cellWidth, other.cellHeight, other.knobSize, other.top, other.bottom,
                        other.right, other.left);
    }
};

// Builds a new outline region in bounding-box coordinates; the caller owns it.
// Null when the platform cannot create the region.
HRGN buildOutline(const ShapeKey& key);
// The pixels a one-pixel frame of outline paints: the outline less what stays of it when
// it is moved one pixel each way. Filled, it draws what FrameRgn draws, without working the
// frame out again at every draw. The caller owns it; null when it cannot be made.
HRGN buildFrame(HRGN outline);

class ShapeCache {
public:
    ShapeCache() = default;
    virtual ~ShapeCache();
    ShapeCache(const ShapeCache&) = delete;
    ShapeCache& operator=(const ShapeCache&) = delete;

    // The shared outline for key, built on first request; null when it cannot be created.
    HRGN outline(const ShapeKey& key);
    // The shared frame of that outline (built with it); null when it cannot be created.
    HRGN frame(const ShapeKey& key);
    // The outline and frame as runs of pixels (built with them); null when they could not
    // be read.
    const ShapeRuns* runs(const ShapeKey& key) const;
    void clear();
    int size() const { return static_cast<int>(regions.size()); }

private:
    struct Shape {
        HRGN outline;
        HRGN frame;
        ShapeRuns runs;
        bool hasRuns;
    };
    std::map<ShapeKey, Shape> regions;
};
