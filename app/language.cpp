#include "app/language.h"

void RunLanguageDialog(HWND)
{
}
