#include "play/sounds.h"

#include <windows.h>
#include <mmsystem.h>

#include "app/app_state.h"

namespace {
int lastPlayed = 0;
}

void playSound(int resource)
{
    if (!appState.soundOn)
        return;
    PlaySoundA(MAKEINTRESOURCEA(resource), appState.instance, SND_RESOURCE | SND_ASYNC);
    lastPlayed = resource;
}

int lastSoundPlayed()
{
    return lastPlayed;
}
