// The user's wish that the program ends.
#pragma once

// From now on the first signal of this number, SIGINT for Ctrl-C, asks for an orderly end. What waits for something
// else cannot look, so a second one ends the program at once.
void WatchForInterrupt(int nSignal);

// From any thread.
bool IsInterrupted();
