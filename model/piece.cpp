#include "model/piece.h"

#include <cstdlib>

#include "model/gdi_objects.h"
#include "model/place_index.h"

Piece::Piece()
    : region(nullptr), frameRegion(nullptr), runs(nullptr), x(0), y(0), width(0), height(0),
      sourceX(0), sourceY(0), homeX(0), homeY(0), zIndex(0), knobSize(0), knobTop(NoKnob),
      knobBottom(NoKnob), knobRight(NoKnob), knobLeft(NoKnob), neighbourUp(-1), neighbourDown(-1),
      neighbourLeft(-1), neighbourRight(-1), trayId(0), groupId(0), targetDC(nullptr),
      sourceDC(nullptr), window(nullptr), isSet(false), isVisible(true), isGrouped(false),
      drawOutline(false), drawSetOutline(false), shapes(nullptr), places(nullptr), ownsRegion(false)
{
}

Piece::~Piece()
{
    releaseRegion();
}

void Piece::releaseRegion()
{
    if (ownsRegion)
        gdi::deleteObject(region);
    region = nullptr;
    frameRegion = nullptr;
    runs = nullptr;
    ownsRegion = false;
}

void Piece::moveTo(int newX, int newY, bool redraw)
{
    if (isSet)
        return;
    x = newX;
    y = newY;
    if (places)
        places->touch(this);
    if (redraw)
        draw(getBounds(true, false, false), 0, 0, false, false, false, false);
}

void Piece::assignWindow(HWND newWindow, HDC newTargetDC, int newTrayId)
{
    window = newWindow;
    targetDC = newTargetDC;
    trayId = newTrayId;
    if (places)
        places->touch(this);
}

void Piece::markSet()
{
    isSet = true;
    if (places)
        places->touch(this);
}

bool Piece::isNearHome(int px, int py) const
{
    return !isSet && trayId == 0 && std::abs(px - homeX) <= HomeTolerance &&
           std::abs(py - homeY) <= HomeTolerance;
}
