// By posix_spawn, which a host with many threads and much memory can afford: nothing of it is copied.
#include "Spawn.h"

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

Spawn::Spawn(const char* pszNativeFolder)
{
    posix_spawnattr_init(&m_oAttributes);
    posix_spawn_file_actions_init(&m_oActions);
    // A mask is inherited, and that of a library thread blocks nearly all signals.
    sigset_t oNone;
    sigemptyset(&oNone);
    posix_spawnattr_setsigmask(&m_oAttributes, &oNone);
    posix_spawnattr_setflags(&m_oAttributes, POSIX_SPAWN_SETSIGMASK);
    if (pszNativeFolder)
        m_nErrno = posix_spawn_file_actions_addchdir_np(&m_oActions, pszNativeFolder);
}

Spawn::~Spawn()
{
    posix_spawn_file_actions_destroy(&m_oActions);
    posix_spawnattr_destroy(&m_oAttributes);
}

void Spawn::KeepFilesBack()
{
    const int nErrno = posix_spawn_file_actions_addclosefrom_np(&m_oActions, STDERR_FILENO + 1);
    m_nErrno = m_nErrno ? m_nErrno : nErrno;
}

int Spawn::Start(bool bSearch, const char* pszProgram, std::vector<std::string>& oArguments, pid_t& nId) const
{
    if (m_nErrno)
        return m_nErrno;
    std::vector<char*> apszArguments;
    apszArguments.reserve(oArguments.size() + 1);
    for (auto& strArgument : oArguments)
        apszArguments.push_back(strArgument.data());
    apszArguments.push_back(nullptr);
    return (bSearch ? posix_spawnp : posix_spawn)(&nId, pszProgram, &m_oActions, &m_oAttributes, apszArguments.data(),
                                                  environ);
}

DWORD ExitCodeOf(int nWaitStatus)
{
    return WIFEXITED(nWaitStatus) ? static_cast<DWORD>(WEXITSTATUS(nWaitStatus))
                                  : nEndedBySignal + static_cast<DWORD>(WTERMSIG(nWaitStatus));
}
