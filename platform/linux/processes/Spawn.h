// The start of a program.
#pragma once

#include "ZevrinUtils/Types.h"

#include <string>
#include <vector>

#include <spawn.h>
#include <sys/types.h>

// The settings that a new process starts with. Threads of the library take no signals; a process of its own does.
class Spawn
{
public:
    explicit Spawn(const char* pszNativeFolder = nullptr);   // null: the folder of this process
    ~Spawn();
    Spawn(const Spawn&) = delete;
    Spawn& operator=(const Spawn&) = delete;

    // Keeps from it what this process has open, but for the three standard streams.
    void KeepFilesBack();

    // Gives an errno. A program that is a mere name is looked for as shells do, if it may.
    int Start(bool bSearch, const char* pszProgram, std::vector<std::string>& oArguments, pid_t& nId) const;

private:
    posix_spawnattr_t m_oAttributes;
    posix_spawn_file_actions_t m_oActions;
    int m_nErrno = 0;   // of a setting that failed before the start
};

// An end that waitpid tells, as shells say it: of one by a signal this number and the signal's on top.
inline constexpr DWORD nEndedBySignal = 128;
DWORD ExitCodeOf(int nWaitStatus);
