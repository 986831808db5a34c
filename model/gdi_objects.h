#pragma once
// Every GDI object the program creates goes through these wrappers, which keep a live
// count. GetGuiResources reports 0 under Wine, so the count is how leaks are proven.
#include <windows.h>

namespace gdi {

HRGN createRectRgn(int left, int top, int right, int bottom);
HRGN createEllipticRgn(int left, int top, int right, int bottom);
HDC createCompatibleDC(HDC reference);
HBITMAP createCompatibleBitmap(HDC reference, int width, int height);
// A 32-bit top-down DIB section, whose pixels the program can also reach directly.
HBITMAP createSurfaceBitmap(HDC reference, int width, int height);
// Whether bitmap was made by createSurfaceBitmap and is not deleted: the platform does not
// say which way up a DIB section's rows run.
bool isSurfaceBitmap(HGDIOBJ bitmap);
HBRUSH createSolidBrush(COLORREF colour);
HFONT createFontIndirect(const LOGFONTA& font);

// Both accept null and do nothing then.
void deleteObject(HGDIOBJ object);
void deleteDC(HDC dc);

// Objects created through this module and not yet deleted.
long liveObjects();

}  // namespace gdi
