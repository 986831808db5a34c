#pragma once
// Message handlers run through guarded: an exception never leaves a handler into the
// platform's dispatch (which cannot carry it), and the player is told instead of losing
// the program. Every operation that allocates does so before it changes anything, so the
// puzzle is as it was.
#include <exception>
#include <windows.h>

#include "app/app_state.h"
#include "files/message.h"
#include "resources/resource.h"

template <class Handler> auto guarded(Handler handler, decltype(handler()) failed)
{
    try {
        return handler();
    } catch (const std::exception&) {
        reportLowResources();
        return failed;
    }
}
