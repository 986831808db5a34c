#include "files/picture.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "app/app_state.h"
#include "files/file_prompt.h"
#include "files/make_parameters.h"
#include "files/picture_header.h"
#include "files/message.h"
#include "files/size_dialog.h"
#include "model/memory_budget.h"
#include "model/memory_dc.h"
#include "model/pixel_runs.h"
#include "model/puzzle.h"
#include "resources/resource.h"

char loadedPicturePath[MAX_PATH];

namespace {

constexpr int HiMetricPerInch = 2540;

// The whole file in movable global memory, as the picture decoder's stream wants it.
HGLOBAL readWholeFile(const char* path, DWORD& size)
{
    HANDLE file = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return nullptr;
    size = GetFileSize(file, nullptr);
    HGLOBAL memory = size != INVALID_FILE_SIZE ? GlobalAlloc(GMEM_MOVEABLE, size) : nullptr;
    if (memory) {
        void* bytes = GlobalLock(memory);
        DWORD read = 0;
        if (!bytes || !ReadFile(file, bytes, size, &read, nullptr))
            read = 0;
        GlobalUnlock(memory);
        size = read;
    }
    CloseHandle(file);
    return memory;
}

IPicture* decode(HGLOBAL memory, DWORD size)
{
    IPicture* decoded = nullptr;
    IStream* stream = nullptr;
    if (size > 0 && SUCCEEDED(CreateStreamOnHGlobal(memory, FALSE, &stream))) {
        if (FAILED(OleLoadPicture(stream, static_cast<LONG>(size), FALSE, IID_IPicture,
                                  reinterpret_cast<void**>(&decoded))))
            decoded = nullptr;
        stream->Release();
    }
    return decoded;
}

// The picture in path; null when the file cannot be read (read false) or decoded. A file
// that is read but not decoded is told apart: too large for the memory left when its header
// states a size whose image cannot be had, else no picture.
IPicture* decodeFile(const char* path, bool& read, bool& tooLarge)
{
    DWORD size = 0;
    HGLOBAL memory = readWholeFile(path, size);
    read = memory != nullptr;
    tooLarge = false;
    IPicture* decoded = read ? decode(memory, size) : nullptr;
    if (read && !decoded) {
        int w = 0, h = 0;
        const void* bytes = GlobalLock(memory);
        // The decoder holds the whole image, and a copy of it on the way.
        tooLarge = bytes && readPictureSize(static_cast<const std::uint8_t*>(bytes), size, w, h) &&
                   !blockCanBeHad(2 * bitmapBytes(w, h));
        GlobalUnlock(memory);
    }
    if (memory)
        GlobalFree(memory);
    return decoded;
}

// The picture last found to show, kept for the load that follows the check: a large picture
// takes seconds to decode, and is decoded once.
IPicture* checked = nullptr;
char checkedPath[MAX_PATH];

}  // namespace

void forgetCheckedPicture()
{
    if (checked)
        checked->Release();
    checked = nullptr;
}

PictureCheck checkPicture(const char* path)
{
    forgetCheckedPicture();
    bool read = false, tooLarge = false;
    IPicture* decoded = decodeFile(path, read, tooLarge);
    if (!decoded)
        return !read      ? PictureCheck::Missing
               : tooLarge ? PictureCheck::TooLarge
                          : PictureCheck::NotAPicture;
    OLE_XSIZE_HIMETRIC w = 0;
    OLE_YSIZE_HIMETRIC h = 0;
    decoded->get_Width(&w);
    decoded->get_Height(&h);
    if (w <= 0 || h <= 0) {
        decoded->Release();
        return PictureCheck::NotAPicture;
    }
    checked = decoded;
    lstrcpynA(checkedPath, path, MAX_PATH);
    return PictureCheck::Shows;
}

