#include "memory_dc.h"

#include "gdi_objects.h"

namespace {

void createPair(HDC& dc, HDC referenceDC, HBITMAP& bitmap, int w, int h, bool replace,
                HBITMAP (*makeBitmap)(HDC, int, int))
{
    if (replace)
        deleteMemoryDC(dc, bitmap);
    bitmap = makeBitmap(referenceDC, w, h);
    dc = gdi::createCompatibleDC(referenceDC);
    if (dc && bitmap)
        SelectObject(dc, bitmap);
}

}  // namespace

void createMemoryDC(HDC& dc, HDC referenceDC, HBITMAP& bitmap, int w, int h, bool replace)
{
    createPair(dc, referenceDC, bitmap, w, h, replace, gdi::createCompatibleBitmap);
}

void createPixelSurface(HDC& dc, HDC referenceDC, HBITMAP& bitmap, int w, int h, bool replace)
{
    createPair(dc, referenceDC, bitmap, w, h, replace, gdi::createSurfaceBitmap);
}

void replaceMemoryDC(HDC& dc, HBITMAP& bitmap, HDC newDC, HBITMAP newBitmap)
{
    deleteMemoryDC(dc, bitmap);
    dc = newDC;
    bitmap = newBitmap;
}

void deleteMemoryDC(HDC& dc, HBITMAP& bitmap)
{
    // The DC goes first so that the bitmap is no longer selected when it is deleted.
    gdi::deleteDC(dc);
    dc = nullptr;
    gdi::deleteObject(bitmap);
    bitmap = nullptr;
}
