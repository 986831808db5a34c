#include "app/strings.h"

#include "app/app_state.h"

int loadString(HINSTANCE instance, int id, char* buffer, int size)
{
    if (size <= 0)
        return 0;
    buffer[0] = '\0';
    return LoadStringA(instance, id + appState.languageOffset, buffer, size);
}

void RemoveChar(char* text, char c)
{
    char* out = text;
    for (const char* in = text; *in; ++in) {
        if (*in != c)
            *out++ = *in;
    }
    *out = '\0';
}