bool findPicture(char* path)
{
    if (checked && strcmp(path, checkedPath) == 0)
        return true;  // found just now
    PictureCheck check = checkPicture(path);
    if (check == PictureCheck::Shows)
        return true;
    if (check == PictureCheck::TooLarge) {
        showMessage(appState.instance, appState.mainWindow, IDS_PICTURE_TOO_LARGE, IDS_SYSTEM_ERROR,
                    MB_OK, path);
        return false;
    }
    if (showMessage(appState.instance, appState.mainWindow, IDS_PICTURE_MISSING, IDS_FILE_ERROR,
                    MB_YESNO | MB_ICONQUESTION, path, IDS_LOOK_FOR_PICTURE) != IDYES)
        return false;
    char chosen[MAX_PATH];
    while (chooseFile(appState.mainWindow, chosen, OpenPrompt, PictureFile)) {
        check = checkPicture(chosen);
        if (check == PictureCheck::Shows) {
            lstrcpynA(path, chosen, MAX_PATH);
            return true;
        }
        showMessage(appState.instance, appState.mainWindow,
                    check == PictureCheck::TooLarge ? IDS_PICTURE_TOO_LARGE
                                                    : IDS_PICTURE_UNREADABLE,
                    IDS_FILE_ERROR, MB_OK, chosen);
    }
    return false;
}

Picture::Picture()
    : hiMetricWidth(0), hiMetricHeight(0), picture(nullptr), pictureDC(nullptr), previewDC(nullptr),
      naturalWidth(0), naturalHeight(0), previewX(0), previewY(0), previewWidth(0),
      previewHeight(0), aspectRatio(1.0f), pictureBitmap(nullptr), previewBitmap(nullptr),
      ownerWindow(nullptr), renderedWidth(0), renderedHeight(0)
{
}

Picture::~Picture()
{
    if (picture)
        picture->Release();
    deleteMemoryDC(pictureDC, pictureBitmap);
    deleteMemoryDC(previewDC, previewBitmap);
}

bool Picture::render(HDC dc, int w, int h)
{
    RECT bounds{};
    GetClientRect(ownerWindow, &bounds);
    // Rendering can fail for want of memory and still report success, leaving the surface
    // as it was. An opaque picture covers every pixel, so marks planted across the surface
    // beforehand must all be gone; a transparent one may leave any pixel, and is trusted.
    DWORD attributes = 0;
    picture->get_Attributes(&attributes);
    PixelSurface pixels;
    const bool checked = !(attributes & PICTURE_TRANSPARENT) && pixelsOf(dc, pixels) &&
                         pixels.width >= w && pixels.height >= h && w > 0 && h > 0;
    constexpr int Marks = 8;  // a grid of Marks x Marks points
    constexpr std::uint32_t Mark[2] = {0x00FE01FD, 0x0001FE02};
    auto markAt = [&](int i, int j) -> std::uint32_t& {
        return pixels.row((2 * j + 1) * h / (2 * Marks))[(2 * i + 1) * w / (2 * Marks)];
    };
    if (checked) {
        GdiFlush();
        for (int j = 0; j < Marks; ++j) {
            for (int i = 0; i < Marks; ++i)
                markAt(i, j) = Mark[(i + j) & 1];
        }
    }
    // HIMETRIC grows upwards: start at the top edge with a negative height.
    if (FAILED(picture->Render(dc, 0, 0, w, h, 0, hiMetricHeight, hiMetricWidth, -hiMetricHeight,
                               &bounds)))
        return false;
    if (!checked)
        return true;
    GdiFlush();
    for (int j = 0; j < Marks; ++j) {
        for (int i = 0; i < Marks; ++i) {
            if (markAt(i, j) != Mark[(i + j) & 1])
                return true;
        }
    }
    return false;
}

bool Picture::createSurface(HDC& dc, HBITMAP& bitmap, int w, int h)
{
    dc = nullptr;
    bitmap = nullptr;
    if (bitmapBytes(w, h) > MaxBitmapBytes)
        return false;
    HDC ownerDC = GetDC(ownerWindow);
    createPixelSurface(dc, ownerDC, bitmap, w, h, false);
    ReleaseDC(ownerWindow, ownerDC);
    if (dc && bitmap)
        return true;
    deleteMemoryDC(dc, bitmap);
    return false;
}

