// The user's wish that the program ends.
#pragma once

// From now on the first Ctrl-C (or SIGTERM) asks for an orderly end. What waits for something else cannot look, so a
// second one ends the program at once.
void WatchForInterrupt();

// From any thread.
bool IsInterrupted();
