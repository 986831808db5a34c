#pragma once
// A progress bar over the board for a Make that takes longer than about half a second; the
// windows keep painting while it works.

// Arms the clock; nothing shows yet.
void beginMakeProgress();
// done of total rows cut. Shows the bar once half a second has gone by.
void reportMakeProgress(int done, int total);
// Takes the bar away, if it came.
void endMakeProgress();