PictureLoad Picture::loadPicture(const char* path)
{
    bool read = true, tooLarge = false;
    IPicture* decoded = nullptr;
    if (checked && strcmp(path, checkedPath) == 0) {
        decoded = checked;
        checked = nullptr;
    } else {
        forgetCheckedPicture();
        decoded = decodeFile(path, read, tooLarge);
    }
    const bool readable = decoded != nullptr;
    if (read && !decoded && picture) {
        // Read but not decoded: the picture is gone, its images stay.
        picture->Release();
        picture = nullptr;
    }
    // A file that cannot be opened renders the picture already held again.
    if (!decoded && picture) {
        decoded = picture;
        decoded->AddRef();
    }
    if (!decoded)
        return PictureUnreadable;

    OLE_XSIZE_HIMETRIC hiWidth = 0;
    OLE_YSIZE_HIMETRIC hiHeight = 0;
    decoded->get_Width(&hiWidth);
    decoded->get_Height(&hiHeight);
    HDC ownerDC = GetDC(ownerWindow);
    const int newWidth = MulDiv(hiWidth, GetDeviceCaps(ownerDC, LOGPIXELSX), HiMetricPerInch);
    const int newHeight = MulDiv(hiHeight, GetDeviceCaps(ownerDC, LOGPIXELSY), HiMetricPerInch);
    ReleaseDC(ownerWindow, ownerDC);
    int newPreviewWidth = previewWidth, newPreviewHeight = previewHeight;
    const float ratio = static_cast<float>(newWidth) / static_cast<float>(newHeight);
    fitToRatio(newPreviewWidth, newPreviewHeight, ratio);

    // Both images are made before the ones on hand are given up.
    HDC newPictureDC = nullptr, newPreviewDC = nullptr;
    HBITMAP newPictureBitmap = nullptr, newPreviewBitmap = nullptr;
    const bool made =
        processCanHold(bitmapBytes(newWidth, newHeight)) &&
        createSurface(newPictureDC, newPictureBitmap, newWidth, newHeight) &&
        createSurface(newPreviewDC, newPreviewBitmap, newPreviewWidth, newPreviewHeight);
    if (!made) {
        deleteMemoryDC(newPictureDC, newPictureBitmap);
        deleteMemoryDC(newPreviewDC, newPreviewBitmap);
        decoded->Release();
        return PictureTooLarge;
    }

    if (picture)
        picture->Release();
    picture = decoded;
    hiMetricWidth = hiWidth;
    hiMetricHeight = hiHeight;
    naturalWidth = newWidth;
    naturalHeight = newHeight;
    aspectRatio = ratio;
    previewWidth = newPreviewWidth;
    previewHeight = newPreviewHeight;
    replaceMemoryDC(pictureDC, pictureBitmap, newPictureDC, newPictureBitmap);
    replaceMemoryDC(previewDC, previewBitmap, newPreviewDC, newPreviewBitmap);
    const bool rendered = render(pictureDC, naturalWidth, naturalHeight);
    renderedWidth = rendered ? naturalWidth : 0;
    renderedHeight = rendered ? naturalHeight : 0;
    render(previewDC, previewWidth, previewHeight);
    return readable ? PictureLoaded : PictureUnreadable;
}

bool Picture::renderAtSize(int w, int h)
{
    if (!picture)
        return true;  // nothing decoded: the image on hand is the picture
    if (w == renderedWidth && h == renderedHeight)
        return true;  // already rendered at that size: a large picture is rendered once
    HDC dc = nullptr;
    HBITMAP bitmap = nullptr;
    if (!createSurface(dc, bitmap, w, h) || !render(dc, w, h)) {
        deleteMemoryDC(dc, bitmap);
        return false;
    }
    replaceMemoryDC(pictureDC, pictureBitmap, dc, bitmap);
    renderedWidth = w;
    renderedHeight = h;
    return true;
}

