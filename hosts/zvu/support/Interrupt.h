// The user's wish that the program ends. Most of what zvu calls cannot be woken, so it is asked for in order first, and
// then done at once.
#pragma once

#include <cstdio>

// From now on the first signal of this number, SIGINT for Ctrl-C, asks for an orderly end. A second one ends the
// program at once, because what waits for something else cannot look.
void WatchForInterrupt(int nSignal);

// From any thread.
bool IsInterrupted();

// An end at once removes the file of this path, which lasts until the next call; null: none. pFile is the one through
// which it is written, or null.
void RemoveAtInterrupt(const char* pszPath, std::FILE* pFile);
