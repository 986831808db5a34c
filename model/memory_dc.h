#pragma once
// Off-screen surfaces: a memory device context with a bitmap selected into it, always
// created and deleted as a pair.
#include <windows.h>

// With replace, the old pair is deleted first. dc and bitmap are out-parameters.
void createMemoryDC(HDC& dc, HDC referenceDC, HBITMAP& bitmap, int w, int h, bool replace);

// The same with a 32-bit DIB section, for the surfaces a repaint copies pieces into
// directly (the board, the trays) or from (the picture).
void createPixelSurface(HDC& dc, HDC referenceDC, HBITMAP& bitmap, int w, int h, bool replace);

// Deletes whichever handle is not null and nulls it.
void deleteMemoryDC(HDC& dc, HBITMAP& bitmap);
// Deletes the pair held and takes the one made in its place.
void replaceMemoryDC(HDC& dc, HBITMAP& bitmap, HDC newDC, HBITMAP newBitmap);
