#include "files/picture.h"

#include <cmath>
#include <cstring>

#include "app/app_state.h"
#include "files/make_parameters.h"
#include "files/message.h"
#include "files/size_dialog.h"
#include "model/memory_dc.h"
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

}  // namespace

bool pictureDecodes(const char* path)
{
    DWORD size = 0;
    HGLOBAL memory = readWholeFile(path, size);
    if (!memory)
        return false;
    IPicture* decoded = decode(memory, size);
    GlobalFree(memory);
    if (!decoded)
        return false;
    OLE_XSIZE_HIMETRIC w = 0;
    OLE_YSIZE_HIMETRIC h = 0;
    decoded->get_Width(&w);
    decoded->get_Height(&h);
    decoded->Release();
    return w > 0 && h > 0;
}

Picture::Picture()
    : hiMetricWidth(0), hiMetricHeight(0), picture(nullptr), pictureDC(nullptr), previewDC(nullptr),
      naturalWidth(0), naturalHeight(0), previewX(0), previewY(0), previewWidth(0),
      previewHeight(0), aspectRatio(1.0f), pictureBitmap(nullptr), previewBitmap(nullptr),
      ownerWindow(nullptr)
{
}

Picture::~Picture()
{
    if (picture)
        picture->Release();
    deleteMemoryDC(pictureDC, pictureBitmap);
    deleteMemoryDC(previewDC, previewBitmap);
}

void Picture::render(HDC dc, int w, int h)
{
    RECT bounds{};
    GetClientRect(ownerWindow, &bounds);
    // HIMETRIC grows upwards: start at the top edge with a negative height.
    picture->Render(dc, 0, 0, w, h, 0, hiMetricHeight, hiMetricWidth, -hiMetricHeight, &bounds);
}

void Picture::loadPicture(const char* path)
{
    DWORD size = 0;
    HGLOBAL memory = readWholeFile(path, size);
    if (memory) {
        if (picture) {
            picture->Release();
            picture = nullptr;
        }
        picture = decode(memory, size);
    }

    if (picture) {
        OLE_XSIZE_HIMETRIC w = 0;
        OLE_YSIZE_HIMETRIC h = 0;
        picture->get_Width(&w);
        picture->get_Height(&h);
        hiMetricWidth = w;
        hiMetricHeight = h;

        HDC ownerDC = GetDC(ownerWindow);
        naturalWidth = MulDiv(hiMetricWidth, GetDeviceCaps(ownerDC, LOGPIXELSX), HiMetricPerInch);
        naturalHeight = MulDiv(hiMetricHeight, GetDeviceCaps(ownerDC, LOGPIXELSY), HiMetricPerInch);
        aspectRatio = static_cast<float>(naturalWidth) / static_cast<float>(naturalHeight);

        createMemoryDC(pictureDC, ownerDC, pictureBitmap, naturalWidth, naturalHeight, true);
        fitToRatio(previewWidth, previewHeight, aspectRatio);
        createMemoryDC(previewDC, ownerDC, previewBitmap, previewWidth, previewHeight, true);
        ReleaseDC(ownerWindow, ownerDC);
        render(pictureDC, naturalWidth, naturalHeight);
        render(previewDC, previewWidth, previewHeight);
    }
    if (memory)
        GlobalFree(memory);
}

void Picture::renderAtSize(int w, int h)
{
    if (!picture)
        return;
    HDC ownerDC = GetDC(ownerWindow);
    createMemoryDC(pictureDC, ownerDC, pictureBitmap, w, h, true);
    ReleaseDC(ownerWindow, ownerDC);
    render(pictureDC, w, h);
}

void Picture::blank()
{
    BitBlt(pictureDC, 0, 0, naturalWidth, naturalHeight, nullptr, 0, 0, WHITENESS);
    BitBlt(previewDC, 0, 0, previewWidth, previewHeight, nullptr, 0, 0, WHITENESS);
}

void Picture::loadPreview(const char* path)
{
    RECT client{};
    GetClientRect(appState.mainWindow, &client);
    ownerWindow = appState.mainWindow;
    previewX = 0;
    previewY = appState.paintOriginY;
    previewWidth = appState.previewBoxWidth;
    previewHeight = appState.previewBoxHeight;
    loadPicture(path);

    // A puzzle still on hand must not draw into, or whiten, the board image that replaces
    // the one it was drawn on.
    thePuzzle.releaseBoard();
    createMemoryDC(appState.boardDC, appState.windowDC, appState.boardBitmap, client.right,
                   client.bottom, true);
    BitBlt(appState.boardDC, 0, 0, client.right, client.bottom, nullptr, 0, 0, WHITENESS);
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
}

void openPictureCommand(const char* path)
{
    // Refused before anything changes: the picture, the board and the puzzle stay.
    if (!pictureDecodes(path)) {
        showMessage(appState.instance, appState.mainWindow, IDS_PICTURE_UNREADABLE, IDS_FILE_ERROR,
                    MB_OK, path);
        return;
    }
    thePicture.loadPreview(path);
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
