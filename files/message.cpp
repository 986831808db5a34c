#include "files/message.h"

#include <cstring>

#include "app/app_state.h"
#include "app/strings.h"
#include "resources/resource.h"

int showMessage(HINSTANCE instance, HWND owner, int textId, int captionId, UINT type,
                const char* suffix, int afterId)
{
    char text[MAX_PATH + 1024];
    char caption[256];
    loadString(instance, textId, text, sizeof text);
    loadString(instance, captionId, caption, sizeof caption);
    if (suffix && *suffix)
        strncat(text, suffix, sizeof text - strlen(text) - 1);
    if (afterId) {
        char after[512];
        loadString(instance, afterId, after, sizeof after);
        strncat(text, after, sizeof text - strlen(text) - 1);
    }
    return MessageBoxA(owner, text, caption, type);
}

void reportLowResources()
{
    showMessage(appState.instance, appState.mainWindow, IDS_LOW_RESOURCES, IDS_SYSTEM_ERROR, MB_OK);
}
