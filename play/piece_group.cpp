#include "play/piece_group.h"

#include "model/gdi_objects.h"

PieceGroup::PieceGroup()
    : id(0), bounds{0, 0, 0, 0}, region(gdi::createRectRgn(0, 10, 0, 10)), x(0), y(0), width(0),
      height(0), sourceX(0), sourceY(0), homeX(0), homeY(0), trayId(0), prev(nullptr), next(nullptr)
{
}

PieceGroup::~PieceGroup()
{
    gdi::deleteObject(region);
}

void PieceGroup::setPosition(int newX, int newY)
{
    x = newX;
    y = newY;
    bounds = RECT{x, y, x + width, y + height};
}
