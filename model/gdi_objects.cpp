#include "gdi_objects.h"

#include <new>
#include <unordered_set>

namespace gdi {
namespace {

long live = 0;

// Never destroyed, so that objects deleted by static destructors at exit still find it.
std::unordered_set<HGDIOBJ>& surfaces()
{
    static auto* made = new std::unordered_set<HGDIOBJ>;
    return *made;
}

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

HBITMAP createSurfaceBitmap(HDC reference, int width, int height)
{
    if (width < 0 || height < 0)
        return nullptr;
    // An empty surface is a single pixel, as a compatible bitmap of no size is.
    width = width ? width : 1;
    height = height ? height : 1;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(reference, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (!bitmap)
        return nullptr;
    // Known as a surface before it is handed out: short of memory, there is no bitmap.
    try {
        surfaces().insert(bitmap);
    } catch (const std::bad_alloc&) {
        DeleteObject(bitmap);
        return nullptr;
    }
    return counted(bitmap);
}

bool isSurfaceBitmap(HGDIOBJ bitmap)
{
    return bitmap && surfaces().count(bitmap) != 0;
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
    if (object && DeleteObject(object)) {
        --live;
        surfaces().erase(object);
    }
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
