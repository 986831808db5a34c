#pragma once
// The one loaded source picture: decoded by the platform's picture decoder, rendered at its
// natural size (later at puzzle size) and as a preview fitted into the preview box.
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

enum PictureLoad {
    PictureLoaded,
    PictureUnreadable,  // not opened: the picture held is rendered again; not decoded: it
                        // is let go and its images stay
    PictureTooLarge,    // decoded, but its images cannot be held: everything on hand stays
};

class Picture {
public:
    Picture();
    virtual ~Picture();
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    // Loads and renders a BMP, JPEG or GIF file at its natural size and as the preview.
    PictureLoad loadPicture(const char* path);
    // Re-renders the picture image at the puzzle size. False, with the image on hand kept,
    // when the new one cannot be made.
    bool renderAtSize(int w, int h);
    // Whitens both images; the decoded picture stays.
    void blank();
    // Shows path's picture as the preview on a fresh, white board image. A picture, or a
    // board image, too large to hold changes nothing (PictureTooLarge).
    PictureLoad loadPreview(const char* path);

    int hiMetricWidth;
    int hiMetricHeight;
    IPicture* picture;
    HDC pictureDC;
    HDC previewDC;
    int naturalWidth;
    int naturalHeight;
    int previewX;
    int previewY;
    int previewWidth;
    int previewHeight;
    float aspectRatio;  // naturalWidth / naturalHeight
    HBITMAP pictureBitmap;
    HBITMAP previewBitmap;
    HWND ownerWindow;

private:
    bool render(HDC dc, int w, int h);
    int renderedWidth, renderedHeight;  // what pictureDC holds; zero when not the picture
    bool createSurface(HDC& dc, HBITMAP& bitmap, int w, int h);
};

// The path of the picture loadPreview last loaded.
extern char loadedPicturePath[MAX_PATH];

// The one picture of the program (constructed first, destroyed last).
extern Picture thePicture;

// Opens a picture for a new puzzle: preview, the size dialog in both modes, no puzzle yet.
// A file that is no picture it can show is named in a message, and nothing changes.
void openPictureCommand(const char* path);
enum class PictureCheck {
    Shows,        // a BMP, JPEG or GIF picture that decodes, of a size above zero
    Missing,      // the file cannot be opened
    NotAPicture,  // read, but not a picture that decodes
    TooLarge,     // a picture whose image is larger than the memory left
};
// A picture found to show is kept for a load of the same path that follows.
PictureCheck checkPicture(const char* path);
// Lets go of a picture checked but not loaded.
void forgetCheckedPicture();
// path (MAX_PATH) names the picture of a puzzle or collection entry. When it cannot be shown
// the player is told which picture is missing and may look for it with the open dialog:
// true with path naming a picture that shows, false when they gave up.
bool findPicture(char* path);

// Shrinks width or height so that width / height comes to ratio.
void fitToRatio(int& width, int& height, float ratio);
// Rounds to the nearest integer; an exact half rounds down.
int roundToInt(float value);
