#include "memory_dc.h"

#include "gdi_objects.h"

void createMemoryDC(HDC& dc, HDC referenceDC, HBITMAP& bitmap, int w, int h, bool replace)
{
    if (replace)
        deleteMemoryDC(dc, bitmap);
    bitmap = gdi::createCompatibleBitmap(referenceDC, w, h);
    dc = gdi::createCompatibleDC(referenceDC);
    if (dc && bitmap)
        SelectObject(dc, bitmap);
}

void createPixelSurface(HDC& dc, HDC referenceDC, HBITMAP& bitmap, int w, int h, bool replace)
{
    if (replace)
        deleteMemoryDC(dc, bitmap);
    bitmap = gdi::createSurfaceBitmap(referenceDC, w, h);
    dc = gdi::createCompatibleDC(referenceDC);
    if (dc && bitmap)
        SelectObject(dc, bitmap);
}

void deleteMemoryDC(HDC& dc, HBITMAP& bitmap)
{
    // The DC goes first so that the bitmap is no longer selected when it is deleted.
    gdi::deleteDC(dc);
    dc = nullptr;
    gdi::deleteObject(bitmap);
    bitmap = nullptr;
}
