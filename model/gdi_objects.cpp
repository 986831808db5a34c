#include "gdi_objects.h"

namespace gdi {
namespace {

long live = 0;

template <typename Handle> Handle counted(Handle handle)
{
    if (handle)
        ++live;
    return handle;
}

}  // namespace

HRGN createRectRgn(int left, int top, int right, int bottom)
{
    return counted(CreateRectRgn(left, top, right, bottom));
}

HRGN createEllipticRgn(int left, int top, int right, int bottom)
{
    return counted(CreateEllipticRgn(left, top, right, bottom));
}

HDC createCompatibleDC(HDC reference)
{
    return counted(CreateCompatibleDC(reference));
}

HBITMAP createCompatibleBitmap(HDC reference, int width, int height)
{
    return counted(CreateCompatibleBitmap(reference, width, height));
}

HBRUSH createSolidBrush(COLORREF colour)
{
    return counted(CreateSolidBrush(colour));
}

HFONT createFontIndirect(const LOGFONTA& font)
{
    return counted(CreateFontIndirectA(&font));
}

void deleteObject(HGDIOBJ object)
{
    if (object && DeleteObject(object))
        --live;
}

void deleteDC(HDC dc)
{
    if (dc && DeleteDC(dc))
        --live;
}

long liveObjects()
{
    return live;
}

}  // namespace gdi
