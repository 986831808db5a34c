#pragma once
// Drawing through an outline. An image holds the picture inside the outline and black
// outside; a mask is black inside and white outside. The mask drawn with SRCAND blackens
// the inside, the image drawn with SRCINVERT then puts the picture there and leaves the
// rest unchanged.
#include <windows.h>

// Fills the top-left w x h of image and mask for outline, with the picture taken from
// source at (sourceX, sourceY).
void fillMaskedPair(HDC image, HDC mask, int w, int h, HRGN outline, HDC source, int sourceX,
                    int sourceY);

// Draws the picture from source at (sourceX, sourceY) inside outline placed at (x, y) of
// dest, only within clip, framed when asked: the same pixels as a masked pair of the whole
// item drawn through clip, in one transfer. The shared outline is left where it is.
// A frame given is filled; without one the frame is worked out from the outline.
void drawThroughOutline(HDC dest, const RECT& clip, HRGN outline, int x, int y, HDC source,
                        int sourceX, int sourceY, bool framed, HRGN frame = nullptr);
// A one-pixel black frame just inside the outline.
void frameOutline(HDC dc, HRGN outline);

// Draws mask then image, w x h taken from (srcX, srcY), at (destX, destY) of dest.
void blitMasked(HDC dest, int destX, int destY, int w, int h, HDC mask, HDC image, int srcX,
                int srcY);

// Screen-compatible surfaces that are reused from draw to draw and only ever grow, so
// drawing a piece creates no GDI object. Each slot is used by one step at a time.
enum ScratchSlot { ScratchPass, ScratchSlotCount };

// A surface of at least w x h; null if it cannot be created.
HDC scratchSurface(ScratchSlot slot, int w, int h);
void releaseScratchSurfaces();
