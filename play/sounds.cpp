#include "play/sounds.h"

#include <windows.h>
#include <mmsystem.h>

#include "app/app_state.h"

void playSound(int resource)
{
    if (appState.soundOn)
        PlaySoundA(MAKEINTRESOURCEA(resource), appState.instance, SND_RESOURCE | SND_ASYNC);
}