void Picture::blank()
{
    renderedWidth = renderedHeight = 0;
    BitBlt(pictureDC, 0, 0, naturalWidth, naturalHeight, nullptr, 0, 0, WHITENESS);
    BitBlt(previewDC, 0, 0, previewWidth, previewHeight, nullptr, 0, 0, WHITENESS);
}

PictureLoad Picture::loadPreview(const char* path)
{
    RECT client{};
    GetClientRect(appState.mainWindow, &client);
    ownerWindow = appState.mainWindow;
    // The new board image is had first: without it nothing changes.
    const int w = std::max<int>(appState.boardImageWidth, client.right);
    const int h = std::max<int>(appState.boardImageHeight, client.bottom);
    HDC board = nullptr;
    HBITMAP boardBitmap = nullptr;
    createPixelSurface(board, appState.windowDC, boardBitmap, w, h, false);
    const int keptWidth = previewWidth, keptHeight = previewHeight;
    previewWidth = appState.previewBoxWidth;
    previewHeight = appState.previewBoxHeight;
    const PictureLoad loaded =
        board && boardBitmap ? loadPicture(path) : (forgetCheckedPicture(), PictureTooLarge);
    if (loaded == PictureTooLarge) {
        previewWidth = keptWidth;
        previewHeight = keptHeight;
        deleteMemoryDC(board, boardBitmap);
        return loaded;
    }
    previewX = 0;
    previewY = appState.paintOriginY;

    // A puzzle still on hand must not draw into, or whiten, the board image that replaces
    // the one it was drawn on.
    thePuzzle.releaseBoard();
    replaceMemoryDC(appState.boardDC, appState.boardBitmap, board, boardBitmap);
    BitBlt(appState.boardDC, 0, 0, w, h, nullptr, 0, 0, WHITENESS);
    BitBlt(appState.boardDC, previewX, previewY, previewWidth, previewHeight, previewDC, 0, 0,
           SRCCOPY);

    if (path != loadedPicturePath) {
        strncpy(loadedPicturePath, path, MAX_PATH - 1);
        loadedPicturePath[MAX_PATH - 1] = '\0';
    }
    // The puzzle on hand no longer belongs to the picture on show.
    if (strcmp(thePuzzle.picturePath, loadedPicturePath) != 0) {
        thePuzzle.picturePath[0] = '\0';
        thePuzzle.puzzlePath[0] = '\0';
    }
    return loaded;
}

void openPictureCommand(const char* path)
{
    // Refused before anything changes: the picture, the board and the puzzle stay.
    const PictureCheck check = checkPicture(path);
    if (check == PictureCheck::TooLarge ||
        (check == PictureCheck::Shows && thePicture.loadPreview(path) == PictureTooLarge)) {
        showMessage(appState.instance, appState.mainWindow, IDS_PICTURE_TOO_LARGE, IDS_SYSTEM_ERROR,
                    MB_OK, path);
        return;
    }
    if (check != PictureCheck::Shows) {
        showMessage(appState.instance, appState.mainWindow, IDS_PICTURE_UNREADABLE, IDS_FILE_ERROR,
                    MB_OK, path);
        return;
    }
    showSizeDialog(appState.mainWindow, Pixels);
    showSizeDialog(appState.mainWindow, Pieces);
    makeParameters.shapeMode = Knobbed;
    appState.pictureLoaded = true;
    if (thePuzzle.made)
        thePuzzle.clear();
    RedrawWindow(appState.mainWindow, &appState.boardRect, nullptr, RDW_INVALIDATE | RDW_ERASE);
}

void fitToRatio(int& width, int& height, float ratio)
{
    if (static_cast<float>(width) / static_cast<float>(height) == ratio)
        return;
    const float impliedHeight = static_cast<float>(width) / ratio;
    if (impliedHeight > static_cast<float>(height))
        width = roundToInt(ratio * static_cast<float>(height));
    else
        height = roundToInt(impliedHeight);
}

int roundToInt(float value)
{
    const float whole = std::trunc(value);
    if (value - whole <= 0.5f)
        return static_cast<int>(whole);
    return static_cast<int>(std::ceil(value));
}
