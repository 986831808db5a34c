#include "files/file_prompt.h"

#include <commdlg.h>
#include <cstring>

#include "app/app_state.h"
#include "files/message.h"
#include "resources/resource.h"

namespace {

struct KindDetails {
    const char* filter;
    const char* defaultExtension;
    char* folder;
};

KindDetails detailsOf(FileKind kind)
{
    switch (kind) {
    case CollectionFile:
        return {"Puzzle collection (*.fpc)\0*.fpc\0", "fpc", appState.collectionFolder};
    case PuzzleFile:
        return {"Puzzle files (*.fpp)\0*.fpp\0", "fpp", appState.puzzleFolder};
    default:
        return {"All supported files (*.bmp, *.jpg, *.gif)\0*.bmp;*.jpg;*.gif\0"
                "Bitmap (*.bmp)\0*.bmp\0JPEG (*.jpg)\0*.jpg\0GIF (*.gif)\0*.gif\0",
                "bmp", appState.picturesFolder};
    }
}

}  // namespace

bool fileExists(const char* path)
{
    WIN32_FIND_DATAA found;
    HANDLE search = FindFirstFileA(path, &found);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    FindClose(search);
    return true;
}

bool chooseFile(HWND owner, char* path, int mode, FileKind kind)
{
    const KindDetails details = detailsOf(kind);
    path[0] = '\0';
    OPENFILENAMEA dialog{};
    dialog.lStructSize = OPENFILENAME_SIZE_VERSION_400A;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = details.filter;
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = path;
    dialog.nMaxFile = MAX_PATH;
    dialog.lpstrInitialDir = details.folder;
    dialog.Flags = OFN_EXPLORER;
    dialog.lpstrDefExt = details.defaultExtension;

    bool ok;
    if (mode == OpenPrompt) {
        ok = GetOpenFileNameA(&dialog) != FALSE;
    } else {
        ok = GetSaveFileNameA(&dialog) != FALSE;
        if (fileExists(path))
            ok = showMessage(appState.instance, appState.mainWindow, IDS_OVERWRITE, IDS_FILE_ERROR,
                             MB_YESNOCANCEL | MB_ICONQUESTION) == IDYES;
    }
    SetCursor(appState.waitCursor);
    if (ok)
        folderOf(path, details.folder, nullptr);
    return ok;
}

void folderOf(const char* path, char* folder, char* name)
{
    const char* slash = strrchr(path, '\\');
    const size_t k = slash ? static_cast<size_t>(slash - path) : 0;
    memcpy(folder, path, k);
    folder[k] = '\0';
    if (name)
        strcpy(name, slash ? slash + 1 : path);
}
