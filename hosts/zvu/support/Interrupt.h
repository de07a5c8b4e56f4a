// Ctrl-C, the user's wish that the program ends. Most calls of the library cannot be woken, so zvu first asks for an
// orderly end, and a second Ctrl-C does without it.
#pragma once

#include <cstdio>
#include <filesystem>

// From now on the first signal of this number, SIGINT for Ctrl-C, sets IsInterrupted. The second one ends the program
// at once, even while a call waits for something else.
void WatchForInterrupt(int nSignal);

// From any thread.
bool IsInterrupted();

// The second signal removes this file before the end. The path must live until the next call; null: there is none.
// pFile is the open file, or null.
void RemoveAtInterrupt(const std::filesystem::path* pPath, std::FILE* pFile);
