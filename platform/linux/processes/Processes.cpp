// Processes behind handles, which whoever started them asks for their ends. There are no messages to dispatch
// meanwhile.
#include "win32/Kernel.h"

#include "CommandLine.h"
#include "Spawn.h"
#include "XCopy.h"
#include "platform/linux/base/Handles.h"
#include "platform/linux/base/Paths.h"

#include <cerrno>
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

    DWORD ExitCode()
    {
        const std::lock_guard oHold(m_oLock);
        int nStatus = 0;
        if (m_nExitCode == STILL_ACTIVE)
        {
            const pid_t nEnded = ::waitpid(m_nId, &nStatus, WNOHANG);
            Require(nEnded >= 0, ERROR_INVALID_HANDLE);   // the host has taken its end
            if (nEnded == m_nId)
                m_nExitCode = ExitCodeOf(nStatus);
        }
        return m_nExitCode;
    }

private:
    pid_t m_nId = 0;
    std::mutex m_oLock;   // the kernel tells an end once, whoever asks
    DWORD m_nExitCode = STILL_ACTIVE;
};

// Gives the process's id.
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
    Require(nErrno == 0 || !pszWorkingFolder || std::filesystem::is_directory(std::string(oFolder), oIgnored),
            ERROR_DIRECTORY);
    // An xcopy that the machine has is used instead of ours.
    if (nErrno == ENOENT && bSearch)
        if (auto oXCopy = TranslateXCopy(oArguments); !oXCopy.empty())
            nErrno = oSpawn.Start(false, oXCopy[0].c_str(), oXCopy, nId);
    if (nErrno != 0)
        throw Failure{ErrorOnPath(oName, nErrno)};
    return nId;
}
}

BOOL win32::CreateProcessA(LPCSTR pszApplication, LPSTR pszCommandLine, LPSECURITY_ATTRIBUTES pProcessSecurity,
                           LPSECURITY_ATTRIBUTES pThreadSecurity, BOOL bInheritHandles, DWORD nFlags,
                           LPVOID pEnvironment, LPCSTR pszWorkingFolder, LPSTARTUPINFOA pStartup,
                           LPPROCESS_INFORMATION pProcess)
{
    return Succeeds([&] {
        RequireSupported(!pProcessSecurity && !pThreadSecurity && bInheritHandles && !(nFlags & ~nKnownFlags) &&
                         !pEnvironment && pStartup);
        Require(pszApplication || (pszCommandLine && *pszCommandLine), ERROR_INVALID_PARAMETER);
        // First what may fail: a process without a handle would never be waited for.
        const auto pNew = std::make_shared<Process>();
        NewHandle oProcess(pNew), oThread(pNew);
        pNew->SetId(StartProcess(pszApplication, pszCommandLine, pszWorkingFolder));
        *pProcess = {oProcess.Give(), oThread.Give()};
    });
}

BOOL win32::GetExitCodeProcess(HANDLE hProcess, LPDWORD pnExitCode)
{
    return Succeeds([&] { *pnExitCode = ObjectOf<Process>(hProcess)->ExitCode(); });
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
