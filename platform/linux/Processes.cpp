#include "system/Processes.h"

#include "CommandLine.h"
#include "KernelObject.h"
#include "Paths.h"
#include "XCopy.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <mutex>
#include <thread>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
constexpr DWORD nKnownFlags = CREATE_NO_WINDOW | CREATE_SEPARATE_WOW_VDM | NORMAL_PRIORITY_CLASS;
constexpr int nSignalled = 128;   // and the signal's number on top, as shells say it

class Process final : public KernelObject
{
public:
    explicit Process(pid_t nId) noexcept : m_nId(nId) {}

    BOOL ExitCode(DWORD& nExitCode)
    {
        const std::lock_guard oHold(m_oLock);
        int nStatus = 0;
        if (m_nExitCode == STILL_ACTIVE)
        {
            const pid_t nEnded = ::waitpid(m_nId, &nStatus, WNOHANG);
            if (nEnded < 0)
                return Fail(ERROR_INVALID_HANDLE, FALSE);   // the host has taken its end
            if (nEnded == m_nId)
                m_nExitCode =
                    static_cast<DWORD>(WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : nSignalled + WTERMSIG(nStatus));
        }
        nExitCode = m_nExitCode;
        return TRUE;
    }

private:
    const pid_t m_nId;
    std::mutex m_oLock;
    DWORD m_nExitCode = STILL_ACTIVE;
};

// What a new process starts with. Threads of the library take no signals; a process of its own does.
class SpawnSettings
{
public:
    explicit SpawnSettings(LPCSTR pszWorkingFolder)
    {
        posix_spawnattr_init(&m_oAttributes);
        posix_spawn_file_actions_init(&m_oActions);
        sigset_t oNone;
        sigemptyset(&oNone);
        posix_spawnattr_setsigmask(&m_oAttributes, &oNone);
        posix_spawnattr_setflags(&m_oAttributes, POSIX_SPAWN_SETSIGMASK);
        if (pszWorkingFolder)
            posix_spawn_file_actions_addchdir_np(&m_oActions, NativePath(pszWorkingFolder));
    }
    ~SpawnSettings()
    {
        posix_spawn_file_actions_destroy(&m_oActions);
        posix_spawnattr_destroy(&m_oAttributes);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    // Gives an errno. A program that is a mere name is looked for as shells do, if it may.
    int Start(bool bSearch, const char* pszProgram, std::vector<std::string>& oArguments, pid_t& nId) const
    {
        std::vector<char*> apszArguments;
        apszArguments.reserve(oArguments.size() + 1);
        for (auto& strArgument : oArguments)
            apszArguments.push_back(strArgument.data());
        apszArguments.push_back(nullptr);
        return (bSearch ? posix_spawnp : posix_spawn)(&nId, pszProgram, &m_oActions, &m_oAttributes,
                                                      apszArguments.data(), environ);
    }

private:
    posix_spawnattr_t m_oAttributes;
    posix_spawn_file_actions_t m_oActions;
};

// The process's id; 0 with the last error set.
pid_t StartProcess(LPCSTR pszApplication, LPCSTR pszCommandLine, LPCSTR pszWorkingFolder)
{
    auto oArguments = SplitCommandLine(pszCommandLine ? pszCommandLine : pszApplication);
    const NativePath oProgram(pszApplication ? pszApplication : oArguments[0].c_str());
    const SpawnSettings oSettings(pszWorkingFolder);
    pid_t nId = 0;
    int nErrno = oSettings.Start(!pszApplication, oProgram, oArguments, nId);
    if (nErrno == ENOENT && !pszApplication)
        if (auto oXCopy = TranslateXCopy(oArguments); !oXCopy.empty())
            nErrno = oSettings.Start(false, oXCopy[0].c_str(), oXCopy, nId);
    if (nErrno == 0)
        return nId;
    return Fail(ErrorOnPath(oProgram, nErrno), pid_t{0});
}
}

BOOL win32::CreateProcessA(LPCSTR pszApplication, LPSTR pszCommandLine, LPSECURITY_ATTRIBUTES pProcessSecurity,
                           LPSECURITY_ATTRIBUTES pThreadSecurity, BOOL bInheritHandles, DWORD nFlags,
                           LPVOID pEnvironment, LPCSTR pszWorkingFolder, LPSTARTUPINFOA pStartup,
                           LPPROCESS_INFORMATION pProcess)
{
    if (pProcessSecurity || pThreadSecurity || !bInheritHandles || nFlags & ~nKnownFlags || pEnvironment || !pStartup)
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    if (!pszApplication && (!pszCommandLine || !*pszCommandLine))
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    return OrOutOfMemory(FALSE, [&] {
        const pid_t nId = StartProcess(pszApplication, pszCommandLine, pszWorkingFolder);
        if (nId == 0)
            return FALSE;
        const auto pStarted = std::make_shared<Process>(nId);
        *pProcess = {OpenHandle(pStarted), OpenHandle(pStarted)};
        return TRUE;
    });
}

BOOL win32::GetExitCodeProcess(HANDLE hProcess, LPDWORD pnExitCode)
{
    const auto pProcess = FindObjectOf<Process>(hProcess);
    return pProcess ? pProcess->ExitCode(*pnExitCode) : Fail(ERROR_INVALID_HANDLE, FALSE);
}

void win32::Sleep(DWORD nMilliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(nMilliseconds));
}

BOOL win32::PeekMessageA(LPMSG, HWND, UINT, UINT, UINT)
{
    return FALSE;
}

BOOL win32::TranslateMessage(const MSG*)
{
    return FALSE;
}

LRESULT win32::DispatchMessageA(const MSG*)
{
    return 0;
}
