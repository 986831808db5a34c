#include "files/size_dialog.h"

#include <cctype>

#include "app/app_state.h"
#include "app/controls.h"
#include "app/strings.h"
#include "files/make_parameters.h"
#include "files/message.h"
#include "files/picture.h"
#include "resources/resource.h"

namespace {

// One dialog is open at a time.
struct SizeDialogState {
    SizeDialogMode mode;
    int bufferSize;  // largest text, terminating zero included
};

SizeDialogState state{Pixels, 5};

constexpr int PixelsBufferSize = 5;  // up to 9999 pixels
constexpr int PiecesBufferSize = 4;  // up to 999 pieces
// The smallest cell a piece can be cut from and still be seen, picked up and fitted.
constexpr int MinimumCellSide = 10;

void setText(HWND dialog, int control, int stringId)
{
    char text[256];
    loadString(appState.instance, stringId, text, sizeof text);
    SetDlgItemTextA(dialog, control, text);
}

void setNumber(HWND dialog, int control, int value)
{
    SetDlgItemInt(dialog, control, static_cast<UINT>(value), TRUE);
}

void onInitDialog(HWND dialog, SizeDialogMode mode)
{
    state.mode = mode;
    setText(dialog, IDC_SIZE_WIDTH_LABEL, IDS_WIDTH);
    setText(dialog, IDC_SIZE_HEIGHT_LABEL, IDS_HEIGHT);
    setText(dialog, IDC_SIZE_CANCEL, IDS_CANCEL);
    char title[256];
    if (mode == Pieces) {
        loadString(appState.instance, IDS_PIECES_TITLE, title, sizeof title);
        setText(dialog, IDC_SIZE_FIRST_UNIT, IDS_UNIT_PIECES);
        setText(dialog, IDC_SIZE_SECOND_UNIT, IDS_UNIT_PIECES);
        state.bufferSize = PiecesBufferSize;
        setNumber(dialog, IDC_SIZE_FIRST_VALUE, makeParameters.columns);
        setNumber(dialog, IDC_SIZE_SECOND_VALUE, makeParameters.rows);
    } else {
        loadString(appState.instance, IDS_SIZE_TITLE, title, sizeof title);
        setText(dialog, IDC_SIZE_FIRST_UNIT, IDS_UNIT_PIXELS);
        setText(dialog, IDC_SIZE_SECOND_UNIT, IDS_UNIT_PIXELS);
        setText(dialog, IDC_SIZE_ADJUST_TO_IMAGE, IDS_ADJUST_TO_IMAGE);
        setText(dialog, IDC_SIZE_KEEP_RATIO, IDS_KEEP_RATIO);
        setText(dialog, IDC_SIZE_ADJUST_TO_SCREEN, IDS_ADJUST_TO_SCREEN);
        SetControlVisible(dialog, IDC_SIZE_ADJUST_TO_IMAGE, true);
        SetControlVisible(dialog, IDC_SIZE_KEEP_RATIO, true);
        SetControlVisible(dialog, IDC_SIZE_ADJUST_TO_SCREEN, true);
        state.bufferSize = PixelsBufferSize;
        setNumber(dialog, IDC_SIZE_FIRST_VALUE, makeParameters.width);
        setNumber(dialog, IDC_SIZE_SECOND_VALUE, makeParameters.height);
        CheckDlgButton(dialog, IDC_SIZE_KEEP_RATIO, makeParameters.keepRatio);
        CheckDlgButton(dialog, IDC_SIZE_ADJUST_TO_IMAGE, makeParameters.adjustToImage);
        CheckDlgButton(dialog, IDC_SIZE_ADJUST_TO_SCREEN, makeParameters.adjustToScreen);
    }
    SetWindowTextA(dialog, title);
}

// Reads one edit into value unless its text is too long; then says so and refuses.
bool readValue(HWND dialog, int control, int& value)
{
    HWND edit = GetDlgItem(dialog, control);
    if (GetWindowTextLengthA(edit) + 1 > state.bufferSize) {
        showMessage(appState.instance, appState.mainWindow, IDS_VALUE_TOO_LARGE, IDS_INPUT_ERROR,
                    MB_OK);
        return false;
    }
    char text[8] = {};
    GetWindowTextA(edit, text, sizeof text);
    // The leading digits; pasted text may hold others, where the number ends.
    int number = 0;
    for (const char* c = text; std::isdigit(static_cast<unsigned char>(*c)); ++c)
        number = number * 10 + (*c - '0');
    value = number;
    return true;
}

bool checked(HWND dialog, int control)
{
    return IsDlgButtonChecked(dialog, control) == BST_CHECKED;
}

// Puzzles whose pieces could not be played are refused: a size of zero, or cells smaller
// than MinimumCellSide. The pieces are measured against the size already chosen.
bool playable(const MakeParameters& p, bool pixels)
{
    if (pixels)
        return p.width > 0 && p.height > 0;
    return p.columns > 0 && p.rows > 0 && p.width / p.columns >= MinimumCellSide &&
           p.height / p.rows >= MinimumCellSide;
}

void onOk(HWND dialog)
{
    MakeParameters& parameters = makeParameters;
    const MakeParameters before = parameters;
    const bool pixels = state.mode == Pixels;
    // Both values are read even when the first is refused.
    bool ok =
        readValue(dialog, IDC_SIZE_FIRST_VALUE, pixels ? parameters.width : parameters.columns);
    ok = readValue(dialog, IDC_SIZE_SECOND_VALUE, pixels ? parameters.height : parameters.rows) &&
         ok;
    if (pixels) {
        parameters.adjustToImage = checked(dialog, IDC_SIZE_ADJUST_TO_IMAGE);
        if (parameters.adjustToImage) {
            parameters.width = thePicture.naturalWidth;
            parameters.height = thePicture.naturalHeight;
        }
        parameters.adjustToScreen = checked(dialog, IDC_SIZE_ADJUST_TO_SCREEN);
        if (parameters.adjustToScreen) {
            parameters.width = appState.areaWidth;
            parameters.height = appState.areaHeight;
        }
        parameters.keepRatio = checked(dialog, IDC_SIZE_KEEP_RATIO);
    }
    if (!ok)
        return;
    if (!playable(parameters, pixels)) {
        parameters = before;
        showMessage(appState.instance, appState.mainWindow, IDS_PIECES_TOO_SMALL, IDS_INPUT_ERROR,
                    MB_OK);
        return;
    }
    if (parameters.keepRatio || parameters.adjustToScreen)
        fitToRatio(parameters.width, parameters.height, thePicture.aspectRatio);
    EndDialog(dialog, IDC_SIZE_OK);
}

}  // namespace

INT_PTR CALLBACK sizeDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        onInitDialog(dialog, static_cast<SizeDialogMode>(lParam));
        return TRUE;
    case WM_COMMAND:
        switch (LOWORD(wParam)) {
        case IDC_SIZE_OK:
            onOk(dialog);
            return TRUE;
        case IDC_SIZE_CANCEL:
        case IDCANCEL:
            EndDialog(dialog, IDC_SIZE_CANCEL);
            return TRUE;
        }
        return FALSE;
    case WM_CLOSE:
        EndDialog(dialog, IDC_SIZE_CANCEL);
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR showSizeDialog(HWND owner, SizeDialogMode mode)
{
    return DialogBoxParamA(appState.instance, "PUZZLEINPUT", owner, sizeDialogProc,
                           static_cast<LPARAM>(mode));
}
