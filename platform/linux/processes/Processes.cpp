#include "win32/Processes.h"

#include "CommandLine.h"
#include "Spawn.h"
#include "XCopy.h"
#include "platform/linux/base/KernelObject.h"
#include "platform/linux/base/Paths.h"

#include <chrono>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <thread>

#include <sys/wait.h>

namespace
{
constexpr DWORD nKnownFlags = CREATE_NO_WINDOW | CREATE_SEPARATE_WOW_VDM | NORMAL_PRIORITY_CLASS;

class Process final : public KernelObject
{
public:
    void SetId(pid_t nId) noexcept { m_nId = nId; }

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
                m_nExitCode = ExitCodeOf(nStatus);
        }
        nExitCode = m_nExitCode;
        return TRUE;
    }

private:
    pid_t m_nId = 0;
    std::mutex m_oLock;
    DWORD m_nExitCode = STILL_ACTIVE;
};

// The process's id; 0 with the last error set.
pid_t StartProcess(LPCSTR pszApplication, LPCSTR pszCommandLine, LPCSTR pszWorkingFolder)
{
    auto oArguments = SplitCommandLine(pszCommandLine ? pszCommandLine : pszApplication);
    const NativePath oName(pszApplication ? pszApplication : oArguments[0].c_str());
    const NativePath oFolder(pszWorkingFolder);
    // All but a mere name lies where this process sees it, wherever the new one starts.
    const bool bSearch = !pszApplication && !std::strchr(oName, '/');
    const std::string strProgram = bSearch ? std::string(oName) : AbsolutePath(oName);
    const Spawn oSpawn(pszWorkingFolder ? static_cast<const char*>(oFolder) : nullptr);
    pid_t nId = 0;
    int nErrno = oSpawn.Start(bSearch, strProgram.c_str(), oArguments, nId);
    std::error_code oIgnored;
    if (nErrno != 0 && pszWorkingFolder && !std::filesystem::is_directory(static_cast<const char*>(oFolder), oIgnored))
        return Fail(ERROR_DIRECTORY, pid_t{0});
    if (nErrno == ENOENT && bSearch)
        if (auto oXCopy = TranslateXCopy(oArguments); !oXCopy.empty())
            nErrno = oSpawn.Start(false, oXCopy[0].c_str(), oXCopy, nId);
    return nErrno == 0 ? nId : Fail(ErrorOnPath(oName, nErrno), pid_t{0});
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
        // First what may fail: a process without a handle would never be waited for.
        const auto pNew = std::make_shared<Process>();
        NewHandle oProcess(pNew), oThread(pNew);
        const pid_t nId = StartProcess(pszApplication, pszCommandLine, pszWorkingFolder);
        if (nId == 0)
            return FALSE;
        pNew->SetId(nId);
        *pProcess = {oProcess.Give(), oThread.Give()};
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
