#pragma once
// The drag sounds, WAVE resources of the program. Played asynchronously and only while the
// sound option is on; without a sound device nothing is heard and nothing waits.
void playSound(int resource);

// The last sound played (0 before any), for the tests: nothing can be heard here.
int lastSoundPlayed();
